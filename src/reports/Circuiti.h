#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lapvane {

/// Names of the circuits, as `CaricaListaCircuiti` found them.
inline std::vector<std::string> ListaCircuiti;

/// The folder of the tracks beside the program, whatever the case of its name; where there is none,
/// the path that it should have.
std::filesystem::path CartellaCircuiti();

/// Adds the name of every outline file of that folder to `ListaCircuiti`. Error 76 (75) if there is
/// no such folder (it cannot be read).
void CaricaListaCircuiti();

/// The file of a circuit in that folder, whatever the case of its name; where there is none, the
/// path that it should have. `estensione` is "trk" or "sec". Empty for a name that is no file name:
/// an empty one, or one that would lead out of the folder.
std::filesystem::path FileCircuito(const std::string& nome, std::string_view estensione);

/// A point of an outline, y downwards, in the file's own units.
struct PuntoTracciato {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    bool operator==(const PuntoTracciato&) const = default;
};

constexpr std::size_t kPuntiMassimi = 201;

/// The points of an outline file's text, at most `kPuntiMassimi`; a line without a comma and a part
/// that is no number give coordinates 0.
std::vector<PuntoTracciato> LeggiTracciato(std::string_view testo);

/// Reads a circuit's outline. Empty optional: there is no such file, or it cannot be read.
std::optional<std::vector<PuntoTracciato>> LeggiFileTracciato(const std::string& nome);

/// How a track is divided.
struct FileSettori {
    std::optional<double> Lunghezza;  ///< metres; empty if the first line is no number
    std::vector<double> Settori;      ///< metres, in order
};

/// Reads the text of a division; the list ends before a length of 0 and after `massimo` lengths.
FileSettori LeggiTestoSettori(std::string_view testo, std::size_t massimo);

/// Reads a circuit's division. Empty optional: there is no such file, or it cannot be read.
std::optional<FileSettori> LeggiFileSettori(const std::string& nome, std::size_t massimo);

/// The text of a division: the track length as it stands, then the sectors up to the first 0.
std::string ScriviTestoSettori(const std::string& lunghezza, std::span<const std::int32_t> settori);

}  // namespace lapvane
