#pragma once

#include "dialogs/MotoreAnteprima.h"

/// The lines of the settings files that say what pages in the preview may do: "ScriptOn = 1" and "RemoteOn = 1". 0 is
/// off, every other number on, and so is a line that is missing.
namespace ImpostazioniAnteprima
{

/// The user's own settings go before those of the program. The size of the files is what it costs.
[[nodiscard]] PermessiAnteprima Leggi();

/// Writes them into the user's own settings file, whose other lines stay as they are. False when it cannot be written.
[[nodiscard]] bool Scrivi(const PermessiAnteprima &permessi);

} // namespace ImpostazioniAnteprima
