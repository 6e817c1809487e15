#include "runs/Archivio.h"

#include <algorithm>
#include <iterator>
#include <system_error>

#include "platform/Cartelle.h"
#include "platform/Platform.h"
#include "runs/IndiceArchivio.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

/// As the walk makes its paths, so that the index knows them again.
fs::path Normale(const fs::path& cartella) {
    std::error_code ignorato;
    fs::path normale = fs::absolute(cartella, ignorato).lexically_normal();
    normale.make_preferred();
    if (!normale.has_filename() && normale.has_relative_path()) normale = normale.parent_path();
    return normale;
}

/// What the log told of a run that is read anew, where neither it nor its laps have changed.
void TieniLog(const Uscita& vecchia, Uscita& nuova) {
    const FileUscita &a = vecchia.File, &b = nuova.File;
    if (!vecchia.LogLetto || a.Csv != b.Csv || a.Laterale != b.Laterale || a.Tim != b.Tim ||
        vecchia.Circuito != nuova.Circuito || vecchia.Problema.Tipo == Guasto::Illeggibile) {
        return;
    }
    nuova.LogLetto = true;
    nuova.Ideale = vecchia.Ideale;
    nuova.Durata = vecchia.Durata;
    nuova.Numeri = vecchia.Numeri;
    nuova.Divisione = vecchia.Divisione;
    if (nuova.Problema.Tipo == Guasto::Nessuno && vecchia.Problema.Tipo >= Guasto::LogEnorme) {
        nuova.Problema = vecchia.Problema;
    }
}

}  // namespace

Archivio::Archivio() = default;
Archivio::~Archivio() = default;

void Archivio::Apri(const fs::path& cartella) {
    const fs::path nuova = Normale(cartella);
    if (!StessoPercorso(nuova, cartella_)) {
        Salva();
        cartella_ = nuova;
        uscite_.clear();
        altre_.clear();
        for (Uscita& una : CaricaIndice()) {
            (SottoCartella(una.Csv, cartella_) ? uscite_ : altre_).push_back(std::move(una));
        }
        Indicizza();
    }
    mancante_.clear();
    coda_.clear();
    divisioni_.clear();
    viste_.assign(uscite_.size(), 0);
    cammino_ = std::make_unique<CamminoCartelle>(cartella_);
    fase_ = Fase::Elenca;
    lette_ = 0;
    trovate_ = 0;
    ++revisione_;
}

void Archivio::Ferma() {
    if (fase_ == Fase::Ferma) return;
    fase_ = Fase::Ferma;
    Salva();
}

bool Archivio::Passo(int ms) {
    if (fase_ == Fase::Ferma) return false;
    const std::int64_t inizio = platform().GetTickCount();
    do {
        UnPasso();
    } while (fase_ != Fase::Ferma && platform().GetTickCount() - inizio < ms);
    return fase_ != Fase::Ferma;
}

void Archivio::UnPasso() {
    if (fase_ == Fase::Legge) {
        LeggiUna();
        return;
    }
    for (const TrovataUscita& trovata : cammino_->Passo()) Prendi(trovata);
    if (cammino_->Fine()) FineElenco();
}

/// A data file of the folders: known and as it was, or to be read.
void Archivio::Prendi(const TrovataUscita& trovata) {
    ++trovate_;
    const auto posto = posti_.find(ChiavePercorso(trovata.Csv));
    if (posto == posti_.end()) {
        coda_.push_back(trovata);
        return;
    }
    viste_[posto->second] = 1;
    Uscita& una = uscite_[posto->second];
    if (!una.Sparito.empty()) {
        una.Sparito.clear();
        ++revisione_;
    }
    // What could not be read may be one that another program had open.
    if (una.File != trovata.File || una.Problema.Tipo == Guasto::Illeggibile) {
        coda_.push_back(trovata);
    } else if (una.LogLetto && una.Divisione != Divisione(una.Circuito)) {
        una.LogLetto = false;
        una.Ideale = 0;
        ++revisione_;
    }
}

std::uint32_t Archivio::Divisione(const std::string& circuito) {
    const auto [dove, nuova] = divisioni_.try_emplace(circuito, 0);
    if (nuova) dove->second = DivisioneDi(circuito);
    return dove->second;
}

void Archivio::FineElenco() {
    mancante_ = PrimoMancante(cartella_);
    if (!mancante_.empty()) {
        Segnala(mancante_);
        coda_.clear();
    } else {
        TogliSparite();
        if (cammino_->Negate().contains(ChiavePercorso(cartella_))) mancante_ = cartella_;
    }
    // The newest first: they are what somebody looks for.
    std::stable_sort(coda_.begin(), coda_.end(), [](const auto& a, const auto& b) {
        return a.File.Csv.Tempo > b.File.Csv.Tempo;
    });
    fase_ = Fase::Legge;
    if (coda_.empty()) Ferma();
}

/// No run of the list can be looked at.
void Archivio::Segnala(const fs::path& sparito) {
    for (Uscita& una : uscite_) una.Sparito = sparito;
    ++revisione_;
}

/// Runs that the folders don't have any more leave the list; those of folders that nobody can look
/// into stay, and say so.
void Archivio::TogliSparite() {
    const auto& negate = cammino_->Negate();
    const auto cartellaNegata = [&negate](const fs::path& csv) {
        for (fs::path p = csv.parent_path(); !p.empty(); p = p.parent_path()) {
            if (negate.contains(ChiavePercorso(p))) return p;
            if (p == p.parent_path()) break;
        }
        return fs::path();
    };
    std::vector<Uscita> restano;
    restano.reserve(uscite_.size());
    for (std::size_t i = 0; i < uscite_.size(); ++i) {
        if (viste_[i] == 0) {
            uscite_[i].Sparito = cartellaNegata(uscite_[i].Csv);
            ++revisione_;
            if (uscite_[i].Sparito.empty()) {
                daSalvare_ = true;
                continue;
            }
        }
        restano.push_back(std::move(uscite_[i]));
    }
    uscite_ = std::move(restano);
    Indicizza();
}

void Archivio::LeggiUna() {
    const TrovataUscita& trovata = coda_[static_cast<std::size_t>(lette_++)];
    Uscita nuova;
    if (LeggiAccanto(trovata.Csv, trovata.File, nuova)) {
        Metti(std::move(nuova));
    } else if (const int i = Trova(trovata.Csv); i >= 0) {
        uscite_.erase(uscite_.begin() + i);  // it has become another file
        Indicizza();
        ++revisione_;
        daSalvare_ = true;
    }
    if (lette_ == DaLeggere()) Ferma();
}

void Archivio::Metti(Uscita uscita) {
    const auto [dove, nuova] = posti_.try_emplace(ChiavePercorso(uscita.Csv), uscite_.size());
    if (nuova) {
        uscite_.push_back(std::move(uscita));
    } else {
        TieniLog(uscite_[dove->second], uscita);
        uscite_[dove->second] = std::move(uscita);
    }
    ++revisione_;
    daSalvare_ = true;
}

int Archivio::CartelleNegate() const {
    return cammino_ ? static_cast<int>(cammino_->Negate().size()) : 0;
}

int Archivio::Trova(const fs::path& csv) const {
    const auto posto = posti_.find(ChiavePercorso(csv));
    return posto == posti_.end() ? -1 : static_cast<int>(posto->second);
}

bool Archivio::LeggiLogDi(int uscita, int ms) {
    Uscita& una = uscite_[static_cast<std::size_t>(uscita)];
    if (una.LogLetto || !una.Sparito.empty()) return true;
    const GuastoUscita prima = una.Problema;
    if (!lettura_.Passo(una, ms)) return false;
    // A drive that went since the last look is no fault of the file.
    una.Sparito = PrimoMancante(una.Csv.parent_path());
    if (una.Sparito.empty()) {
        daSalvare_ = true;
    } else {
        una.LogLetto = false;
        una.Problema = prima;
    }
    return true;
}

void Archivio::Rileggi(int uscita) {
    const fs::path csv = uscite_[static_cast<std::size_t>(uscita)].Csv;
    const FileUscita file = StatiDi(csv);
    Uscita nuova;
    if (file.Csv.CE() && LeggiAccanto(csv, file, nuova)) Metti(std::move(nuova));
}

void Archivio::Salva() {
    if (!daSalvare_ || cartella_.empty()) return;
    std::vector<const Uscita*> tutte;
    tutte.reserve(uscite_.size() + altre_.size());
    for (const auto* lista : {&uscite_, &altre_}) {
        for (const Uscita& una : *lista) tutte.push_back(&una);
    }
    SalvaIndice(tutte);
    daSalvare_ = false;
}

void Archivio::Indicizza() {
    posti_.clear();
    posti_.reserve(uscite_.size());
    for (std::size_t i = 0; i < uscite_.size(); ++i)
        posti_.emplace(ChiavePercorso(uscite_[i].Csv), i);
}

}  // namespace lapvane
