#pragma once

#include <QString>

/// Text that goes into a page.
namespace TestoHtml
{

/// An attribute of a tag with a blank before it. A double quote in \a valore, which would end it, is written as
/// "&quot;"; the rest stands as it is.
[[nodiscard]] QString Attributo(QStringView nome, QString valore);

} // namespace TestoHtml
