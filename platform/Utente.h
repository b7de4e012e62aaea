#pragma once

/// The user who runs the program.
namespace Utente
{

/// True for root, against whom neither permissions nor sandboxes protect.
[[nodiscard]] bool Amministratore();

} // namespace Utente
