// Loading a full log into a table, beside the least that any reader of the same files has to do.
#include <benchmark/benchmark.h>

#include <cstring>

#include "BareRead.h"
#include "LoadLog.h"
#include "Paired.h"

namespace {

using namespace lapvane;
using namespace lapvane::bench;

/// Whether both have read the same numbers, to the last bit.
bool Same(const TabellaArray& table, const BareLoad& bare) {
    bool same = table.NumeroRighe() == kRows;
    for (const auto plane : {Piano::Dati, Piano::Laterale}) {
        const BareRead& read = plane == Piano::Dati ? bare.Data : bare.Side;
        for (int c = 1; same && c <= (plane == Piano::Dati ? 16 : 11); ++c) {
            const auto column = plane == Piano::Dati
                                    ? std::vector(table.Colonna(c).begin(), table.Colonna(c).end())
                                    : table.Laterale().Celle(c, 0, table.Laterale().Righe(c));
            same = std::memcmp(column.data(), read.Column(static_cast<std::size_t>(c - 1)),
                               kRows * sizeof(double)) == 0;
        }
    }
    return same;
}

void LoadTable(benchmark::State& state) {
    Log();
    {
        TabellaArray table;
        LoadLog(table);
        if (!Same(table, BareLoad(Log().Csv(), Log().Side(), kRows))) {
            state.SkipWithError("the table is not the log");
            return;
        }
    }
    Paired both;
    for (auto _ : state) {
        both.Round([] { LoadLog(); },
                   [] {
                       const BareLoad bare(Log().Csv(), Log().Side(), kRows);
                       benchmark::DoNotOptimize(bare.Data.Column(0)[5]);
                   });
        state.SetIterationTime(both.LastMs() / 1e3);
    }
    both.Tell(state);
}
BENCHMARK(LoadTable)->Unit(benchmark::kMillisecond)->UseManualTime();

}  // namespace
