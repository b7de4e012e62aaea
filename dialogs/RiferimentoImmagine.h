#pragma once

#include <QString>

#include "platform/File_System.h"

/// How a page names a picture file.
namespace RiferimentoImmagine
{

/// The picture \a scelto, a full path, as seen from the page \a filePagina: "/" between the names, everything but
/// letters, digits and "-._~" percent-encoded as UTF-8, "../" for each folder to leave. Empty when no relative way
/// leads there: from a page without a place, to another drive. In the Windows style letter case makes no difference to
/// folders. No file is looked at.
[[nodiscard]] QString Relativo(const QString &scelto, const QString &filePagina,
                               File_System::Stile stile = File_System::StileOspite);

/// The full path that the user means by \a scritto: a name without a folder of its own is one beside the page.
[[nodiscard]] QString Intero(const QString &scritto, const QString &filePagina);

} // namespace RiferimentoImmagine
