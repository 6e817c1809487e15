#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lapvane::laptool {

/// The command line in UTF-8, less the program's name.
std::vector<std::string> Words(int argc, char** argv);

/// The folder of this program.
std::filesystem::path Folder(const char* called);

/// Where the program with windows keeps what is the person's, when it keeps it there; empty: the
/// system does not say.
std::filesystem::path Own();

/// From here on the standard output takes bytes as they are.
void PlainOutput();

}  // namespace lapvane::laptool
