#include "app/TempoCaricamento.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr double BytePerSecondo = 4200; // 33.6 kbit/s

// One decimal, a half to the even neighbour, in the shortest form.
QString UnDecimale(double valore, QLocale locale)
{
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    // Stored in single precision, so no more than its seven digits are shown.
    const double singola = QString::number(float(std::nearbyint(valore * 10) / 10), 'g', 7).toDouble();
    return locale.toString(singola, 'f', QLocale::FloatingPointShortest);
}

} // namespace

QString TempoCaricamento::GetSpeedInfo(qint64 dimensione, const QLocale &locale)
{
    return u"33.6K @ %1 KB/s (%2 sec)"_s.arg(UnDecimale(BytePerSecondo / 1000, locale),
                                             UnDecimale(double(dimensione) / BytePerSecondo, locale));
}
