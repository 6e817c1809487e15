// The readers of the side files: lap times of any bytes fit the table, and any column of lap
// numbers is cut into stretches that follow one another without a gap.
#include <cmath>
#include <vector>

#include "analysis/FileTim.h"
#include "analysis/Giri.h"
#include "analysis/LettoreDati.h"
#include "analysis/TabellaArray.h"
#include "fuzz/Fuzz.h"
#include "shell/NumeroTesto.h"

void Fuzz(std::string_view text) {
    using namespace lapvane;
    const FileTim laps = LeggiFileTim(text);
    Must(laps.IndiceFine() >= 2 && laps.IndiceFine() <= kUltimaRiga + 1);
    for (const RigaTim& lap : laps.Righe) {
        Must(lap.Tempo.find_first_of(",\r\n") == std::string::npos);
    }

    LettoreDati reader(text);
    TabellaArray table;
    table.Alloca(0, kColonnaGiro, reader.NumeroRecord());
    std::int32_t row = 0;
    while (reader.LeggiRiga(table.Destinazioni(Piano::Laterale), row)) ++row;
    Must(row == table.NumeroRighe());
    std::vector<std::int32_t> numbers;
    for (const double number : table.Colonna(kColonnaGiro, Piano::Laterale)) {
        numbers.push_back(std::fabs(number) < 1e9 ? ConvertiInt32(number) : 0);
    }
    const RigheGiri rows = CercaGiri(numbers, 0);
    std::int32_t next = 0;
    for (int lap = 1; lap <= rows.Numero; ++lap) {
        Must(rows.Inizio[lap] == next && rows.Fine[lap] >= next);
        next = rows.Fine[lap] + 1;
    }
    Must(rows.Numero >= kUltimaRiga || next == row);
}
