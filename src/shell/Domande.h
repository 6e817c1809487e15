#pragma once

#include <filesystem>

namespace lapvane {

/// Asks whether a file may be replaced: true when it may, or when nothing is to be asked. Kept: the
/// question comes only for a file of the program's own folder.
bool ConfermaSostituzione(const std::filesystem::path& percorso);

/// The same question for any file that is there, wherever it lies: for what a person saves beside
/// the prescribed files.
bool PuoSostituire(const std::filesystem::path& file);

}  // namespace lapvane
