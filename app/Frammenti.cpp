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

} // namespace

Frammenti::Frammenti(RichTextBox *pad, QWidget *finestra) : QObject(finestra), m_pad(pad), m_finestra(finestra) {}

void Frammenti::Collega(Comandi &comandi)
{
    for (const TabellaFrammenti::Frammento &frammento : TabellaFrammenti::Elenco()) {
        const QString comando = frammento.comando.toString();
        comandi.Collega(comando, [this, comando] { InserisciTesto(TabellaFrammenti::Testo(comando)); });
    }
    comandi.Collega(u"MenuCollegamenti(0)"_s, [this] { Chiedi<FrmImage>(&Frammenti::InserisciImmagine); });
    comandi.Collega(u"MenuCollegamenti(1)"_s, [this] { Chiedi<FrmImage>(&Frammenti::InserisciSfondo); });
    comandi.Collega(u"MenuTabella(0)"_s, [this] { Chiedi<FrmTabella>(&Frammenti::InserisciTabella); });
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

void Frammenti::InserisciSfondo(const QString &immagine)
{
    const QString corpo = u"<BODY"_s;
    const int inizio = immagine.isEmpty() ? -1 : int(m_pad->Text().indexOf(corpo, 0, Qt::CaseInsensitive));
    if (inizio < 0) {
        InserisciTesto({});
        return;
    }
    const QString testo = corpo + TestoHtml::Attributo(u"background", immagine);
    emit InCambiamento();
    m_pad->Sostituisci(inizio, int(corpo.size()), testo);
    Verifica(inizio + 1, inizio + int(testo.size()));
    emit Cambiato();
    emit AnteprimaRichiesta();
}

void Frammenti::InserisciTabella(const QString &tabella)
{
    if (!tabella.isEmpty())
        InserisciTesto(tabella);
}

template <typename Finestra>
void Frammenti::Chiedi(void (Frammenti::*inserisci)(const QString &))
{
    // Watched, and the dialog on the heap: the owner may go, and both with it, while the dialog is open.
    const QPointer<Frammenti> questo(this);
    const QPointer<Finestra> dialogo = new Finestra(m_finestra);
    dialogo->exec();
    delete dialogo.data();
    if (questo)
        (this->*inserisci)(ModuloDichiarazioni::Stato().TestoInserimento);
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
