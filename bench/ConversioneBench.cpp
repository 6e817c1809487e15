// The conversion of a full log memory beside a hand-written writer of the same bytes.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <filesystem>

#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "shell/LoadStrings.h"
#include "shell/TabelleNomi.h"
#include "tools/support/BarePlatform.h"

namespace lapvane {
namespace {

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

/// What the bare writer writes: whole numbers in hundredths, or plain text where a field is
/// neither.
struct Campo {
    std::int32_t Centesimi;
    std::int8_t Forma;  // 0 whole, 1 one decimal, 2 two decimals, 3 empty
    char Dopo;          // ';' or '\n'
};

/// The fields of a file as numbers.
std::vector<Campo> Campi(const std::string& testo) {
    std::vector<Campo> campi;
    const std::size_t titoli = testo.find('\n') + 1;
    for (std::size_t i = titoli; i < testo.size();) {
        const std::size_t fine = testo.find_first_of(";\r", i);
        const std::string_view campo = std::string_view(testo).substr(i, fine - i);
        const std::size_t punto = campo.find('.');
        Campo c{0, 3, testo[fine] == ';' ? ';' : '\n'};
        if (!campo.empty()) {
            c.Centesimi =
                static_cast<std::int32_t>(std::lround(std::stod(std::string(campo)) * 100));
            c.Forma = punto == std::string_view::npos
                          ? std::int8_t{0}
                          : static_cast<std::int8_t>(campo.size() - punto - 1);
        }
        campi.push_back(c);
        i = fine + (c.Dopo == ';' ? 1 : 2);
    }
    return campi;
}

char* ScriviCampi(const std::vector<Campo>& campi, char* p) {
    for (const Campo& c : campi) {
        if (c.Forma != 3) {
            std::uint32_t n = static_cast<std::uint32_t>(c.Centesimi);
            if (c.Centesimi < 0) {
                *p++ = '-';
                n = 0u - n;
            }
            char cifre[12];
            char* q = cifre + sizeof cifre;
            for (std::uint32_t intero = n / 100;; intero /= 10) {
                *--q = static_cast<char>('0' + intero % 10);
                if (intero < 10) break;
            }
            const auto quante = static_cast<std::size_t>(cifre + sizeof cifre - q);
            std::memcpy(p, q, quante);
            p += quante;
            if (c.Forma != 0) {
                *p++ = '.';
                *p++ = static_cast<char>('0' + n / 10 % 10);
                if (c.Forma == 2) *p++ = static_cast<char>('0' + n % 10);
            }
        }
        if (c.Dopo == ';') {
            *p++ = ';';
        } else {
            *p++ = '\r';
            *p++ = '\n';
        }
    }
    return p;
}

void ScritturaNuda(benchmark::State& stato) {
    Prepara("/tmp");
    const FileLog file = ComponiLog();
    const std::vector<Campo> csv = Campi(file.Csv);
    const std::vector<Campo> txt = Campi(file.Txt);
    std::string buffer(Byte(file) + 1024, '\0');
    for (auto _ : stato) {
        char* fine = ScriviCampi(csv, buffer.data());
        fine = ScriviCampi(txt, fine);
        benchmark::DoNotOptimize(fine);
        benchmark::ClobberMemory();
    }
    const std::string atteso = file.Csv.substr(file.Csv.find('\n') + 1);
    if (buffer.compare(0, atteso.size(), atteso) != 0) {
        stato.SkipWithError("the bare writer wrote other bytes");
    }
    stato.SetBytesProcessed(stato.iterations() * static_cast<std::int64_t>(Byte(file)));
}
BENCHMARK(ScritturaNuda)->Unit(benchmark::kMillisecond);

void ConversioneInMemoria(benchmark::State& stato) {
    Prepara("/tmp");
    std::size_t byte = 0;
    for (auto _ : stato) {
        const FileLog file = ComponiLog();
        byte = Byte(file);
        benchmark::DoNotOptimize(byte);
    }
    stato.SetBytesProcessed(stato.iterations() * static_cast<std::int64_t>(byte));
}
BENCHMARK(ConversioneInMemoria)->Unit(benchmark::kMillisecond);

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
