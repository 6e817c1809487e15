#include "instrument/Traiettoria.h"

#include <algorithm>
#include <cmath>

#include "instrument/Caso.h"

namespace lapvane::strumento {

namespace {

constexpr double kAderenzaLaterale = 1.6 * kGravita;
constexpr double kFrenata = 1.4 * kGravita;
constexpr double kTrazione = 0.95 * kGravita;
constexpr double kVelocitaMassima = 90.0;   // m/s; the drag keeps the car below it
constexpr double kPotenza = 420.0;          // W a kg
constexpr double kAria = 0.00095;           // 1/m
constexpr double kRotolamento = 0.15;       // m/s2
constexpr double kPassoNodi = 4.0;          // m
constexpr std::size_t kTratti = 40;         // pieces of a lap that the driver takes each time anew
constexpr double kAttesaIniziale = 5.0;     // s in the pits before the start
constexpr double kAttesaSosta = 13.0;       // s at a fuel stop
constexpr double kAutonomia = 87000.0;      // m between fuel stops
constexpr std::uint32_t kSeme = 20260704u;  // any fixed number: every run is the same session

struct Ritmo {
    double Aderenza = 1.0;  // share of the grip that the driver uses
    double Motore = 1.0;    // share of the power
};

/// The pace of each lap, the stretch before the first crossing first and the one after the last
/// crossing last.
std::vector<Ritmo> RitmoGiri(int giri, int lento, int migliore, Caso& caso) {
    std::vector<Ritmo> ritmo;
    ritmo.push_back({0.80, 0.85});
    for (int giro = 0; giro < giri; ++giro) {
        double aderenza = 0.985 - 0.03 * caso.Prossimo();
        if (giro == 0) aderenza -= 0.04;  // cold tyres
        if (giro == 1) aderenza -= 0.02;
        if (giro == migliore) {
            ritmo.push_back({1.015, 1.0});
        } else if (giro == lento) {
            ritmo.push_back({0.60, 0.65});
        } else {
            ritmo.push_back({aderenza, 1.0});
        }
    }
    ritmo.push_back({0.55, 0.5});
    return ritmo;
}

/// What is left of the grip for accelerating or braking while the car turns.
double Resto(double velocita, double curvatura, double laterale) {
    const double uso = velocita * velocita * curvatura / laterale;
    return std::max(0.12, std::sqrt(std::max(0.0, 1.0 - uso * uso)));
}

}  // namespace

double Resistenza(double velocita) {
    return kAria * velocita * velocita + kRotolamento;
}

double Spinta(double velocita) {
    return std::min(kTrazione, kPotenza / std::max(velocita, 1.0));
}

/// What acts on the car at each node.
struct Traiettoria::Strada {
    std::vector<double> Curvatura;  // 1/m, of a lap
    std::vector<Ritmo> Giri;        // from the stretch before the first crossing on
    std::vector<float> Aderenza;    // share of the grip, of each node
};

Traiettoria::Traiettoria(const Circuito& circuito, int giri)
    : giri_(std::max(giri, 1)), lunghezza_(circuito.Lunghezza()) {
    if (giri_ >= 4) {
        lento_ = giri_ / 3 + 1;
        migliore_ = 2 * giri_ / 3 + 1;
    }
    nodiGiro_ = static_cast<std::size_t>(std::lround(lunghezza_ / kPassoNodi));
    passo_ = lunghezza_ / static_cast<double>(nodiGiro_);
    const auto nodi = [this](double quota, double massimo) {
        return static_cast<std::size_t>(
            std::lround(std::clamp(quota * lunghezza_, 150.0, massimo) / passo_));
    };
    nodiInizio_ = nodi(0.15, 900.0);
    nodi_.resize(nodiInizio_ + static_cast<std::size_t>(giri_) * nodiGiro_ + nodi(0.12, 700.0) + 1);

    Strada strada;
    for (std::size_t i = 0; i < nodiGiro_; ++i) {
        strada.Curvatura.push_back(circuito.Curvatura(static_cast<double>(i) * passo_));
    }
    LimitaInCurva(strada);
    MettiSoste();
    Frena(strada);
    Accelera(strada);
}

void Traiettoria::LimitaInCurva(Strada& strada) {
    Caso caso(kSeme);
    strada.Giri = RitmoGiri(giri_, lento_, migliore_, caso);
    strada.Aderenza.resize(nodi_.size());
    std::size_t tratto = kTratti;
    double estro = 1.0;
    for (std::size_t i = 0; i < nodi_.size(); ++i) {
        const std::size_t nuovo = NelGiro(i) * kTratti / nodiGiro_;
        if (nuovo != tratto) {
            tratto = nuovo;
            estro = 1.0 - 0.012 * caso.Prossimo();
        }
        const double quota = strada.Giri[Giro(i)].Aderenza * estro;
        strada.Aderenza[i] = static_cast<float>(quota);
        nodi_[i].Velocita = std::min(
            kVelocitaMassima,
            std::sqrt(kAderenzaLaterale * quota / std::max(strada.Curvatura[NelGiro(i)], 1e-6)));
    }
}

void Traiettoria::MettiSoste() {
    nodi_.front().Velocita = 0.0;
    nodi_.front().Attesa = kAttesaIniziale;
    nodi_.back().Velocita = 0.0;
    // For fuel, at the place where the session began.
    const auto turno = std::max(1, static_cast<int>(kAutonomia / lunghezza_));
    for (int giro = turno; giro < giri_; giro += turno) {
        Nodo& sosta = nodi_[static_cast<std::size_t>(giro) * nodiGiro_];
        sosta.Velocita = 0.0;
        sosta.Attesa = kAttesaSosta;
    }
}

void Traiettoria::Frena(const Strada& strada) {
    for (std::size_t i = nodi_.size() - 1; i-- > 0;) {
        const double dopo = nodi_[i + 1].Velocita;
        const double quota = double{strada.Aderenza[i]};
        const double frenata =
            kFrenata * quota * Resto(dopo, strada.Curvatura[NelGiro(i)], kAderenzaLaterale * quota);
        nodi_[i].Velocita =
            std::min(nodi_[i].Velocita, std::sqrt(dopo * dopo + 2.0 * frenata * passo_));
    }
}

void Traiettoria::Accelera(const Strada& strada) {
    for (std::size_t i = 0; i + 1 < nodi_.size(); ++i) {
        const double ora = nodi_[i].Velocita;
        const double quota = double{strada.Aderenza[i]};
        const double presa =
            kTrazione * quota * Resto(ora, strada.Curvatura[NelGiro(i)], kAderenzaLaterale * quota);
        const double spinta =
            std::min(presa, Spinta(ora) * strada.Giri[Giro(i)].Motore) - Resistenza(ora);
        Nodo& prossimo = nodi_[i + 1];
        prossimo.Velocita = std::min(prossimo.Velocita,
                                     std::sqrt(std::max(0.0, ora * ora + 2.0 * spinta * passo_)));
        prossimo.Arrivo =
            nodi_[i].Arrivo + nodi_[i].Attesa + 2.0 * passo_ / (ora + prossimo.Velocita);
    }
}

double Traiettoria::Passaggio(int k) const {
    return nodi_[nodiInizio_ + static_cast<std::size_t>(k) * nodiGiro_].Arrivo;
}

Moto Traiettoria::Al(double secondi) const {
    const auto dopo = std::upper_bound(nodi_.begin(), nodi_.end(), secondi,
                                       [](double t, const Nodo& nodo) { return t < nodo.Arrivo; });
    const std::size_t i =
        dopo == nodi_.begin() ? 0 : static_cast<std::size_t>(dopo - nodi_.begin()) - 1;
    const Nodo& nodo = nodi_[i];
    Moto moto;
    moto.Posizione = (static_cast<double>(i) - static_cast<double>(nodiInizio_)) * passo_;
    const double tempo = secondi - nodo.Arrivo - nodo.Attesa;
    if (tempo < 0.0 || dopo == nodi_.end()) {
        moto.Sosta = i != 0 && dopo != nodi_.end();
        return moto;
    }
    const double prossima = nodi_[i + 1].Velocita;
    moto.Accelerazione = (prossima * prossima - nodo.Velocita * nodo.Velocita) / (2.0 * passo_);
    moto.Velocita = std::max(0.0, nodo.Velocita + moto.Accelerazione * tempo);
    moto.Posizione +=
        std::min(passo_, nodo.Velocita * tempo + 0.5 * moto.Accelerazione * tempo * tempo);
    return moto;
}

}  // namespace lapvane::strumento
