// Two full logs opened beside one another, the laps of a first picture aligned: what that takes
// beyond the loads of both.
#include <benchmark/benchmark.h>

#include "LoadLog.h"
#include "analysis/compare/LogAperto.h"
#include "tools/support/BarePlatform.h"

namespace {

using namespace lapvane;
using namespace lapvane::bench;

void OpenTwoLogs(benchmark::State& state) {
    const BarePlatform machine(Log().Folder);
    constexpr int kLaps =
        4;  // of each log: the reference and the six that may be ticked, and one more
    double beyond = 0.0;
    for (auto _ : state) {
        const double loads = Milliseconds([] {
            LoadLog();
            LoadLog();
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
