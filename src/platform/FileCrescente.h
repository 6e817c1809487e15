#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "platform/TabelleErrore.h"

namespace lapvane {

/// A file that grows while the program works: what was added is there when the program is killed,
/// and, up to the last `Fissa`, when the plug is pulled. While it is open nobody else can open it
/// so. Errors are raised as those of `ScriviFile`.
class FileCrescente {
 public:
    FileCrescente() = default;
    ~FileCrescente() { Chiudi(); }
    FileCrescente(const FileCrescente&) = delete;
    FileCrescente& operator=(const FileCrescente&) = delete;

    /// A new file; an error where the name is taken.
    void Crea(const std::filesystem::path& percorso, Lavoro cosa);
    /// A file that is there, from its byte `da` on (from 0): what stands behind goes.
    void Apri(const std::filesystem::path& percorso, std::uint64_t da, Lavoro cosa);
    /// One write. After an error the file is as long as it was.
    void Aggiungi(std::string_view testo);
    /// Flushes what was added to the disk.
    void Fissa();
    void Chiudi() noexcept;
    bool Aperto() const { return maniglia_ != kNessuna; }

    /// Whether a file is open so, here or in another program.
    static bool InUso(const std::filesystem::path& percorso);

 private:
    static constexpr std::intptr_t kNessuna = -1;

    std::intptr_t maniglia_ = kNessuna;  // of the system
    std::uint64_t lungo_ = 0;
    std::filesystem::path percorso_;
    Lavoro cosa_ = Lavoro::ScaricareLog;
};

}  // namespace lapvane
