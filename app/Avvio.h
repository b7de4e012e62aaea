#pragma once

/// From the command line to the running program.
namespace Avvio
{

/// What a process does from start to end; its result is the exit status.
[[nodiscard]] int Main(int argc, char **argv);

} // namespace Avvio
