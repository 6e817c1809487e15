#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/TabelleErrore.h"

namespace lapvane {

// What the program remembers from one time to the next beside the files of the system: choices and
// lists in small files of its folder. None of them is worth a message: one that can't be read
// counts as none, and a folder that takes none leaves things as they are.

/// The text of such a file; empty: there is none that can be read.
std::string LeggiRicordo(std::string_view nome, Lavoro lavoro);
/// Writes it, whole or not at all.
void SalvaRicordo(std::string_view nome, std::string_view testo, Lavoro lavoro);

/// "key=value", without line breaks.
using RigaRicordo = std::pair<std::string, std::string>;
/// The lines behind the first one of such a text, in order; those that are none are passed over.
/// Empty: the first line is not `primaRiga`.
std::vector<RigaRicordo> RigheRicordo(std::string_view testo, std::string_view primaRiga);
/// The text of such lines.
std::string TestoRicordo(std::string_view primaRiga, const std::vector<RigaRicordo>& righe);

}  // namespace lapvane
