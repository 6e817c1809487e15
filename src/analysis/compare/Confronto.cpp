#include "analysis/compare/Confronto.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/compare/ConfrontoGiri.h"
#include "platform/Cartelle.h"
#include "platform/FileTesto.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr int kPartiUguali = 9;
constexpr double kTracciatoUguale = 0.03;

std::size_t Posto(char lettera) {
    return lettera == kRiferimento ? 0 : static_cast<std::size_t>(lettera - 'A' + 1);
}

char LetteraDi(std::size_t posto) {
    return posto == 0 ? kRiferimento : static_cast<char>('A' + posto - 1);
}

}  // namespace

std::string CanaleConfronto::Chiave() const {
    return TestoNumero(static_cast<std::int64_t>(Colonna)) + " [" + Unita + "]";
}

int Confronto::Apri(const std::filesystem::path& file) {
    for (int i = 0; i < NumLog(); ++i) {
        if (StessoFile(Log(i).File(), file)) return i;
    }
    Aperto nuovo;
    nuovo.Dati = std::make_unique<LogAperto>(file);
    nuovo.Giri.resize(nuovo.Dati->Giri().size());
    nuovo.Provato.resize(nuovo.Dati->Giri().size());
    log_.push_back(std::move(nuovo));
    ScegliNuovo(NumLog() - 1);
    return NumLog() - 1;
}

/// The laps of a log that have a time, the fastest first.
std::vector<GiroScelto> Confronto::InOrdine(int log) const {
    std::vector<GiroScelto> giri;
    for (int i = 0; i < std::ssize(Log(log).Giri()); ++i) {
        if (Giro({log, i}).Centesimi > 0 && Esito({log, i}) == PercheNo::Allineato) {
            giri.push_back({log, i});
        }
    }
    std::stable_sort(giri.begin(), giri.end(), [this](GiroScelto a, GiroScelto b) {
        return Giro(a).Centesimi < Giro(b).Centesimi;
    });
    return giri;
}

void Confronto::ScegliNuovo(int log) {
    auto giri = InOrdine(log);
    if (giri.empty() && !Log(log).Giri().empty()) giri.push_back({log, 0});
    if (giri.empty()) return;
    if (!scelti_[0]) {
        scelti_[0] = giri.front();
        if (giri.size() > 1) Spunta(giri[1], true);
    } else {
        Spunta(giri.front(), true);
    }
}

void Confronto::Chiudi(int log) {
    log_.erase(log_.begin() + log);
    for (auto& scelto : scelti_) {
        if (!scelto) continue;
        if (scelto->Log == log) {
            scelto.reset();
        } else if (scelto->Log > log) {
            --scelto->Log;
        }
    }
    if (!scelti_[0]) {
        std::optional<std::size_t> migliore;
        for (std::size_t p = 1; p < scelti_.size(); ++p) {
            if (!scelti_[p]) continue;
            if (!migliore || Giro(*scelti_[p]).Centesimi < Giro(*scelti_[*migliore]).Centesimi) {
                migliore = p;
            }
        }
        if (migliore) {
            scelti_[0] = std::exchange(scelti_[*migliore], std::nullopt);
        } else if (!log_.empty()) {
            ScegliNuovo(0);
        }
    }
    ScegliFuoco();
}

char Confronto::LetteraLibera() const {
    for (std::size_t p = 1; p < scelti_.size(); ++p) {
        if (!scelti_[p]) return LetteraDi(p);
    }
    return 0;
}

bool Confronto::Spunta(GiroScelto giro, bool acceso) {
    const char lettera = Lettera(giro);
    if (lettera == kRiferimento) return acceso;
    if (!acceso) {
        if (lettera != 0) scelti_[Posto(lettera)].reset();
        ScegliFuoco();
        return true;
    }
    if (lettera != 0) return true;
    if (!scelti_[0]) {
        scelti_[0] = giro;
        return true;
    }
    const char libera = LetteraLibera();
    if (libera == 0) return false;
    scelti_[Posto(libera)] = giro;
    fuoco_ = libera;
    return true;
}

void Confronto::Riferimento(GiroScelto giro) {
    const char lettera = Lettera(giro);
    if (lettera == kRiferimento) return;
    const std::optional<GiroScelto> vecchio = std::exchange(scelti_[0], giro);
    const char posto = lettera != 0 ? lettera : LetteraLibera();
    if (posto != 0) scelti_[Posto(posto)] = vecchio;
    ScegliFuoco();
}

std::vector<std::pair<char, int>> Confronto::ScelteDi(int log) const {
    std::vector<std::pair<char, int>> giri;
    for (std::size_t p = 0; p < scelti_.size(); ++p) {
        if (scelti_[p] && scelti_[p]->Log == log) {
            giri.emplace_back(LetteraDi(p), Numero(*scelti_[p]));
        }
    }
    return giri;
}

void Confronto::LasciaTutti() {
    scelti_ = {};
    fuoco_ = 0;
}

void Confronto::Ripristina(int log, const std::vector<std::pair<char, int>>& giri) {
    std::vector<std::pair<char, GiroScelto>> validi;
    for (const auto& [lettera, numero] : giri) {
        const int giro = Log(log).CercaNumero(numero);
        const bool libera = NumLog() == 1 || (lettera != kRiferimento && !Di(lettera));
        if (giro >= 0 && libera) validi.emplace_back(lettera, GiroScelto{log, giro});
    }
    if (validi.empty()) return;
    if (NumLog() == 1) {
        if (validi.front().first != kRiferimento) return;
        LasciaTutti();
    } else {
        for (auto& scelto : scelti_) {
            if (scelto && scelto->Log == log && scelto != scelti_[0]) scelto.reset();
        }
    }
    for (const auto& [lettera, giro] : validi) {
        if (Lettera(giro) == 0) scelti_[Posto(lettera)] = giro;
    }
    ScegliFuoco();
}

void Confronto::Fuoco(char lettera) {
    if (lettera != kRiferimento && Di(lettera)) fuoco_ = lettera;
}

/// The lap in focus is one that is chosen: the first, where the old one is gone.
void Confronto::ScegliFuoco() {
    if (fuoco_ != 0 && Di(fuoco_)) return;
    const std::string accanto = Accanto();
    fuoco_ = accanto.empty() ? '\0' : accanto.front();
}

char Confronto::Lettera(GiroScelto giro) const {
    for (std::size_t p = 0; p < scelti_.size(); ++p) {
        if (scelti_[p] == giro) return LetteraDi(p);
    }
    return 0;
}

std::optional<GiroScelto> Confronto::Di(char lettera) const {
    const std::size_t posto = Posto(lettera);
    return posto < scelti_.size() ? scelti_[posto] : std::nullopt;
}

std::string Confronto::Accanto() const {
    std::string lettere;
    for (std::size_t p = 1; p < scelti_.size(); ++p) {
        if (scelti_[p]) lettere += LetteraDi(p);
    }
    return lettere;
}

std::vector<char> Confronto::Mostrati() const {
    std::vector<char> lettere;
    for (std::size_t p = 0; p < scelti_.size(); ++p) {
        if (scelti_[p]) lettere.push_back(LetteraDi(p));
    }
    return lettere;
}

const GiroDelLog& Confronto::Giro(GiroScelto giro) const {
    return Log(giro.Log).Giri()[static_cast<std::size_t>(giro.Giro)];
}

std::int32_t Confronto::Migliore() const {
    std::int32_t migliore = 0;
    for (int i = 0; i < NumLog(); ++i) {
        const int giro = Log(i).Migliore();
        if (giro < 0) continue;
        const std::int32_t tempo = Giro({i, giro}).Centesimi;
        if (migliore == 0 || tempo < migliore) migliore = tempo;
    }
    return migliore;
}

const GiroAllineato* Confronto::Allineato(GiroScelto giro) const {
    const Aperto& log = log_[static_cast<std::size_t>(giro.Log)];
    const auto i = static_cast<std::size_t>(giro.Giro);
    if (!log.Provato[i]) {
        log.Giri[i] = log.Dati->Allineati().Allinea(giro.Giro);
        log.Provato[i] = true;
    }
    return log.Giri[i] ? &*log.Giri[i] : nullptr;
}

int Confronto::NumAllineati(int log) const {
    const auto& provato = log_[static_cast<std::size_t>(log)].Provato;
    return static_cast<int>(std::count(provato.begin(), provato.end(), true));
}

bool Confronto::AllineaUnAltro() const {
    for (int l = 0; l < NumLog(); ++l) {
        const auto& provato = log_[static_cast<std::size_t>(l)].Provato;
        const auto primo = std::find(provato.begin(), provato.end(), false);
        if (primo == provato.end()) continue;
        Allineato({l, static_cast<int>(primo - provato.begin())});
        return true;
    }
    return false;
}

void Confronto::Parti(int quante) {
    parti_ = quante == 0 ? 0 : std::clamp(quante, 3, 20);
}

bool Confronto::ConSettori() const {
    return scelti_[0] && Log(scelti_[0]->Log).Settori().size() > 1;
}

/// The cuts of a lap of another length.
std::vector<double> Confronto::ConfiniDelGiro(double lunghezza) const {
    if (!scelti_[0] || lunghezza <= 0.0) return {};
    if (parti_ == 0 && ConSettori()) {
        return ConfiniSettori(Log(scelti_[0]->Log).Settori(), lunghezza);
    }
    return ConfiniUguali(parti_ == 0 ? kPartiUguali : parti_, lunghezza);
}

std::vector<double> Confronto::Confini() const {
    if (!scelti_[0]) return {};
    const GiroAllineato* riferimento = Allineato(*scelti_[0]);
    if (riferimento == nullptr) return {};
    // Sectors count along the lap of the middle length, as everywhere.
    const double lunghezza = Log(scelti_[0]->Log).Allineati().Lunghezza();
    std::vector<double> confini = ConfiniDelGiro(lunghezza);
    for (double& metri : confini) metri *= riferimento->Lunghezza / lunghezza;
    return confini;
}

std::vector<CanaleConfronto> Confronto::Canali() const {
    std::vector<CanaleConfronto> tutti;
    for (int l = 0; l < NumLog(); ++l) {
        for (const CanaleLog& canale : Log(l).Canali()) {
            const CanaleConfronto uno(canale);
            const bool gia = std::any_of(tutti.begin(), tutti.end(), [&](const auto& altro) {
                return altro.Chiave() == uno.Chiave();
            });
            if (!gia) tutti.push_back(uno);
        }
    }
    return tutti;
}

int Confronto::Colonna(int log, const std::string& chiave) const {
    for (const CanaleLog& canale : Log(log).Canali()) {
        if (CanaleConfronto(canale).Chiave() == chiave) return canale.Colonna;
    }
    return 0;
}

double Confronto::Fine() const {
    if (!scelti_[0]) return 0.0;
    if (const GiroAllineato* riferimento = Allineato(*scelti_[0])) {
        return PerDistanza ? riferimento->Lunghezza : riferimento->Durata;
    }
    // As far as it goes: the rows as they stand.
    const GiroDelLog& giro = Giro(*scelti_[0]);
    if (giro.UltimaRiga < giro.PrimaRiga) return 0.0;
    if (!PerDistanza) return (giro.UltimaRiga - giro.PrimaRiga) / 10.0;
    const CurvaGiro curva = Curva(kRiferimento, {});
    return curva.X.empty() ? 0.0 : *std::max_element(curva.X.begin(), curva.X.end());
}

double Confronto::XDaMetri(double metri) const {
    if (PerDistanza || !scelti_[0]) return metri;
    const GiroAllineato* riferimento = Allineato(*scelti_[0]);
    return riferimento != nullptr ? riferimento->TempoA(metri) : metri;
}

double Confronto::MetriDaX(double x) const {
    if (PerDistanza || !scelti_[0]) return x;
    const GiroAllineato* riferimento = Allineato(*scelti_[0]);
    return riferimento != nullptr ? riferimento->MetriA(x) : 0.0;
}

/// Share of the reference's way at a place of the axis, 0 to 1.
double Confronto::QuotaDaX(double x) const {
    const GiroAllineato* riferimento = scelti_[0] ? Allineato(*scelti_[0]) : nullptr;
    if (riferimento == nullptr || riferimento->Lunghezza <= 0.0) return 0.0;
    return std::clamp(MetriDaX(x) / riferimento->Lunghezza, 0.0, 1.0);
}

bool Confronto::TracciatiDiversi(GiroScelto a, GiroScelto b) const {
    const std::string& circuitoA = Log(a.Log).Sessione().Circuito;
    const std::string& circuitoB = Log(b.Log).Sessione().Circuito;
    if (!circuitoA.empty() && !circuitoB.empty() && !UgualiSenzaMaiuscole(circuitoA, circuitoB)) {
        return true;
    }
    const double metriA = Log(a.Log).Allineati().Lunghezza();
    const double metriB = Log(b.Log).Allineati().Lunghezza();
    return metriA > 0.0 && metriB > 0.0 &&
           std::fabs(metriA - metriB) > kTracciatoUguale * std::max(metriA, metriB);
}

std::int32_t GiroContinuo(const std::vector<const GiroAllineato*>& giri) {
    constexpr int kPosti = 100;
    double migliore = 0.0;
    for (std::size_t i = 0; i < giri.size(); ++i) {
        const GiroAllineato* giro = giri[i];
        if (giro == nullptr) continue;
        if (migliore == 0.0 || giro->Durata < migliore) migliore = giro->Durata;
        const GiroAllineato* poi = i + 1 < giri.size() ? giri[i + 1] : nullptr;
        if (poi == nullptr || std::fabs(giro->Inizio + giro->Durata - poi->Inizio) > 0.02) continue;
        const auto da = [&](double quota) {
            return giro->Durata - giro->TempoA(quota * giro->Lunghezza) +
                   poi->TempoA(quota * poi->Lunghezza);
        };
        // Each hundredth of the lap first, then around the best of them.
        int posto = 0;
        for (int k = 1; k < kPosti; ++k) {
            if (da(static_cast<double>(k) / kPosti) < da(static_cast<double>(posto) / kPosti)) {
                posto = k;
            }
        }
        for (int k = -10; k <= 10; ++k) {
            const double quota = (posto + k / 10.0) / kPosti;
            migliore = std::min(migliore, da(std::clamp(quota, 0.0, 1.0)));
        }
    }
    return static_cast<std::int32_t>(std::lround(migliore * 100.0));
}

}  // namespace lapvane
