#pragma once

#include <QStringView>
#include <QString>

/// The names under which pages declare their character encoding.
namespace Codifiche
{

inline constexpr QStringView Utf8 = u"UTF-8";
inline constexpr QStringView Utf16LE = u"UTF-16LE";
inline constexpr QStringView Utf16BE = u"UTF-16BE";
inline constexpr QStringView Windows1252 = u"windows-1252";
inline constexpr QStringView Iso8859_16 = u"ISO-8859-16";
inline constexpr QStringView Iso2022KR = u"ISO-2022-KR";

/// The encoding that browsers use for the label \a etichetta (any case, blanks around it): "latin1" is windows-1252,
/// "gb2312" is GBK. Other labels are looked up in the converter library. Empty for a label that nobody knows and for an
/// encoding in which ASCII text is not written as ASCII bytes, because a page in it could not declare it; UTF-16 alone
/// is given for its labels, callers that have no byte order mark ignore it.
[[nodiscard]] QString NomeCodifica(QStringView etichetta);

/// The name of the library's converter for an encoding that NomeCodifica or AlternativaDi gave.
[[nodiscard]] QByteArray NomeConvertitore(QStringView codifica);

/// A larger encoding under which pages of \a codifica are often published; to be tried when the bytes are no text in
/// \a codifica. Empty when there is none.
[[nodiscard]] QString AlternativaDi(QStringView codifica);

} // namespace Codifiche
