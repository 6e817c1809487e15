#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lapvane {

// The one service for reading and writing whole files, and for listing folders. All failures are
// raised as `ErroreRuntime` with the file's path: 53 file not found, 76 path not found, 75 no
// access, 61 disk full, 57 anything else.

/// The whole file, bytes as they stand; at most its first `massimo` bytes.
std::string LeggiFile(const std::filesystem::path& percorso, std::string_view cosa,
                      std::size_t massimo = static_cast<std::size_t>(-1));

/// Writes the whole text to a temporary name in the same folder, flushes it to the disk and renames
/// it over `percorso`: a full disk or a pulled plug leaves the old file whole. What a save that was
/// broken off has left in that folder goes when it is an hour old.
void ScriviFile(const std::filesystem::path& percorso, std::string_view testo,
                std::string_view cosa);

/// What the names of those temporary files begin with.
constexpr std::string_view kTemporaneo = ".lapvane-";

/// Removes the temporary files of a folder that nobody has written to for an hour. A save never
/// takes that long, so none is pulled away from another program that saves in the same folder.
void TogliAbbandonati(const std::filesystem::path& cartella);

/// Puts `testo` over the first bytes of the file and leaves what stands behind them; makes the file
/// if it is missing. Whole or not at all, as `ScriviFile`.
void RiscriviInizio(const std::filesystem::path& percorso, std::string_view testo,
                    std::string_view cosa);

/// Whether there is a file (not a folder) of that path; false when the system refuses to tell.
bool FileEsiste(const std::filesystem::path& percorso);

/// File names of a folder, ascending without regard to case, no hidden files, no folders.
std::vector<std::string> ElencaFile(const std::filesystem::path& cartella);

/// A path less its last characters (units of its native form), and another ending.
std::filesystem::path SenzaFine(const std::filesystem::path& percorso, std::size_t meno,
                                std::string_view fine);

/// Equal without regard to case (ASCII and the letters of Windows-1252).
bool UgualiSenzaMaiuscole(std::string_view a, std::string_view b);

/// Reads a text line by line. A line ends with CR LF, LF or CR alone; the last line need not.
class LettoreRighe {
 public:
    explicit LettoreRighe(std::string_view testo) : resto_(testo) {}
    bool Fine() const { return resto_.empty(); }
    /// The next line; an empty one past the end.
    std::string_view Prossima();
    std::int64_t Numero() const { return numero_; }  ///< lines read so far

 private:
    std::string_view resto_;
    std::int64_t numero_ = 0;
};

}  // namespace lapvane
