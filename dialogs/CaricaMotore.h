#pragma once

#include "dialogs/MotoreAnteprima.h"

#include <QString>

/// Loads the browser engine's module from the program folder.
namespace CaricaMotore
{

/// The engine; null with the reason in \a motivo when the module cannot be loaded. Takes some tenths of a second the
/// first time.
[[nodiscard]] std::unique_ptr<MotoreAnteprima> DalModulo(OspiteMotore &ospite, QWidget &contenitore, QString &motivo);

} // namespace CaricaMotore
