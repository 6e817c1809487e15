#pragma once

#include <filesystem>

namespace lapvane::prova {

/// Where the build put the programs and what lies beside them.
std::filesystem::path CartellaBin();
/// The folder `data` of the sources.
std::filesystem::path CartellaDati();

}  // namespace lapvane::prova
