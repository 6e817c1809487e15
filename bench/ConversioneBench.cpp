// The conversion of a full log memory beside a writer of the same bytes that has nothing to work
// out.
#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "Paired.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "platform/PagineGrandi.h"
#include "shell/LoadStrings.h"
#include "shell/TabelleNomi.h"
#include "tools/support/BarePlatform.h"

namespace lapvane {
namespace {

using bench::Paired;

constexpr std::size_t kBlocchi = 16378;

/// A full memory of driving: values move as in a car, so that fields have their usual widths.
const std::vector<std::string>& MemoriaPiena() {
    static const std::vector<std::string> blocchi = [] {
        std::vector<std::string> tutti;
        int giro = 0;
        for (std::size_t b = 0; b < kBlocchi; ++b) {
            std::string blocco(kByteBlocco, '\0');
            const auto word = [&blocco](std::size_t p, int v) {
                blocco[p - 1] = static_cast<char>((v >> 8) & 0xFF);
                blocco[p] = static_cast<char>(v & 0xFF);
            };
            const auto byte = [&blocco](std::size_t p, int v) {
                blocco[p - 1] = static_cast<char>(v & 0xFF);
            };
            const int t = static_cast<int>(b % 85);
            for (int i = 0; i < 10; ++i) {
                const auto base = std::size_t{11} * static_cast<std::size_t>(i);
                word(base + 1, 6000 + (t * 977 + i * 131) % 6000);
                word(base + 3, (t * 10 + i) * 4);
                byte(base + 5, 1 + t % 6);
                byte(base + 6, (t * 3 + i) % 15 - 4);
                byte(base + 7, (t * 7 + i) % 101);
                byte(base + 8, (t * 5 + i) % 31 - 15);
            }
            word(111, 850 + t * 3);
            word(113, 780 + t * 2);
            byte(115, 40 + t % 17);
            byte(116, 30 + t % 5);
            byte(117, 60 - t / 3);
            byte(118, 136 + t % 4);
            byte(119, 125 + t % 22);
            const bool marca = t == 0 && b != 0;
            if (marca) ++giro;
            word(120, giro);
            word(122, 60 + (t * 37) % 190);
            word(124, (marca ? 2 : 0) | (t % 9 == 0 ? 0x4100 : 0));
            tutti.push_back(blocco);
        }
        return tutti;
    }();
    return blocchi;
}

void Prepara(const std::filesystem::path& cartella) {
    static BarePlatform macchina(cartella);
    SetPlatform(&macchina);  // another bench may have had its own
    ListaUMVelocita = {"Km/h"};
    ListaUMTemperatura = {"C"};
    IndiceLingua = 1;
    Testi.assign(700, "x");
    AzzeraBufferLog();
    BlocchiLog = MemoriaPiena();
    NumBlocchi = static_cast<std::int32_t>(kBlocchi);
    NumeroGiri = 190;
    PercorsoCsv = cartella / "full.csv";
}

std::size_t Byte(const FileLog& file) {
    return file.Csv.size() + file.Txt.size() + file.Tim.size();
}

/// The least that any writer of these files has to do: the text of each field, with what stands
/// behind it, lies ready in a table; where in it, is known.
struct ScritturaNuda {
    struct Campo {
        std::array<char, 15> Testo{};
        std::uint8_t Lungo = 0;
    };

    void Aggiungi(std::string_view testo) {
        while (!testo.empty()) {
            const std::size_t lungo = testo.find_first_of(";\n") + 1;
            const std::string_view campo = testo.substr(0, lungo);
            const auto [posto, nuovo] = Posti.try_emplace(std::string(campo), Tabella.size());
            if (nuovo) {
                Campo& c = Tabella.emplace_back();
                c.Lungo = static_cast<std::uint8_t>(campo.copy(c.Testo.data(), c.Testo.size()));
            }
            Campi.push_back(static_cast<std::uint32_t>(posto->second));
            Byte += lungo;
            testo.remove_prefix(lungo);
        }
    }
    std::string_view Scrivi(char* buffer) const {
        char* p = buffer;
        for (const std::uint32_t campo : Campi) {
            const Campo& c = Tabella[campo];
            std::memcpy(p, &c, sizeof c);
            p += c.Lungo;
        }
        return {buffer, p};
    }

    std::unordered_map<std::string, std::size_t> Posti;
    std::vector<Campo> Tabella;
    std::vector<std::uint32_t> Campi;
    std::size_t Byte = 0;
};

void ConversioneInMemoria(benchmark::State& stato) {
    Prepara("/tmp");
    const FileLog file = ComponiLog();
    const auto righe = [](const std::string& testo) {
        return std::string_view(testo).substr(testo.find('\n') + 1);
    };
    ScritturaNuda nuda;
    nuda.Aggiungi(righe(file.Csv));
    nuda.Aggiungi(righe(file.Txt));
    const auto scrivi = [&nuda] {
        auto buffer = std::make_unique_for_overwrite<char[]>(nuda.Byte + sizeof(nuda.Tabella[0]));
        PagineGrandi(buffer.get(), nuda.Byte);
        benchmark::DoNotOptimize(nuda.Scrivi(buffer.get()));
        return buffer;
    };
    const auto scritto = scrivi();
    if (std::string_view(scritto.get(), nuda.Byte) !=
        std::string(righe(file.Csv)).append(righe(file.Txt))) {
        stato.SkipWithError("the bare writer wrote other bytes");
        return;
    }
    Paired both;
    for (auto _ : stato) {
        both.Round([] { benchmark::DoNotOptimize(ComponiLog()); }, [&] { scrivi(); });
        stato.SetIterationTime(both.LastMs() / 1e3);
    }
    both.Tell(stato);
    stato.counters["MB"] = static_cast<double>(Byte(file)) / 1e6;
}
BENCHMARK(ConversioneInMemoria)->Unit(benchmark::kMillisecond)->UseManualTime();

void ConversioneSuDisco(benchmark::State& stato) {
    const auto cartella = std::filesystem::temp_directory_path() / "lapvane-bench";
    std::filesystem::create_directories(cartella);
    Prepara(cartella);
    for (auto _ : stato) ConvertiLog();
    std::filesystem::remove_all(cartella);
}
BENCHMARK(ConversioneSuDisco)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace lapvane
