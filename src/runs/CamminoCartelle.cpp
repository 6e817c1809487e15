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

}  // namespace

StatoFile StatoDi(const fs::path& file) {
    const auto misura = Misura(file);
    if (!misura) return {};
    const auto tempo = std::chrono::floor<std::chrono::milliseconds>(misura->Scritto);
    return {misura->Byte, tempo.time_since_epoch().count()};
}

FileUscita StatiDi(const fs::path& csv) {
    FileUscita file = {StatoDi(csv), StatoDi(FileLaterale(csv)), StatoDi(FileTempi(csv)),
                       StatoDi(FileSessione(csv)), StatoDi(FileImpostazioni(csv))};
    if (!file.Laterale.CE()) file.Laterale = StatoDi(FileLateraleAlm(csv));
    return file;
}

fs::path PrimoMancante(const fs::path& percorso) {
    fs::path mancante;
    for (fs::path p = percorso; !p.empty() && GenereDi(p) == Genere::Niente; p = p.parent_path()) {
        mancante = p;
        if (p == p.parent_path()) break;
    }
    return mancante;
}

bool SottoCartella(const fs::path& percorso, const fs::path& cartella) {
    const auto intero = ChiavePercorso(percorso), inizio = ChiavePercorso(cartella);
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
    if (voci_.Fine()) return Chiudi();
    Guarda();
    voci_.Avanti();
    if (voci_.Errore() != 0) negate_.insert(ChiavePercorso(qui_));
    return {};
}

void CamminoCartelle::Apri() {
    auto& coda = daFare_.empty() ? collegate_ : daFare_;
    if (coda.empty()) return;
    qui_ = std::move(coda.front());
    coda.pop_front();
    if (!viste_.insert(NomeVero(qui_)).second) return;
    voci_ = LettoreCartella(qui_);
    if (voci_.Errore() != 0) {
        negate_.insert(ChiavePercorso(qui_));
        return;
    }
    aperta_ = true;
    file_.clear();
    minuscoli_.clear();
    csv_.clear();
}

void CamminoCartelle::Guarda() {
    const fs::path& voce = voci_.Voce();
    const fs::path nome = voce.filename();
    if (!SiGuarda(nome)) return;
    if (voci_.Cartella()) {
        (voci_.Legame() ? collegate_ : daFare_).push_back(voce);
        return;
    }
    if (voci_.Legame() && GenereDi(voce) == Genere::Niente) {
        negate_.insert(ChiavePercorso(voce));  // what it leads to may be a folder that is away
        return;
    }
    const std::string_view fine = Estensione(nome);
    if (fine.empty()) return;
    const StatoFile stato = StatoDi(voce);
    if (!stato.CE()) return;
    file_.emplace(nome.native(), stato);
    minuscoli_.insert(Minuscolo(nome.native()));
    if (fine == "csv") csv_.push_back(voce);
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
    if (GenereDi(qui_) != Genere::Cartella) negate_.insert(ChiavePercorso(qui_));
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
