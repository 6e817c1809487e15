#include "sensors/FileSensore.h"

#include <algorithm>

#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr std::string_view kMagia = "ZEVSensor";
constexpr std::string_view kFineRiga = "\r\n";

void AggiungiAsse(std::string& testo, std::span<const std::string> righe) {
    for (std::size_t i = 0; i < CSensore::kPunti; ++i) {
        if (!righe.empty()) testo += righe[std::min(i, righe.size() - 1)];
        testo += kFineRiga;
    }
}

}  // namespace

std::filesystem::path CartellaSensori() {
    return platform().AppPath() / "sensors";
}

std::optional<CSensore> LeggiSensore(std::string_view testo) {
    LettoreRighe righe(testo);
    if (righe.Prossima() != kMagia) return std::nullopt;
    CSensore sensore;
    sensore.Tipo(righe.Prossima());
    sensore.Nome(righe.Prossima());
    if (righe.Fine()) return std::nullopt;
    const auto punti = LeggiInt16(righe.Prossima());
    if (!punti || *punti < 0 || *punti > static_cast<int>(CSensore::kElementi)) return std::nullopt;
    sensore.NumPunti(*punti);
    // A fuel level curve is filled up to the table's end with its last value.
    const bool riempi = sensore.Tipo() == "LivelloBenzina";
    const auto asse = [&](auto imposta) {
        double ultimo = 0.0;
        for (int i = 0; i < *punti; ++i) {
            if (righe.Fine()) return false;
            ultimo = PrefissoNumerico(righe.Prossima());
            imposta(i, ultimo);
        }
        for (int i = *punti; riempi && i < static_cast<int>(CSensore::kPunti); ++i)
            imposta(i, ultimo);
        return true;
    };
    if (!asse([&sensore](int i, double v) { sensore.X(i, v); })) return std::nullopt;
    if (!asse([&sensore](int i, double v) { sensore.Y(i, v); })) return std::nullopt;
    return sensore;
}

std::string TestoSensore(std::string_view tipo, std::string_view nome,
                         std::span<const std::string> x, std::span<const std::string> y) {
    std::string testo(kMagia);
    // Kept: 20 whatever the number of rows in use; a shorter curve comes back with a flat tail.
    for (const std::string_view riga : {tipo, nome, std::string_view("20")}) {
        testo += kFineRiga;
        testo += riga;
    }
    testo += kFineRiga;
    AggiungiAsse(testo, x);
    AggiungiAsse(testo, y);
    return testo;
}

void ScriviSensore(const std::filesystem::path& percorso, std::string_view tipo,
                   std::string_view nome, std::span<const std::string> x,
                   std::span<const std::string> y) {
    ScriviFile(percorso, TestoSensore(tipo, nome, x, y), Lavoro::ScrivereSensore);
}

}  // namespace lapvane
