#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

class QWidget;

/// Says when the file of the page is to be looked at: when its window becomes the active one, as soon as nothing is
/// open or under way there that a question would disturb, and nobody is typing.
class GuardiaFile : public QObject
{
    Q_OBJECT

public:
    /// \a occupata: whether \a finestra has something under way that is no dialog, menu or mouse button.
    GuardiaFile(QWidget *finestra, std::function<bool()> occupata);

    bool eventFilter(QObject *oggetto, QEvent *evento) override;

    /// Once more, as soon as nothing is open or under way.
    void Guarda();

signals:
    void DaGuardare();

private:
    void Prova();

    QWidget *m_finestra;
    std::function<bool()> m_occupata;
    QTimer m_attesa;
    bool m_chiesto = false; ///< the look is not one of its own
};
