#pragma once

#include <array>
#include <filesystem>
#include <string>

namespace lapvane {

/// The last opened projects, most recent first.
struct ElencoRecenti {
    std::array<std::string, 5> Righe;  ///< as lines of the file, see `RigaDaPercorso`
    int Quante = 0;
};
ElencoRecenti& recenti();

/// Reads RecentFiles.ini into the list, the menu entries and `AnalisiSpeed`. A missing file ends
/// the program (53), as do five or more paths (9).
void LeggiFileRecenti();

/// Puts `FileRecenteScelto` on top and writes the file. Kept: at stop it is empty, so the list
/// moves down by one empty place and with four paths the oldest falls off at each end of the
/// program.
void ScriviFileRecenti();

/// What Open does with the list: writes it and reads it anew. A file that can't be written is told
/// of, and the menu shows the list all the same.
void AggiornaFileRecenti();

/// Click of entry 0 to 3 of the list.
void mnuRecentFiles_Click(int indice);
/// The same for a line that the list had when it was asked for, whatever place it has now.
void ApriRecente(const std::string& riga);

}  // namespace lapvane
