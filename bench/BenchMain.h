#pragma once

#include <string_view>

namespace lapvane::bench {

/// The rest of a bench program's main. With "--table" among the arguments only the figures that
/// have a limit are shown, each beside it, with a row for each limit of this program; else
/// everything, as Google Benchmark shows it. Returns what main does: 1 if a limit was not met or
/// not measured.
int RunBenches(std::string_view program, int argc, char* argv[]);

}  // namespace lapvane::bench
