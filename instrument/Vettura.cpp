#include "instrument/Vettura.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lapvane::strumento {

namespace {

constexpr double kTempo = 0.1;  // s, one step
constexpr std::uint32_t kSeme = 4108u;
constexpr double kFermo = 0.05;  // m/s, below it the car stands

constexpr double kCambiata = 11500.0;    // RPM at which the driver shifts up
constexpr double kScalata = 10300.0;     // RPM that the lower gear may reach under braking
constexpr double kTirata = 6200.0;       // RPM below which he shifts down to accelerate
constexpr double kMinimo = 1250.0;       // idle
constexpr double kSlittamento = 5600.0;  // RPM that the clutch holds at the start
/// Speed in m/s of each gear at the shift point.
constexpr std::array<double, 6> kMarce = {26.5, 36.0, 46.0, 56.0, 66.0, 77.5};

constexpr double kConsumoKm = 0.24;  // litres, for the filling of the tank
constexpr double kRiserva = 3.0;     // litres that should be left
constexpr double kPompa = 2.0;       // litres a second at a fuel stop

/// Moves a value towards a goal with the time constant `secondi`.
void Segui(double& valore, double meta, double secondi) {
    valore += (meta - valore) * (1.0 - std::exp(-kTempo / secondi));
}

double GiriIn(int marcia, double velocita) {
    return velocita / kMarce[static_cast<std::size_t>(marcia - 1)] * kCambiata;
}

}  // namespace

Vettura::Vettura(double metri)
    : litri_(std::min(kSerbatoio, kRiserva + kConsumoKm * metri / 1000.0)), caso_(kSeme) {
    misure_.Livello = litri_;
    misure_.GiriMotore = kMinimo;
}

const Misure& Vettura::Passo(const Contesto& contesto) {
    Motore(contesto);
    Fluidi(contesto);
    Benzina(contesto);
    Allarmi();
    return misure_;
}

void Vettura::Motore(const Contesto& contesto) {
    const double v = contesto.Auto.Velocita;
    const double a = contesto.Auto.Accelerazione;
    const double spinta = a + Resistenza(v);
    misure_.Velocita = 3.6 * v;
    misure_.Accelerazione = a / kGravita + 0.04 * caso_.Scarto();
    misure_.Farfalla = v < kFermo ? 0.0 : std::clamp(100.0 * spinta / Spinta(v), 0.0, 100.0);

    int& marcia = misure_.Marcia;
    if (v < kFermo) {
        marcia = 0;
        misure_.GiriMotore = kMinimo + 40.0 * caso_.Scarto();
    } else {
        marcia = std::max(marcia, 1);
        if (marcia < 6 && GiriIn(marcia, v) > kCambiata) {
            ++marcia;
        } else if (marcia > 1 && GiriIn(marcia - 1, v) < (a < -1.0 ? kScalata : kTirata)) {
            --marcia;
        }
        double giri = GiriIn(marcia, v);
        if (marcia == 1) giri = std::max(giri, a > 0.5 ? kSlittamento : kMinimo);
        misure_.GiriMotore = giri + 25.0 * caso_.Scarto();
    }

    const double carico = misure_.Farfalla / 100.0 * std::min(1.0, misure_.GiriMotore / 8000.0);
    Segui(misure_.Turbo, carico > 0.25 ? 1.15 * carico : -0.6, 0.35);
    const double lambda = misure_.Farfalla > 90.0 ? 12.6 : misure_.Farfalla > 2.0 ? 13.7 : 14.7;
    Segui(misure_.AriaBenzina, lambda, 0.3);
    const bool carica = misure_.GiriMotore > 2000.0;
    Segui(misure_.Batteria, (carica ? 13.8 : 12.7) + 0.05 * caso_.Scarto(), 1.2);
}

void Vettura::Fluidi(const Contesto& contesto) {
    const double carico = misure_.Farfalla / 100.0;
    const bool fermo = misure_.Marcia == 0;
    Segui(misure_.TempOlio, fermo ? 88.0 : 98.0 + 12.0 * carico, 150.0);
    if (contesto.Traffico) {
        Segui(misure_.TempAcqua, 113.0, 40.0);
    } else {
        Segui(misure_.TempAcqua, fermo ? 94.0 : 86.0 + 8.0 * carico, 60.0);
    }
    const double fluidita = 0.012 * (misure_.TempOlio - 90.0);
    const double piena = 1.6 + 3.9 * std::min(1.0, misure_.GiriMotore / 9000.0) - fluidita;
    Segui(misure_.PressOlio, contesto.Sbattimento ? 0.8 : piena, 0.25);
}

void Vettura::Benzina(const Contesto& contesto) {
    const double carico = misure_.Farfalla / 100.0 * misure_.GiriMotore / kCambiata;
    litri_ = std::max(0.5, litri_ - kTempo * (0.0008 + 0.022 * carico));
    if (contesto.Auto.Sosta) litri_ = std::min(kSerbatoio, litri_ + kTempo * kPompa);
    // In a corner the fuel climbs the tank's wall, away from the float.
    const double laterale =
        contesto.Auto.Velocita * contesto.Auto.Velocita * contesto.Curvatura / kGravita;
    Segui(misure_.Livello, litri_ - 0.35 * laterale + 0.5 * caso_.Scarto(), 1.0);
    const bool vuota = litri_ < 4.2 && laterale > 1.35;
    Segui(misure_.PressBenzina, vuota ? 1.8 : 3.8 - 0.4 * carico + 0.05 * caso_.Scarto(), 0.3);
}

void Vettura::Allarmi() {
    unsigned& bit = misure_.Allarmi;
    bit = 0;
    // The scavenge pump waits for warm oil.
    if (misure_.TempOlio < 65.0) bit |= kPompaOlio;
    if (misure_.Batteria < 13.1) bit |= kAlternatore;
    if (misure_.TempOlio > 125.0) bit |= kTemperaturaOlio;
    if (misure_.TempAcqua > 102.0) bit |= kTemperaturaAcqua;
    if (misure_.Batteria < 12.0) bit |= kBatteria;
    if (misure_.PressBenzina < 2.5) bit |= kPressioneBenzina;
    if (misure_.PressOlio < 1.2) bit |= kPressioneOlio;
    if (misure_.Livello < 5.0) bit |= kLivelloBenzina;
}

}  // namespace lapvane::strumento
