#include "analysis/FinestraX.h"

#include <cmath>
#include <limits>

#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr double kRigheAlSecondo = 10.0;
constexpr double kPuntiDisegno = 500.0;  // about as many points as a drawing holds at most

/// Row number of a time or distance in the window, ties to even, kept inside 32 bits.
std::int32_t Riga(double valore) {
    const double r = std::nearbyint(valore);
    if (!(r > -2147483648.0)) return -2147483647;
    return r < 2147483647.0 ? static_cast<std::int32_t>(r) : 2147483647;
}

}  // namespace

void FinestraX::LeggiX(const IntervalloGrafico& letto) {
    vista_.XMin = letto.XMin;
    vista_.XMax = letto.XMax;
}

void FinestraX::ApriSulGiro(const TabellaDati& tabella, std::int32_t da, std::int32_t a,
                            double yMin, double yMax) {
    const int colonna = asseDistanza_ ? kColonnaDistanza : kColonnaTempo;
    vista_ = {tabella.Valore(colonna, Piano::Dati, da), tabella.Valore(colonna, Piano::Dati, a),
              yMin, yMax};
}

void FinestraX::Zoom(double fattore, bool fuori) {
    const double larghezza = vista_.XMax - vista_.XMin;
    vista_.XMax = (fuori ? larghezza / fattore : larghezza * fattore) + vista_.XMin;
}

void FinestraX::Sposta(double quanto) {
    vista_.XMin = vista_.XMin + quanto;
    vista_.XMax = vista_.XMax + quanto;
}

bool FinestraX::chkTempo_Click(bool spuntato) {
    chkTempo_ = spuntato;
    if (spuntato) CambiaAsse(false);
    return spuntato;
}

bool FinestraX::chkDistanza_Click(bool spuntato) {
    chkDistanza_ = spuntato;
    if (spuntato) CambiaAsse(true);
    return spuntato;
}

void FinestraX::CambiaAsse(bool distanza) {
    chkTempo_ = !distanza;
    chkDistanza_ = distanza;
    passoSposta_ = distanza ? 1.0 : 0.01;
    asseDistanza_ = distanza;
}

void FinestraX::CalcolaRighe(const TabellaDati& tabella, std::int32_t inizio, std::int32_t fine) {
    // Time starts again at 0 with each lap, so that XMin * 10 is a row offset inside the lap. Kept:
    // both tests look at the time column whatever the axis shows, and the last row counts from the
    // first row of the window.
    rigaDa_ = inizio;
    if (vista_.XMin > tabella.Valore(kColonnaTempo, Piano::Dati, rigaDa_)) {
        rigaDa_ = Riga(vista_.XMin * kRigheAlSecondo + rigaDa_);
    }
    rigaA_ = fine;
    if (tabella.Valore(kColonnaTempo, Piano::Dati, rigaA_) > vista_.XMax) {
        rigaA_ = Riga(vista_.XMax * kRigheAlSecondo + rigaDa_);
        if (rigaA_ > fine) rigaA_ = fine;
    }
}

void FinestraX::CalcolaPassoSposta() {
    CalcolaDecimazione();
    passoSposta_ = PassoFinestra(passoSposta_);
}

void FinestraX::CalcolaPassoScorri() {
    CalcolaDecimazione();
    passoScorri_ = PassoFinestra(passoScorri_);
}

double FinestraX::PassoFinestra(double prima) const {
    double passo = prima;
    if (chkDistanza_) passo = (vista_.XMax - vista_.XMin) / 10.0;
    if (chkTempo_) passo = (vista_.XMax - vista_.XMin) / 100.0;
    return passo;
}

void FinestraX::CalcolaDecimazione() {
    // Kept: the numbers of the time axis serve the distance axis as well.
    const double righe =
        std::nearbyint((vista_.XMax - vista_.XMin) * kRigheAlSecondo / kPuntiDisegno);
    constexpr double kMassima = std::numeric_limits<std::int16_t>::max();
    decimazione_ = righe >= 1.0 ? ConvertiInt16(std::fmin(righe, kMassima)) : std::int16_t{1};
}

}  // namespace lapvane
