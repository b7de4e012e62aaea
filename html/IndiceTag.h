#pragma once

#include <QList>

#include <vector>

#include "html/DatiTag.h"
#include "html/TabellaParole.h"

namespace ModuloTag
{

/// Answers the questions about a table of tags in time that does not depend on the table's size. It holds no reference
/// to the table: when that changes, build the index anew.
class IndiceTag
{
public:
    IndiceTag() = default;
    /// Linear in the number of attributes and values of \a tabella.
    explicit IndiceTag(const QList<DatiTag> &tabella);

    /// The slot that a binary search for the upper case of \a nome finds, or 0.
    [[nodiscard]] int Tag(QStringView nome) const;
    /// See ModuloTag::VerificaAttributo and VerificaValore.
    [[nodiscard]] quint8 VerificaAttributo(QStringView tag, QStringView attributo) const;
    [[nodiscard]] quint8 VerificaValore(QStringView tag, QStringView attributo, QStringView valore) const;

private:
    /// Numbers by pairs of numbers, both from 0.
    class Coppie
    {
    public:
        static constexpr int Assente = -1;
        /// The number of the pair; a new pair takes the next one.
        int Aggiungi(int a, int b);
        [[nodiscard]] int Cerca(int a, int b) const;
        /// Makes room for \a coppie pairs.
        void Allarga(size_t coppie);

    private:
        struct Posto {
            quint64 chiave = 0;
            int numero = Assente;
        };
        [[nodiscard]] size_t PrimoPosto(quint64 chiave) const;
        std::vector<Posto> m_posti; ///< a power of two, at most half of them taken
        int m_quante = 0;
    };

    TabellaParole m_tag;        ///< stored names that the binary search finds
    std::vector<int> m_caselle; ///< slot of each of them
    TabellaParole m_attributi;  ///< names on any tag
    TabellaParole m_valori;
    Coppie m_proprieta;         ///< (slot of the tag, attribute)
    std::vector<char> m_liberi; ///< by pair of m_proprieta: any value is allowed
    Coppie m_ammessi;           ///< (pair of m_proprieta, value)
};

} // namespace ModuloTag
