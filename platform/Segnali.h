#pragma once

#include <functional>

class QObject;

/// The host's requests to end the program (SIGTERM, SIGINT, SIGHUP), brought into the event loop.
namespace Segnali
{

/// Calls \a azione, in the event loop and as long as \a contesto lives, when the host asks the program to end.
void AllaFine(QObject *contesto, std::function<void()> azione);

} // namespace Segnali
