#pragma once

#include "platform/FormatoPagina.h"

#include <QByteArrayView>
#include <QStringView>

/// A page's bytes to its text and back. A page that is read and written without a change gives the same bytes in
/// every encoding, but for line ends that were not CR LF. Bytes that are no text, which a NUL or half a unit of UTF-16
/// tells, keep those too.
namespace Codifiche
{

/// The text of a page whose file holds \a byte: every line followed by CR LF, the very last LF left out. CR LF, a lone
/// CR and a lone LF each end a line; in bytes that are no text they stay as they are. The encoding is that of the byte
/// order mark, else the declared one, else UTF-8, else windows-1252; bytes that are no text in the encoding found are
/// read as windows-1252, in which everything survives. Linear; never fails.
[[nodiscard]] QString TestoDaByte(QByteArrayView byte, FormatoPagina &formato);

/// The bytes of a page: \a testo without one trailing CR, then CR LF, but nothing added to one that was no text; line
/// ends within stay as they are. A declaration
/// in the text that is not the one known to \a formato decides the encoding, \a formato is changed to what was written.
/// \a sostituiti (may be null) is the number of characters that the encoding lacks: they became character references.
[[nodiscard]] QByteArray ByteDaTesto(QStringView testo, FormatoPagina &formato, qsizetype *sostituiti = nullptr);

} // namespace Codifiche
