#include "runs/CamminoCartelle.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>
#include <system_error>

#include "logs/Impostazioni.h"
#include "runs/LetturaUscita.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 6> kFini = {"csv", "txt", "alm", "tim", "ses", "set"};

std::int64_t Millisecondi(fs::file_time_type tempo) {
    const auto sistema = std::chrono::file_clock::to_sys(tempo);
    return std::chrono::floor<std::chrono::milliseconds>(sistema).time_since_epoch().count();
}

fs::path::string_type Minuscolo(fs::path::string_type nome) {
    for (auto& c : nome) {
        if (c >= 'A' && c <= 'Z') c = static_cast<fs::path::value_type>(c + ('a' - 'A'));
    }
    return nome;
}

/// The last three letters behind a point, small; empty: none of those that count.
std::string_view Estensione(const fs::path& nome) {
    const fs::path::string_type fine = Minuscolo(nome.extension().native());
    if (fine.size() != 4) return {};
    const auto trovata = std::find_if(kFini.begin(), kFini.end(), [&fine](std::string_view una) {
        return std::equal(una.begin(), una.end(), fine.begin() + 1);
    });
    return trovata == kFini.end() ? std::string_view() : *trovata;
}

/// False for hidden names, for the bin of Windows, whose name begins with "$", and for a name that
/// is no text at all: Windows allows halves of characters.
bool SiGuarda(const fs::path& nome) {
    try {
        const std::u8string testo = nome.u8string();
        return !testo.empty() && testo.front() != u8'.' && testo.front() != u8'$';
    } catch (const std::exception&) {
        return false;
    }
}

StatoFile StatoVoce(const fs::directory_entry& voce) {
    StatoFile stato;
    std::error_code errore;
    if (!voce.is_regular_file(errore) || errore) return stato;
    const std::uintmax_t byte = voce.file_size(errore);
    if (errore) return stato;
    const auto tempo = voce.last_write_time(errore);
    if (errore) return stato;
    return {static_cast<std::int64_t>(byte), Millisecondi(tempo)};
}

}  // namespace

StatoFile StatoDi(const fs::path& file) {
    std::error_code errore;
    const fs::directory_entry voce(file, errore);
    return errore ? StatoFile() : StatoVoce(voce);
}

FileUscita StatiDi(const fs::path& csv) {
    FileUscita file = {StatoDi(csv), StatoDi(FileLaterale(csv)), StatoDi(FileTempi(csv)),
                       StatoDi(FileSessione(csv)), StatoDi(FileImpostazioni(csv))};
    if (!file.Laterale.CE()) file.Laterale = StatoDi(FileLateraleAlm(csv));
    return file;
}

fs::path PrimoMancante(const fs::path& percorso) {
    fs::path mancante;
    std::error_code ignorato;
    for (fs::path p = percorso; !p.empty() && !fs::exists(p, ignorato); p = p.parent_path()) {
        mancante = p;
        if (p == p.parent_path()) break;
    }
    return mancante;
}

bool SottoCartella(const fs::path& percorso, const fs::path& cartella) {
    const auto& intero = percorso.native();
    const auto& inizio = cartella.native();
    if (inizio.empty() || intero.size() <= inizio.size() || !intero.starts_with(inizio)) {
        return false;
    }
    const auto separatore = [](auto c) { return c == '/' || c == fs::path::preferred_separator; };
    return separatore(inizio.back()) || separatore(intero[inizio.size()]);
}

std::vector<TrovataUscita> CamminoCartelle::Passo() {
    if (!aperta_) {
        Apri();
        return {};
    }
    if (voci_ == fs::directory_iterator()) return Chiudi();
    Guarda(*voci_);
    std::error_code errore;
    voci_.increment(errore);
    if (errore) {
        negate_.insert(qui_);
        voci_ = {};
    }
    return {};
}

void CamminoCartelle::Apri() {
    auto& coda = daFare_.empty() ? collegate_ : daFare_;
    if (coda.empty()) return;
    qui_ = std::move(coda.front());
    coda.pop_front();
    std::error_code errore;
    const fs::path vera = fs::canonical(qui_, errore);
    if (!errore && !viste_.insert(vera).second) return;
    voci_ = fs::directory_iterator(qui_, errore);
    if (errore) {
        negate_.insert(qui_);
        return;
    }
    aperta_ = true;
    file_.clear();
    minuscoli_.clear();
    csv_.clear();
}

void CamminoCartelle::Guarda(const fs::directory_entry& voce) {
    const fs::path nome = voce.path().filename();
    if (!SiGuarda(nome)) return;
    std::error_code errore;
    if (voce.is_directory(errore)) {
        (voce.is_symlink(errore) ? collegate_ : daFare_).push_back(voce.path());
        return;
    }
    if (voce.is_symlink(errore) && !voce.exists(errore)) {
        negate_.insert(voce.path());  // what it leads to may be a folder that is away
        return;
    }
    const std::string_view fine = Estensione(nome);
    if (fine.empty()) return;
    const StatoFile stato = StatoVoce(voce);
    if (!stato.CE()) return;
    file_.emplace(nome.native(), stato);
    minuscoli_.insert(Minuscolo(nome.native()));
    if (fine == "csv") csv_.push_back(voce.path());
}

/// The state of a file of the folder that is open. Where a name differs in its case alone the
/// system has to say whether it means the same file.
StatoFile CamminoCartelle::Stato(const fs::path& file) const {
    const Nome nome = file.filename().native();
    if (const auto trovato = file_.find(nome); trovato != file_.end()) return trovato->second;
    return minuscoli_.contains(Minuscolo(nome)) ? StatoDi(file) : StatoFile();
}

std::vector<TrovataUscita> CamminoCartelle::Chiudi() {
    aperta_ = false;
    std::error_code errore;
    if (!fs::is_directory(qui_, errore)) negate_.insert(qui_);
    std::vector<TrovataUscita> trovate;
    trovate.reserve(csv_.size());
    for (fs::path& csv : csv_) {
        FileUscita file = {Stato(csv), Stato(FileLaterale(csv)), Stato(FileTempi(csv)),
                           Stato(FileSessione(csv)), Stato(FileImpostazioni(csv))};
        if (!file.Laterale.CE()) file.Laterale = Stato(FileLateraleAlm(csv));
        trovate.push_back({std::move(csv), file});
    }
    return trovate;
}

}  // namespace lapvane
