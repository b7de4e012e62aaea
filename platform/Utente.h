#pragma once

#include <QString>

/// The user who runs the program.
namespace Utente
{

/// True for root, against whom neither permissions nor sandboxes protect.
[[nodiscard]] bool Amministratore();

/// Full name of the user's account; empty when the host knows none.
[[nodiscard]] QString NomeCompleto();

/// The full name in the field \a descrizione of the account \a utente: what stands before its first comma. "&" stands
/// for the account's name with a capital.
[[nodiscard]] QString NomeDaDescrizione(QStringView descrizione, QStringView utente);

} // namespace Utente
