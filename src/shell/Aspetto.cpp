#include "shell/Aspetto.h"

#include <array>
#include <utility>

#include "platform/FileTesto.h"
#include "shell/Ricordi.h"

namespace lapvane {

namespace {

constexpr std::string_view kPrimaRiga = "lapvane-look 1";
constexpr std::string_view kTema = "theme=";
constexpr std::string_view kBox = "pitlane=";
constexpr std::string_view kFile = "Look.lapvane";

constexpr std::array<std::pair<TemaScelto, std::string_view>, 3> kNomi{
    {{TemaScelto::Desktop, "desktop"}, {TemaScelto::Chiaro, "light"}, {TemaScelto::Scuro, "dark"}}};

}  // namespace

Aspetto LeggiAspetto(std::string_view testo) {
    Aspetto aspetto;
    LettoreRighe righe(testo);
    if (righe.Prossima() != kPrimaRiga) return {};
    while (!righe.Fine()) {
        const std::string_view riga = righe.Prossima();
        if (riga.starts_with(kTema)) {
            for (const auto& [tema, nome] : kNomi) {
                if (riga.substr(kTema.size()) == nome) aspetto.Tema = tema;
            }
        } else if (riga.starts_with(kBox)) {
            aspetto.ModoBox = riga.substr(kBox.size()) == "1";
        }
    }
    return aspetto;
}

std::string ScriviAspetto(const Aspetto& aspetto) {
    std::string testo(kPrimaRiga);
    testo += "\n";
    for (const auto& [tema, nome] : kNomi) {
        if (tema == aspetto.Tema) testo += std::string(kTema) + std::string(nome) + "\n";
    }
    return testo + std::string(kBox) + (aspetto.ModoBox ? "1" : "0") + "\n";
}

Aspetto CaricaAspetto() {
    return LeggiAspetto(LeggiRicordo(kFile, Lavoro::LeggereRecenti));
}

void SalvaAspetto(const Aspetto& aspetto) {
    SalvaRicordo(kFile, ScriviAspetto(aspetto), Lavoro::ScrivereRecenti);
}

}  // namespace lapvane
