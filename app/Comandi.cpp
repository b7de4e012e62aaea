#include "app/Comandi.h"

#include "app/TabellaComandi.h"
#include "app/TabellaLingua.h"
#include "chrome/ModuloGrafica.h"

#include <QAction>
#include <QCoreApplication>
#include <QLayout>
#include <QMenu>
#include <QKeyEvent>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr int LatoBottone = 27; // all bars in one row of 1280 pixels

QIcon IconaDi(QStringView nome)
{
    return nome.isEmpty() ? QIcon() : ModuloGrafica::Icona(nome);
}

/// Alt with a menu's letter opens it, the same letter in every language, also where the caption does not hold it.
/// Captions carry no mark: the style underlines the letter that the property "lettera" names.
void DaTastiera(QMenuBar *barra, QMenu *menu, QStringView lettera)
{
    QAction *voce = menu->menuAction();
    voce->setProperty("lettera", lettera.toString());
    auto *tasti = new QShortcut(QKeySequence(u"Alt+"_s + lettera.toString()), barra->window());
    QObject::connect(tasti, &QShortcut::activated, barra, [barra, voce, menu] {
        barra->setActiveAction(voce);
        // As after the menu key: Enter and the arrow keys find an entry chosen.
        QKeyEvent giu(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(menu, &giu);
    });
}

} // namespace

void Comandi::CostruisciMenu(QMenuBar *barra)
{
    const auto voci = TabellaComandi::Menu();
    for (qsizetype i = 0; i < qsizetype(voci.size()); ++i) {
        const TabellaComandi::Voce &voce = voci[size_t(i)];
        if (voce.menu == u"MPopUp")
            continue;
        if (!voce.menu.isEmpty()) {
            Aggiungi(m_menu.value(voce.menu.toString()), i);
            continue;
        }
        auto *menu = barra->addMenu(voce.messaggio == 0 ? u"?"_s : Messaggio(voce.messaggio));
        const QString nome = voce.comando.toString();
        menu->setObjectName(nome);
        menu->menuAction()->setObjectName(nome);
        m_menu.insert(nome, menu);
        connect(menu, &QMenu::aboutToShow, this, [this, nome] { emit MenuAperto(nome); });
        DaTastiera(barra, menu, voce.tasti);
    }
}

QMenu *Comandi::CostruisciPopUp(QWidget *padre)
{
    auto *menu = new QMenu(padre);
    menu->setObjectName(u"MPopUp"_s);
    const auto voci = TabellaComandi::Menu();
    for (qsizetype i = 0; i < qsizetype(voci.size()); ++i) {
        if (voci[size_t(i)].menu == u"MPopUp")
            Aggiungi(menu, i);
    }
    return menu;
}

void Comandi::Aggiungi(QMenu *menu, qsizetype indice)
{
    const TabellaComandi::Voce &voce = TabellaComandi::Menu()[size_t(indice)];
    const QString nome = voce.comando.toString();
    if (nome.isEmpty()) {
        menu->addSeparator();
        return;
    }
    if (voce.sottomenu) {
        QMenu *sotto = menu->addMenu(IconaDi(voce.icona), Messaggio(voce.messaggio));
        sotto->setObjectName(nome);
        sotto->menuAction()->setObjectName(nome);
        m_menu.insert(nome, sotto);
        return;
    }
    QAction *azione = menu->addAction(IconaDi(voce.icona), Messaggio(voce.messaggio));
    azione->setObjectName(nome);
    azione->setVisible(!voce.nascosta);
    if (!voce.tasti.isEmpty())
        azione->setShortcut(QKeySequence(voce.tasti.toString(), QKeySequence::PortableText));
    const QString svolge = voce.svolge.isEmpty() ? nome : voce.svolge.toString();
    connect(azione, &QAction::triggered, this, [this, svolge] { Esegui(svolge); });
    m_comandi[svolge].voci.append(azione);
    Aggiorna(m_comandi[svolge]);
}

void Comandi::CostruisciBarre(QWidget *contenitore)
{
    for (const TabellaComandi::Barra &voce : TabellaComandi::Barre()) {
        auto *barra = new QToolBar(contenitore);
        barra->setObjectName(voce.nome.toString());
        barra->setAccessibleName(Messaggio(voce.messaggio));
        barra->setMovable(false);
        barra->setIconSize(QSize(20, 20));
        for (const TabellaComandi::Bottone &definizione : TabellaComandi::Bottoni()) {
            if (definizione.barra != voce.nome)
                continue;
            if (definizione.indice == 0) {
                barra->addSeparator();
                continue;
            }
            auto *bottone = new QToolButton(barra);
            const QString descrizione = (definizione.messaggio == 0 ? QString() : Messaggio(definizione.messaggio)) +
                                        definizione.letterale.toString();
            bottone->setObjectName(u"%1(%2)"_s.arg(voce.nome).arg(definizione.indice));
            bottone->setIcon(IconaDi(definizione.icona));
            bottone->setToolTip(descrizione);
            bottone->setAccessibleName(descrizione);
            bottone->setAutoRaise(true);
            bottone->setFixedSize(LatoBottone, LatoBottone);
            bottone->setFocusPolicy(Qt::NoFocus);
            const QString comando = definizione.comando.toString();
            connect(bottone, &QToolButton::clicked, this, [this, comando] { Esegui(comando); });
            barra->addWidget(bottone);
            m_comandi[comando].bottoni.append(bottone);
            Aggiorna(m_comandi[comando]);
        }
        contenitore->layout()->addWidget(barra);
    }
}

void Comandi::Collega(const QString &comando, std::function<void()> azione)
{
    Comando &quello = m_comandi[comando];
    quello.azione = std::move(azione);
    Aggiorna(quello);
}

void Comandi::Abilita(const QString &comando, bool abilitato)
{
    Comando &quello = m_comandi[comando];
    quello.abilitato = abilitato;
    Aggiorna(quello);
}

void Comandi::Aggiorna(const Comando &comando)
{
    const bool abilitato = comando.azione && comando.abilitato;
    for (QAction *voce : comando.voci)
        voce->setEnabled(abilitato);
    for (QToolButton *bottone : comando.bottoni)
        bottone->setEnabled(abilitato);
}

void Comandi::Esegui(const QString &comando)
{
    const auto trovato = m_comandi.constFind(comando);
    if (trovato == m_comandi.constEnd() || !trovato->azione || !trovato->abilitato)
        return;
    if (m_freno && m_freno())
        return;
    // A copy: the command may connect others.
    const std::function<void()> azione = trovato->azione;
    azione();
}
