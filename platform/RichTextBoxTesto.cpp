// The control's text: how it follows the document's, and where its positions lie.

#include "platform/RichTextBox.h"

#include "platform/CambioDocumento.h"
#include "platform/Riempimento.h"

#include <QScopedValueRollback>
#include <QTextBlock>

#include <algorithm>

namespace
{

// A line longer than the first figure is cut into blocks of the second: laying out a block costs in proportion to its
// length at every key, 90 ms for 64,000 characters, and painting goes over all of it, however little is in view.
constexpr int BloccoTroppoLungo = 1024;
constexpr int LunghezzaTaglio = 256;

struct Brano {
    QString perQt;                  ///< the text, with a paragraph separator at each cut
    std::vector<Interruzione> tipi; ///< what its block breaks stand for
};

// A cut must not part a surrogate pair or a mark from its letter.
qsizetype PuntoDiTaglio(QStringView riga, qsizetype dove)
{
    const qsizetype minimo = dove - 64;
    while (dove > minimo && (riga[dove].isLowSurrogate() || riga[dove].isMark()))
        --dove;
    return dove;
}

Brano Dividi(const QString &testo, qsizetype giaNelBlocco)
{
    Brano brano;
    std::vector<qsizetype> tagli;
    const QStringView vista(testo);
    qsizetype inizio = -giaNelBlocco;
    for (qsizetype i = 0; i <= vista.size(); ++i) {
        // All characters that break a block are below U+000E or above U+2028.
        if (i < vista.size() && vista[i].unicode() > u'\r' && vista[i].unicode() < 0x2029)
            continue;
        const int tipo = i < vista.size() ? InterruzioneIn(vista, i) : -1;
        if (i < vista.size() && tipo < 0)
            continue;
        if (i - inizio > BloccoTroppoLungo) {
            while (i - inizio > LunghezzaTaglio) {
                const qsizetype punto = std::max<qsizetype>(inizio, 0) + LunghezzaTaglio;
                if (punto >= i)
                    break;
                inizio = PuntoDiTaglio(vista, punto);
                tagli.push_back(inizio);
                brano.tipi.push_back(Interruzione::Taglio);
            }
        }
        if (tipo >= 0) {
            brano.tipi.push_back(Interruzione(tipo));
            i += tipo == int(Interruzione::CrLf) ? 1 : 0;
            inizio = i + 1;
        }
    }
    if (tagli.empty()) {
        brano.perQt = testo;
        return brano;
    }
    brano.perQt.reserve(testo.size() + qsizetype(tagli.size()));
    qsizetype da = 0;
    for (const qsizetype taglio : tagli) {
        brano.perQt += vista.sliced(da, taglio - da);
        brano.perQt += QChar::ParagraphSeparator;
        da = taglio;
    }
    brano.perQt += vista.sliced(da);
    return brano;
}

} // namespace

QString RichTextBox::Text() const
{
    if (m_revisioneTesto != m_revisione) {
        m_testoIntero = Parte(0, Lunghezza());
        m_revisioneTesto = m_revisione;
    }
    return m_testoIntero;
}

QString RichTextBox::Parte(int da, int quanti) const
{
    da = std::clamp(da, 0, Lunghezza());
    quanti = std::clamp(quanti, 0, Lunghezza() - da);
    QString parte(quanti, Qt::Uninitialized);
    m_testo.copy(da, quanti, reinterpret_cast<char16_t *>(parte.data()));
    return parte;
}

int RichTextBox::CercaIndietro(QChar carattere, int prima) const
{
    for (int i = std::min(prima, Lunghezza()) - 1; i >= 0; --i) {
        if (m_testo.at(i) == carattere.unicode())
            return i;
    }
    return -1;
}

int RichTextBox::CercaAvanti(QChar carattere, int da) const
{
    for (int i = std::max(da, 0); i < Lunghezza(); ++i) {
        if (m_testo.at(i) == carattere.unicode())
            return i;
    }
    return -1;
}

// --- Positions ------------------------------------------------------------------------------------------------------

int RichTextBox::Limita(int posizione) const
{
    posizione = std::clamp(posizione, 0, Lunghezza());
    if (posizione > 0 && posizione < Lunghezza() && m_testo.at(posizione) == u'\n' &&
        m_testo.at(posizione - 1) == u'\r')
        --posizione;
    return posizione;
}

int RichTextBox::InizioBlocco(const QTextBlock &blocco) const
{
    const int numero = blocco.blockNumber();
    return blocco.position() - numero + m_interruzioni.UnitaPrima(numero);
}

int RichTextBox::DaDocumento(int posizioneDocumento) const
{
    const QTextBlock blocco = document()->findBlock(posizioneDocumento);
    return InizioBlocco(blocco) + posizioneDocumento - blocco.position();
}

int RichTextBox::InDocumento(int posizione) const
{
    posizione = Limita(posizione);
    // The last block that starts at or before the position.
    int basso = 0;
    int alto = m_blocchi - 1;
    while (basso < alto) {
        const int mezzo = basso + (alto - basso + 1) / 2;
        if (InizioBlocco(document()->findBlockByNumber(mezzo)) <= posizione)
            basso = mezzo;
        else
            alto = mezzo - 1;
    }
    const QTextBlock blocco = document()->findBlockByNumber(basso);
    return blocco.position() + std::min(posizione - InizioBlocco(blocco), blocco.length() - 1);
}

// --- Changes that the program makes ---------------------------------------------------------------------------------

void RichTextBox::ImpostaText(const QString &testo)
{
    Brano brano = Dividi(testo, 0);
    {
        const QScopedValueRollback<bool> interno(m_interno, true);
        clear();
        Riempi(*document(), brano.perQt);
        MuoviCursore(0, 0);
    }
    const int prima = Lunghezza();
    m_testo.assign(reinterpret_cast<const char16_t *>(testo.utf16()), testo.size());
    m_aspetti.assign(testo.size(), quint8(0));
    m_interruzioni.Svuota();
    m_blocchi = document()->blockCount();
    m_interruzioni.Sostituisci(0, 0, brano.tipi);
    m_battitura.reset();
    ++m_revisione;
    m_testoIntero = testo;
    m_revisioneTesto = m_revisione;
    SegnaRtf(0, 0);
    m_ultimoBlocco = -1;
    emit TestoCambiato(0, prima, Lunghezza());
    AnnunciaCambiamento();
    SelezioneForseCambiata();
}

void RichTextBox::Sostituisci(int da, int quanti, const QString &testo)
{
    da = Limita(da);
    int fine = Limita(int(std::min<qsizetype>(qsizetype(da) + std::max(0, quanti), Lunghezza())));
    QString nuovo = testo;
    // A lone CR that comes to stand before a lone LF makes one line end of the two.
    const auto unita = [this](int dove) { return dove >= 0 && dove < Lunghezza() ? m_testo.at(dove) : u'\0'; };
    const int caretto = da + int(testo.size());
    const char16_t primo = nuovo.isEmpty() ? unita(fine) : nuovo.front().unicode();
    if (unita(da - 1) == u'\r' && primo == u'\n') {
        --da;
        nuovo.prepend(u'\r');
    }
    const char16_t ultimo = nuovo.isEmpty() ? unita(da - 1) : nuovo.back().unicode();
    if (ultimo == u'\r' && unita(fine) == u'\n') {
        ++fine;
        nuovo.append(u'\n');
    }
    if (da == fine && nuovo.isEmpty())
        return;

    QTextCursor cursore(document());
    cursore.setPosition(InDocumento(da));
    const QTextBlock blocco = cursore.block();
    Brano brano = Dividi(nuovo, cursore.position() - blocco.position());
    cursore.setPosition(InDocumento(fine), QTextCursor::KeepAnchor);
    Attesa attesa{
        da, fine, blocco.blockNumber(), cursore.blockNumber() - blocco.blockNumber(), nuovo, std::move(brano.tipi)};
    {
        const QScopedValueRollback<Attesa *> sentinella(m_attesa, &attesa);
        cursore.beginEditBlock();
        cursore.removeSelectedText();
        cursore.insertText(brano.perQt);
        cursore.endEditBlock();
    }
    DopoCambiamento();
    ImpostaSelStart(caretto);
}

void RichTextBox::CambiaTaglio(int posizioneDocumento, bool aggiungi)
{
    const QScopedValueRollback<bool> interno(m_interno, true);
    QTextCursor cursore(document());
    cursore.setPosition(posizioneDocumento);
    const int blocco = cursore.blockNumber();
    if (aggiungi) {
        cursore.insertBlock();
        m_interruzioni.Sostituisci(blocco, 0, {Interruzione::Taglio});
    } else {
        cursore.deletePreviousChar();
        m_interruzioni.Sostituisci(blocco - 1, 1, {});
    }
    m_blocchi = document()->blockCount();
}

// --- Changes that the document reports ------------------------------------------------------------------------------

void RichTextBox::DocumentoCambiato(int da, int tolti, int aggiunti)
{
    Q_UNUSED(tolti);
    if (m_interno)
        return;
    if (m_attesa) {
        Registra(m_attesa->inizio, m_attesa->fine, m_attesa->primaInterruzione, m_attesa->interruzioniTolte,
                 m_attesa->testo, m_attesa->tipi);
        return;
    }
    const QTextDocument *doc = document();
    const int lunghezzaDoc = doc->characterCount() - 1;
    da = std::min(da, lunghezzaDoc);
    const int fineDoc = std::min(da + aggiunti, lunghezzaDoc);
    const QTextBlock primoBlocco = doc->findBlock(da);
    const QTextBlock ultimoBlocco = doc->findBlock(fineDoc);
    const int interruzioniVecchie = m_blocchi - 1;
    const int codaInterruzioni = doc->blockCount() - 1 - ultimoBlocco.blockNumber();

    // What lies before the range and after it is as it was, so the old range follows from the new one.
    CambioDocumento cambio(m_testo, m_interruzioni);
    cambio.inizio = InizioBlocco(primoBlocco) + da - primoBlocco.position();
    cambio.prima = primoBlocco.blockNumber();
    cambio.dopo = interruzioniVecchie - codaInterruzioni;
    const int codaUnita = lunghezzaDoc - fineDoc - codaInterruzioni + m_interruzioni.UnitaPrima(interruzioniVecchie) -
                          m_interruzioni.UnitaPrima(cambio.dopo);
    cambio.fine = Lunghezza() - codaUnita;
    cambio.Restringi(primoBlocco, ultimoBlocco, da, fineDoc);
    Registra(cambio.inizio, cambio.fine, cambio.prima, cambio.dopo - cambio.prima, cambio.nuovo, cambio.tipi);
}

void RichTextBox::Registra(int da, int fine, int primaInterruzione, int interruzioniTolte, QStringView nuovo,
                           const std::vector<Interruzione> &tipi)
{
    m_ultimoBlocco = primaInterruzione;
    m_interruzioni.Sostituisci(primaInterruzione, interruzioniTolte, tipi);
    m_blocchi = document()->blockCount();
    if (da == fine && nuovo.isEmpty())
        return; // only the cut of a long line went, or came
    const quint8 aspetto = AspettoBattitura(da);
    std::copy_n(reinterpret_cast<const char16_t *>(nuovo.utf16()), nuovo.size(),
                m_testo.replace(da, fine - da, nuovo.size()));
    std::fill_n(m_aspetti.replace(da, fine - da, nuovo.size()), nuovo.size(), aspetto);
    SegnaRtf(da, Lunghezza() - da - int(nuovo.size()));
    ++m_revisione;
    emit TestoCambiato(da, fine - da, int(nuovo.size()));
}

void RichTextBox::DopoCambiamento()
{
    if (m_interno || m_attesa)
        return;
    if (m_ultimoBlocco < 0)
        return;
    Normalizza();
    m_ultimoBlocco = -1;
    AnnunciaCambiamento();
    SelezioneForseCambiata();
}

// An input method that composes, or a cut that comes or goes, changes the document but not the text.
void RichTextBox::AnnunciaCambiamento()
{
    if (m_revisioneAnnunciata == m_revisione)
        return;
    m_revisioneAnnunciata = m_revisione;
    emit Change();
}

// Puts the blocks around the last change in order: a CR and a LF that met are one line end, a block grown too long is
// cut, two pieces that fit into one block are joined.
void RichTextBox::Normalizza()
{
    const int primo = std::max(0, m_ultimoBlocco - 1);
    int ultimo = std::min(m_ultimoBlocco + 1, m_blocchi - 1);
    for (int numero = primo; numero <= ultimo && numero < m_blocchi; ++numero) {
        const QTextBlock blocco = document()->findBlockByNumber(numero);
        if (blocco.length() - 1 > BloccoTroppoLungo) {
            const QString testo = blocco.text();
            const qsizetype punto = PuntoDiTaglio(testo, LunghezzaTaglio);
            CambiaTaglio(blocco.position() + int(punto), true);
            ++ultimo;
        } else if (numero + 1 < m_blocchi) {
            const Interruzione tipo = m_interruzioni.Tipo(numero);
            const QTextBlock dopo = blocco.next();
            if (tipo == Interruzione::Taglio && blocco.length() + dopo.length() - 2 <= LunghezzaTaglio) {
                CambiaTaglio(dopo.position(), false);
                --numero;
                --ultimo;
            } else if (tipo == Interruzione::Cr && dopo.length() == 1 && UnisciCrLf(numero)) {
                --ultimo;
            }
        }
    }
}

bool RichTextBox::UnisciCrLf(int blocco)
{
    if (blocco + 2 > m_blocchi - 1 || m_interruzioni.Tipo(blocco + 1) != Interruzione::Lf)
        return false;
    CambiaTaglio(document()->findBlockByNumber(blocco + 1).position(), false);
    m_interruzioni.Sostituisci(blocco, 1, {Interruzione::CrLf});
    return true;
}
