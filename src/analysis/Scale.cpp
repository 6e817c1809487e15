#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/AnalisiDati.h"
#include "analysis/Statistiche.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr double kRigheAlSecondo = 10.0;
constexpr double kPuntiDisegno = 500.0;  // about as many points as a drawing holds at most
constexpr double kMassimoNullo = 0.01;   // stands for a maximum of 0, so that a factor exists

}  // namespace

void AnalisiDati::CalcolaScale(GraphControl& grafico) {
    const int ultimo = UltimoCanaleFile();
    const std::int32_t da = InizioGiro(GiroSelezionato);
    const std::int32_t a = FineGiro(GiroSelezionato);
    YMax = 0.0;
    std::vector<std::span<const double>> colonne;
    for (int c = kPrimoCanale; c <= ultimo; ++c) {
        const auto i = static_cast<std::size_t>(c);
        const auto celle = Tabella().Righe(c, Piano::Dati, da, a);
        MaxCanale[i] = Massimo(celle);
        if (MaxCanale[i] == 0.0) MaxCanale[i] = kMassimoNullo;
        MinCanale[i] = Minimo(celle);
        if (MaxCanale[i] > YMax) YMax = MaxCanale[i];
        colonne.push_back(celle);
    }
    const auto medie = MediaColonne(colonne, static_cast<double>(a) - da + 1.0);
    std::copy(medie.begin(), medie.end(), MediaCanale.begin() + kPrimoCanale);
    for (int c = kPrimoCanale; c <= ultimo; ++c) {
        const auto i = static_cast<std::size_t>(c);
        FattoreScala[i] = YMax / MaxCanale[i];
    }
    YMin = ultimo < kPrimoCanale ? 0.0 : MinCanale[kPrimoCanale];
    for (int c = kPrimoCanale; c <= ultimo; ++c) {
        const auto i = static_cast<std::size_t>(c);
        const double minimo = FattoreScala[i] * MinCanale[i];
        if (minimo < YMin) YMin = minimo;
    }
    const int colonna = AsseDistanza ? kColonnaDistanza : kColonnaTempo;
    XMin = Tabella().Valore(colonna, Piano::Dati, da);
    XMax = Tabella().Valore(colonna, Piano::Dati, a);
    YMax = YMax + YMax * 0.1;
    // Kept: the margin of a negative minimum moves it towards 0, not away from it.
    YMin = YMin - YMin * 0.2;
    grafico.ImpostaIntervallo(XMin, XMax, YMin, YMax, 0);
    CalcolaPassoSposta();
}

double AnalisiDati::PassoFinestra(double prima) const {
    double passo = prima;
    if (chkDistanza) passo = (XMax - XMin) / 10.0;
    if (chkTempo) passo = (XMax - XMin) / 100.0;
    return passo;
}

void AnalisiDati::CalcolaPassoSposta() {
    CalcolaDecimazione();
    PassoSposta = PassoFinestra(PassoSposta);
}

void AnalisiDati::CalcolaPassoScorri() {
    CalcolaDecimazione();
    PassoScorri = PassoFinestra(PassoScorri);
}

void AnalisiDati::CalcolaDecimazione() {
    // Kept: the numbers of the time axis serve the distance axis as well.
    const double righe = std::nearbyint((XMax - XMin) * kRigheAlSecondo / kPuntiDisegno);
    constexpr double kMassima = std::numeric_limits<std::int16_t>::max();
    Decimazione = righe >= 1.0 ? ConvertiInt16(std::fmin(righe, kMassima)) : std::int16_t{1};
}

}  // namespace lapvane
