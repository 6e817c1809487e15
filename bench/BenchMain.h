#pragma once

#include <string>

namespace lapvane::bench {

/// The rest of a bench program's main. With "--table" among the arguments only the figures that
/// have a limit are shown, each beside it, with a row for each limit of this program; else
/// everything, as Google Benchmark shows it. Returns what main does: 1 if a limit was not met or
/// not measured. On X rather than without a screen (QT_QPA_PLATFORM) the program counts as
/// "... on X", which has limits of its own.
int RunBenches(std::string program, int argc, char* argv[]);

}  // namespace lapvane::bench
