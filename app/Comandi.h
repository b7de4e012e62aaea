#pragma once

#include <functional>

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

class QAction;
class QMenu;
class QMenuBar;
class QToolButton;
class QWidget;

/// The commands with all their menu items and buttons. A command that nobody does is disabled wherever it stands.
class Comandi : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Builds the menu tree into \a barra, but for the pop-up menu.
    void CostruisciMenu(QMenuBar *barra);
    /// The pop-up menu; the caller owns it through \a padre.
    [[nodiscard]] QMenu *CostruisciPopUp(QWidget *padre);
    /// The toolbars, as children of \a contenitore, whose layout takes them in order.
    void CostruisciBarre(QWidget *contenitore);

    /// Says what a command does. Its items and buttons become enabled.
    void Collega(const QString &comando, std::function<void()> azione);
    void Abilita(const QString &comando, bool abilitato);
    /// Asked before every command; true: not now.
    void ImpostaFreno(std::function<bool()> freno) { m_freno = std::move(freno); }
    /// Does nothing for a command that is disabled or unknown.
    void Esegui(const QString &comando);

signals:
    /// A top menu is about to be shown.
    void MenuAperto(const QString &menu);

private:
    struct Comando {
        std::function<void()> azione;
        QList<QAction *> voci;
        QList<QToolButton *> bottoni;
        bool abilitato = true;
    };
    void Aggiungi(QMenu *menu, qsizetype voce);
    void Aggiorna(const Comando &comando);

    QHash<QString, Comando> m_comandi;
    QHash<QString, QMenu *> m_menu;
    std::function<bool()> m_freno;
};
