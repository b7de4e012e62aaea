#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "TabelleTag.h"

/// The database file that the program reads.
namespace FileBase
{

/// Writes \a tag into a new file at \a percorso; the same tables give the same bytes. An old file stays until the new
/// one is whole. Returns the reason of a failure, empty when all went well.
[[nodiscard]] QString Scrivi(const QString &percorso, const QList<TabelleTag::Tag> &tag);

/// Reads the file back and names every rule of the schema that it breaks.
[[nodiscard]] QStringList Verifica(const QString &percorso);

} // namespace FileBase
