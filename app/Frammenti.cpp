#include "app/Frammenti.h"

#include "app/Comandi.h"
#include "app/ModuloDichiarazioni.h"
#include "app/TabellaFrammenti.h"
#include "dialogs/FrmImage.h"
#include "dialogs/FrmTabella.h"
#include "dialogs/SceltaFont.h"
#include "dialogs/TestoHtml.h"
#include "platform/RichTextBox.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace
{

constexpr int PrimaFine = 2; // where the check after an insertion starts
const QString FontIniziale = u"Arial"_s;

/// Keeps the control from painting the caret's way to the place of the check and back.
class SenzaRidisegno
{
public:
    explicit SenzaRidisegno(RichTextBox &pad) : m_pad(pad), m_acceso(pad.updatesEnabled()) { m_pad.Ridisegna(false); }
    ~SenzaRidisegno() { m_pad.Ridisegna(m_acceso); }
    Q_DISABLE_COPY_MOVE(SenzaRidisegno)

private:
    RichTextBox &m_pad;
    bool m_acceso;
};

/// What the dialog Finestra leaves behind; empty when it was cancelled.
template <typename Finestra>
QString Chiedi(QWidget *padre)
{
    // On the heap and watched: the owner may go, and the dialog with it, while it is open.
    const QPointer<Finestra> dialogo = new Finestra(padre);
    dialogo->exec();
    delete dialogo.data();
    return ModuloDichiarazioni::Stato().TestoInserimento;
}

} // namespace

Frammenti::Frammenti(RichTextBox *pad, QWidget *finestra) : QObject(finestra), m_pad(pad), m_finestra(finestra) {}

void Frammenti::Collega(Comandi &comandi)
{
    for (const TabellaFrammenti::Frammento &frammento : TabellaFrammenti::Elenco()) {
        const QString comando = frammento.comando.toString();
        comandi.Collega(comando, [this, comando] { InserisciTesto(TabellaFrammenti::Testo(comando)); });
    }
    comandi.Collega(u"MenuCollegamenti(0)"_s, [this] { ScegliImmagine(); });
    comandi.Collega(u"MenuCollegamenti(1)"_s, [this] { ScegliSfondo(); });
    comandi.Collega(u"MenuTabella(0)"_s, [this] { InserisciTabella(); });
    comandi.Collega(u"MFont"_s, [this] { InserisciFont(); });
    comandi.Collega(u"ToolFormat(5)"_s, [this] { RientroRiga(Riduci); });
    comandi.Collega(u"ToolFormat(6)"_s, [this] { RientroRiga(Aumenta); });
}

void Frammenti::InserisciTesto(const QString &testo)
{
    const int inizio = m_pad->SelStart();
    emit InCambiamento();
    m_pad->Sostituisci(inizio, 0, testo);
    const int fine = inizio + int(testo.size());
    m_pad->ImpostaSelStart(fine);
    if (inizio > 1)
        Verifica(inizio, fine);
    emit Cambiato();
    emit AnteprimaRichiesta();
}

void Frammenti::Verifica(int posizione, int dopo)
{
    const SenzaRidisegno sentinella(*m_pad);
    m_pad->ImpostaSelStart(posizione);
    emit VerificaRichiesta(PrimaFine);
    m_pad->ImpostaSelStart(dopo);
}

void Frammenti::InserisciImmagine(const QString &riferimento)
{
    if (const QString testo = TabellaFrammenti::TestoImmagine(riferimento); !testo.isEmpty())
        InserisciTesto(testo);
}

std::optional<Frammenti::Sostituzione> Frammenti::SfondoPagina(QStringView pagina, const QString &immagine)
{
    const QString corpo = u"<BODY"_s;
    const qsizetype trovato = immagine.isEmpty() ? -1 : pagina.indexOf(corpo, 0, Qt::CaseInsensitive);
    if (trovato < 0)
        return std::nullopt;
    return Sostituzione{int(trovato), int(corpo.size()), corpo + TestoHtml::Attributo(u"background", immagine)};
}

void Frammenti::InserisciSfondo(const QString &immagine)
{
    const std::optional<Sostituzione> cambio = SfondoPagina(m_pad->Text(), immagine);
    if (!cambio) {
        InserisciTesto({});
        return;
    }
    emit InCambiamento();
    m_pad->Sostituisci(cambio->da, cambio->quanti, cambio->testo);
    Verifica(cambio->da + 1, cambio->da + int(cambio->testo.size()));
    emit Cambiato();
    emit AnteprimaRichiesta();
}

void Frammenti::ScegliImmagine()
{
    const QPointer<Frammenti> questo(this);
    const QString scelta = Chiedi<FrmImage>(m_finestra);
    if (questo)
        InserisciImmagine(scelta);
}

void Frammenti::ScegliSfondo()
{
    const QPointer<Frammenti> questo(this);
    const QString scelta = Chiedi<FrmImage>(m_finestra);
    if (questo)
        InserisciSfondo(scelta);
}

void Frammenti::InserisciTabella()
{
    const QPointer<Frammenti> questo(this);
    const QString tabella = Chiedi<FrmTabella>(m_finestra);
    if (questo && !tabella.isEmpty())
        InserisciTesto(tabella);
}

void Frammenti::InserisciFont()
{
    const RisultatoFont scelto = ModuloPrincipale::SceltaFont(m_finestra, FontIniziale);
    if (!scelto.annullato)
        InserisciTesto(scelto.TestoHtml());
}

void Frammenti::RientroRiga(quint8 modo)
{
    const int ritorno = m_pad->CercaIndietro(u'\r', m_pad->SelStart());
    if (ritorno < 0)
        return;
    // The last line end of a page read from a file is a CR alone.
    const bool conLf = ritorno + 1 < m_pad->Lunghezza() && m_pad->Unita(ritorno + 1) == u'\n';
    const int inizio = ritorno + (conLf ? 2 : 1);
    m_pad->ImpostaSelStart(inizio);
    if (modo == Aumenta) {
        InserisciTesto(u"\t"_s);
        return;
    }
    if (modo != Riduci || inizio >= m_pad->Lunghezza())
        return;
    if (const QChar primo = m_pad->Unita(inizio); primo != u'\t' && primo != u' ' && primo != u'\n')
        return;
    emit InCambiamento();
    m_pad->Sostituisci(inizio, 1, {});
    emit Cambiato();
    emit AnteprimaRichiesta();
}
