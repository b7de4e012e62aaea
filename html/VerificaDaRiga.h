#pragma once

#include <QJsonArray>
#include <QString>

/// The check of the command line. Uses no widget and no display.
namespace VerificaDaRiga
{

/// Checks the page \a testo and gives one line a finding, each with its line feed: \a file, ":" and the message, as
/// NomiFile::Leggibile writes them. Unlike the check of an opened page it looks at a tag with which the page begins,
/// too. Empty without findings. Linear in the page.
[[nodiscard]] QString InRighe(const QString &file, const QString &testo);

/// The same as JSON objects, with every text as it is: file, line and column (from 1), position (from 0, UTF-16 units),
/// type (1 unknown tag, 2 attribute, 3 value), name, message.
[[nodiscard]] QJsonArray InJson(const QString &file, const QString &testo);

} // namespace VerificaDaRiga
