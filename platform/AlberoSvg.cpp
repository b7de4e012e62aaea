#include "platform/AlberoSvg.h"

#include <algorithm>

void AlberoSvg::Apri(qint64 peso)
{
    const int questo = int(m_elementi.size());
    if (!m_aperti.empty())
        m_elementi[size_t(m_aperti.back())].sotto.push_back(questo);
    m_elementi.push_back({.peso = peso, .sotto = {}, .riferiti = {}});
    m_aperti.push_back(questo);
}

void AlberoSvg::Aggiungi(qint64 peso)
{
    if (!m_aperti.empty())
        m_elementi[size_t(m_aperti.back())].peso += peso;
}

void AlberoSvg::Chiama(const QString &id)
{
    m_nomi.insert(id, m_aperti.back());
}

void AlberoSvg::Riferimenti(QStringView valore)
{
    // "#id" on its own, or "url(#id)" anywhere in a style.
    for (qsizetype da = valore.indexOf(u'#'); da >= 0; da = valore.indexOf(u'#', da + 1)) {
        const auto resto = valore.sliced(da + 1);
        const auto fine = std::find_if(resto.cbegin(), resto.cend(), [](QChar c) {
            return c == u')' || c == u'"' || c == u'\'' || c == u';' || c.isSpace();
        });
        if (fine != resto.cbegin())
            m_elementi[size_t(m_aperti.back())].riferiti.push_back(resto.first(fine - resto.cbegin()).toString());
    }
}

void AlberoSvg::Chiudi()
{
    if (!m_aperti.empty())
        m_aperti.pop_back();
}

bool AlberoSvg::Misura(int indice, int livello)
{
    Elemento &elemento = m_elementi[size_t(indice)];
    if (elemento.altezza > 0)
        return true;
    if (elemento.incorso || livello > MassimaAltezza)
        return false;
    elemento.incorso = true;
    for (const int sotto : elemento.sotto) {
        if (!Misura(sotto, livello + 1))
            return false;
        const Elemento &altro = m_elementi[size_t(sotto)];
        elemento.peso += altro.peso;
        elemento.altezza = std::max(elemento.altezza, altro.altezza);
        if (elemento.peso > MassimoLavoro)
            return false;
    }
    elemento.incorso = false;
    return ++elemento.altezza <= MassimaAltezza;
}

std::optional<qint64> AlberoSvg::Lavoro()
{
    if (m_elementi.empty() || !Accettabile())
        return std::nullopt;
    for (Elemento &elemento : m_elementi) {
        for (const QString &nome : elemento.riferiti) {
            if (const auto trovato = m_nomi.constFind(nome); trovato != m_nomi.cend())
                elemento.sotto.push_back(*trovato);
        }
        elemento.riferiti.clear();
    }
    if (!Misura(0, 1))
        return std::nullopt;
    return m_elementi.front().peso;
}
