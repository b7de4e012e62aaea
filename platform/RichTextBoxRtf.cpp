// The control's content as RTF, kept line by line: only lines that changed are written or read anew.

#include "platform/RichTextBox.h"

#include "platform/Rtf.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <numeric>

void RichTextBox::SegnaRtf(int da, int coda) const
{
    if (m_rtfDa < 0) {
        m_rtfDa = da;
        m_rtfCoda = coda;
    } else {
        m_rtfDa = std::min(m_rtfDa, da);
        m_rtfCoda = std::min(m_rtfCoda, coda);
    }
}

int RichTextBox::InizioRigaDi(int posizione) const
{
    // A CR LF is one line end: a position between the two belongs to the line before.
    if (posizione > 0 && posizione < Lunghezza() && m_testo.at(posizione) == u'\n' &&
        m_testo.at(posizione - 1) == u'\r')
        --posizione;
    while (posizione > 0 && m_testo.at(posizione - 1) != u'\n' && m_testo.at(posizione - 1) != u'\r')
        --posizione;
    return posizione;
}

int RichTextBox::FineRigaDi(int posizione) const
{
    while (posizione < Lunghezza()) {
        const char16_t c = m_testo.at(posizione++);
        if (c == u'\n' || (c == u'\r' && (posizione == Lunghezza() || m_testo.at(posizione) != u'\n')))
            break;
    }
    return posizione;
}

QString RichTextBox::TextRTF() const
{
    const QString testata = Rtf::Testata(m_tabella);
    if (m_rtfDa < 0 && testata == m_rtfTestata)
        return m_rtf;

    int da = 0;
    int fine = Lunghezza();
    size_t righePrima = 0;
    size_t righeDopo = 0;
    if (!m_rtfLunghezze.empty()) {
        da = InizioRigaDi(m_rtfDa < 0 ? 0 : std::min(m_rtfDa, Lunghezza()));
        // One unit more than what changed: a line end may have been joined to or parted from its neighbour.
        da = InizioRigaDi(std::max(0, da - 1));
        fine = m_rtfDa < 0 ? 0 : FineRigaDi(std::min(Lunghezza(), Lunghezza() - m_rtfCoda + 1));
        fine = std::max(fine, da);
        righePrima = size_t(GetLineFromChar(da));
        righeDopo = fine == Lunghezza() ? 0 : size_t(NumeroRighe() - GetLineFromChar(fine));
        if (righePrima + righeDopo > m_rtfLunghezze.size()) {
            da = 0;
            fine = Lunghezza();
            righePrima = righeDopo = 0;
        }
    }

    const QString testo = Parte(da, fine - da);
    std::vector<quint8> aspetti(size_t(fine - da) + 1);
    m_aspetti.copy(da, fine - da, aspetti.data());
    QString nuovo;
    nuovo.reserve(testo.size() + testo.size() / 4 + 64);
    std::vector<int> lunghezze;
    for (qsizetype i = 0; i < testo.size();) {
        qsizetype j = i;
        while (j < testo.size() && testo[j] != u'\n' && testo[j] != u'\r')
            ++j;
        if (j < testo.size())
            j += testo[j] == u'\r' && j + 1 < testo.size() && testo[j + 1] == u'\n' ? 2 : 1;
        const qsizetype prima = nuovo.size();
        Rtf::ScriviRiga(nuovo, QStringView(testo).sliced(i, j - i), aspetti.data() + i, m_tabella);
        lunghezze.push_back(int(nuovo.size() - prima));
        i = j;
    }
    // The line after the last line end counts as a line, though nothing stands in it.
    if (fine == Lunghezza() && (testo.isEmpty() || testo.back() == u'\n' || testo.back() == u'\r'))
        lunghezze.push_back(0);

    const auto fineTesta = m_rtfLunghezze.begin() + qsizetype(righePrima);
    const auto inizioCoda = m_rtfLunghezze.end() - qsizetype(righeDopo);
    const qsizetype inizioRtf = m_rtfTestata.size() + std::accumulate(m_rtfLunghezze.begin(), fineTesta, qsizetype(0));
    const qsizetype toltiRtf = std::accumulate(fineTesta, inizioCoda, qsizetype(0));
    if (m_rtfLunghezze.empty()) {
        m_rtf = testata + nuovo + Rtf::Coda();
    } else {
        m_rtf.replace(inizioRtf, toltiRtf, nuovo);
        if (testata != m_rtfTestata)
            m_rtf.replace(0, m_rtfTestata.size(), testata);
    }
    if (qsizetype(lunghezze.size()) == inizioCoda - fineTesta) {
        std::copy(lunghezze.begin(), lunghezze.end(), m_rtfLunghezze.begin() + qsizetype(righePrima));
    } else {
        const auto posto = m_rtfLunghezze.erase(fineTesta, inizioCoda);
        m_rtfLunghezze.insert(posto, lunghezze.begin(), lunghezze.end());
    }
    m_rtfTestata = testata;
    m_rtfDa = -1;
    m_rtfCoda = 0;
    return m_rtf;
}

bool RichTextBox::ImpostaTextRTF(const QString &rtf)
{
    const QString attuale = TextRTF();
    if (rtf == attuale)
        return true;

    int da = 0;
    int fine = Lunghezza();
    std::optional<Rtf::Contenuto> contenuto;
    const qsizetype testata = m_rtfTestata.size();
    const qsizetype minimo = std::min(rtf.size(), attuale.size());
    if (rtf.startsWith(m_rtfTestata) && rtf.endsWith(Rtf::Coda())) {
        const auto uguali = std::mismatch(rtf.begin(), rtf.begin() + minimo, attuale.begin()).first - rtf.begin();
        qsizetype coda = 0;
        while (coda < minimo - uguali && rtf[rtf.size() - 1 - coda] == attuale[attuale.size() - 1 - coda])
            ++coda;
        // Whole lines: the equal head ends with the line before the first difference, the equal tail begins with a
        // line.
        size_t prima = 0;
        qsizetype inizio = testata;
        while (prima < m_rtfLunghezze.size() && inizio + m_rtfLunghezze[prima] <= uguali)
            inizio += m_rtfLunghezze[prima++];
        if (prima == m_rtfLunghezze.size() && prima > 0)
            inizio -= m_rtfLunghezze[--prima];
        size_t dopo = m_rtfLunghezze.size();
        qsizetype inizioCoda = attuale.size() - Rtf::Coda().size();
        while (dopo > prima + 1 && attuale.size() - (inizioCoda - m_rtfLunghezze[dopo - 1]) <= coda)
            inizioCoda -= m_rtfLunghezze[--dopo];
        const qsizetype fineNuova = rtf.size() - (attuale.size() - inizioCoda);
        if (fineNuova >= inizio) {
            contenuto = Rtf::LeggiRighe(m_rtfTestata, QStringView(rtf).sliced(inizio, fineNuova - inizio));
            da = InizioRiga(int(prima));
            fine = dopo < m_rtfLunghezze.size() ? InizioRiga(int(dopo)) : Lunghezza();
        }
    }
    if (!contenuto) {
        contenuto = Rtf::Leggi(rtf);
        da = 0;
        fine = Lunghezza();
    }
    if (!contenuto)
        return false;

    // What is equal in text stays; only looks are set there.
    const QString vecchio = Parte(da, fine - da);
    const QString &nuovo = contenuto->testo;
    const qsizetype corto = std::min(vecchio.size(), nuovo.size());
    qsizetype testa = std::mismatch(nuovo.begin(), nuovo.begin() + corto, vecchio.begin()).first - nuovo.begin();
    qsizetype piede = 0;
    while (piede < corto - testa && nuovo[nuovo.size() - 1 - piede] == vecchio[vecchio.size() - 1 - piede])
        ++piede;
    const bool cambiato = testa != nuovo.size() || testa != vecchio.size();
    if (cambiato) {
        while (testa > 0 && vecchio[testa - 1] == u'\r')
            --testa;
        while (piede > 0 && vecchio[vecchio.size() - piede] == u'\n')
            --piede;
        Sostituisci(da + int(testa), int(vecchio.size() - testa - piede),
                    nuovo.sliced(testa, nuovo.size() - testa - piede));
    }
    for (size_t i = 0; i < contenuto->aspetti.size();) {
        size_t j = i + 1;
        while (j < contenuto->aspetti.size() && contenuto->aspetti[j] == contenuto->aspetti[i])
            ++j;
        const quint8 indice = m_tabella.Indice(contenuto->aspetti[i]);
        m_aspetti.fill(da + qsizetype(i), qsizetype(j - i), indice);
        i = j;
    }
    AspettiCambiati(da, int(contenuto->aspetti.size()));
    return true;
}
