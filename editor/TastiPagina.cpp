#include "editor/TastiPagina.h"

#include "app/Impostazioni.h"
#include "app/ModuloDichiarazioni.h"
#include "editor/ModuloColori.h"
#include "editor/RientroRighe.h"
#include "chrome/FrmAdvTooltip.h"
#include "html/Battitura.h"
#include "html/CodaTasti.h"
#include "html/ColoraBattuta.h"
#include "html/ContestoTag.h"
#include "html/ModuloCompletamento.h"
#include "html/Portati.h"
#include "html/VerificaSintassi.h"
#include "platform/RichTextBox.h"
#include "platform/Tastiera.h"

#include <QPointer>

#include <utility>

using LetturaTag::Luogo;
using LetturaTag::Stato;
using namespace Qt::StringLiterals;

namespace
{

constexpr int TastoTab = 9;
constexpr int TastoInvio = 13;
constexpr int TastoSpazio = 32;
constexpr int TastoDestra = 39;
constexpr int TastoV = 86;
constexpr int TastoMinore = 226;
constexpr int Maiuscolo = 1;
constexpr int Ctrl = 2;

bool Modificatore(int tasto)
{
    return (tasto >= Qt::Key_Shift && tasto <= Qt::Key_ScrollLock) || tasto == Qt::Key_AltGr;
}

} // namespace

TastiPagina::TastiPagina(RichTextBox *pad) : QObject(pad), m_pad(pad)
{
    connect(pad, &RichTextBox::KeyDown, this, &TastiPagina::Premuto);
    connect(pad, &RichTextBox::KeyPress, this, [pad](char16_t *carattere) {
        if (!Battitura::Prima(pad, *carattere))
            *carattere = 0;
    });
    connect(pad, &RichTextBox::KeyUp, this, [this](EventoTasto *tasto) { Rilasciato(*tasto); });
    pad->ImpostaRicomincia([pad](int posizione) { return ModuloColori::Ricomincia(*pad, posizione); });
    pad->installEventFilter(this);
    (void)CodaTasti::Di(pad); // sees the keys first, and keeps their order
    // The "=" that completion inserts counts like a typed one.
    ModuloCompletamento::ImpostaDopoUguale([](RichTextBox *editor) {
        ModuloColori::ControllaTagCorrente(*editor);
        ModuloVerificaSintassi::AggiornaElencoErrori(*editor);
    });
}

bool TastiPagina::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (evento->type() == QEvent::FocusOut) {
        m_giu.clear();
        m_gia.clear();
    }
    if (evento->type() != QEvent::KeyPress && evento->type() != QEvent::KeyRelease)
        return QObject::eventFilter(oggetto, evento);
    const auto &tasto = static_cast<const QKeyEvent &>(*evento);
    if (tasto.isAutoRepeat() || Modificatore(tasto.key()))
        return false;
    // A hint is for the moment: it goes with the next key.
    if (evento->type() == QEvent::KeyPress && FrmAdvTooltip::Corrente())
        FrmAdvTooltip::Corrente()->close();
    const quint64 identita = Tastiera::Identita(tasto);
    if (evento->type() == QEvent::KeyRelease) {
        m_giu.remove(identita);
        return m_gia.remove(identita);
    }
    if (!m_giu.isEmpty() && !PrimaIlRilascio(tasto)) {
        evento->accept();
        return true;
    }
    m_gia.remove(identita);
    m_giu.insert(identita, Tastiera::DaQt(tasto));
    return false;
}

// False when a list that the release opened has taken the key that was pressed after it.
bool TastiPagina::PrimaIlRilascio(const QKeyEvent &tasto)
{
    const QPointer<TastiPagina> questo(this);
    const QPointer<RichTextBox> pad(m_pad);
    const quint64 numero = CodaTasti::Di(pad).Anteponi(tasto);
    const auto giu = std::exchange(m_giu, {});
    for (auto premuto = giu.begin(); premuto != giu.end() && questo; ++premuto) {
        m_gia.insert(premuto.key());
        Rilasciato(premuto.value());
    }
    return questo && pad && CodaTasti::Di(pad).Riprendi(numero);
}

void TastiPagina::Premuto(EventoTasto *tasto) const
{
    // Ctrl+Space asks for a list and types nothing.
    if (tasto->codice == TastoSpazio && tasto->shift == Ctrl)
        tasto->codice = 0;
    if (tasto->codice != TastoTab || tasto->shift & ~Maiuscolo || !Impostazioni::Rientri())
        return;
    if (tasto->shift == Maiuscolo)
        RientroRighe::Riduci(*m_pad);
    else if (RientroRighe::PiuRighe(*m_pad))
        RientroRighe::Aumenta(*m_pad);
    else
        return;
    tasto->codice = 0;
}

void TastiPagina::Verifica() const
{
    ModuloColori::ControllaTagCorrente(*m_pad);
    ModuloVerificaSintassi::AggiornaElencoErrori(*m_pad);
}

void TastiPagina::Rilasciato(const EventoTasto &tasto)
{
    if (ModuloDichiarazioni::Stato().ControlloInCorso)
        return;
    if (tasto.codice == TastoInvio || tasto.codice == TastoSpazio)
        emit AnteprimaRichiesta(false);
    if (tasto.testo == u"-"_s)
        ModuloColori::RegolaInizioCommento(*m_pad);
    const Luogo luogo = ContestoTag::LuogoDi(m_pad);
    if (!luogo.InTag())
        return;
    ModuloColori::RegolaColoreBattitura(*m_pad);

    if (tasto.codice == TastoSpazio && tasto.shift == Ctrl) {
        const QPointer<RichTextBox> pad(m_pad);
        ModuloCompletamento::Suggerisci(m_pad, true);
        if (pad)
            pad->ImpostaSelLength(0);
    } else if (tasto.codice == TastoSpazio) {
        Spazio(luogo);
    } else if (tasto.codice == TastoMinore) {
        Minore(luogo);
    } else if (tasto.codice == TastoV && tasto.shift & Ctrl) {
        ModuloVerificaSintassi::VerificaSintassi(*m_pad, 1, true);
    } else if (tasto.codice == TastoInvio) {
        ModuloColori::ControllaTagCorrente(*m_pad);
    } else if (tasto.codice == TastoDestra) {
        Verifica();
    } else if (tasto.testo == u"="_s && luogo.stato == Stato::Uguale) {
        Uguale(luogo);
    } else if (!tasto.testo.isEmpty() && !(tasto.shift & Ctrl)) {
        ColoraTesto::ColoraBattuta(m_pad, luogo);
    }
}

void TastiPagina::Spazio(const Luogo &luogo)
{
    if (luogo.nome.isEmpty())
        return;
    const QPointer<RichTextBox> pad(m_pad);
    Verifica();
    // Between the quotes of a value a blank is text, and a list there would take the next keys for itself.
    if (luogo.InTagIniziale() && (luogo.stato == Stato::Fuori || luogo.stato == Stato::Attributo))
        ModuloCompletamento::SuggerisciAttributi(m_pad, luogo.nome);
    if (pad && ContestoTag::LuogoDi(pad).InTag())
        ModuloColori::ControllaTagCorrente(*pad);
}

void TastiPagina::Uguale(const Luogo &luogo)
{
    Verifica();
    if (!luogo.chiusura)
        ModuloCompletamento::SuggerisciValori(m_pad, luogo.nome, luogo.attributo, false);
}

void TastiPagina::Minore(const Luogo &luogo)
{
    const QPointer<RichTextBox> pad(m_pad);
    if (luogo.stato != Stato::Nome || luogo.chiusura || !ModuloCompletamento::Suggerisci(m_pad, false) || !pad)
        return;
    const QString nome = ContestoTag::LuogoDi(pad).nome;
    Portati::Di(pad).Metti(Portati::Genere::Spazio, u" "_s);
    pad->ImpostaSelStart(pad->SelStart() + 1);
    ModuloColori::RegolaColoreBattitura(*pad);
    ModuloCompletamento::SuggerisciAttributi(pad, nome);
}
