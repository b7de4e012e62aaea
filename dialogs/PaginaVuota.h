#pragma once

#include <QString>

/// The skeleton that a new page starts from.
namespace PaginaVuota
{

/// Eleven lines joined by CR LF, 231 characters, no line end after the last.
[[nodiscard]] QString Testo();

} // namespace PaginaVuota
