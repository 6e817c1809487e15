// The reader of data files: any bytes give as many rows as it announced, finite numbers only, and
// the same table when the lines are read one by one or with fewer columns.
#include <cmath>

#include "analysis/LettoreDati.h"
#include "analysis/TabellaArray.h"
#include "fuzz/Fuzz.h"

namespace {

/// Reads everything.
void Read(std::string_view text, lapvane::TabellaArray& table, int columns) {
    using namespace lapvane;
    LettoreDati reader(text);
    table.Alloca(columns, 0, reader.NumeroRecord());
    const auto targets = table.Destinazioni(Piano::Dati);
    std::int32_t row = 0;
    while (row < reader.NumeroRecord() && reader.LeggiRiga(targets, row)) ++row;
    Must(row == reader.NumeroRecord() && !reader.LeggiRiga(targets, 0));
}

}  // namespace

void Fuzz(std::string_view text) {
    using namespace lapvane;
    TabellaArray wide, narrow;
    Read(text, wide, 16);
    Read(text, narrow, 3);
    Must(wide.NumeroRighe() == narrow.NumeroRighe());
    for (int c = 1; c <= 16; ++c) {
        const auto values = wide.Colonna(c, Piano::Dati);
        for (std::size_t r = 0; r < values.size(); ++r) {
            Must(std::isfinite(values[r]));
            Must(c > 3 || values[r] == narrow.Colonna(c, Piano::Dati)[r]);
        }
    }
    Must(LettoreDati(text).Titolo().find('\n') == std::string_view::npos);
}
