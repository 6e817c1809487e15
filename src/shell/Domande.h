#pragma once

#include <filesystem>

namespace lapvane {

/// Asks whether a file may be replaced: true when it may, or when nothing is to be asked. Kept: the
/// question comes only for a file of the program's own folder.
bool ConfermaSostituzione(const std::filesystem::path& percorso);

}  // namespace lapvane
