#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "runs/Uscita.h"

namespace lapvane {

// What the runs were at the last look, so that a list shows at once. Only a cache: whatever is
// wrong with the file, it counts as none and is written anew. First line "Lapvane runs 1", then for
// each run its path (UTF-8), the states of its five files, eight texts, its figures, a text of its
// trouble, its lap times and the numbers of its laps, a line each; last "end", the number of runs,
// and the FNV-1a of all bytes before in two halves.

/// Runs that the index keeps at most.
constexpr std::size_t kUsciteMassime = 50000;

/// The file in the program's folder.
std::filesystem::path FileIndice();

/// Reads the text of an index; nothing for one that is cut, changed or of another version, or has a
/// path twice.
std::optional<std::vector<Uscita>> LeggiIndice(std::string_view testo);
/// The text, of the first `kUsciteMassime` runs.
std::string ScriviIndice(const std::vector<const Uscita*>& uscite);

/// A text and the last line that makes it an index of `quante` runs.
std::string ChiudiIndice(std::string testo, std::size_t quante);

/// The index of the last time; empty without one that can be used.
std::vector<Uscita> CaricaIndice();
/// Writes it; a folder that takes no file leaves things as they are. Of two programs the last one
/// to write wins.
void SalvaIndice(const std::vector<const Uscita*>& uscite);

}  // namespace lapvane
