#include "html/TabellaParole.h"

#include <algorithm>
#include <utility>

namespace ModuloTag
{
namespace
{

constexpr quint32 Seme = 2166136261u;

[[nodiscard]] constexpr quint32 Mescola(quint32 impronta, char16_t unita)
{
    return (impronta ^ unita) * 16777619u;
}

// The last product leaves the low bits, which choose the place, weak.
[[nodiscard]] constexpr quint32 Chiudi(quint32 impronta)
{
    return impronta ^ (impronta >> 15);
}

[[nodiscard]] constexpr char16_t Alza(char16_t unita)
{
    return unita >= u'a' && unita <= u'z' ? char16_t(unita - 32) : unita;
}

[[nodiscard]] quint32 Impronta(QStringView maiuscola)
{
    quint32 impronta = Seme;
    for (const QChar c : maiuscola)
        impronta = Mescola(impronta, c.unicode());
    return Chiudi(impronta);
}

} // namespace

int TabellaParole::Aggiungi(const QString &maiuscola)
{
    if (const int numero = CercaMaiuscola(maiuscola); numero != Assente)
        return numero;
    if (m_posti.size() < size_t(m_parole.size() + 1) * 2)
        Allarga();
    const quint32 impronta = Impronta(maiuscola);
    size_t posto = impronta & (m_posti.size() - 1);
    while (m_posti[posto].numero != Assente)
        posto = (posto + 1) & (m_posti.size() - 1);
    const int numero = int(m_parole.size());
    m_posti[posto] = {impronta, numero};
    m_parole += maiuscola;
    m_massimo = std::max(m_massimo, maiuscola.size());
    return numero;
}

int TabellaParole::Cerca(QStringView parola) const
{
    // Upper-casing never makes one unit out of more than two, so what is longer than this is no word of the table.
    if (m_posti.empty() || parola.size() > m_massimo * 2)
        return Assente;
    quint32 impronta = Seme;
    for (const QChar c : parola) {
        if (c.unicode() >= 0x80) {
            // Upper-casing a temporary works in place, and Qt then trips over a lone surrogate behind a ligature.
            const QString testo = parola.toString();
            return CercaMaiuscola(testo.toUpper());
        }
        impronta = Mescola(impronta, Alza(c.unicode()));
    }
    impronta = Chiudi(impronta);
    const auto uguale = [parola](const QString &voce) {
        if (voce.size() != parola.size())
            return false;
        for (qsizetype i = 0; i < parola.size(); ++i) {
            if (voce[i].unicode() != Alza(parola[i].unicode()))
                return false;
        }
        return true;
    };
    for (size_t posto = impronta & (m_posti.size() - 1);; posto = (posto + 1) & (m_posti.size() - 1)) {
        const Posto &p = m_posti[posto];
        if (p.numero == Assente || (p.impronta == impronta && uguale(m_parole[p.numero])))
            return p.numero;
    }
}

int TabellaParole::CercaMaiuscola(QStringView maiuscola) const
{
    if (m_posti.empty())
        return Assente;
    const quint32 impronta = Impronta(maiuscola);
    for (size_t posto = impronta & (m_posti.size() - 1);; posto = (posto + 1) & (m_posti.size() - 1)) {
        const Posto &p = m_posti[posto];
        if (p.numero == Assente || (p.impronta == impronta && m_parole[p.numero] == maiuscola))
            return p.numero;
    }
}

void TabellaParole::Allarga()
{
    const std::vector<Posto> vecchi =
        std::exchange(m_posti, std::vector<Posto>(std::max<size_t>(64, m_posti.size() * 2)));
    for (const Posto &p : vecchi) {
        if (p.numero == Assente)
            continue;
        size_t posto = p.impronta & (m_posti.size() - 1);
        while (m_posti[posto].numero != Assente)
            posto = (posto + 1) & (m_posti.size() - 1);
        m_posti[posto] = p;
    }
}

} // namespace ModuloTag
