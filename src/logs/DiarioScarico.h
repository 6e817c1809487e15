#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "logs/FileScarico.h"
#include "platform/FileCrescente.h"

namespace lapvane {

constexpr std::string_view kFineScarico = ".download";    ///< never converted: it is offered
constexpr std::string_view kFineSalvato = ".downloaded";  ///< converted, or declined
constexpr std::size_t kScarichiTenuti = 10;

/// Where downloads are kept, in the program's folder.
std::filesystem::path CartellaScarichi();

/// Those that are kept there, the newest first.
struct ScaricoTenuto {
    std::filesystem::path File;
    std::chrono::sys_time<std::chrono::microseconds> Scritto;
};
std::vector<ScaricoTenuto> ScarichiTenuti(const std::filesystem::path& cartella);

/// One of them; empty: it can't be read, or holds no page.
std::optional<ScaricoSuDisco> ApriScarico(const std::filesystem::path& file);

/// Gives a file the other ending; its new path, or the old one where that can't be done.
std::filesystem::path ConFineScarico(const std::filesystem::path& file, std::string_view fine);

/// The log in memory is saved elsewhere, so its download is not offered any more, nor one of the
/// same memory that has nothing else.
void ScaricoConcluso();

/// Keeps one download on the disk as it comes. Where the disk takes nothing it falls silent and
/// the download goes on in memory (`Guasto`).
class DiarioScarico {
 public:
    explicit DiarioScarico(std::filesystem::path cartella) : cartella_(std::move(cartella)) {}
    ~DiarioScarico();
    DiarioScarico(const DiarioScarico&) = delete;
    DiarioScarico& operator=(const DiarioScarico&) = delete;

    /// What comes before the pages.
    void Memoria(std::int32_t byte, std::int16_t giri);
    void Giri(std::int32_t indirizzo, std::string_view blocco);

    /// The newest download of this memory, as far as instrument, sizes and lap times tell, if it
    /// did not reach the end; null: there is none.
    const ScaricoSuDisco* Interrotto();
    /// Goes on in its file, or leaves it alone.
    void Prosegui();
    void Ricomincia() { vecchio_ = {}; }

    /// Where pages came before, ascending.
    std::vector<std::int32_t> Indirizzi() const;
    /// A page that came before, 256 bytes; empty: it has to be read.
    std::string_view Pagina(std::int32_t indirizzo) const;
    /// A page that was checked. The first one makes the file.
    void Scrivi(std::int32_t indirizzo, std::string_view blocco1, std::string_view blocco2);
    /// The end: flushed. `intero`: nothing of the memory is missing.
    void Chiudi(bool intero);

    /// Why nothing is kept any more; empty: all is well.
    const std::string& Guasto() const { return guasto_; }

 private:
    void Prova(const std::function<void()>& azione);
    void Crea();
    void TogliVecchi() const;

    std::filesystem::path cartella_;
    ScaricoSuDisco nuovo_;    // head and laps of the memory at hand, no pages
    ScaricoSuDisco vecchio_;  // that it goes on with
    std::filesystem::path fileVecchio_;
    FileCrescente file_;
    std::int32_t pagine_ = 0;
    std::int64_t fissato_ = 0;  // when, ms
    std::string guasto_;
};

}  // namespace lapvane
