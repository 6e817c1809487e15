// The readers of the side files: lap times of any bytes fit the table, and any column of lap
// numbers is cut into stretches that follow one another without a gap.
#include <cmath>
#include <cstdlib>
#include <vector>

#include "analysis/FileTim.h"
#include "analysis/Giri.h"
#include "analysis/LettoreDati.h"
#include "analysis/TabellaArray.h"
#include "shell/NumeroTesto.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace lapvane;
    const std::vector<char> bytes(data, data + size);
    const std::string_view text(bytes.data(), bytes.size());

    const FileTim laps = LeggiFileTim(text);
    if (laps.IndiceFine() < 2 || laps.IndiceFine() > kUltimaRiga + 1) std::abort();
    for (const RigaTim& lap : laps.Righe) {
        if (lap.Tempo.find_first_of(",\r\n") != std::string::npos) std::abort();
    }

    LettoreDati reader(text);
    TabellaArray table;
    table.Alloca(0, kColonnaGiro, reader.NumeroRecord());
    std::int32_t row = 0;
    while (reader.LeggiRiga(table.Destinazioni(Piano::Laterale), row)) ++row;
    if (row != table.NumeroRighe()) std::abort();
    std::vector<std::int32_t> numbers;
    for (const double number : table.Colonna(kColonnaGiro, Piano::Laterale)) {
        numbers.push_back(std::fabs(number) < 1e9 ? ConvertiInt32(number) : 0);
    }
    const RigheGiri rows = CercaGiri(numbers, 0);
    std::int32_t next = 0;
    for (int lap = 1; lap <= rows.Numero; ++lap) {
        if (rows.Inizio[lap] != next || rows.Fine[lap] < next) std::abort();
        next = rows.Fine[lap] + 1;
    }
    if (rows.Numero < kUltimaRiga && next != row) std::abort();
    return 0;
}
