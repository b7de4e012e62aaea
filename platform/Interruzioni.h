#pragma once

#include <vector>

#include <QStringView>

/// The characters that one block break of the editing control stands for.
enum class Interruzione : unsigned char {
    CrLf,          ///< carriage return and line feed: the usual one
    Cr,            ///< a lone carriage return
    Lf,            ///< a lone line feed
    Paragrafo,     ///< U+2029, which the layout cannot hold inside a block
    CorniceAperta, ///< U+FDD0, likewise
    CorniceChiusa, ///< U+FDD1, likewise
    Taglio,        ///< no character: a line too long to lay out is cut into several blocks
};

/// UTF-16 units that \a tipo stands for: 0, 1 or 2.
[[nodiscard]] int UnitaDi(Interruzione tipo);

/// Whether \a tipo ends a line of the page; the others only break the layout.
[[nodiscard]] bool FineRiga(Interruzione tipo);

/// What the block break at \a dove of \a testo stands for, or -1 when no break starts there. A CR LF pair is one break.
[[nodiscard]] int InterruzioneIn(QStringView testo, qsizetype dove);

/// The block breaks of a document, in order. All count as CR LF but the exceptions, which are kept in a sorted list:
/// the usual page has one (its last, lone CR) or none, and sums over it are arithmetic. Lookups are O(log exceptions),
/// changes O(exceptions).
class Interruzioni
{
public:
    void Svuota();

    /// Replaces the breaks \a prima .. \a prima + \a tolte - 1 by \a nuove. Break k ends block k.
    void Sostituisci(int prima, int tolte, const std::vector<Interruzione> &nuove);

    [[nodiscard]] Interruzione Tipo(int interruzione) const;

    /// Units of the breaks 0 .. \a interruzione - 1.
    [[nodiscard]] int UnitaPrima(int interruzione) const;

    /// How many of the breaks 0 .. \a interruzione - 1 end no line.
    [[nodiscard]] int NonRighePrima(int interruzione) const;

private:
    struct Eccezione {
        int dove = 0;
        Interruzione tipo = Interruzione::CrLf;
        int scarto = 0;   ///< units less than two each, up to and including this one
        int nonRighe = 0; ///< breaks that end no line, up to and including this one
    };
    [[nodiscard]] size_t PrimaDa(int interruzione) const;
    void Risomma(size_t da);

    std::vector<Eccezione> m_eccezioni;
};
