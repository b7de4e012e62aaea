#pragma once

/// The program with its windows: what the module beside the executable holds. The executable itself knows no widgets,
/// so that the command line answers at once.
namespace Finestre
{

/// Runs the program until its main window is closed; the result is the exit status.
[[nodiscard]] int Main(int argc, char **argv);

} // namespace Finestre
