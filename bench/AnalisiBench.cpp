// Loading a full log into an analysis, beside the least that any reader of the same files has to
// do: one bare std::from_chars pass over the memory-mapped bytes.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "analysis/LettoreDati.h"
#include "analysis/TabellaArray.h"
#include "shell/FileTesto.h"

namespace {

using namespace lapvane;
namespace fs = std::filesystem;

constexpr int kRows = 163780;  // of a log memory that is full
constexpr int kRowsPerLap = 820;

void Tenths(std::string& text, int tenths) {
    text += std::to_string(tenths / 10);
    text += '.';
    text += static_cast<char>('0' + tenths % 10);
    text += ';';
}

/// The two files of a full log, in a folder that goes when the program ends.
struct FullLog {
    FullLog() {
        std::string name = (fs::temp_directory_path() / "lapvane-bench-XXXXXX").native();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        Folder = name;
        std::string csv = "Time [sec];Distance [m];Engine [RPM];...\r\n";
        std::string side = "Time [sec];Distance [m];...\r\n";
        for (int r = 0; r < kRows; ++r) {
            const int inLap = r % kRowsPerLap;
            Tenths(csv, inLap);
            Tenths(csv, inLap * 57);
            csv += std::to_string(4000 + (r * 37) % 5000) + ';';
            for (int c = 4; c <= 15; ++c)
                Tenths(csv, (r * c + 311 * c) % (c % 3 == 0 ? 100 : 1600));
            csv += "0.98\r\n";
            Tenths(side, inLap);
            Tenths(side, inLap * 57);
            side += "1;3;5;7;9;11;13;15;" + std::to_string(r / kRowsPerLap + 1) + "\r\n";
        }
        std::ofstream(Csv(), std::ios::binary) << csv;
        std::ofstream(Side(), std::ios::binary) << side;
    }
    ~FullLog() {
        std::error_code ignored;
        fs::remove_all(Folder, ignored);
    }
    fs::path Csv() const { return Folder / "full.csv"; }
    fs::path Side() const { return Folder / "full.txt"; }
    fs::path Folder;
};

const FullLog& Log() {
    static const FullLog log;
    return log;
}

double BarePass(const fs::path& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat about {};
    if (file < 0 || ::fstat(file, &about) != 0) throw std::runtime_error("no log");
    const auto size = static_cast<std::size_t>(about.st_size);
    void* const mapped = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (mapped == MAP_FAILED) throw std::runtime_error("no log");
    const char* p = static_cast<const char*>(mapped);
    const char* const end = p + size;
    p = static_cast<const char*>(std::memchr(p, '\n', size)) + 1;
    double sum = 0.0;
    while (p < end) {
        double value = 0.0;
        p = std::from_chars(p, end, value).ptr;
        sum += value;
        while (p < end && (*p == ';' || *p == '\r' || *p == '\n')) ++p;
    }
    ::munmap(mapped, size);
    ::close(file);
    return sum;
}

void BareFromChars(benchmark::State& state) {
    Log();
    for (auto _ : state) {
        benchmark::DoNotOptimize(BarePass(Log().Csv()) + BarePass(Log().Side()));
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BareFromChars)->Unit(benchmark::kMillisecond);

void LoadTable(benchmark::State& state) {
    Log();
    for (auto _ : state) {
        TabellaArray table;
        const std::string csv = LeggiFile(Log().Csv(), "benchmark");
        LettoreDati reader(csv);
        table.Alloca(16, 11, reader.NumeroRecord());
        std::int32_t row = 0;
        while (reader.LeggiRiga(table.Destinazioni(Piano::Dati), row)) ++row;
        const std::string side = LeggiFile(Log().Side(), "benchmark");
        LettoreDati sideReader(side);
        for (row = 0; row < table.NumeroRighe() &&
                      sideReader.LeggiRiga(table.Destinazioni(Piano::Laterale), row);) {
            ++row;
        }
        if (row != kRows || table.Valore(16, Piano::Dati, kRows - 1) != 0.98) {
            state.SkipWithError("the table is not the log");
        }
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(LoadTable)->Unit(benchmark::kMillisecond);

}  // namespace
