#include "analysis/CalcoloFigure.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

#include "analysis/GiriLog.h"
#include "platform/Platform.h"
#include "reports/Circuiti.h"
#include "reports/DatiSessione.h"
#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

constexpr std::int32_t kGiorno = 24 * 60 * 60 * 100;  // hundredths

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

std::string VelocitaGiro(const std::string& tempo) {
    return VelocitaDaTempo(TempoCentesimi(tempo), 1);
}

FigureSessione CalcolaStatistiche(const GiriLog& giri) {
    FigureSessione figure;
    std::int64_t totale = 0;
    int contati = 0;
    for (int giro = 2; giro <= giri.NumGiri() + 1; ++giro) {
        const auto tempo = TempoCentesimi(giri.GetTempoGiro(giro));
        if (!tempo) continue;
        totale += *tempo;
        ++contati;
    }
    figure.NumGiri = giri.NumGiri();
    figure.GiriEsclusi = giri.NumGiri() - contati;
    // Kept: the total is a time of day, so that it begins anew after 24 hours. Mean and speed
    // don't.
    const auto giorno = static_cast<std::int32_t>(totale % kGiorno);
    const std::int32_t ora = giorno / 360000;
    figure.TempoTotale = DueCifre(ora) + ":" + CentesimiInTempo(giorno % 360000);
    figure.TempoMedio = contati == 0
                            ? std::string()
                            : CentesimiInTempo(static_cast<std::int32_t>(totale / contati));
    figure.VelocitaMedia = VelocitaDaTempo(totale, contati);
    figure.GiroMigliore = giri.GiroMigliore();
    figure.GiroPeggiore = giri.GiroPeggiore();
    figure.TempoMigliore = giri.GetTempoGiro(figure.GiroMigliore + 1);
    figure.TempoPeggiore = giri.GetTempoGiro(figure.GiroPeggiore + 1);
    figure.VelocitaMigliore = VelocitaGiro(figure.TempoMigliore);
    figure.VelocitaPeggiore = VelocitaGiro(figure.TempoPeggiore);
    return figure;
}

}  // namespace lapvane
