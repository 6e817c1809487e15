#include "instrument/Sensori.h"

#include <array>
#include <optional>
#include <string>

#include "device/Codec.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "sensors/Curve.h"
#include "shell/NumeroTesto.h"

namespace lapvane::strumento {

namespace {

constexpr int kPunti = 20;

/// The car's sensors by curve channel.
constexpr std::array<const char*, kCanaliCurva> kMontati = {
    "NTC olio M10",  "Pressione 0-10 bar", "Pressione 0-7 bar",
    "NTC acqua M10", "Serbatoio 60 litri", "Cambio 6 marce",
    "Lambda 0-5 V",  "Turbo -1 +3 bar",    "Accelerometro 3 g"};

/// Twenty lines as words, each value times the factor; empty if the file ends before.
std::string Asse(LettoreRighe& righe, int fattore) {
    std::string byte;
    for (int i = 0; i < kPunti; ++i) {
        if (righe.Fine()) return {};
        byte += CodificaWord(TestoNumero(PrefissoNumerico(righe.Prossima()) * fattore));
    }
    return byte;
}

/// A sensor file as the payload of a curve's frame behind its channel byte.
std::optional<std::string> LeggiCurva(const std::filesystem::path& percorso) {
    const std::string testo = LeggiFile(percorso, Lavoro::LeggereLibreria);
    LettoreRighe righe(testo);
    if (righe.Prossima() != "ZEVSensor") return std::nullopt;
    const int fattore = FattoreSensore(righe.Prossima());
    righe.Prossima();  // its name does not travel
    if (fattore == 0 || LeggiIntero(righe.Prossima()) != kPunti) return std::nullopt;
    const std::string asseX = Asse(righe, 1);
    const std::string asseY = Asse(righe, fattore);
    if (asseY.empty()) return std::nullopt;
    return TestaCurva() + asseX + CodificaWord(0) + asseY;
}

}  // namespace

int MontaSensori(const std::filesystem::path& cartella, Memoria& memoria) {
    int montati = 0;
    for (int canale = 0; canale < kCanaliCurva; ++canale) {
        const std::string nome = kMontati[static_cast<std::size_t>(canale)];
        try {
            const auto curva = LeggiCurva(cartella / (nome + ".sns"));
            if (!curva) continue;
            memoria.ProgrammaCurva(canale, *curva);
            ++montati;
        } catch (const ErroreRuntime&) {
            // No such file, or a value that no frame holds.
        }
    }
    return montati;
}

}  // namespace lapvane::strumento
