#include "widgets/AsseGrafico.h"

#include <algorithm>
#include <cmath>

#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr int kTaccheMassime = 100;
constexpr double kRangeMinimo = 1e-9;  // of the larger end; below it the labels could not differ
constexpr double kTolleranza = 1e-9;   // of a step, so that a tick on the very edge counts
constexpr double kNumeroGrande = 1e7;
constexpr int kDecimaliMassimi = 6;

/// 1, 2 or 5 times a power of ten, at least `minimo`.
double PassoTondo(double minimo) {
    const double potenza = std::pow(10.0, std::floor(std::log10(minimo)));
    for (const double m : {1.0, 2.0, 5.0}) {
        if (m * potenza >= minimo * (1.0 - kTolleranza)) return m * potenza;
    }
    return 10.0 * potenza;
}

bool Finito(const PuntoGrafico& p) {
    return std::isfinite(p.X) && std::isfinite(p.Y);
}

/// Shortens the segment to what lies inside; false if nothing does. The parameter runs from 0 at
/// the first end to 1 at the other.
bool TagliaSegmento(PuntoGrafico& a, PuntoGrafico& b, const Rettangolo& area) {
    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    double da = 0.0;
    double fino = 1.0;
    const auto lato = [&](double direzione, double distanza) {
        if (direzione == 0.0) return distanza >= 0.0;
        const double t = distanza / direzione;
        if (direzione < 0.0) {
            da = std::max(da, t);
        } else {
            fino = std::min(fino, t);
        }
        return da <= fino;
    };
    if (!lato(-dx, a.X - area.Sinistra) || !lato(dx, area.Destra - a.X) ||
        !lato(-dy, a.Y - area.Alto) || !lato(dy, area.Basso - a.Y)) {
        return false;
    }
    const PuntoGrafico inizio = a;
    if (fino < 1.0) b = {inizio.X + fino * dx, inizio.Y + fino * dy};
    if (da > 0.0) a = {inizio.X + da * dx, inizio.Y + da * dy};
    return true;
}

}  // namespace

Tacche CalcolaTacche(double da, double a, int massime) {
    Tacche tacche;
    if (!std::isfinite(da) || !std::isfinite(a) || massime < 1) return tacche;
    const double ampiezza = a - da;
    if (!std::isfinite(ampiezza) || ampiezza <= 0.0) return tacche;
    if (ampiezza < kRangeMinimo * std::max(std::fabs(da), std::fabs(a))) return tacche;
    if (ampiezza < 1e-300) return tacche;
    // A range can hold one more tick than it has steps.
    const int passi = std::max(1, std::min(massime, kTaccheMassime) - 1);
    tacche.Passo = PassoTondo(ampiezza / passi);
    tacche.Decimali = std::max(0, static_cast<int>(-std::floor(std::log10(tacche.Passo) + 1e-9)));
    const double primo = std::ceil(da / tacche.Passo - kTolleranza);
    const double ultimo = std::floor(a / tacche.Passo + kTolleranza);
    for (double n = primo; n <= ultimo && tacche.Valori.size() < kTaccheMassime; n += 1.0) {
        tacche.Valori.push_back(n * tacche.Passo);
    }
    return tacche;
}

std::string TestoTacca(double valore, const Tacche& tacche, char separatore) {
    if (std::fabs(valore) < tacche.Passo / 2.0) return "0";
    if (std::fabs(valore) >= kNumeroGrande || tacche.Decimali > kDecimaliMassimi) {
        // Few digits: what the step does not need is noise of the arithmetic.
        const double ordine = std::pow(10.0, std::floor(std::log10(std::fabs(valore))));
        std::string mantissa = Formatta(valore / ordine, "0.###", separatore);
        if (mantissa.back() == separatore) mantissa.pop_back();
        return mantissa + "E" + TestoNumero(std::log10(ordine));
    }
    const std::string figura =
        tacche.Decimali == 0 ? "0"
                             : "0." + std::string(static_cast<std::size_t>(tacche.Decimali), '0');
    return Formatta(valore, figura, separatore);
}

bool ScalaPixel::Valida() const {
    return std::isfinite(Da) && std::isfinite(A) && std::isfinite(A - Da) && A > Da;
}

std::vector<Tratto> TagliaLinea(std::span<const PuntoGrafico> punti, const Rettangolo& area) {
    std::vector<Tratto> tratti;
    Tratto aperto;
    const auto chiudi = [&] {
        if (aperto.size() > 1) tratti.push_back(std::move(aperto));
        aperto.clear();
    };
    for (std::size_t i = 1; i < punti.size(); ++i) {
        PuntoGrafico a = punti[i - 1];
        PuntoGrafico b = punti[i];
        if (!Finito(a) || !Finito(b) || !TagliaSegmento(a, b, area)) {
            chiudi();
            continue;
        }
        if (aperto.empty() || !(a == punti[i - 1])) {
            chiudi();
            aperto.push_back(a);
        }
        aperto.push_back(b);
        if (!(b == punti[i])) chiudi();
    }
    chiudi();
    return tratti;
}

Tratto Assottiglia(Tratto punti, double larghezza) {
    if (!(larghezza >= 1.0) || static_cast<double>(punti.size()) <= 4.0 * larghezza) return punti;
    Tratto pochi;
    for (std::size_t i = 0; i < punti.size();) {
        const double colonna = std::floor(punti[i].X);
        std::size_t minimo = i;
        std::size_t massimo = i;
        std::size_t oltre = i + 1;
        for (; oltre < punti.size() && std::floor(punti[oltre].X) == colonna; ++oltre) {
            if (punti[oltre].Y < punti[minimo].Y) minimo = oltre;
            if (punti[oltre].Y > punti[massimo].Y) massimo = oltre;
        }
        std::size_t scelti[] = {i, std::min(minimo, massimo), std::max(minimo, massimo), oltre - 1};
        const auto* const fine = std::unique(std::begin(scelti), std::end(scelti));
        for (const auto* s = std::begin(scelti); s != fine; ++s) pochi.push_back(punti[*s]);
        i = oltre;
    }
    return pochi;
}

}  // namespace lapvane
