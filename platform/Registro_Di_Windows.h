#pragma once

#include "platform/Registro.h"

/// One registry value as text. Nothing here fails loudly: whatever goes wrong gives an empty text.
namespace Registro_Di_Windows
{

/// The value \a nomeValore of the key \a chiave below \a radice; see InterrogaValore().
[[nodiscard]] QString LeggiValore(Registro::HKey radice, QStringView chiave, QStringView nomeValore);

/// The value \a nomeValore of a key that is open. A text ends before its first zero byte, or with the value when it has
/// none; nothing in it is expanded. A number reads as unsigned decimal digits, bytes as the number that the first four
/// of them make, the lowest first; missing ones count as 0. Other types read as empty.
[[nodiscard]] QString InterrogaValore(Registro::HKey chiaveAperta, QStringView nomeValore);

} // namespace Registro_Di_Windows
