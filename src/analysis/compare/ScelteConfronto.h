#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lapvane {

/// Which laps of a log were chosen when the comparison was closed.
struct ScelteLog {
    std::filesystem::path File;
    /// Letters 'R', 'A' to 'F' and numbers of laps, as the lap table has them.
    std::vector<std::pair<char, int>> Giri;
};

/// What the comparison remembers from one time to the next. Channels are known by their keys, as
/// `CanaleConfronto::Chiave` has them.
struct ScelteConfronto {
    bool PerDistanza = true;
    int Parti = 0;                    ///< 0: the circuit's sectors; else 3 to 20
    std::vector<std::string> Quadri;  ///< the ticked panes; empty: those of a first time
    std::string Mappa;                ///< colours of the map; empty: gained and lost time
    std::string X, Y;                 ///< channels of the XY picture
    bool Linea = false;               ///< XY as a line; else points
    std::string Istogramma;           ///< channel of the histogram
    std::vector<ScelteLog> Log;       ///< the newest first, at most `kLogRicordati`
};

constexpr std::size_t kLogRicordati = 40;

/// Reads a text of choices. Anything that this program did not write gives the defaults, lines that
/// it does not know are passed over.
ScelteConfronto LeggiScelte(std::string_view testo);
std::string ScriviScelte(const ScelteConfronto& scelte);

/// The choices of the last time; the defaults without a file that can be read.
ScelteConfronto CaricaScelte();
/// Writes them; a folder that takes no file leaves things as they are.
void SalvaScelte(const ScelteConfronto& scelte);

}  // namespace lapvane
