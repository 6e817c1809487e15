// What the program itself costs around the instrument's pauses: loading the sensor library, and a
// whole run through the instrument with a clock that jumps over every wait.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "device/ProgrammaStrumento.h"
#include "instrument/SerialeStrumento.h"
#include "instrument/Strumento.h"
#include "project/DatiProgetto.h"
#include "sensors/CSensore.h"
#include "sensors/CanaliSensore.h"
#include "sensors/FileSensore.h"
#include "shell/LoadStrings.h"
#include "tools/support/BarePlatform.h"
#include "tools/support/BareViews.h"

namespace lapvane::bench {
namespace {

namespace fs = std::filesystem;

/// A machine with a folder of its own; it says yes to what it is asked and counts how often.
class Macchina : public BarePlatform {
 public:
    Macchina() : BarePlatform(fs::temp_directory_path() / "lapvane-strumento-bench") {
        fs::remove_all(AppPath());
        fs::create_directories(AppPath() / "sensors");
        // The texts of the run, by number, in both halves of the table.
        Testi.assign(801, "Programming the water temperature curve");
    }
    ~Macchina() override {
        LibreriaSensori.clear();
        Testi.clear();
        std::error_code ignorato;
        fs::remove_all(AppPath(), ignorato);
    }
    Answer MsgBox(const std::string&, Buttons, Icon, const std::string&) override {
        ++Box;
        return Answer::Ok;
    }

    int Box = 0;
};

class Vista : public VistaStrumento {
 public:
    void Mostra(const std::string&) override {}
    bool Visibile() const override { return true; }
    void Puntatore(Pointer) override {}
    void Aggiungi(const std::string& testo) override { Registro += testo; }
    void Chiusura(const std::string&) override { Riuscita = true; }
    void Scarica() override {}
    std::string Registro;
    bool Riuscita = false;
};

void Sensore(const std::string& tipo, const std::string& nome) {
    std::vector<std::string> x, y;
    for (int i = 0; i < 20; ++i) {
        x.push_back(std::to_string(50 * i));
        y.push_back(std::to_string(i) + "." + std::to_string(100 + i));
    }
    const fs::path percorso = CartellaSensori() / (nome + ".sns");
    std::ofstream(percorso, std::ios::binary) << TestoSensore(tipo, nome, x, y);
}

void LibreriaDi20000File(benchmark::State& stato) {
    Macchina macchina;
    constexpr std::size_t kFile = 20000;
    for (std::size_t i = 0; i < kFile; ++i) {
        Sensore(std::string(kCanaliSensore[i % 9].Sensore->Tipo), "Sensore " + std::to_string(i));
    }
    for (auto _ : stato) {
        SvuotaLibreriaSensori();
        CaricaLibreriaSensori();
    }
    if (LibreriaSensori.size() != kFile || macchina.Box != 0) {
        stato.SkipWithError("sensors were lost");
    }
}
BENCHMARK(LibreriaDi20000File)->Unit(benchmark::kMillisecond);

void CorsaIntera(benchmark::State& stato, void (*corsa)(VistaStrumento&)) {
    Macchina macchina;
    strumento::Strumento apparecchio;
    strumento::SerialeStrumento porta(
        apparecchio, [&] { return macchina.Clock; }, [&](int ms) { macchina.Clock += ms; });
    const BareMainWindow finestra(&porta);
    DatiProgetto = {};
    for (const CanaleSensore& canale : kCanaliSensore) {
        const std::string nome = "Sensore " + std::string(canale.Sensore->Tipo);
        Sensore(std::string(canale.Sensore->Tipo), nome);
        DatiProgetto.*canale.Nome = nome;
        DatiProgetto.*canale.Abil = true;
        DatiProgetto.*canale.TCamp = "10 Hz";
    }
    CaricaLibreriaSensori();
    std::size_t frame = 0;
    std::int64_t pause = 0;
    for (auto _ : stato) {
        Vista vista;
        const std::size_t prima = porta.Richieste().size();
        const std::int64_t inizio = macchina.Clock;
        corsa(vista);
        frame = porta.Richieste().size() - prima;
        pause = macchina.Clock - inizio;
        if (!vista.Riuscita) {
            stato.SkipWithError("the run failed");
            break;
        }
    }
    stato.counters["frames"] = static_cast<double>(frame);
    stato.counters["prescribed_ms"] = static_cast<double>(pause);
    DatiProgetto = {};
}
BENCHMARK_CAPTURE(CorsaIntera, program, mnuProgramDevice_Click)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CorsaIntera, read, mnuReadDevice_Click)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lapvane::bench
