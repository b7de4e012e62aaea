#pragma once

#include <Qt>

class QKeyEvent;
struct EventoTasto;

/// Keys by the codes that the program's rules name (virtual key codes), whatever the host calls them.
namespace Tastiera
{

[[nodiscard]] EventoTasto DaQt(const QKeyEvent &evento);

/// The same number for the press and the release of one key of the keyboard.
[[nodiscard]] quint64 Identita(const QKeyEvent &evento);

/// 1 Shift, 2 Ctrl, 4 Alt, added.
[[nodiscard]] int StatoShift(Qt::KeyboardModifiers modificatori);

} // namespace Tastiera
