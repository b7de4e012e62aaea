#include "Attore.h"

#include "Giudice.h"

#include "app/FrmStart.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaComandi.h"
#include "html/FrmComplete.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QFileDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;

namespace
{

void Invia(QWindow *finestra, QEvent::Type tipo, int tasto, int modificatori, const QString &testo, bool ripetuto)
{
    if (finestra)
        qt_handleKeyEvent(finestra, tipo, tasto, Qt::KeyboardModifiers(modificatori), testo, ripetuto);
}

void Premi(QWindow *finestra, int tasto, const QString &testo = {})
{
    Invia(finestra, QEvent::KeyPress, tasto, 0, testo, false);
}

void Rilascia(QWindow *finestra, int tasto, const QString &testo = {})
{
    Invia(finestra, QEvent::KeyRelease, tasto, 0, testo, false);
}

int TastoDi(QChar c)
{
    return c.toUpper().unicode();
}

/// \a dopo: milliseconds since the event before; two clicks that are far from each other are no double click.
void Sposta(QWidget *dove, QPoint punto, QEvent::Type tipo, Qt::MouseButton bottone, bool giu, int dopo = 1000)
{
    QWindow *finestra = dove->window()->windowHandle();
    if (!finestra)
        return;
    const QPointF locale = dove->mapTo(dove->window(), punto);
    static int ora = 0;
    qt_handleMouseEvent(finestra, locale, finestra->mapToGlobal(locale), giu ? bottone : Qt::NoButton,
                        tipo == QEvent::MouseMove ? Qt::NoButton : bottone, tipo, {}, ora += dopo);
}

void Clicca(const QPointer<QWidget> &dove, QPoint punto, Qt::MouseButton bottone = Qt::LeftButton)
{
    Sposta(dove, punto, QEvent::MouseMove, bottone, false);
    if (dove)
        Sposta(dove, punto, QEvent::MouseButtonPress, bottone, true);
    if (dove)
        Sposta(dove, punto, QEvent::MouseButtonRelease, bottone, false);
}

QPoint PuntoIn(const QWidget &dove, int x, int y)
{
    return {dove.width() * x / 1000, dove.height() * y / 1000};
}

} // namespace

Attore::Attore(FrmStart &finestra, Giudice &giudice, const QString &cartella)
    : m_finestra(finestra), m_giudice(giudice), m_cartella(cartella)
{
}

QWidget *Attore::Ostacolo()
{
    if (QWidget *menu = QApplication::activePopupWidget())
        return menu;
    if (QWidget *finestra = QApplication::activeModalWidget())
        return finestra;
    return FrmComplete::Corrente();
}

QWidget *Attore::Davanti() const
{
    QWidget *ostacolo = Ostacolo();
    if (ostacolo && !qobject_cast<FrmComplete *>(ostacolo))
        return ostacolo;
    QWidget *attiva = QApplication::activeWindow();
    return attiva ? attiva : &m_finestra;
}

/// Where the keys go. A window manager does not leave them without a window.
QWindow *Attore::FinestraTasti() const
{
    QWindow *finestra = QGuiApplication::focusWindow();
    if (finestra && finestra->isVisible())
        return finestra;
    QWidget *modale = QApplication::activeModalWidget();
    QWidget *prossima = modale ? modale : &m_finestra;
    prossima->activateWindow();
    return prossima->windowHandle();
}

QWidget *Attore::Luogo(const QString &nome) const
{
    if (nome == u"davanti")
        return Davanti();
    if (nome == u"lista")
        return FrmComplete::Corrente() ? FrmComplete::Corrente()->findChild<QListView *>() : nullptr;
    if (nome == u"risultati")
        return m_finestra.findChild<QAbstractItemView *>(u"RichControllo"_s)->viewport();
    if (nome == u"margine")
        return m_finestra.PadCorrente()->parentWidget();
    return m_finestra.PadCorrente()->viewport();
}

/// Nobody's files are written: what leaves the folder of the pages in a dialog is taken back before the next step.
void Attore::Recinta() const
{
    QWidget *dialogo = QApplication::activeModalWidget();
    if (!dialogo)
        return;
    if (auto *scelta = qobject_cast<QFileDialog *>(dialogo); scelta && scelta->directory().path() != m_cartella)
        scelta->setDirectory(m_cartella);
    if (auto *scelta = qobject_cast<QFileDialog *>(dialogo); scelta && !scelta->property("recinto").toBool()) {
        scelta->setProperty("recinto", true);
        QObject::connect(scelta, &QDialog::finished, scelta,
                         [scelta, dove = m_cartella] { scelta->setDirectory(dove); });
    }
    for (auto *casella : dialogo->findChildren<QLineEdit *>()) {
        if (casella->text().contains(u'/') && !casella->text().startsWith(QDir::cleanPath(m_cartella + u"/.."_s)))
            casella->clear();
    }
}

void Attore::Esegui(const Passo &passo)
{
    Recinta();
    switch (passo.tipo) {
    case Passo::Premi:
    case Passo::Ripeti:
    case Passo::Rilascia:
        return Tasto(passo);
    case Passo::Componi:
        return Componi(passo.testo);
    case Passo::Clic:
    case Passo::Doppio:
    case Passo::Trascina:
        return Mouse(passo);
    case Passo::Rotella:
        return Rotella(passo);
    case Passo::Comando:
        return Comando(passo.testo);
    case Passo::Controllo:
        return m_giudice.ProvaControllo(passo.a);
    case Passo::Figlio:
        return Figlio(passo.a);
    case Passo::NomeFile:
        return NomeFile(passo.testo);
    case Passo::Chiudi:
        return Chiudi(passo.a, passo.b);
    case Passo::Appunti:
        return QGuiApplication::clipboard()->setText(passo.testo);
    case Passo::Lascia:
        return Lascia(passo);
    case Passo::Misura:
        return Misura(passo);
    case Passo::Scrivi:
        return m_giudice.ProvaTesto(passo.testo, !passo.subito, [&] { Batti(passo.testo, passo.a == 1); });
    case Passo::ScriviDopo:
        return ScriviDopo(passo);
    case Passo::Scegli:
        return m_giudice.ProvaScelta(passo.testo.chopped(passo.a), !passo.subito, [&] { Scegli(passo); });
    case Passo::Storia:
        return m_giudice.ProvaStoria();
    case Passo::Fine:
        m_giudice.PrimaDellaFine();
        return m_finestra.FineDalSistema();
    case Passo::Pagina:
    case Passo::Attendi:
        return;
    }
}

// --- Keys -----------------------------------------------------------------------------------------------------------

void Attore::Tasto(const Passo &passo) const
{
    const bool rilascio = passo.tipo == Passo::Rilascia;
    m_giudice.Inviato();
    Invia(FinestraTasti(), rilascio ? QEvent::KeyRelease : QEvent::KeyPress, passo.a, passo.b, passo.testo,
          passo.tipo == Passo::Ripeti);
}

void Attore::Batti(const QString &testo, bool sovrapposti) const
{
    QChar giu;
    for (const QChar c : testo) {
        Premi(FinestraTasti(), TastoDi(c), c);
        if (!giu.isNull() && giu != c)
            Rilascia(FinestraTasti(), TastoDi(giu), giu);
        giu = c;
        if (!sovrapposti)
            Rilascia(FinestraTasti(), TastoDi(c), c);
    }
    if (sovrapposti && !giu.isNull())
        Rilascia(FinestraTasti(), TastoDi(giu), giu);
}

/// Each key in a turn of its own: the list that "<" opens keeps the turn in which it came.
void Attore::Scegli(const Passo &passo) const
{
    const QString tasti = u'<' + passo.testo + QString(passo.a, u'\b') + u'\t';
    for (const QChar c : tasti) {
        const int tasto = c == u'\b' ? int(Qt::Key_Backspace) : c == u'\t' ? int(Qt::Key_Tab) : TastoDi(c);
        const auto batti = [this, c, tasto] {
            Premi(FinestraTasti(), tasto, c);
            Rilascia(FinestraTasti(), tasto, c);
        };
        QMetaObject::invokeMethod(&m_finestra, batti, Qt::QueuedConnection);
    }
}

/// The keys that follow still go to the window of the box while it goes.
void Attore::ScriviDopo(const Passo &passo) const
{
    const QPointer<QWidget> scatola = QApplication::activeModalWidget();
    if (!scatola || QApplication::activePopupWidget())
        return;
    const QPointer<QWindow> finestra = scatola->windowHandle();
    Premi(finestra, passo.a, passo.a == Qt::Key_Return ? u"\r"_s : u"\x1b"_s);
    if (scatola && scatola->isVisible())
        return Rilascia(finestra, passo.a);
    const auto dove = [&] { return finestra ? finestra.data() : FinestraTasti(); };
    m_giudice.Aspetta(passo.testo);
    for (const QChar c : passo.testo) {
        Premi(dove(), TastoDi(c), c);
        Rilascia(dove(), TastoDi(c), c);
    }
    Rilascia(dove(), passo.a);
}

void Attore::Componi(const QString &testo) const
{
    QInputMethodEvent evento(testo.section(u'|', 0, 0), {});
    evento.setCommitString(testo.section(u'|', 1));
    if (QObject *fuoco = QGuiApplication::focusObject())
        QCoreApplication::sendEvent(fuoco, &evento);
}

// --- Mouse ----------------------------------------------------------------------------------------------------------

void Attore::Mouse(const Passo &passo) const
{
    const QPointer<QWidget> dove = Luogo(passo.testo);
    if (!dove || !dove->isVisible())
        return;
    const QPoint punto = PuntoIn(*dove, passo.a, passo.b);
    if (passo.tipo != Passo::Trascina) {
        Clicca(dove, punto, Qt::MouseButton(passo.c));
        if (passo.tipo == Passo::Doppio && dove) {
            Sposta(dove, punto, QEvent::MouseButtonPress, Qt::LeftButton, true, 10);
            if (dove)
                Sposta(dove, punto, QEvent::MouseButtonRelease, Qt::LeftButton, false);
        }
        return;
    }
    const QPoint meta = PuntoIn(*dove, passo.c / 1000, passo.c % 1000);
    Sposta(dove, punto, QEvent::MouseButtonPress, Qt::LeftButton, true);
    for (int i = 1; i <= 3 && dove; ++i)
        Sposta(dove, punto + (meta - punto) * i / 3, QEvent::MouseMove, Qt::LeftButton, true);
    if (dove)
        Sposta(dove, meta, QEvent::MouseButtonRelease, Qt::LeftButton, false);
}

void Attore::Rotella(const Passo &passo) const
{
    QWidget *dove = Luogo(passo.testo);
    if (!dove || !dove->isVisible() || (Ostacolo() && Ostacolo() != dove->window()))
        return;
    const QPointF punto = PuntoIn(*dove, passo.a, passo.b);
    QWheelEvent evento(punto, dove->mapToGlobal(punto), {}, {0, passo.c}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(dove, &evento);
}

void Attore::Lascia(const Passo &passo) const
{
    if (Ostacolo() || Stato().ControlloInCorso)
        return;
    QWidget *pagina = m_finestra.PadCorrente()->viewport();
    const QPoint punto = PuntoIn(*pagina, passo.a, passo.b);
    QMimeData dati;
    dati.setText(passo.testo);
    QDragEnterEvent entra(punto, Qt::CopyAction, &dati, Qt::LeftButton, {});
    QCoreApplication::sendEvent(pagina, &entra);
    QDropEvent lascia(punto, Qt::CopyAction, &dati, Qt::LeftButton, {});
    QCoreApplication::sendEvent(pagina, &lascia);
}

// --- Windows --------------------------------------------------------------------------------------------------------

void Attore::Comando(const QString &nome) const
{
    QWidget *ostacolo = Ostacolo();
    if (ostacolo && !qobject_cast<FrmComplete *>(ostacolo))
        return;
    if (auto *bottone = m_finestra.findChild<QAbstractButton *>(nome)) {
        if (bottone->isVisible())
            Clicca(bottone, bottone->rect().center());
        return;
    }
    Voce(nome);
}

void Attore::Voce(const QString &nome) const
{
    QStringList strada;
    for (QString menu = nome; !menu.isEmpty();) {
        strada.prepend(menu);
        const auto voci = TabellaComandi::Menu();
        const auto voce = std::find_if(voci.begin(), voci.end(), [&](const auto &v) { return v.comando == menu; });
        menu = voce == voci.end() ? QString() : voce->menu.toString();
    }
    const auto azione = [this](const QString &quale) {
        const auto *menu = m_finestra.findChild<QMenu *>(quale);
        return menu ? menu->menuAction() : m_finestra.findChild<QAction *>(quale);
    };
    if (strada.size() > 1 && azione(strada.constFirst()))
        Clicca(m_finestra.menuBar(), m_finestra.menuBar()->actionGeometry(azione(strada.takeFirst())).center());
    for (const QString &voce : std::as_const(strada)) {
        auto *aperto = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QAction *qui = azione(voce);
        if (!aperto || !qui || !aperto->actions().contains(qui))
            return;
        Clicca(aperto, aperto->actionGeometry(qui).center());
    }
}

void Attore::Figlio(int quale) const
{
    QWidget *davanti = Davanti();
    QList<QWidget *> figli;
    for (auto *figlio : davanti->findChildren<QWidget *>()) {
        if (figlio->window() == davanti && figlio->isVisible() && figlio->isEnabled() &&
            figlio->focusPolicy() & Qt::ClickFocus)
            figli += figlio;
    }
    if (figli.isEmpty())
        return;
    auto *scelto = figli[quale % figli.size()];
    auto *area = qobject_cast<QAbstractScrollArea *>(scelto);
    Clicca(area ? area->viewport() : scelto, scelto->rect().center());
}

void Attore::NomeFile(const QString &nome) const
{
    auto *dialogo = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
    auto *casella = dialogo ? dialogo->findChild<QLineEdit *>(u"fileNameEdit"_s) : nullptr;
    if (!casella)
        return;
    casella->setText(m_cartella + u'/' + nome);
    casella->setFocus();
    QWindow *finestra = dialogo->windowHandle();
    Premi(finestra, Qt::Key_Return, u"\r"_s);
    Rilascia(FinestraTasti(), Qt::Key_Return, u"\r"_s);
}

void Attore::Misura(const Passo &passo) const
{
    m_finestra.setWindowState(passo.c == 1 ? Qt::WindowMaximized : Qt::WindowNoState);
    if (passo.c != 1)
        m_finestra.resize(passo.a, passo.b);
}

void Attore::Chiudi(int come, int quale) const
{
    QWidget *davanti = Davanti();
    if (davanti == &m_finestra && come > 0)
        return;
    if (come == 1) {
        if (davanti->windowHandle())
            davanti->windowHandle()->close();
        return;
    }
    if (come == 2) {
        QList<QAbstractButton *> bottoni;
        for (auto *bottone : davanti->findChildren<QAbstractButton *>()) {
            if (bottone->isVisible() && bottone->isEnabled())
                bottoni += bottone;
        }
        if (!bottoni.isEmpty())
            Clicca(bottoni[quale % bottoni.size()], bottoni[quale % bottoni.size()]->rect().center());
        return;
    }
    Premi(FinestraTasti(), Qt::Key_Escape, u"\x1b"_s);
    Rilascia(FinestraTasti(), Qt::Key_Escape, u"\x1b"_s);
}

void Attore::Congeda(int tentativo)
{
    Recinta();
    // A drag that hangs on a button still down.
    Sposta(m_finestra.PadCorrente()->viewport(), {1, 1}, QEvent::MouseButtonRelease, Qt::LeftButton, false);
    Chiudi(tentativo % 3, tentativo / 3);
}
