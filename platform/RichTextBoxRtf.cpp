// The control's content as RTF, kept line by line: only lines that changed are written or read anew.

#include "platform/RichTextBox.h"

#include "platform/Confronto.h"
#include "platform/Rtf.h"

#include <algorithm>

namespace
{

constexpr int LunghezzaTratto = 16384; ///< units of text whose RTF is written at once, and the rest of their last line

} // namespace

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

const ContenutoRtf &RichTextBox::ContenutoRTF() const
{
    if (m_rtfDa < 0)
        return m_rtf;
    // One unit more than what changed: a line end may have been joined to or parted from its neighbour.
    const int da = InizioRigaDi(std::max(0, InizioRigaDi(std::min(m_rtfDa, Lunghezza())) - 1));
    const int fine = std::max(da, FineRigaDi(std::min(Lunghezza(), Lunghezza() - m_rtfCoda + 1)));
    const size_t righePrima = size_t(GetLineFromChar(da));
    const size_t righeDopo = fine == Lunghezza() ? 0 : size_t(NumeroRighe() - GetLineFromChar(fine));
    RiscriviRtf(da, fine, righePrima, m_rtf.Righe() - righeDopo);
    m_rtfDa = -1;
    m_rtfCoda = 0;
    return m_rtf;
}

// Piece by piece: the RTF of a large page as one text would be copied, and its memory cleared, several times over.
void RichTextBox::RiscriviRtf(int da, int fine, size_t primaRiga, size_t oltreRiga) const
{
    QString rtf;
    std::vector<int> lunghezze;
    std::vector<quint8> aspetti;
    do {
        const int fineTratto = std::max(da, FineRigaDi(std::max(da, std::min(da + LunghezzaTratto, fine) - 1)));
        const QString testo = Parte(da, fineTratto - da);
        aspetti.resize(size_t(testo.size()) + 1);
        m_aspetti.copy(da, testo.size(), aspetti.data());
        rtf.resize(0);
        lunghezze.clear();
        for (qsizetype i = 0; i < testo.size();) {
            qsizetype j = i;
            while (j < testo.size() && testo[j] != u'\n' && testo[j] != u'\r')
                ++j;
            if (j < testo.size())
                j += testo[j] == u'\r' && j + 1 < testo.size() && testo[j + 1] == u'\n' ? 2 : 1;
            const qsizetype prima = rtf.size();
            Rtf::ScriviRiga(rtf, QStringView(testo).sliced(i, j - i), aspetti.data() + i, m_tabella);
            lunghezze.push_back(int(rtf.size() - prima));
            i = j;
        }
        da = fineTratto;
        // The line after the last line end counts as a line, though nothing stands in it.
        if (da == Lunghezza() && (testo.isEmpty() || testo.back() == u'\n' || testo.back() == u'\r'))
            lunghezze.push_back(0);
        m_rtf.SostituisciRighe(primaRiga, oltreRiga, rtf, lunghezze);
        primaRiga += lunghezze.size();
        oltreRiga = primaRiga;
    } while (da < fine);
}

bool RichTextBox::ImpostaTextRTF(const QString &rtf)
{
    const auto [sinistra, destra] = ContenutoRTF().Confronta(rtf);
    return SostituisciRTF(sinistra, rtf.sliced(sinistra, rtf.size() - sinistra - destra), destra);
}

bool RichTextBox::SostituisciRTF(qsizetype sinistra, const QString &blocco, qsizetype destra)
{
    const ContenutoRtf &attuale = ContenutoRTF();
    const qsizetype lunghezza = attuale.Lunghezza();
    sinistra = std::clamp<qsizetype>(sinistra, 0, lunghezza);
    destra = std::clamp<qsizetype>(destra, 0, lunghezza - sinistra);
    if (blocco.isEmpty() && sinistra + destra == lunghezza)
        return true;

    // Whole lines: from the one in which the block begins to the one in which what follows it goes on.
    const qsizetype inizioDestra = lunghezza - destra;
    if (sinistra >= Rtf::Testata().size() && destra >= Rtf::Coda().size()) {
        const ContenutoRtf::Posto primo = attuale.Riga(sinistra);
        const ContenutoRtf::Posto ultimo = attuale.Riga(inizioDestra);
        const auto contenuto = Rtf::LeggiRighe(attuale.Parte(primo.inizio, sinistra - primo.inizio) + blocco +
                                               attuale.Parte(inizioDestra, ultimo.fine - inizioDestra));
        if (contenuto) {
            const bool finoAllaFine = ultimo.riga + 1 >= attuale.Righe();
            MettiContenuto(InizioRiga(int(primo.riga)), finoAllaFine ? Lunghezza() : InizioRiga(int(ultimo.riga) + 1),
                           *contenuto);
            return true;
        }
    }
    const auto contenuto = Rtf::Leggi(attuale.Parte(0, sinistra) + blocco + attuale.Parte(inizioDestra, destra));
    if (!contenuto)
        return false;
    MettiContenuto(0, Lunghezza(), *contenuto);
    return true;
}

// Replaces a range by what was read. What is equal in text stays; only looks are set there.
void RichTextBox::MettiContenuto(int da, int fine, const Rtf::Contenuto &contenuto)
{
    const QString vecchio = Parte(da, fine - da);
    const QString &nuovo = contenuto.testo;
    qsizetype testa = Confronto::ParteUguale(nuovo, vecchio, false);
    qsizetype piede =
        Confronto::ParteUguale(QStringView(nuovo).sliced(testa), QStringView(vecchio).sliced(testa), true);
    if (testa != nuovo.size() || testa != vecchio.size()) {
        while (testa > 0 && vecchio[testa - 1] == u'\r')
            --testa;
        while (piede > 0 && vecchio[vecchio.size() - piede] == u'\n')
            --piede;
        Sostituisci(da + int(testa), int(vecchio.size() - testa - piede),
                    nuovo.sliced(testa, nuovo.size() - testa - piede));
    }
    for (size_t i = 0; i < contenuto.aspetti.size();) {
        size_t j = i + 1;
        while (j < contenuto.aspetti.size() && contenuto.aspetti[j] == contenuto.aspetti[i])
            ++j;
        m_aspetti.fill(da + qsizetype(i), qsizetype(j - i), m_tabella.Indice(contenuto.aspetti[i]));
        i = j;
    }
    AspettiCambiati(da, int(contenuto.aspetti.size()));
}
