#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lapvane {

/// How a log was looked at when its analysis was closed. Channels are columns of the log.
struct UltimaVista {
    std::vector<int> Canali;  ///< the ticked ones, ascending
    int Scala = 0;            ///< whose scale labels the y axis; 0: none
    bool Distanza = false;    ///< over the distance; else over the time
    bool Separati = false;    ///< each channel in a pane of its own
    bool operator==(const UltimaVista&) const = default;
};

/// Reads the text of such a file. Empty: this program did not write it, or it ticks no channel.
std::optional<UltimaVista> LeggiUltimaVista(std::string_view testo);
std::string ScriviUltimaVista(const UltimaVista& vista);

/// The view of the last time; empty without a file that can be read.
std::optional<UltimaVista> CaricaUltimaVista();
/// Writes it; a view without a channel, and a folder that takes no file, leave things as they are.
void SalvaUltimaVista(const UltimaVista& vista);

}  // namespace lapvane
