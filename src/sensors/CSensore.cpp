#include "sensors/CSensore.h"

#include <optional>

#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/FileTesto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace fs = std::filesystem;

std::vector<CSensore> LibreriaSensori;

std::size_t CSensore::Indice(int i) {
    if (i < 0 || static_cast<std::size_t>(i) >= kElementi) {
        throw ErroreRuntime(NumeroErrore::Subscript, "reading a point of a sensor curve");
    }
    return static_cast<std::size_t>(i);
}

namespace {

constexpr std::size_t kMassimoFile = std::size_t{1} << 20;

/// A sensor from the text of its file; empty if it is not one.
std::optional<CSensore> LeggiSensore(std::string_view testo) {
    LettoreRighe righe(testo);
    if (righe.Prossima() != "ZEVSensor") return std::nullopt;
    CSensore sensore;
    sensore.Tipo(righe.Prossima());
    sensore.Nome(righe.Prossima());
    if (righe.Fine()) return std::nullopt;
    const auto punti = LeggiInt16(righe.Prossima());
    if (!punti || *punti < 0 || *punti > static_cast<int>(CSensore::kElementi)) return std::nullopt;
    sensore.NumPunti(*punti);
    // A fuel level curve is filled up to the table's end with its last value.
    const bool riempi = sensore.Tipo() == "LivelloBenzina" && *punti > 0;
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

}  // namespace

void CaricaLibreriaSensori() {
    const fs::path cartella = platform().AppPath() / "sensors";
    std::error_code ignorato;
    if (!fs::is_directory(cartella, ignorato)) return;
    for (const std::string& nome : ElencaFile(cartella)) {
        const fs::path percorso = cartella / PercorsoDaTesto(nome);
        std::optional<CSensore> sensore;
        try {
            sensore = LeggiSensore(LeggiFile(percorso, "reading the sensor library", kMassimoFile));
        } catch (const ErroreRuntime&) {
            // A file that cannot be read, or holds a number beyond all range, is rejected alike.
        }
        if (!sensore) {
            platform().MsgBox(Testo(175) + nome + " " + Testo(176), Buttons::Ok, Icon::Critical,
                              platform().ExeName());
            continue;
        }
        sensore->NomeFile(percorso);
        LibreriaSensori.push_back(std::move(*sensore));
    }
}

void SvuotaLibreriaSensori() {
    LibreriaSensori.clear();
}

}  // namespace lapvane
