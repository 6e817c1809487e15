#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

#include "reports/CanaliLog.h"

namespace lapvane {

/// Planes of the table: the data file and its side file.
enum class Piano : int { Dati = 0, Laterale = 1 };

constexpr int kColonnaTempo = 1;     ///< seconds from the start of the lap, both planes
constexpr int kColonnaDistanza = 2;  ///< metres from the start of the lap, both planes
constexpr int kColonnaGiro = 11;     ///< lap number of the row, side file
constexpr int kPrimoAllarme = 3;     ///< column of the first alarm, side file
constexpr int kNumAllarmi = 8;
constexpr int kNumCanali = kUltimoCanale + 1;

/// One open log: columns of numbers, one row a tenth of a second. How its rows are counted is the
/// table's own affair; what is outside it reads as 0.
class TabellaDati {
 public:
    virtual ~TabellaDati() = default;

    /// The samples of a column; empty for a column that the table lacks.
    virtual std::span<const double> Colonna(int colonna, Piano piano) const = 0;
    /// Row number of the first sample.
    virtual std::int32_t PrimaRiga() const = 0;
    /// Rows that the load reports.
    virtual std::int32_t NumeroRighe() const = 0;

    /// Whether the table has a sample there.
    bool Contiene(int colonna, Piano piano, std::int32_t riga) const {
        const std::int64_t i = std::int64_t{riga} - PrimaRiga();
        return i >= 0 && i < static_cast<std::int64_t>(Colonna(colonna, piano).size());
    }

    double Valore(int colonna, Piano piano, std::int32_t riga) const {
        if (!Contiene(colonna, piano, riga)) return 0.0;
        return Colonna(colonna, piano)[static_cast<std::size_t>(riga - PrimaRiga())];
    }

    /// Rows `da` to `a` of a column, both included, as far as the table has them.
    std::span<const double> Righe(int colonna, Piano piano, std::int32_t da, std::int32_t a) const {
        const auto valori = Colonna(colonna, piano);
        const auto fine = static_cast<std::int64_t>(valori.size());
        const std::int64_t primo =
            std::clamp<std::int64_t>(std::int64_t{da} - PrimaRiga(), 0, fine);
        const std::int64_t oltre =
            std::clamp<std::int64_t>(std::int64_t{a} - PrimaRiga() + 1, primo, fine);
        return valori.subspan(static_cast<std::size_t>(primo),
                              static_cast<std::size_t>(oltre - primo));
    }
};

}  // namespace lapvane
