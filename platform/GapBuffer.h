#pragma once

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <vector>

#include <QtGlobal>

/// A sequence of plain values with a gap at the place of the last change: edits close to each other cost what they
/// change, not the length of the sequence. Positions are 0-based; out-of-range arguments are the caller's fault.
template <typename T>
class GapBuffer
{
    static_assert(std::is_trivially_copyable_v<T>);

public:
    [[nodiscard]] qsizetype size() const { return qsizetype(m_dati.size()) - Buco(); }
    [[nodiscard]] T at(qsizetype i) const { return m_dati[size_t(i < m_inizio ? i : i + Buco())]; }

    void assign(const T *valori, qsizetype quanti)
    {
        m_dati.assign(valori, valori + quanti);
        m_inizio = m_fine = quanti;
    }
    void assign(qsizetype quanti, T valore)
    {
        m_dati.assign(size_t(quanti), valore);
        m_inizio = m_fine = quanti;
    }

    /// Takes away \a tolti values from \a dove and makes room for \a aggiunti; the caller fills the room returned.
    [[nodiscard]] T *replace(qsizetype dove, qsizetype tolti, qsizetype aggiunti)
    {
        SpostaBuco(dove);
        m_fine += tolti;
        if (Buco() < aggiunti)
            Allarga(aggiunti);
        T *posto = m_dati.data() + m_inizio;
        m_inizio += aggiunti;
        return posto;
    }

    void copy(qsizetype da, qsizetype quanti, T *verso) const
    {
        const qsizetype prima = std::clamp<qsizetype>(m_inizio - da, 0, quanti);
        if (prima > 0)
            std::memcpy(verso, m_dati.data() + da, size_t(prima) * sizeof(T));
        if (quanti > prima)
            std::memcpy(verso + prima, m_dati.data() + da + prima + Buco(), size_t(quanti - prima) * sizeof(T));
    }

    void fill(qsizetype da, qsizetype quanti, T valore)
    {
        const qsizetype prima = std::clamp<qsizetype>(m_inizio - da, 0, quanti);
        std::fill_n(m_dati.data() + da, prima, valore);
        if (quanti > prima)
            std::fill_n(m_dati.data() + da + prima + Buco(), quanti - prima, valore);
    }

private:
    [[nodiscard]] qsizetype Buco() const { return m_fine - m_inizio; }

    void SpostaBuco(qsizetype dove)
    {
        if (dove < m_inizio)
            std::memmove(m_dati.data() + dove + Buco(), m_dati.data() + dove, size_t(m_inizio - dove) * sizeof(T));
        else if (dove > m_inizio)
            std::memmove(m_dati.data() + m_inizio, m_dati.data() + m_fine, size_t(dove - m_inizio) * sizeof(T));
        m_fine += dove - m_inizio;
        m_inizio = dove;
    }

    void Allarga(qsizetype serve)
    {
        const qsizetype coda = qsizetype(m_dati.size()) - m_fine;
        // An eighth of slack: a growing text is copied a bounded number of times, and memory stays near the text's
        // size.
        const qsizetype nuova = m_inizio + coda + serve + std::max<qsizetype>(4096, (m_inizio + coda) / 8);
        const qsizetype vecchia = qsizetype(m_dati.size());
        m_dati.resize(size_t(nuova));
        std::memmove(m_dati.data() + nuova - coda, m_dati.data() + vecchia - coda, size_t(coda) * sizeof(T));
        m_fine = nuova - coda;
    }

    std::vector<T> m_dati;
    qsizetype m_inizio = 0; ///< first place of the gap
    qsizetype m_fine = 0;   ///< first place after the gap
};
