#include "platform/Aspetto.h"

#include <algorithm>
#include <cstdlib>

QColor ColoreQt(ColoreBgr colore)
{
    return QColor(int(colore & 0xFF), int(colore >> 8 & 0xFF), int(colore >> 16 & 0xFF));
}

TabellaAspetti::TabellaAspetti() : m_aspetti(1) {}

quint8 TabellaAspetti::Indice(const Aspetto &aspetto)
{
    const auto trovato = std::find(m_aspetti.begin(), m_aspetti.end(), aspetto);
    if (trovato != m_aspetti.end())
        return quint8(trovato - m_aspetti.begin());
    if (m_aspetti.size() == 256)
        return PiuVicino(aspetto);
    m_aspetti.push_back(aspetto);
    return quint8(m_aspetti.size() - 1);
}

quint8 TabellaAspetti::PiuVicino(const Aspetto &aspetto) const
{
    const auto distanza = [&aspetto](const Aspetto &altro) {
        int somma = 1000 * (altro.onda != aspetto.onda) + 500 * (altro.grassetto != aspetto.grassetto) +
                    500 * (altro.corsivo != aspetto.corsivo);
        for (int bit = 0; bit < 24; bit += 8)
            somma += std::abs(int(altro.colore >> bit & 0xFF) - int(aspetto.colore >> bit & 0xFF));
        return somma;
    };
    const auto vicino = std::min_element(m_aspetti.begin(), m_aspetti.end(),
                                         [&](const Aspetto &a, const Aspetto &b) { return distanza(a) < distanza(b); });
    return quint8(vicino - m_aspetti.begin());
}
