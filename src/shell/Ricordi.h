#pragma once

#include <string>
#include <string_view>

#include "platform/TabelleErrore.h"

namespace lapvane {

// What the program remembers from one time to the next beside the files of the system: choices and
// lists in small files of its folder. None of them is worth a message: one that can't be read
// counts as none, and a folder that takes none leaves things as they are.

/// The text of such a file; empty: there is none that can be read.
std::string LeggiRicordo(std::string_view nome, Lavoro lavoro);
/// Writes it, whole or not at all.
void SalvaRicordo(std::string_view nome, std::string_view testo, Lavoro lavoro);

}  // namespace lapvane
