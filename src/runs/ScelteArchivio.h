#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "runs/ElencoUscite.h"

namespace lapvane {

/// What the list of runs remembers from one time to the next.
struct ScelteArchivio {
    std::filesystem::path Cartella;  ///< looked at last; empty: none yet
    ColonnaUscite Ordine = ColonnaUscite::Data;
    bool Discendente = true;
    GruppoPer Gruppo = GruppoPer::Circuito;
    char Decimale = 0;             ///< of a saved list, '.' or ','; 0: the desktop's
    char Campi = 0;                ///< ',' ';' or tab; 0: as goes with the desktop's decimal sign
    std::filesystem::path Contro;  ///< run whose settings are compared; empty: the one before
};

/// Reads a text of choices. Anything that this program did not write gives the defaults, lines that
/// it does not know are passed over.
ScelteArchivio LeggiScelteArchivio(std::string_view testo);
std::string ScriviScelteArchivio(const ScelteArchivio& scelte);

/// The choices of the last time; the defaults without a file that can be read.
ScelteArchivio CaricaScelteArchivio();
/// Writes them; a folder that takes no file leaves things as they are.
void SalvaScelteArchivio(const ScelteArchivio& scelte);

}  // namespace lapvane
