#include "editor/TastiPagina.h"

#include "app/ModuloDichiarazioni.h"
#include "editor/ModuloColori.h"
#include "html/ContestoTag.h"
#include "html/LetturaTag.h"
#include "html/ModuloCompletamento.h"
#include "html/VerificaSintassi.h"
#include "platform/RichTextBox.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace
{

constexpr int TastoInvio = 13;
constexpr int TastoSpazio = 32;
constexpr int TastoDestra = 39;
constexpr int TastoV = 86;
constexpr int TastoMinore = 226;
constexpr int Ctrl = 2;

} // namespace

TastiPagina::TastiPagina(RichTextBox *pad) : QObject(pad), m_pad(pad)
{
    connect(pad, &RichTextBox::KeyDown, this, &TastiPagina::Premuto);
    connect(pad, &RichTextBox::KeyPress, this, [pad](const char16_t *carattere) {
        if (*carattere == u'>')
            ModuloCompletamento::ChiudiTag(pad);
    });
    connect(pad, &RichTextBox::KeyUp, this, [this](EventoTasto *tasto) { Rilasciato(*tasto); });
    // The "=" that completion inserts counts like a typed one.
    ModuloCompletamento::ImpostaDopoUguale([](RichTextBox *editor) {
        ModuloColori::ControllaTagCorrente(*editor);
        ModuloVerificaSintassi::AggiornaElencoErrori(*editor);
    });
}

void TastiPagina::Premuto(EventoTasto *tasto) const
{
    // Ctrl+Space asks for a list and types nothing.
    if (tasto->codice == TastoSpazio && tasto->shift == Ctrl)
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
    if (ContestoTag::DentroCommento(m_pad) || !ContestoTag::DentroTag(m_pad))
        return;
    const auto [tag, attributo] = ContestoTag::LeggiTagAttributo(m_pad);
    ModuloColori::RegolaColoreBattitura(*m_pad);

    if (tasto.codice == TastoSpazio && tasto.shift == Ctrl) {
        const QPointer<RichTextBox> pad(m_pad);
        ModuloCompletamento::Suggerisci(m_pad, tag, attributo);
        if (pad)
            pad->ImpostaSelLength(0);
    } else if (tasto.codice == TastoSpazio) {
        Spazio(tag);
    } else if (tasto.codice == TastoMinore) {
        Minore(tag, attributo);
    } else if (tasto.codice == TastoV && tasto.shift & Ctrl) {
        ModuloVerificaSintassi::VerificaSintassi(*m_pad, 1, true);
    } else if (tasto.codice == TastoInvio) {
        ModuloColori::ControllaTagCorrente(*m_pad);
    } else if (tasto.codice == TastoDestra) {
        Verifica();
    } else if (tasto.testo == u"-"_s) {
        ModuloColori::RegolaInizioCommento(*m_pad);
    } else if (tasto.testo == u"="_s) {
        Uguale(tag);
    }
}

void TastiPagina::Spazio(const QString &tag)
{
    const QPointer<RichTextBox> pad(m_pad);
    Verifica();
    // Between the quotes of a value a blank is text, and a list there would take the next keys for itself.
    if (!LetturaTag::DentroVirgolette(*m_pad, m_pad->SelStart()))
        ModuloCompletamento::SuggerisciAttributi(m_pad, tag);
    if (pad && ContestoTag::DentroTag(pad))
        ModuloColori::ControllaTagCorrente(*pad);
}

void TastiPagina::Uguale(const QString &tag)
{
    Verifica();
    const QString parola = ContestoTag::ParolaCorrente(m_pad);
    if (!tag.isEmpty() && !parola.isEmpty())
        ModuloCompletamento::SuggerisciValori(m_pad, tag, parola, false);
}

void TastiPagina::Minore(const QString &tag, const QString &attributo)
{
    const QPointer<RichTextBox> pad(m_pad);
    if (!ModuloCompletamento::Suggerisci(m_pad, tag, attributo) || !pad)
        return;
    pad->ImpostaSelText(u" "_s);
    EventoTasto poi;
    poi.codice = TastoSpazio;
    poi.shift = Ctrl;
    Rilasciato(poi);
}
