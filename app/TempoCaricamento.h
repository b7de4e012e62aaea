#pragma once

#include <QLocale>
#include <QString>

/// How long a page takes over a slow line.
namespace TempoCaricamento
{

/// The status-bar text for a file of \a dimensione bytes: line speed and seconds, in the number format of \a locale.
[[nodiscard]] QString GetSpeedInfo(qint64 dimensione, const QLocale &locale = QLocale());

} // namespace TempoCaricamento
