// The list of 10,000 runs: read for the first time, shown from the index, brought up to date,
// searched key by key, put into another order; and one full log read for its ideal lap.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "LoadLog.h"
#include "logs/Impostazioni.h"
#include "project/DatiProgetto.h"
#include "reports/FileSessione.h"
#include "runs/Archivio.h"
#include "runs/ElencoUscite.h"
#include "runs/IndiceArchivio.h"
#include "shell/Utility.h"
#include "tools/support/BarePlatform.h"

namespace {

namespace fs = std::filesystem;
using namespace lapvane;
using namespace lapvane::bench;

constexpr int kRuns = 10000;
constexpr int kFolders = 50;
constexpr int kPiece = 15;  // ms, as a window gives

/// Pieces end by the clock.
class ClockedPlatform : public BarePlatform {
 public:
    using BarePlatform::BarePlatform;
    std::int64_t GetTickCount() override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::steady_clock::now().time_since_epoch())
            .count();
    }
};

constexpr const char* kCircuits[] = {"Fontebruna", "Rocca Serena", "Valdoro", "Imola", "Misano",
                                     "Mugello",    "Vallelunga",   "Varano",  "Adria", ""};
constexpr const char* kDrivers[] = {"Rossi", "Bianchi", "Ferrari, Russo", "Esposito"};

void Write(const fs::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

void MakeRun(const fs::path& folder, int n) {
    const fs::path stem = folder / ("run " + std::to_string(n));
    const auto with = [&stem](const char* ending) { return fs::path(stem.native() + ending); };
    std::string csv = "Time [sec];Distance [m];Engine [RPM];Speed [Km/h]\r\n", side = csv;
    for (int r = 0; r < 20; ++r) {
        Tenths(csv, r);
        csv += std::to_string(r * 5) + ";8000;180\r\n";
        Tenths(side, r);
        side += std::to_string(r * 5) + ";1;3;5;7;9;11;13;15;1\r\n";
    }
    Write(with(".csv"), csv);
    Write(with(".txt"), side);
    std::string times = "1.4\r\n";
    for (int lap = 0; lap < 15; ++lap) {
        times += CentesimiInTempo(6000 + (n * 37 + lap * 91) % 900) + ", 1\r\n";
    }
    Write(with(".tim"), times + "\r\n");
    const std::string day = std::to_string(n % 28 + 1) + "/" + std::to_string(n / 28 % 12 + 1);
    const RecordSessione session = {"Free practice " + std::to_string(n % 4 + 1),
                                    day + "/2026",
                                    std::to_string(9 + n % 9) + ":" + std::to_string(10 + n % 50),
                                    kCircuits[n % 10],
                                    "2760",
                                    {},
                                    kDrivers[n % 4],
                                    "Rear wing one hole down, tyres 1.42 bar hot, oil 102"};
    Write(with(".ses"), ScriviSessione(session, CanaliSessione()));
    RecordProgetto project;
    project.Veicolo = n % 3 == 0 ? "Formula 4" : "Gruppo N";
    Write(with(".set"), TestoImpostazioni(project));
}

/// The runs in folders of 200, and a folder for the program; all of it goes when the program ends.
struct ManyRuns {
    ManyRuns() {
        std::string name = (fs::temp_directory_path() / "lapvane-bench-XXXXXX").native();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        Folder = name;
        fs::create_directories(Program());
        for (int n = 0; n < kRuns; ++n) {
            const fs::path folder = Runs() / ("day " + std::to_string(n % kFolders));
            if (n < kFolders) fs::create_directories(folder);
            MakeRun(folder, n);
        }
    }
    ~ManyRuns() {
        std::error_code ignored;
        fs::remove_all(Folder, ignored);
    }
    fs::path Runs() const { return Folder / "runs"; }
    fs::path Program() const { return Folder / "program"; }
    fs::path Folder;
};

const ManyRuns& Made() {
    static const ManyRuns made;
    return made;
}

void UpToDate(Archivio& archive) {
    while (archive.Passo(kPiece)) {
    }
    if (archive.Uscite().size() != kRuns) throw std::runtime_error("not all runs");
}

/// The index as a first reading leaves it.
void WithIndex() {
    if (fs::exists(FileIndice())) return;
    Archivio archive;
    archive.Apri(Made().Runs());
    UpToDate(archive);
}

void RunsFirst(benchmark::State& state) {
    const ClockedPlatform machine(Made().Program());
    for (auto _ : state) {
        fs::remove(FileIndice());
        Archivio archive;
        archive.Apri(Made().Runs());
        UpToDate(archive);
    }
}
BENCHMARK(RunsFirst)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Index to lines.
void RunsAgain(benchmark::State& state) {
    const ClockedPlatform machine(Made().Program());
    WithIndex();
    for (auto _ : state) {
        Archivio archive;
        archive.Apri(Made().Runs());
        ElencoUscite list;
        list.Raggruppa(GruppoPer::Circuito);
        list.Prendi(archive.Uscite());
        if (list.Mostrate() != kRuns) throw std::runtime_error("not all runs");
    }
}
BENCHMARK(RunsAgain)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Folders and times against the index, nothing to read.
void RunsVerify(benchmark::State& state) {
    const ClockedPlatform machine(Made().Program());
    WithIndex();
    Archivio archive;
    for (auto _ : state) {
        archive.Apri(Made().Runs());
        UpToDate(archive);
        if (archive.DaLeggere() != 0) throw std::runtime_error("a run was read again");
    }
}
BENCHMARK(RunsVerify)->Unit(benchmark::kMillisecond)->UseRealTime();

/// One key: the longest of those that somebody types.
void RunsSearch(benchmark::State& state) {
    const ClockedPlatform machine(Made().Program());
    WithIndex();
    Archivio archive;
    archive.Apri(Made().Runs());
    ElencoUscite list;
    list.Raggruppa(GruppoPer::Circuito);
    list.Prendi(archive.Uscite());
    const std::string typed = "rossi free practice 2026";
    double most = 0.0;
    for (auto _ : state) {
        for (std::size_t keys = 1; keys <= typed.size(); ++keys) {
            const auto text = typed.substr(0, keys);
            most = std::max(most, Milliseconds([&] { list.Cerca(text); }));
        }
        if (list.Mostrate() == 0 || list.Mostrate() == kRuns) state.SkipWithError("no search");
    }
    state.counters["key_ms"] = most;
}
BENCHMARK(RunsSearch)->Unit(benchmark::kMillisecond);

void RunsSort(benchmark::State& state) {
    const ClockedPlatform machine(Made().Program());
    WithIndex();
    Archivio archive;
    archive.Apri(Made().Runs());
    ElencoUscite list;
    list.Prendi(archive.Uscite());
    int column = 0;
    for (auto _ : state) list.Ordina(static_cast<ColonnaUscite>(column++ % kColonneUscite), false);
}
BENCHMARK(RunsSort)->Unit(benchmark::kMillisecond);

/// A full log for its ideal lap: all of it, and the longest piece.
void RunsLog(benchmark::State& state) {
    const ClockedPlatform machine(Log().Folder);
    double most = 0.0;
    for (auto _ : state) {
        Uscita run;
        if (!LeggiAccanto(Log().Csv(), StatiDi(Log().Csv()), run)) state.SkipWithError("no run");
        LetturaLog reading;
        for (bool done = false; !done;) {
            most = std::max(most, Milliseconds([&] { done = reading.Passo(run, kPiece); }));
        }
        if (run.Ideale == 0) state.SkipWithError("no ideal lap");
    }
    state.counters["piece_ms"] = most;
}
BENCHMARK(RunsLog)->Unit(benchmark::kMillisecond);

}  // namespace
