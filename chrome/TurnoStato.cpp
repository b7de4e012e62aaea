#include "chrome/TurnoStato.h"

void TurnoStato::Fatto(const QString &testo, Argomento argomento, qint64 ora)
{
    Passa(ora);
    if (!m_fatti.empty())
        m_fatti.back().visto += ora - m_da;
    m_da = ora;
    std::erase_if(m_fatti, [&](const Voce &voce) {
        return argomento == Argomento::Altro ? voce.testo == testo : voce.argomento == argomento;
    });
    if (!testo.isEmpty())
        m_fatti.push_back({.testo = testo, .argomento = argomento});
}

void TurnoStato::Azione(qint64 ora)
{
    Passa(ora);
    if (!m_fatti.empty())
        m_fatti.back().agito = true;
    Passa(ora);
}

void TurnoStato::Passa(qint64 ora)
{
    while (!m_fatti.empty() && m_fatti.back().agito && m_fatti.back().visto + ora - m_da >= Minimo) {
        m_fatti.pop_back();
        m_da = ora; // nobody has seen the next one yet
    }
}

const QString &TurnoStato::Testo(qint64 ora)
{
    Passa(ora);
    return m_fatti.empty() ? m_diPassaggio : m_fatti.back().testo;
}

std::optional<qint64> TurnoStato::Scadenza() const
{
    if (m_fatti.empty() || !m_fatti.back().agito)
        return std::nullopt;
    return m_da + Minimo - m_fatti.back().visto;
}
