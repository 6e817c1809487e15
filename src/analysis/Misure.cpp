// What the dialogs of an analysis ask of it, and the figures of the session.
#include <algorithm>
#include <optional>
#include <string_view>

#include "analysis/AnalisiDati.h"
#include "platform/ErroreRuntime.h"
#include "reports/Circuiti.h"
#include "reports/DatiSessione.h"
#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

constexpr std::int32_t kGiorno = 24 * 60 * 60 * 100;  // hundredths

std::size_t Indice(int valore, int massimo) {
    if (valore < 0 || valore > massimo) {
        throw ErroreRuntime(NumeroErrore::Subscript, "asking an analysis for a channel or a lap");
    }
    return static_cast<std::size_t>(valore);
}

std::size_t Canale(int c) {
    return Indice(c, kUltimoCanale);
}

/// Hundredths of a second of a time text, mm:ss.cc or hh:mm:ss.cc; minutes and seconds may be more
/// than a clock has, and hundredths of one digit take a 0 behind it. None if it is no time.
std::optional<std::int32_t> TempoCentesimi(std::string_view tempo) {
    const auto numero = [](std::string_view cifre, std::size_t minime, std::size_t massime) {
        const bool adatto = cifre.size() >= minime && cifre.size() <= massime &&
                            cifre.find_first_not_of("0123456789") == std::string_view::npos;
        return adatto ? LeggiIntero(cifre) : std::nullopt;
    };
    tempo = Rifila(tempo);
    const std::size_t primo = tempo.find(':');
    const std::size_t punto = tempo.find('.', std::min(primo, tempo.size()));
    if (punto == std::string_view::npos) return std::nullopt;
    std::optional<std::int32_t> ore = 0;
    auto minuti = numero(tempo.substr(0, primo), 2, 5);
    std::string_view resto = tempo.substr(primo + 1, punto - primo - 1);
    if (resto.size() == 5 && resto[2] == ':') {
        ore = numero(tempo.substr(0, primo), 2, 2);
        minuti = numero(resto.substr(0, 2), 2, 2);
        resto.remove_prefix(3);
    }
    const auto secondi = numero(resto, 2, 2);
    const std::string_view coda = tempo.substr(punto + 1);
    const auto centesimi = numero(coda, 1, 2);
    if (!ore || !minuti || !secondi || !centesimi) return std::nullopt;
    return ((*ore * 60 + *minuti) * 60 + *secondi) * 100 + *centesimi * (coda.size() == 1 ? 10 : 1);
}

/// Speed over `giri` laps in a time, km/h; metres a hundredth times 360. Empty without a time.
std::string VelocitaDaTempo(std::optional<std::int64_t> centesimi, int giri) {
    if (centesimi.value_or(0) == 0) return {};
    const double lunghezza = MetriInteri(DatiSessione.LunghTracciato);
    return Formatta(lunghezza * giri / static_cast<double>(*centesimi) * 360.0, "#.0##",
                    platform().DecimalSeparator());
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
    return VelocitaDaTempo(TempoCentesimi(GetTempoGiro(giro)), 1);
}

void AnalisiDati::RinominaCanale(int c, const std::string& nome, const std::string& unita) {
    const std::size_t i = Canale(c);
    // One that is the table's own follows the language.
    if (nome != NomeCampo[i]) nomeDato_[i] = c > kUltimoNomeInTabella || nome != NomeDaTabella(c);
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
    std::int64_t totale = 0;
    int contati = 0;
    for (int giro = 2; giro <= NumGiri + 1; ++giro) {
        const auto tempo = TempoCentesimi(GetTempoGiro(giro));
        if (!tempo) continue;
        totale += *tempo;
        ++contati;
    }
    GiriEsclusi = NumGiri - contati;
    // Kept: the total is a time of day, so that it begins anew after 24 hours. Mean and speed
    // don't.
    const auto giorno = static_cast<std::int32_t>(totale % kGiorno);
    const std::int32_t ora = giorno / 360000;
    TempoTotale = DueCifre(ora) + ":" + CentesimiInTempo(giorno % 360000);
    TempoMedio = contati == 0 ? std::string()
                              : CentesimiInTempo(static_cast<std::int32_t>(totale / contati));
    VelocitaMedia = VelocitaDaTempo(totale, contati);
    TempoMigliore = GetTempoGiro(GiroMigliore + 1);
    TempoPeggiore = GetTempoGiro(GiroPeggiore + 1);
    VelocitaMigliore = VelocitaDaTempo(TempoCentesimi(TempoMigliore), 1);
    VelocitaPeggiore = VelocitaDaTempo(TempoCentesimi(TempoPeggiore), 1);
}

}  // namespace lapvane
