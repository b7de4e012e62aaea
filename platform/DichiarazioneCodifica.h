#pragma once

#include <QStringView>
#include <QString>

namespace Codifiche
{

/// As far as a declaration is looked for, in characters from the start of the page.
inline constexpr qsizetype FinestraDichiarazione = qsizetype{64} * 1024;
/// Beyond this many characters the end of the page's head ends the search.
inline constexpr qsizetype FinestraMinima = 4096;

/// The encoding that a page declares for itself: the first META element with "charset" or with
/// "http-equiv=Content-Type" and a content that names a known one, else the "encoding" of an XML declaration at the
/// very start. A declared UTF-16 is passed over: a page whose declaration can be read as ASCII is not in UTF-16. Empty
/// when nothing is declared. Linear, at most FinestraDichiarazione characters are looked at.
[[nodiscard]] QString CodificaDichiarata(QStringView pagina);

} // namespace Codifiche
