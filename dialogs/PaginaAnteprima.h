#pragma once

#include <QStringView>

struct FormatoPagina;

/// The temporary page file that the preview shows.
namespace PaginaAnteprima
{

/// Writes \a testo to FileAnteprima, which only the user can read, in the page's encoding; an empty text leaves the
/// file as it was. \a formato becomes that of what was written. 0, or the number of the message that gives the reason
/// of a failure.
[[nodiscard]] int Scrivi(QStringView testo, FormatoPagina &formato);

} // namespace PaginaAnteprima
