#pragma once
#include <QStringList>
#include <optional>

// The command line of a head office's scripts, run without a window:
//   hotkeys --export-sets FILE [--linked] [--special] [--coupon] [SET...]
//   hotkeys --import-sets FILE --report
// Any other command line starts the program as usual, which does not read it.
// The exit code when `arguments` (the program's name first) name a command.
std::optional<int> gfiCommandLine_run(const QStringList &arguments);
// Whether the command line names one of those commands; they need no display.
bool gfbCommandLine_windowless(int argc, char **argv);
