#include "platform/FileTesto.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

#include "platform/ErroreRuntime.h"
#include "platform/Testo1252.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

char Maiuscola1252(char c) {
    const auto b = static_cast<unsigned char>(c);
    if ((b >= 'a' && b <= 'z') || (b >= 0xE0 && b <= 0xFE && b != 0xF7)) {
        return static_cast<char>(b - 0x20);
    }
    if (b == 0x9A || b == 0x9C || b == 0x9E) return static_cast<char>(b - 0x10);
    if (b == 0xFF) return static_cast<char>(0x9F);
    return c;
}

bool MenoSenzaMaiuscole(std::string_view a, std::string_view b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return static_cast<unsigned char>(Maiuscola1252(x)) <
               static_cast<unsigned char>(Maiuscola1252(y));
    });
}

}  // namespace

void RiscriviInizio(const fs::path& percorso, std::string_view testo, std::string_view cosa) {
    std::string intero(testo);
    if (FileEsiste(percorso)) {
        const std::string vecchio = LeggiFile(percorso, cosa);
        if (vecchio.size() > intero.size()) intero.append(vecchio, intero.size());
    }
    ScriviFile(percorso, intero, cosa);
}

void TogliAbbandonati(const fs::path& cartella) {
    constexpr auto kAbbandonato = std::chrono::hours(1);
    std::error_code errore;
    fs::directory_iterator voci(cartella.empty() ? fs::path(".") : cartella, errore);
    while (!errore && voci != fs::directory_iterator()) {
        const fs::path voce = voci->path();
        voci.increment(errore);
        if (TestoDaPercorso(voce.filename()).rfind(kTemporaneo, 0) != 0) continue;
        std::error_code ignorato;
        const auto scritto = fs::last_write_time(voce, ignorato);
        if (!ignorato && fs::is_regular_file(fs::symlink_status(voce, ignorato)) &&
            fs::file_time_type::clock::now() - scritto > kAbbandonato) {
            fs::remove(voce, ignorato);
        }
    }
}

bool FileEsiste(const fs::path& percorso) {
    std::error_code errore;
    const fs::file_status stato = fs::status(percorso, errore);
    return fs::exists(stato) && !fs::is_directory(stato);
}

std::vector<std::string> ElencaFile(const fs::path& cartella) {
    std::vector<std::string> nomi;
    std::error_code errore;
    fs::directory_iterator voci(cartella, errore);
    if (errore) {
        throw ErroreRuntime(errore == std::errc::permission_denied ? NumeroErrore::PathAccess
                                                                   : NumeroErrore::PathNotFound,
                            "listing a folder", cartella);
    }
    for (const auto& voce : voci) {
        std::error_code ignorato;
        if (voce.is_directory(ignorato)) continue;
        std::string nome = TestoDaPercorso(voce.path().filename());
        if (!nome.empty() && nome[0] != '.') nomi.push_back(std::move(nome));
    }
    std::sort(nomi.begin(), nomi.end(), [](const std::string& a, const std::string& b) {
        if (MenoSenzaMaiuscole(a, b)) return true;
        return !MenoSenzaMaiuscole(b, a) && a < b;
    });
    return nomi;
}

fs::path SenzaFine(const fs::path& percorso, std::size_t meno, std::string_view fine) {
    fs::path::string_type testo = percorso.native();
    testo.resize(testo.size() - std::min(meno, testo.size()));
    return testo + fs::path(fine).native();
}

bool UgualiSenzaMaiuscole(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return Maiuscola1252(x) == Maiuscola1252(y);
           });
}

std::string_view LettoreRighe::Prossima() {
    if (resto_.empty()) return {};
    ++numero_;
    const std::size_t fine = resto_.find_first_of("\r\n");
    if (fine == std::string_view::npos) return std::exchange(resto_, {});
    const std::string_view riga = resto_.substr(0, fine);
    const bool coppia =
        resto_[fine] == '\r' && fine + 1 < resto_.size() && resto_[fine + 1] == '\n';
    resto_.remove_prefix(fine + (coppia ? 2 : 1));
    return riga;
}

}  // namespace lapvane
