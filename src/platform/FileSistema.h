#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "platform/TabelleErrore.h"

// What each system does in its own way for files and folders; no other room includes it.
namespace lapvane::sistema {

/// The system's number of an error; 0: none.
using Codice = unsigned long;

#ifdef _WIN32
/// A path as every version of the system takes it, whatever its length: a long one becomes whole
/// and is marked as one to be taken to the letter.
std::wstring Nativo(const std::filesystem::path& percorso);
#endif

/// Raises what the number means for that file.
[[noreturn]] void Fallisci(Codice codice, Lavoro cosa, const std::filesystem::path& percorso);

/// Whether the number says that somebody forbids it (and not that the medium is full or gone).
bool Negato(Codice codice);

/// 0, or why a file that is there may not be written.
Codice Permesso(const std::filesystem::path& file);

/// Whether there is anything of that name, be it a link that leads nowhere.
bool CE(const std::filesystem::path& percorso);

/// The bytes of a file; 0 where nobody can tell.
std::uintmax_t Grandezza(const std::filesystem::path& file);

/// Whether a file has more names than one.
bool HaAltriNomi(const std::filesystem::path& file);

/// Removes a file, if it is there and may go.
void Togli(const std::filesystem::path& file);

/// Writes a new file of a name that nothing has yet into `cartella`, flushed to the disk, with the
/// mode of `modello` if that is there. After an error nothing is left.
Codice Provvisorio(const std::filesystem::path& cartella, const std::filesystem::path& modello,
                   std::string_view testo, std::filesystem::path& nome);

/// Renames over a file that may be there.
Codice Rinomina(const std::filesystem::path& da, const std::filesystem::path& a);

/// Writes over the file from its first byte, flushed to the disk; `intero`: what stands behind the
/// text goes. The room is taken first, so that on a full medium the file stays as it was.
Codice SulPosto(const std::filesystem::path& file, std::string_view testo, bool intero);

/// Flushes the names of a folder to the disk.
void Fissa(const std::filesystem::path& cartella);

/// A file of bytes that is open for reading.
class FileAperto {
 public:
    /// Raises what hinders it, also for what is no file of bytes.
    FileAperto(const std::filesystem::path& percorso, Lavoro cosa);
    ~FileAperto();
    FileAperto(const FileAperto&) = delete;
    FileAperto& operator=(const FileAperto&) = delete;

    std::uint64_t Byte() const { return byte_; }
    /// Fills `dove` with the bytes from `da` on; how many there were.
    std::size_t Leggi(std::uint64_t da, std::span<char> dove) const;

 private:
    std::filesystem::path percorso_;
    Lavoro cosa_;
    std::intptr_t file_ = -1;
    std::uint64_t byte_ = 0;
};

/// At most the first `massimo` bytes of a file.
std::string Leggi(const std::filesystem::path& percorso, Lavoro cosa, std::size_t massimo);

}  // namespace lapvane::sistema
