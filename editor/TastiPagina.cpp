#include "editor/TastiPagina.h"

#include "app/ModuloDichiarazioni.h"
#include "editor/ModuloColori.h"
#include "html/ContestoTag.h"
#include "html/LetturaTag.h"
#include "html/ModuloCompletamento.h"
#include "html/VerificaSintassi.h"
#include "platform/RichTextBox.h"
#include "platform/Tastiera.h"

#include <QCoreApplication>
#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int TastoInvio = 13;
constexpr int TastoSpazio = 32;
constexpr int TastoDestra = 39;
constexpr int TastoV = 86;
constexpr int TastoMinore = 226;
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
        if (*carattere == u'>')
            ModuloCompletamento::ChiudiTag(pad);
        else if (*carattere == u'"' && ModuloCompletamento::VirgolettaGiaMessa(*pad))
            *carattere = 0;
    });
    connect(pad, &RichTextBox::KeyUp, this, [this](EventoTasto *tasto) { Rilasciato(*tasto); });
    pad->ImpostaRicomincia([pad](int posizione) { return ModuloColori::DopoTag(*pad, posizione); });
    pad->installEventFilter(this);
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
    m_sospeso.reset(tasto.clone());
    QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
    const auto giu = std::exchange(m_giu, {});
    for (auto premuto = giu.begin(); premuto != giu.end() && questo; ++premuto) {
        m_gia.insert(premuto.key());
        Rilasciato(premuto.value());
    }
    if (!questo)
        return false;
    QCoreApplication::removePostedEvents(this, QEvent::User);
    return std::exchange(m_sospeso, nullptr) != nullptr;
}

void TastiPagina::customEvent(QEvent *)
{
    if (const auto tasto = std::exchange(m_sospeso, nullptr))
        QCoreApplication::sendEvent(m_pad, tasto.get());
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
