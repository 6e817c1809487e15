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

/// The points of an outline file's text, at most `kPuntiMassimi`. Of each part the number that it
/// begins with counts; a line without a comma and a part without a number give coordinates 0.
/// `righe` takes the lines of the text, also those past the last point; 32767 at most.
std::vector<PuntoTracciato> LeggiTracciato(std::string_view testo, int* righe = nullptr);

/// Reads a circuit's outline. Empty optional: there is no such file, or it cannot be read.
std::optional<std::vector<PuntoTracciato>> LeggiFileTracciato(const std::string& nome,
                                                              int* righe = nullptr);

/// The whole metres that a text begins with, ties to even; 0 if it begins with no number or 32 bits
/// don't hold it.
std::int32_t MetriInteri(std::string_view testo);

/// How a track is divided.
struct FileSettori {
    std::optional<double>
        Lunghezza;  ///< metres, 0 if the line begins with no number; no first line: none
    std::vector<double> Settori;  ///< metres, in order; a line that is no number gives 0
};

/// Reads the text of a division, `massimo` lengths at most. A length of 0 is one like any other: it
/// is for the reader to say what it means.
FileSettori LeggiTestoSettori(std::string_view testo, std::size_t massimo);

/// Reads a circuit's division. Empty optional: there is no such file, or it cannot be read.
std::optional<FileSettori> LeggiFileSettori(const std::string& nome, std::size_t massimo);

/// The text of a division: the track length as it stands, then the sectors up to the first 0.
std::string ScriviTestoSettori(const std::string& lunghezza, std::span<const std::int32_t> settori);

}  // namespace lapvane
