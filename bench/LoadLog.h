#pragma once

#include <benchmark/benchmark.h>

#include <ctime>

#include "FullLog.h"
#include "analysis/LettoreDati.h"
#include "analysis/TabellaArray.h"

namespace lapvane::bench {

/// Of the processor, so that a machine with other work tells the same.
double Milliseconds(const auto& work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) * 1000.0 / CLOCKS_PER_SEC;
}

/// The full log and its side file into a table, as every window that shows one has to.
[[gnu::noinline]] inline void LoadLog(TabellaArray& table) {
    for (const auto plane : {Piano::Dati, Piano::Laterale}) {
        LettoreDati reader =
            plane == Piano::Dati ? ApriLog(Log().Csv()) : ApriLog(Log().Side(), Conto::Niente);
        if (plane == Piano::Dati) table.Alloca(16, 11, reader.NumeroRecord());
        table.Leggi(reader, plane, 0, table.NumeroRighe());
    }
}

inline void LoadLog() {
    TabellaArray table;
    LoadLog(table);
    benchmark::DoNotOptimize(table.Valore(1, Piano::Dati, 5));
}

}  // namespace lapvane::bench
