// The completion list's keys, and what closes it from outside.

#include "html/FrmComplete.h"

#include "html/ModelloVoci.h"
#include "html/ModuloCompletamento.h"
#include "html/TastiTrattenuti.h"
#include "platform/RichTextBox.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QListView>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace
{

bool Scrivibile(QStringView testo)
{
    return !testo.isEmpty() && testo.front() > u' ' && (testo.front().isPrint() || testo.front().isSurrogate());
}

} // namespace

bool FrmComplete::Finisce(QStringView testo) const
{
    if (testo == u"\"" || testo == u">")
        return true;
    // "<!--", "</", "<?", a value such as "#fff" or "../a.png": something else than what the list offers is written.
    return m_prefisso.isEmpty() && !testo.front().isLetterOrNumber() && !testo.front().isSurrogate() &&
           !m_modello->Comincia(testo);
}

bool FrmComplete::AltroNome() const
{
    return !m_prefisso.isEmpty() && !m_modello->Comincia(m_prefisso) && RigaScelta() == m_rigaTenuta;
}

FrmComplete::Azione FrmComplete::AzioneDi(const QKeyEvent &tasto) const
{
    // Ctrl and Alt together are AltGr on some hosts, and type.
    const bool ctrl = tasto.modifiers() & Qt::ControlModifier;
    const bool alt = tasto.modifiers() & Qt::AltModifier;
    const bool comando = ctrl != alt || tasto.modifiers() & Qt::MetaModifier;
    switch (tasto.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Azione::Conferma;
    case Qt::Key_Space:
        return AltroNome() ? Azione::Lascia : Azione::Conferma;
    case Qt::Key_Escape:
        return Azione::Esci;
    case Qt::Key_Backspace:
        return comando ? Azione::Lascia : Azione::Cancella;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        return comando ? Azione::Lascia : Azione::Naviga;
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
    case Qt::Key_Mode_switch:
    case Qt::Key_Multi_key:
    case Qt::Key_unknown:
    case 0:
        return Azione::Ignora;
    default:
        break;
    }
    if (tasto.key() >= Qt::Key_Dead_Grave && tasto.key() <= Qt::Key_Dead_Longsolidusoverlay)
        return Azione::Ignora;
    if (comando || !Scrivibile(tasto.text()))
        return Azione::Lascia;
    if (tasto.text() == u"=")
        return AltroNome() ? Azione::Lascia : Azione::Conferma;
    return Finisce(tasto.text()) ? Azione::Finisci : Azione::Scrivi;
}

bool FrmComplete::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (m_editor.isNull() || !m_ciclo)
        return QFrame::eventFilter(oggetto, evento);
    switch (evento->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
        if (oggetto == m_oggettoEditor || DiQuestaLista(oggetto))
            return EventoTastiera(oggetto, evento);
        return false;
    default:
        if (!m_chiusa)
            GuardaIntorno(oggetto, evento);
        return false;
    }
}

bool FrmComplete::EventoTastiera(QObject *oggetto, QEvent *evento)
{
    if (m_chiusa) {
        // The caller has not had its turn yet.
        evento->accept();
        if (evento->type() != QEvent::ShortcutOverride)
            m_inAttesa.emplace_back(evento->clone());
        return true;
    }
    if (evento->type() == QEvent::InputMethod)
        return !m_scrivo && TestoComposto(static_cast<QInputMethodEvent *>(evento));
    auto *tasto = static_cast<QKeyEvent *>(evento);
    if (evento->type() == QEvent::KeyPress)
        return TastoPremuto(oggetto, tasto);
    if (evento->type() == QEvent::ShortcutOverride) {
        // What the list leaves alone may be a shortcut of the window.
        if (AzioneDi(*tasto) == Azione::Lascia) {
            Chiudi();
            return false;
        }
        evento->accept();
        return true;
    }
    TastiTrattenuti::Di(m_editor).Rilasciato(*tasto);
    if (tasto->key() == Qt::Key_Escape && !tasto->isAutoRepeat())
        Chiudi();
    return true;
}

bool FrmComplete::TastoPremuto(QObject *oggetto, QKeyEvent *tasto)
{
    const Azione azione = AzioneDi(*tasto);
    if (azione == Azione::Lascia || (m_esci && azione != Azione::Esci && azione != Azione::Ignora) ||
        (azione == Azione::Finisci && tasto->text() == u">")) {
        // ">" typed in the page also closes the tag, which is the editor's business.
        Chiudi();
        m_inAttesa.emplace_back(tasto->clone());
        return true;
    }
    if (azione == Azione::Naviga) {
        if (oggetto == m_elenco)
            return false;
        QCoreApplication::sendEvent(m_elenco, tasto);
        TastiTrattenuti::Di(m_editor).Premuto(*tasto);
        return true;
    }
    TastiTrattenuti::Di(m_editor).Premuto(*tasto);
    if (tasto->text() == u"\"" && ModuloCompletamento::VirgolettaGiaMessa(*m_editor))
        return true;
    m_esci = azione == Azione::Esci || (m_esci && azione == Azione::Ignora);
    if (azione == Azione::Conferma)
        ConfermaCon(tasto->text());
    else if (azione == Azione::Cancella)
        Cancella();
    else if (azione == Azione::Scrivi || azione == Azione::Finisci)
        ScriviOFinisci(tasto->text());
    return true;
}

void FrmComplete::ConfermaCon(QStringView testo)
{
    Conferma();
    m_esito.uguale = m_esito.accettata && testo == u"=";
}

void FrmComplete::ScriviOFinisci(const QString &carattere)
{
    const bool finisce =
        Finisce(carattere); // asked before the character belongs to what the entries are matched against
    DigitaCarattere(carattere);
    if (finisce)
        Chiudi();
}

bool FrmComplete::TestoComposto(QInputMethodEvent *evento)
{
    const QString &testo = evento->commitString();
    if (testo.isEmpty() || evento->replacementLength() != 0)
        return false;
    {
        // What was being composed goes from the editor's line; the text itself takes the way of typed keys.
        const QScopedValueRollback<bool> scrivo(m_scrivo, true);
        QInputMethodEvent resto(evento->preeditString(), evento->attributes());
        QCoreApplication::sendEvent(m_editor, &resto);
    }
    for (qsizetype i = 0; i < testo.size() && !m_chiusa; ++i) {
        const QString carattere = testo.mid(i, testo[i].isHighSurrogate() ? 2 : 1);
        i += carattere.size() - 1;
        if (carattere != u"=" && carattere.front() > u' ') {
            ScriviOFinisci(carattere);
        } else if (AltroNome()) {
            DigitaCarattere(carattere);
            Chiudi();
        } else {
            ConfermaCon(carattere);
        }
    }
    return true;
}

bool FrmComplete::DiQuestaLista(const QObject *oggetto) const
{
    for (; oggetto; oggetto = oggetto->parent()) {
        if (oggetto == this)
            return true;
    }
    return false;
}

void FrmComplete::GuardaIntorno(QObject *oggetto, QEvent *evento)
{
    const bool finestra = oggetto == m_oggettoFinestra;
    switch (evento->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::NonClientAreaMouseButtonPress:
        if (oggetto->isWidgetType() && !DiQuestaLista(oggetto))
            Chiudi();
        break;
    case QEvent::FocusOut:
        if (oggetto == m_oggettoEditor)
            Chiudi();
        break;
    case QEvent::WindowDeactivate:
        if (finestra)
            Chiudi();
        break;
    case QEvent::Hide:
    case QEvent::Close:
    case QEvent::Move:
    case QEvent::Resize:
        if (finestra || oggetto == m_oggettoEditor)
            Chiudi();
        break;
    default:
        break;
    }
}
