#pragma once

#include <QStringView>

struct FormatoPagina;

/// The temporary page file that the preview shows.
namespace PaginaAnteprima
{

/// "test.html" in the program folder; in the user's own data folder when the program folder is not writable.
[[nodiscard]] QString Percorso();

/// Writes \a testo to FileAnteprima in the page's encoding; an empty text leaves the file as it was. 0, or the number
/// of the message that gives the reason of a failure.
[[nodiscard]] int Scrivi(QStringView testo, FormatoPagina formato);

/// Deletes the file when it exists.
void Rimuovi();

} // namespace PaginaAnteprima
