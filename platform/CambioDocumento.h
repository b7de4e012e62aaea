#pragma once

#include "platform/GapBuffer.h"
#include "platform/Interruzioni.h"

#include <vector>

#include <QString>

class QTextBlock;

/// A change that Qt's document reports, as ranges of the old text and its block breaks and as what takes their place.
/// The document reports more than what changed; Restringi leaves out what is equal at both ends, so that it keeps its
/// looks and what its breaks stand for. Positions are UTF-16 units of the old text.
class CambioDocumento
{
public:
    /// The change lies in the whole of \a testo and \a interruzioni, as they were; both must outlive this.
    CambioDocumento(const GapBuffer<char16_t> &testo, const Interruzioni &interruzioni);

    /// Reads what stands now in the document, from \a daDoc in \a primo to \a aDoc in \a ultimo, and narrows the
    /// ranges, which the caller has set. Linear in the old and the new range.
    void Restringi(const QTextBlock &primo, const QTextBlock &ultimo, int daDoc, int aDoc);

    int inizio = 0;                 ///< the old range: from here
    int fine = 0;                   ///< to before this
    int prima = 0;                  ///< the old breaks in it: from this one
    int dopo = 0;                   ///< to before this one
    QString nuovo;                  ///< what takes the place of the old range
    std::vector<Interruzione> tipi; ///< what the breaks in it stand for

private:
    [[nodiscard]] qsizetype SaltaUguali(QStringView pezzo);
    [[nodiscard]] bool SaltaInterruzione();
    [[nodiscard]] bool TogliInterruzione();
    void TogliCoda();
    [[nodiscard]] bool StaIn(Interruzione tipo, int dove) const;

    const GapBuffer<char16_t> &m_testo;
    const Interruzioni &m_interruzioni;
    std::vector<qsizetype> m_inizi; ///< where each break stands in the new text
};
