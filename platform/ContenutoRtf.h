#pragma once

#include <memory>
#include <vector>

#include <QString>

/// The RTF of a page, kept in pieces of whole lines that copies share: a copy costs some hundred pointers for 10 MB, a
/// change of one line writes one piece anew, and comparing two contents skips what they share. Positions and lengths
/// count UTF-16 units of the whole RTF, from its header on; lines are those of the text, from 0.
class ContenutoRtf
{
public:
    /// An empty text has one line of no length.
    ContenutoRtf();

    [[nodiscard]] qsizetype Lunghezza() const;
    [[nodiscard]] size_t Righe() const { return m_righe; }

    /// The whole RTF; linear.
    [[nodiscard]] QString Testo() const;
    /// At most \a quanti units from \a da. Linear in what is given, and in the number of pieces.
    [[nodiscard]] QString Parte(qsizetype da, qsizetype quanti) const;

    /// Replaces the lines \a prima .. \a dopo - 1 by \a rtf, whose line k has \a lunghezze[k] units.
    void SostituisciRighe(size_t prima, size_t dopo, const QString &rtf, const std::vector<int> &lunghezze);

    struct Posto {
        size_t riga = 0;
        qsizetype inizio = 0; ///< position of the line's RTF
        qsizetype fine = 0;   ///< position after it
    };
    /// The line that holds the unit at \a posizione; the first or last line for a position in the header or the end.
    [[nodiscard]] Posto Riga(qsizetype posizione) const;

    /// How far two contents agree.
    struct Uguaglianza {
        qsizetype sinistra = 0; ///< length of the common beginning
        qsizetype destra = 0;   ///< length of the common end of what follows it
    };
    [[nodiscard]] static Uguaglianza Confronta(const ContenutoRtf &a, const ContenutoRtf &b);
    /// The same against an RTF as one text; nothing is shared, so it is linear.
    [[nodiscard]] Uguaglianza Confronta(QStringView rtf) const;

    [[nodiscard]] bool operator==(const ContenutoRtf &altro) const;

private:
    struct Pezzo {
        QString rtf;
        std::vector<int> lunghezze; ///< of its lines
    };
    using Pezzi = std::vector<std::shared_ptr<const Pezzo>>;

    /// The piece that holds line \a riga, and how many lines and units stand before it; the end for a line too far.
    struct Dove {
        size_t pezzo = 0;
        size_t righe = 0;
        qsizetype unita = 0;
    };
    [[nodiscard]] Dove Cerca(size_t riga) const;

    Pezzi m_pezzi;
    size_t m_righe = 0;
    qsizetype m_unita = 0; ///< of all pieces
};
