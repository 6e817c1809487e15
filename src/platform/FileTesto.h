#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/TabelleErrore.h"

namespace lapvane::sistema {
class FileAperto;
}

namespace lapvane {

// The one service for reading and writing whole files, and for listing folders. All failures are
// raised as `ErroreRuntime` with the file's path: 53 file not found, 76 path not found, 75 no
// access, 61 disk full, 57 anything else.

/// The whole file, bytes as they stand; at most its first `massimo` bytes. A save of that file
/// which was cut is completed first (see `Ripara`).
std::string LeggiFile(const std::filesystem::path& percorso, Lavoro cosa,
                      std::size_t massimo = static_cast<std::size_t>(-1));

/// `LeggiFile` for all files of a folder: whether a save was cut there is asked once for all.
class LetturaCartella {
 public:
    explicit LetturaCartella(const std::filesystem::path& cartella);
    std::string LeggiFile(const std::filesystem::path& percorso, Lavoro cosa,
                          std::size_t massimo) const;

 private:
    bool conMarche_;
};

/// A file that is too large to be held as text; opened as `LeggiFile` opens it.
class FileAPezzi {
 public:
    FileAPezzi(const std::filesystem::path& percorso, Lavoro cosa);
    FileAPezzi(FileAPezzi&&) noexcept;
    ~FileAPezzi();

    std::uint64_t Byte() const;
    /// Fills `dove` with the bytes from `da` on; how many there were.
    std::size_t Leggi(std::uint64_t da, std::span<char> dove) const;

 private:
    std::unique_ptr<sistema::FileAperto> file_;
};

/// Writes the whole text to a temporary name in the same folder, flushes it to the disk and renames
/// it over `percorso`: a full disk or a pulled plug leaves the old file whole. What a save that was
/// broken off has left in that folder goes when it is an hour old. A file that has several names,
/// or lies in a folder where nothing can be made, is written in place behind a flushed copy.
void ScriviFile(const std::filesystem::path& percorso, std::string_view testo, Lavoro cosa);

/// One file of a set.
struct FileNuovo {
    std::filesystem::path Percorso;
    std::string_view Testo;
};

/// Writes files that belong together: after an error all of them are the old ones. A save that is
/// killed leaves all old ones, or a mark (`kMarca`) from which `Ripara` makes all new ones. They
/// share their folder and their name less its last three characters.
void ScriviInsieme(std::span<const FileNuovo> insieme, Lavoro cosa);

/// Completes a save that was cut: the file's own, or that of a set which the file is part of. Where
/// that can't be done now the mark stays, and `LeggiFile` reads what was to be written.
void Ripara(const std::filesystem::path& percorso);

/// Completes every save that was cut in a folder.
void RiparaCartella(const std::filesystem::path& cartella);

/// Where copies and marks lie for files whose own folder takes none; until it is set, the folder of
/// the machine's temporary files.
void ImpostaRiserva(const std::filesystem::path& cartella);

/// What the names of temporary files begin with, and those of the marks of saves under way.
constexpr std::string_view kTemporaneo = ".lapvane-";
constexpr std::string_view kMarca = ".lapvane+";

/// Removes the temporary files of a folder that nobody has written to for an hour and that no mark
/// names. A save never takes that long, so none is pulled away from another program that saves in
/// the same folder.
void TogliAbbandonati(const std::filesystem::path& cartella);

/// Whether a file is a plain one of the person who runs the program.
bool FileProprio(const std::filesystem::path& percorso);

/// Whether files can be made in a folder.
bool CartellaScrivibile(const std::filesystem::path& cartella);

/// Puts `testo` over the first bytes of the file and leaves what stands behind them; makes the file
/// if it is missing. As safe as `ScriviFile`; of a huge file only those first bytes are written.
void RiscriviInizio(const std::filesystem::path& percorso, std::string_view testo, Lavoro cosa);

/// Whether there is a file (not a folder) of that path; false when the system refuses to tell.
bool FileEsiste(const std::filesystem::path& percorso);

/// The files of a folder by name, ascending without regard to case, no hidden files, no folders.
std::vector<std::filesystem::path> ElencaPercorsi(const std::filesystem::path& cartella);
/// Their names as text of the program; a character that it lacks is "?".
std::vector<std::string> ElencaFile(const std::filesystem::path& cartella);

/// Whether two names are the same without regard to case; names that the program's text can't hold
/// are the same only to the letter.
bool StessoNome(const std::filesystem::path& a, const std::filesystem::path& b);

/// A name in a folder that no file has yet, with any of the endings (".csv" ...): the stem alone,
/// or with a number from 2 on. Characters that lead out of a folder become "-".
std::string NomeLibero(const std::filesystem::path& cartella, std::string stelo,
                       std::span<const std::string_view> fini);

/// A path less its last characters (units of its native form), and another ending.
std::filesystem::path SenzaFine(const std::filesystem::path& percorso, std::size_t meno,
                                std::string_view fine);

/// A text on one line of a file, whatever it holds ("%", carriage return and line feed as their
/// codes), and back.
std::string InUnaRiga(std::string_view testo);
std::string DaUnaRiga(std::string_view riga);

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
