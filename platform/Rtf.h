#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QString>

#include "platform/Aspetto.h"

/// The editing control's content as Rich Text Format: a header with the colours, then one self-contained RTF line per
/// text line, so that a change of one text line changes one RTF line.
namespace Rtf
{

/// Everything before the first text line: version, font and colours. The same for every content, so that positions in
/// one content keep their meaning in another.
[[nodiscard]] QString Testata();

/// What ends every content.
[[nodiscard]] QString Coda();

/// Appends the RTF of one text line, its line end included, to \a rtf. \a aspetti holds one look per unit of \a riga.
void ScriviRiga(QString &rtf, QStringView riga, const quint8 *aspetti, const TabellaAspetti &tabella);

/// Text and looks read from RTF.
struct Contenuto {
    QString testo;
    std::vector<Aspetto> aspetti; ///< one per unit of the text
};

/// Reads any RTF: unknown words and destinations are passed over, a truncated content gives what stands before the
/// break. Nothing for a text that does not begin as RTF. Linear; nesting is bounded.
[[nodiscard]] std::optional<Contenuto> Leggi(QStringView rtf);

/// Reads text lines as ScriviRiga writes them, without header and end. Nothing when they are not whole lines.
[[nodiscard]] std::optional<Contenuto> LeggiRighe(QStringView righe);

} // namespace Rtf
