// Loading a full log into an analysis, beside the least that any reader of the same files has to
// do: one bare std::from_chars pass over the memory-mapped bytes.
#include <benchmark/benchmark.h>

#include "FullLog.h"
#include "analysis/LettoreDati.h"
#include "analysis/TabellaArray.h"
#include "platform/FileTesto.h"

namespace {

using namespace lapvane;
using namespace lapvane::bench;

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
        const std::string csv = LeggiFile(Log().Csv(), Lavoro::LeggereLog);
        LettoreDati reader(csv);
        table.Alloca(16, 11, reader.NumeroRecord());
        std::int32_t row = 0;
        while (reader.LeggiRiga(table.Destinazioni(Piano::Dati), row)) ++row;
        const std::string side = LeggiFile(Log().Side(), Lavoro::LeggereLog);
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
