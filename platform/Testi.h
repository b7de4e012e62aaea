#pragma once

#include <QString>

namespace ModuloPrincipale
{

/// The text up to its first zero character; the whole text when it has none.
[[nodiscard]] QString TagliaAlNullo(const QString &testo);

/// Takes the part before the first \a separatore, and the separator, off \a testo and returns that part. Without a
/// separator in it \a testo stays whole and the result is empty.
[[nodiscard]] QString EstraiPrimo(QString &testo, QStringView separatore);

} // namespace ModuloPrincipale
