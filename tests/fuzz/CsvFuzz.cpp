// The reader of data files: any bytes give as many rows as it announced, finite numbers only, and
// the same table when the lines are read one by one or with fewer columns.
#include <cmath>
#include <cstdlib>
#include <vector>

#include "analysis/LettoreDati.h"
#include "analysis/TabellaArray.h"

namespace {

/// Reads everything; aborts on a broken promise of the reader.
void Read(std::string_view text, lapvane::TabellaArray& table, int columns) {
    using namespace lapvane;
    LettoreDati reader(text);
    table.Alloca(columns, 0, reader.NumeroRecord());
    const auto targets = table.Destinazioni(Piano::Dati);
    std::int32_t row = 0;
    while (row < reader.NumeroRecord() && reader.LeggiRiga(targets, row)) ++row;
    if (row != reader.NumeroRecord() || reader.LeggiRiga(targets, 0)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace lapvane;
    // A buffer of exactly the right size, so that reading past its end is seen.
    const std::vector<char> bytes(data, data + size);
    const std::string_view text(bytes.data(), bytes.size());
    TabellaArray wide, narrow;
    Read(text, wide, 16);
    Read(text, narrow, 3);
    if (wide.NumeroRighe() != narrow.NumeroRighe()) std::abort();
    for (int c = 1; c <= 16; ++c) {
        const auto values = wide.Colonna(c, Piano::Dati);
        for (std::size_t r = 0; r < values.size(); ++r) {
            if (!std::isfinite(values[r])) std::abort();
            if (c <= 3 && values[r] != narrow.Colonna(c, Piano::Dati)[r]) std::abort();
        }
    }
    if (LettoreDati(text).Titolo().find('\n') != std::string_view::npos) std::abort();
    return 0;
}
