#include "platform/TastiDopoDialogo.h"

#include "platform/Tastiera.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcutEvent>
#include <QWindow>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace
{

constexpr size_t MassimoChiuse = 8;
constexpr int MassimaPresa = 500; // ms
constexpr int Attesa = 10;        // ms, for a window that is to come
constexpr int MassimeAttese = 300;
constexpr int Pausa = 700; // ms; who types thinks longer than that between two thoughts only

QPointer<TastiDopoDialogo> unico;

// An event of the X11 protocol: what it is stands in its first byte, a key's window in its fourth word.
constexpr uchar TastoPremuto = 2;
constexpr uchar TastoRilasciato = 3;
constexpr size_t PostoFinestra = 12;
constexpr uchar FuocoPreso = 9;
constexpr size_t PostoModo = 8;
constexpr uchar ModoPresa = 1; // what the grab itself causes, and its end
constexpr uchar ModoRilascio = 2;

/// A dialog, a menu or a list that drops down: it has the keys as long as it is there.
bool Passeggera(const QWindow *finestra)
{
    return finestra->type() == Qt::Dialog || finestra->type() == Qt::Popup;
}

QWidget *WidgetDi(const QWindow *finestra)
{
    const QWidgetList tutte = QApplication::topLevelWidgets();
    const auto sua =
        std::find_if(tutte.begin(), tutte.end(), [&](const QWidget *w) { return w->windowHandle() == finestra; });
    return sua == tutte.end() ? nullptr : *sua;
}

} // namespace

void TastiDopoDialogo::Attiva(std::function<bool()> occupato)
{
    if (!unico)
        unico = new TastiDopoDialogo(qApp, std::move(occupato));
}

void TastiDopoDialogo::Restituisci(QWidget *finestra, Tasti &&tasti)
{
    if (tasti.empty() || !unico)
        return;
    if (unico->m_restituiti.empty())
        QTimer::singleShot(0, unico, &TastiDopoDialogo::Rendi);
    unico->m_rendeA = finestra;
    std::move(tasti.begin(), tasti.end(), std::back_inserter(unico->m_restituiti));
}

bool TastiDopoDialogo::Restituisce()
{
    return unico && !unico->m_restituiti.empty();
}

bool TastiDopoDialogo::SiScrive()
{
    return unico && unico->m_ultimoPremuto.isValid() && !unico->m_ultimoPremuto.hasExpired(Pausa);
}

TastiDopoDialogo::TastiDopoDialogo(QObject *applicazione, std::function<bool()> occupato)
    : QObject(applicazione), m_occupato(std::move(occupato))
{
    m_limite.setSingleShot(true);
    connect(&m_limite, &QTimer::timeout, this, &TastiDopoDialogo::Lascia);
    applicazione->installEventFilter(this);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

bool TastiDopoDialogo::eventFilter(QObject *oggetto, QEvent *evento)
{
    switch (evento->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (oggetto->isWindowType())
            return Tasto(static_cast<QWindow *>(oggetto), static_cast<QKeyEvent &>(*evento));
        if (auto *messaggio = qobject_cast<QMessageBox *>(oggetto); messaggio && evento->type() == QEvent::KeyPress)
            return Risponde(*messaggio, static_cast<QKeyEvent &>(*evento));
        break;
    case QEvent::Shortcut:
        // Qt shows the button pressed for a tenth of a second before it does anything: ten keys of a quick typist.
        if (auto *bottone = qobject_cast<QPushButton *>(oggetto);
            bottone && !static_cast<QShortcutEvent &>(*evento).isAmbiguous()) {
            bottone->click();
            return true;
        }
        break;
    case QEvent::WindowUnblocked:
        // Told before a modal dialog's window is taken down.
        if (auto *finestra = qobject_cast<QWindow *>(oggetto);
            finestra && finestra->isVisible() && (finestra->type() == Qt::Window || finestra->type() == Qt::Dialog))
            Trattieni(finestra);
        break;
    case QEvent::Hide:
        if (oggetto->isWindowType() && Passeggera(static_cast<QWindow *>(oggetto)))
            FinestraChiusa(static_cast<QWindow *>(oggetto));
        break;
    case QEvent::Show:
        if (oggetto->isWindowType() && Passeggera(static_cast<QWindow *>(oggetto))) {
            Lascia();
            std::erase_if(m_chiuse,
                          [id = static_cast<QWindow *>(oggetto)->winId()](const Chiusa &c) { return c.id == id; });
        }
        break;
    default:
        break;
    }
    return false;
}

void TastiDopoDialogo::FinestraChiusa(QWindow *finestra)
{
    const QWidget *suo = WidgetDi(finestra);
    QWidget *dietro = suo && suo->parentWidget() ? suo->parentWidget()->window() : QApplication::activeWindow();
    if (!dietro || !finestra->handle())
        return;
    if (m_chiuse.size() == MassimoChiuse)
        m_chiuse.erase(m_chiuse.begin());
    m_chiuse.push_back({finestra->winId(), dietro});
    if (finestra->type() == Qt::Dialog && dietro->windowHandle() && dietro->isVisible())
        Trattieni(dietro->windowHandle());
}

/// Until the window manager gives \a finestra the keyboard nobody has it: keys would go nowhere.
void TastiDopoDialogo::Trattieni(QWindow *finestra)
{
    if (m_trattiene == finestra)
        return;
    Lascia();
    if (finestra->setKeyboardGrabEnabled(true)) {
        m_trattiene = finestra;
        m_limite.start(MassimaPresa);
    }
}

void TastiDopoDialogo::Lascia()
{
    m_limite.stop();
    if (m_trattiene)
        m_trattiene->setKeyboardGrabEnabled(false);
    m_trattiene.clear();
}

/// The window that keys for one that is no longer there are for.
QWidget *TastiDopoDialogo::Destinataria() const
{
    if (QWidget *modale = QApplication::activeModalWidget())
        return modale;
    const auto chiusa = std::find_if(m_chiuse.rbegin(), m_chiuse.rend(),
                                     [](const Chiusa &c) { return c.dietro && c.dietro->isVisible(); });
    return chiusa == m_chiuse.rend() ? nullptr : chiusa->dietro;
}

/// Whether \a tasto, a repetition or a release, is that of a key that went down in another window, which comes and
/// goes.
bool TastiDopoDialogo::Estraneo(const QWindow *finestra, const QKeyEvent &tasto)
{
    const auto giu = m_giu.constFind(Tastiera::Identita(tasto));
    const bool chiusa = Passeggera(finestra) && !finestra->isVisible();
    const bool estraneo = giu == m_giu.cend() ? chiusa : giu->passeggera && (giu->finestra != finestra || chiusa);
    if (giu != m_giu.cend() && !tasto.isAutoRepeat())
        m_giu.erase(giu);
    return estraneo;
}

bool TastiDopoDialogo::Tasto(QWindow *finestra, const QKeyEvent &tasto)
{
    const bool chiusa = Passeggera(finestra) && !finestra->isVisible();
    if (tasto.type() == QEvent::KeyPress)
        m_ultimoPremuto.start();
    if (tasto.type() == QEvent::KeyPress && !tasto.isAutoRepeat())
        m_giu.insert(Tastiera::Identita(tasto), {finestra, Passeggera(finestra) && !chiusa});
    else if (Estraneo(finestra, tasto))
        return true;
    // What comes while others wait comes after them.
    if (PrimaDi(chiusa ? nullptr : finestra)) {
        m_restituiti.emplace_back(tasto.clone());
        return true;
    }
    if (!chiusa && m_tasti.empty())
        return false;
    m_tasti.emplace_back(tasto.clone());
    if (!m_gira) {
        m_passato = false;
        Gira();
    }
    return true;
}

// Each round has a timer of its own: one that repeats would stand still while a key's own loop runs.
void TastiDopoDialogo::Gira(int millisecondi)
{
    m_gira = true;
    QTimer::singleShot(millisecondi, this, &TastiDopoDialogo::Consegna);
}

/// The window behind is there, but not on the screen yet, as at the start.
bool TastiDopoDialogo::Verra() const
{
    return std::any_of(m_chiuse.begin(), m_chiuse.end(),
                       [](const Chiusa &c) { return c.dietro && !c.dietro->isVisible(); });
}

/// One key a time: it may open another dialog, which is then where the next one goes.
void TastiDopoDialogo::Consegna()
{
    // The first round may be the last one of the dialog's own loop; what follows the dialog is done before the second.
    if (!std::exchange(m_passato, true)) {
        Gira();
        return;
    }
    if (m_occupato && m_occupato())
        return Gira(Attesa);
    QWidget *finestra = Destinataria();
    if (!finestra && Verra() && m_attese++ < MassimeAttese)
        return Gira(Attesa);
    m_attese = 0;
    const std::unique_ptr<QEvent> tasto = std::move(m_tasti.front());
    m_tasti.pop_front();
    m_gira = false;
    if (!m_tasti.empty())
        Gira();
    if (finestra) {
        QWidget *fuoco = finestra->focusWidget();
        QCoreApplication::sendEvent(fuoco ? fuoco : finestra, tasto.get());
    }
}

/// Whether keys that were given back go before one that was typed in \a finestra now; null: in a window that is gone.
bool TastiDopoDialogo::PrimaDi(const QWindow *finestra) const
{
    if (m_restituiti.empty() || !m_rendeA)
        return false;
    return finestra ? finestra == m_rendeA->windowHandle() : !QApplication::activeModalWidget();
}

void TastiDopoDialogo::Rendi()
{
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget() || (m_occupato && m_occupato())) {
        QTimer::singleShot(Attesa, this, &TastiDopoDialogo::Rendi);
        return;
    }
    const std::unique_ptr<QEvent> tasto = std::move(m_restituiti.front());
    m_restituiti.pop_front();
    if (!m_restituiti.empty())
        QTimer::singleShot(0, this, &TastiDopoDialogo::Rendi);
    if (!m_rendeA)
        return;
    QWidget *fuoco = m_rendeA->focusWidget();
    QCoreApplication::sendEvent(fuoco ? fuoco : m_rendeA.data(), tasto.get());
}

bool TastiDopoDialogo::Risponde(QMessageBox &messaggio, const QKeyEvent &tasto)
{
    if (tasto.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    const QKeySequence lettera(Qt::AltModifier | Qt::Key(tasto.key()));
    for (QAbstractButton *bottone : messaggio.buttons()) {
        if (bottone->isEnabled() && QKeySequence::mnemonic(bottone->text()) == lettera) {
            bottone->click();
            return true;
        }
    }
    return false;
}

bool TastiDopoDialogo::nativeEventFilter(const QByteArray &tipo, void *messaggio, qintptr *)
{
    if (m_chiuse.empty() || tipo != "xcb_generic_event_t")
        return false;
    auto *byte = static_cast<uchar *>(messaggio);
    const uchar cosa = *byte & 0x7F; // the upper bit tells who sent it
    if (cosa == FuocoPreso && byte[PostoModo] != ModoPresa && byte[PostoModo] != ModoRilascio)
        Lascia();
    if (cosa != TastoPremuto && cosa != TastoRilasciato)
        return false;
    quint32 finestra = 0;
    std::memcpy(&finestra, byte + PostoFinestra, sizeof finestra);
    const auto chiusa =
        std::find_if(m_chiuse.begin(), m_chiuse.end(), [&](const Chiusa &c) { return c.id == finestra; });
    const QWidget *verso = chiusa == m_chiuse.end() ? nullptr : Destinataria();
    if (verso && verso->windowHandle()) {
        finestra = quint32(verso->window()->windowHandle()->winId());
        std::memcpy(byte + PostoFinestra, &finestra, sizeof finestra);
    }
    return false;
}
