#pragma once

#include <QStringView>

namespace Confronto
{

/// Length of the common beginning of \a a and \a b, or of their common end when \a daDestra. A binary search that
/// compares each part at most once, bit by bit.
[[nodiscard]] qsizetype ParteUguale(QStringView a, QStringView b, bool daDestra);

} // namespace Confronto
