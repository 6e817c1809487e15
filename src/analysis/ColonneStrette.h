#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <variant>
#include <vector>

#include "analysis/LettoreDati.h"

namespace lapvane {

/// Columns of small numbers: alarms, laps, tenths of seconds and of metres. Each lies in the
/// narrowest form that gives all its numbers back to the last bit, a byte a row for an alarm; a
/// column of any other numbers lies there as it is.
class ColonneStrette {
 public:
    /// Empties them and lays them out anew, all cells 0. Throws std::bad_alloc, as `Leggi` does.
    void Alloca(int colonne, std::int32_t righe);

    /// Reads the next lines into rows `da` to `a` - 1 of columns 1 up, as `LeggiRighe` does of a
    /// table whose cells are 0, with its errors; the row behind the last one read.
    std::int32_t Leggi(LettoreDati& lettore, std::int32_t da, std::int32_t a);

    /// Rows that a column has: 0 for one that is not there.
    std::int32_t Righe(int colonna) const;

    /// A cell that is there.
    double Valore(int colonna, std::int32_t riga) const;

    /// Rows `da` to `a` - 1 of a column that is there.
    std::vector<double> Celle(int colonna, std::int32_t da, std::int32_t a) const;

 private:
    /// From the narrowest to the widest: each holds what the one before can hold. The third counts
    /// in thousandths.
    using Forma = std::variant<std::vector<std::int8_t>, std::vector<std::int16_t>,
                               std::vector<std::int32_t>, std::vector<double>>;

    const Forma& Colonna(int colonna) const { return colonne_.begin()[colonna - 1]; }
    bool Scrivi(Forma& forma, std::size_t da, std::span<const double> valori) const;
    static void Allarga(Forma& forma, std::size_t fino);

    std::vector<Forma> colonne_;  ///< without cells until the first row comes: all are 0
    std::int32_t righe_ = 0;
};

}  // namespace lapvane
