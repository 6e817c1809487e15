#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

namespace lapvane {

// Folders and what lies in them, whatever the length of a path: what `std::filesystem` asks of
// Windows ends at 260 characters, and the older runtime there refuses the form of longer ones.

/// What a path leads to, links followed; nothing also where the system refuses to tell.
enum class Genere { Niente, File, Cartella };
Genere GenereDi(const std::filesystem::path& percorso);

struct MisuraFile {
    std::int64_t Byte = 0;
    std::chrono::sys_time<std::chrono::microseconds> Scritto;
};

/// Size and time of a plain file, links followed; empty for all else and where nobody can tell.
std::optional<MisuraFile> Misura(const std::filesystem::path& file);

/// A path as the system compares names, upper and lower case as one on Windows: equal ones are the
/// same file. The disk isn't asked.
std::filesystem::path::string_type ChiavePercorso(const std::filesystem::path& percorso);
bool StessoPercorso(const std::filesystem::path& a, const std::filesystem::path& b);

/// Whether two paths lead to one file or folder, by links or another name as well.
bool StessoFile(const std::filesystem::path& a, const std::filesystem::path& b);

/// The name that a folder has however it was reached; the path itself where that can't be told.
std::filesystem::path NomeVero(const std::filesystem::path& cartella);

/// Makes a folder and those above it. False: it is not there.
bool CreaCartelle(const std::filesystem::path& cartella);

/// Removes a file, a link or an empty folder. False: it is still there.
bool Elimina(const std::filesystem::path& percorso);

/// Renames over a file that may be there. False: all is as it was.
bool Sposta(const std::filesystem::path& da, const std::filesystem::path& a);

/// The entries of a folder, one after the other, in the system's order.
class LettoreCartella {
 public:
    LettoreCartella();
    explicit LettoreCartella(const std::filesystem::path& cartella);
    ~LettoreCartella();
    LettoreCartella(LettoreCartella&&) noexcept;
    LettoreCartella& operator=(LettoreCartella&&) noexcept;

    bool Fine() const;
    void Avanti();
    /// The system's number of why it could not be read to its end; 0: nothing was wrong.
    int Errore() const;

    const std::filesystem::path& Voce() const;  ///< the folder's path as it was given, and the name
    bool Cartella() const;                      ///< links followed
    bool Legame() const;

 private:
    struct Stato;
    std::unique_ptr<Stato> stato_;
};

}  // namespace lapvane
