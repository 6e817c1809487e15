// What the dialogs of an analysis ask of it, and the figures of the session.
#include "analysis/AnalisiDati.h"
#include "platform/ErroreRuntime.h"
#include "reports/DatiSessione.h"
#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

constexpr std::size_t kCaratteriConOre = 11;  // hh:mm:ss.cc

std::size_t Indice(int valore, int massimo) {
    if (valore < 0 || valore > massimo) {
        throw ErroreRuntime(NumeroErrore::Subscript, "asking an analysis for a channel or a lap");
    }
    return static_cast<std::size_t>(valore);
}

std::size_t Canale(int c) {
    return Indice(c, kUltimoCanale);
}

/// Hundredths of a second of a time text; 0 for an empty one.
std::int32_t TempoCentesimi(const std::string& tempo) {
    const auto parte = [&](std::size_t da) {
        return static_cast<std::int32_t>(
            da < tempo.size() ? PrefissoNumerico(std::string_view(tempo).substr(da, 2)) : 0.0);
    };
    const std::size_t ore = tempo.size() == kCaratteriConOre ? 3 : 0;
    const std::int32_t h = ore != 0 ? parte(0) : 0;
    return ((h * 60 + parte(ore)) * 60 + parte(ore + 3)) * 100 + parte(ore + 6);
}

/// Speed over `giri` laps in a time, km/h; metres a hundredth times 360. Empty without a time.
std::string VelocitaDaTempo(const std::string& tempo, int giri) {
    const std::int32_t centesimi = TempoCentesimi(tempo);
    if (centesimi == 0) return {};
    const double lunghezza = LeggiInt32(DatiSessione.LunghTracciato).value_or(0);
    return Formatta(lunghezza * giri / centesimi * 360.0, "#.0##", platform().DecimalSeparator());
}

}  // namespace

void AnalisiDati::SetMinVal(int c, double valore) {
    MinCanale[Canale(c)] = valore;
}

void AnalisiDati::SetMaxVal(int c, double valore) {
    // Kept: the minimum takes the value here too; the graph settings exchange the maximum through
    // `MaxDialogo`.
    MinCanale[Canale(c)] = valore;
}

std::string AnalisiDati::GetMinVal(int c) const {
    return TestoNumero(MinCanale[Canale(c)], platform().DecimalSeparator());
}

std::string AnalisiDati::GetMaxVal(int c) const {
    return TestoNumero(MaxCanale[Canale(c)], platform().DecimalSeparator());
}

std::string AnalisiDati::GetMediaVal(int c) const {
    return TestoNumero(MediaCanale[Canale(c)], platform().DecimalSeparator());
}

std::string AnalisiDati::GetNomeMisura(int c) const {
    return TitoloCanale(static_cast<int>(Canale(c)));
}

std::string AnalisiDati::GetTempoGiro(int giro) const {
    return TempiGiro[Indice(giro, kGiriMassimi)][1];
}

std::string AnalisiDati::GetSessioneTempo(int giro) const {
    return TempiSessione[Indice(giro, kGiriMassimi)];
}

std::string AnalisiDati::GetVelocitaGiro(int giro) const {
    return VelocitaDaTempo(GetTempoGiro(giro), 1);
}

void AnalisiDati::RinominaCanale(int c, const std::string& nome, const std::string& unita) {
    const std::size_t i = Canale(c);
    NomeCampo[i] = nome;
    UnitaCampo[i] = unita;
    vista_.NomeCampo(c, nome);
    vista_.UnitaCampo(c, unita);
}

void AnalisiDati::ColoraCanale(int c, Colore colore) {
    ColoreCanale[Canale(c)] = colore;
    vista_.ColoreCanale(c, colore);
}

void AnalisiDati::CalcolaStatistiche() {
    TempoTotale = "00:00:00.00";
    for (int giro = 2; giro <= NumGiri + 1; ++giro) {
        std::string tempo = "00:" + GetTempoGiro(giro);
        try {
            TempoTotale = SommaTempi(TempoTotale, tempo);
        } catch (const ErroreRuntime&) {
            // A text that is no time adds none.
        }
    }
    TempoMedio = DividiTempo(TempoTotale, static_cast<std::int16_t>(NumGiri));
    VelocitaMedia = VelocitaDaTempo(TempoTotale, NumGiri);
    TempoMigliore = GetTempoGiro(GiroMigliore + 1);
    TempoPeggiore = GetTempoGiro(GiroPeggiore + 1);
    VelocitaMigliore = VelocitaDaTempo(TempoMigliore, 1);
    VelocitaPeggiore = VelocitaDaTempo(TempoPeggiore, 1);
}

}  // namespace lapvane
