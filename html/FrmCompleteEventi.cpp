// The completion list's keys, and what closes it from outside.

#include "html/FrmComplete.h"

#include "app/Impostazioni.h"
#include "html/Battitura.h"
#include "html/CodaTasti.h"
#include "html/ColoraBattuta.h"
#include "html/ModelloVoci.h"
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
    const QStringView segni = m_modo.valori ? u"\"'>" : u"\"'></";
    if (segni.contains(testo.front()))
        return true;
    // "<!--", "<?", a value such as "#fff" or "../a.png": something else than what the list offers is written.
    return m_prefisso.isEmpty() && !testo.front().isLetterOrNumber() && !testo.front().isSurrogate() &&
           !m_modello->Comincia(testo);
}

bool FrmComplete::AltroNome() const
{
    return !m_prefisso.isEmpty() && !m_modello->Comincia(m_prefisso) && RigaScelta() == m_rigaTenuta;
}

bool FrmComplete::NomeIntero() const
{
    return !m_modello->Intera(m_prefisso).isEmpty() || (m_modo.nomeIntero && m_modo.nomeIntero(m_prefisso));
}

bool FrmComplete::Voluta() const
{
    if (RigaScelta() != m_rigaTenuta)
        return true;
    if (m_modo.chiesta && m_digitati == 0)
        return m_prefisso.isEmpty() || m_modello->Comincia(m_prefisso);
    // Between the user's own quotes stands what the user types.
    return !m_prefisso.isEmpty() && !m_virgoletteProprie && m_modello->Comincia(m_prefisso) && !NomeIntero();
}

void FrmComplete::Lascia()
{
    const QString voce = m_modo.valori ? QString() : m_modello->Intera(m_prefisso);
    const QString nome = voce.isEmpty() ? m_prefisso : Impostazioni::NomeIntero(voce, m_prefisso);
    if (!m_chiusa && nome != m_prefisso && RigaScelta() == m_rigaTenuta) {
        const QScopedValueRollback<bool> scrivo(m_scrivo, true);
        m_editor->Sostituisci(m_editor->SelStart() - int(nome.size()), int(nome.size()), nome);
        ColoraTesto::ColoraBattuta(m_editor);
    }
    Chiudi();
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
        return AltroNome() ? Azione::Lascia : Azione::Conferma;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return Voluta() ? Azione::Conferma : Azione::Lascia;
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
        return Voluta() ? Azione::Conferma : Azione::Lascia;
    return Finisce(tasto.text()) ? Azione::Lascia : Azione::Scrivi;
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
            return EventoTastiera(evento);
        return false;
    default:
        if (!m_chiusa)
            GuardaIntorno(oggetto, evento);
        return false;
    }
}

bool FrmComplete::EventoTastiera(QEvent *evento)
{
    if (m_chiusa) {
        // The caller has not had its turn yet.
        evento->accept();
        if (evento->type() != QEvent::ShortcutOverride)
            m_inAttesa.emplace_back(evento->clone());
        return true;
    }
    if (evento->type() != QEvent::InputMethod && evento->type() != QEvent::ShortcutOverride &&
        CodaTasti::Di(m_editor).Trattiene(*evento)) {
        evento->accept();
        return true;
    }
    if (evento->type() == QEvent::InputMethod)
        return !m_scrivo && TestoComposto(static_cast<QInputMethodEvent *>(evento));
    auto *tasto = static_cast<QKeyEvent *>(evento);
    if (evento->type() == QEvent::KeyPress)
        return TastoPremuto(tasto);
    if (evento->type() == QEvent::ShortcutOverride) {
        // What the list leaves alone may be a shortcut of the window.
        if (AzioneDi(*tasto) == Azione::Lascia && !PrendeVirgoletta(*tasto)) {
            Lascia();
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

// The quote after the one that "=" brought is that one, and the values are still to be chosen from.
bool FrmComplete::PrendeVirgoletta(const QKeyEvent &tasto) const
{
    return tasto.text() == u"\"" && m_modo.valori && m_prefisso.isEmpty() && !m_virgoletteProprie &&
           Battitura::VirgolettaPortata(m_editor);
}

bool FrmComplete::TastoPremuto(QKeyEvent *tasto)
{
    const Azione azione = AzioneDi(*tasto);
    if (PrendeVirgoletta(*tasto)) {
        TastiTrattenuti::Di(m_editor).Premuto(*tasto);
        m_virgoletteProprie = Battitura::PrendiVirgoletta(m_editor);
        return true;
    }
    if (azione == Azione::Lascia || (m_esci && azione != Azione::Esci && azione != Azione::Ignora)) {
        // What the key does in the page is the editor's business.
        Lascia();
        m_inAttesa.emplace_back(tasto->clone());
        return true;
    }
    TastiTrattenuti::Di(m_editor).Premuto(*tasto);
    m_esci = azione == Azione::Esci || (m_esci && azione == Azione::Ignora);
    if (azione == Azione::Conferma)
        ConfermaCon(tasto->text());
    else if (azione == Azione::Cancella)
        Cancella();
    else if (azione == Azione::Naviga)
        Naviga(tasto->key());
    else if (azione == Azione::Scrivi)
        DigitaCarattere(tasto->text());
    return true;
}

void FrmComplete::ConfermaCon(const QString &testo)
{
    Conferma();
    if (m_esito.accettata)
        m_esito.tasto = testo;
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
        const bool scelta = carattere == u"=" || carattere.front() <= u' ';
        const bool finisce = scelta || Finisce(carattere);
        if (scelta && Voluta())
            ConfermaCon(carattere);
        else
            DigitaCarattere(carattere);
        if (finisce)
            Chiudi();
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
