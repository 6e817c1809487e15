// Two full logs opened beside one another, the laps of a first picture aligned: what that takes
// beyond the loads of both.
#include <benchmark/benchmark.h>

#include <ctime>

#include "FullLog.h"
#include "analysis/LettoreDati.h"
#include "analysis/compare/LogAperto.h"
#include "platform/FileTesto.h"
#include "tools/support/BarePlatform.h"

namespace {

using namespace lapvane;
using namespace lapvane::bench;

/// Of the processor, so that a machine with other work tells the same.
double Milliseconds(const auto& work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) * 1000.0 / CLOCKS_PER_SEC;
}

void Load() {
    TabellaArray table;
    for (const auto plane : {Piano::Dati, Piano::Laterale}) {
        const std::string text =
            LeggiFile(plane == Piano::Dati ? Log().Csv() : Log().Side(), Lavoro::LeggereLog);
        LettoreDati reader(text);
        if (plane == Piano::Dati) table.Alloca(16, 11, reader.NumeroRecord());
        for (std::int32_t row = 0;
             row < table.NumeroRighe() && reader.LeggiRiga(table.Destinazioni(plane), row);) {
            ++row;
        }
    }
    benchmark::DoNotOptimize(table.Valore(1, Piano::Dati, 5));
}

void OpenTwoLogs(benchmark::State& state) {
    const BarePlatform machine(Log().Folder);
    constexpr int kLaps =
        4;  // of each log: the reference and the six that may be ticked, and one more
    double beyond = 0.0;
    for (auto _ : state) {
        const double loads = Milliseconds([] {
            Load();
            Load();
        });
        int aligned = 0;
        const double all = Milliseconds([&aligned] {
            for (int n = 0; n < 2; ++n) {
                const LogAperto log(Log().Csv());
                for (int lap = 0; lap < kLaps; ++lap) {
                    aligned += log.Allineati().Allinea(20 * lap) ? 1 : 0;
                }
            }
        });
        if (aligned != 2 * kLaps) state.SkipWithError("the laps were not aligned");
        beyond += all - loads;
    }
    state.counters["beyond_ms"] = benchmark::Counter(beyond, benchmark::Counter::kAvgIterations);
}
BENCHMARK(OpenTwoLogs)->Unit(benchmark::kMillisecond);

}  // namespace
