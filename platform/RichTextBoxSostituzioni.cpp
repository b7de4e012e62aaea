// Many replacements as one edit of the control.

#include "platform/RichTextBox.h"

int RichTextBox::SostituisciTutte(const std::vector<int> &posizioni, int lunghezza, const QString &sostituto)
{
    // Each place widened to whole line ends; one that begins inside the one before is left out.
    std::vector<std::pair<int, int>> posti;
    posti.reserve(posizioni.size());
    for (const int posizione : posizioni) {
        const int da = Limita(posizione);
        int fine = int(std::min<qsizetype>(qsizetype(posizione) + lunghezza, Lunghezza()));
        if (Limita(fine) != fine)
            ++fine;
        if ((da < fine || lunghezza == 0) && (posti.empty() || da >= posti.back().second))
            posti.emplace_back(da, fine);
    }
    if (posti.empty())
        return 0;

    const int inizio = posti.front().first;
    const int fine = posti.back().second;
    const QString vecchio = Parte(inizio, fine - inizio);
    std::vector<quint8> aspetti(size_t(fine - inizio));
    m_aspetti.copy(inizio, fine - inizio, aspetti.data());

    QString nuovo;
    std::vector<quint8> nuoviAspetti;
    const size_t attesa = aspetti.size() + posti.size() * size_t(sostituto.size());
    nuovo.reserve(qsizetype(attesa));
    nuoviAspetti.reserve(attesa);
    // New text looks like what it replaces: the character before it may be the end of a tag, in the tag's colour.
    int tenuto = inizio;
    for (const auto &[da, a] : posti) {
        nuovo += QStringView(vecchio).sliced(tenuto - inizio, da - tenuto);
        nuoviAspetti.insert(nuoviAspetti.end(), aspetti.begin() + (tenuto - inizio), aspetti.begin() + (da - inizio));
        nuovo += sostituto;
        nuoviAspetti.insert(nuoviAspetti.end(), size_t(sostituto.size()),
                            lunghezza > 0 ? aspetti[size_t(da - inizio)] : quint8(0));
        tenuto = a;
    }
    Sostituisci(inizio, fine - inizio, nuovo);
    quint8 *posto = m_aspetti.replace(inizio, nuovo.size(), nuovo.size());
    std::copy(nuoviAspetti.begin(), nuoviAspetti.end(), posto);
    AspettiCambiati(inizio, int(nuovo.size()));
    return int(posti.size());
}
