#pragma once

#include "platform/RegistroAlbero.h"

namespace Registro
{

/// Largest file that is read; a larger one counts as missing.
inline constexpr qint64 MassimoFile = qint64{1} << 20; // bytes

/// Puts the values of a file of administrators into \a albero: UTF-8, one value a line, four fields with tabs between:
/// key, value name, type, data. The key begins with HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER.
///
/// REG_SZ and REG_EXPAND_SZ: the text up to the line's end. REG_DWORD: a decimal number, or 0x and hexadecimal digits.
/// REG_BINARY: two hexadecimal digits a byte, blanks between bytes are allowed. A decimal number in place of the type
/// is that type, with its data as REG_BINARY's; so a text can be written without a terminator. Empty lines, lines that
/// begin with "#" and lines that break a rule are skipped. Linear.
void LeggiRighe(QStringView testo, Albero &albero);

/// The same for the file \a percorso; one that is missing, too large or no regular file adds nothing.
void LeggiFile(const QString &percorso, Albero &albero);

/// The whole of a regular file of at most MassimoFile bytes; empty otherwise.
[[nodiscard]] QByteArray Contenuto(const QString &percorso);

} // namespace Registro
