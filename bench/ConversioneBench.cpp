// The conversion of a full log memory beside a writer of the same bytes that has nothing to work
// out.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
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

/// The least that any writer of these files has to do: it is given the fields as numbers, and every
/// text that it needs lies ready in a table.
class ScritturaNuda {
 public:
    ScritturaNuda() {
        const auto prendi = [](Testo& testo, const std::string& da) {
            testo.Lungo = static_cast<std::uint8_t>(da.copy(testo.Lettere.data(), 7));
        };
        for (std::size_t n = 0; n < 1000; ++n) {
            prendi(interi_[n], std::to_string(n));
            prendi(pieni_[n], std::to_string(1000 + n).substr(1));
        }
        for (std::size_t n = 0; n < 100; ++n) {
            for (int forma = 0; forma < 4; ++forma) {
                const std::string due = std::to_string(100 + n).substr(1);
                const std::string cifre =
                    forma == 0 || forma == 3 ? "" : "." + due.substr(0, forma);
                prendi(code_[0][forma][n], cifre + ";");
                prendi(code_[1][forma][n], cifre + "\r\n");
            }
        }
    }
    void Aggiungi(std::string_view testo) {
        Byte += testo.size();
        while (!testo.empty()) {
            const std::size_t fine = testo.find_first_of(";\r");
            const std::string campo(testo.substr(0, fine));
            const bool riga = testo[fine] == '\r';
            const auto punto = campo.find('.');
            Campo c{
                0,
                static_cast<std::uint8_t>(campo.empty()                ? 3
                                          : punto == std::string::npos ? 0
                                                                       : campo.size() - punto - 1),
                riga, campo[0] == '-'};
            if (!campo.empty()) {
                c.Centesimi =
                    static_cast<std::uint32_t>(std::lround(std::fabs(std::stod(campo)) * 100));
            }
            campi_.push_back(c);
            testo.remove_prefix(fine + (riga ? 2 : 1));
        }
    }
    [[gnu::noinline]] void Scrivi(char* p) const {
        for (const Campo& c : campi_) {
            const std::uint32_t intero = c.Centesimi / 100;
            if (c.Negativo) *p++ = '-';
            if (intero >= 1000) {
                p = Copia(Copia(p, interi_[intero / 1000]), pieni_[intero % 1000]);
            } else if (c.Forma != 3) {
                p = Copia(p, interi_[intero]);
            }
            p = Copia(p, code_[c.Riga ? 1 : 0][c.Forma][c.Centesimi % 100]);
        }
        benchmark::DoNotOptimize(p);
    }
    std::size_t Byte = 0;

 private:
    struct Campo {
        std::uint32_t Centesimi;
        std::uint8_t Forma;  // decimals; 3: an empty field
        bool Riga;           // it ends its line
        bool Negativo;
    };
    struct Testo {
        std::array<char, 7> Lettere{};
        std::uint8_t Lungo = 0;
    };
    static char* Copia(char* dove, const Testo& testo) {
        std::memcpy(dove, &testo, sizeof testo);
        return dove + testo.Lungo;
    }
    std::vector<Campo> campi_;
    std::array<Testo, 1000> interi_, pieni_;
    std::array<std::array<std::array<Testo, 100>, 4>, 2> code_;
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
        auto buffer = std::make_unique_for_overwrite<char[]>(nuda.Byte + 8);
        PagineGrandi(buffer.get(), nuda.Byte);
        nuda.Scrivi(buffer.get());
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
