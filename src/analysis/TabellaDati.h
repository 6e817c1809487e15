#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>

#include "reports/CanaliLog.h"

namespace lapvane {

/// Planes of the table: the data file and its side file.
enum class Piano : int { Dati = 0, Laterale = 1 };

/// One value a plane.
template <class T>
class PerPiano {
 public:
    T& operator[](Piano piano) { return piano == Piano::Dati ? dati_ : laterale_; }
    const T& operator[](Piano piano) const { return piano == Piano::Dati ? dati_ : laterale_; }

 private:
    T dati_{};
    T laterale_{};
};

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
        return i >= 0 && i < std::ssize(Colonna(colonna, piano));
    }

    double Valore(int colonna, Piano piano, std::int32_t riga) const {
        if (!Contiene(colonna, piano, riga)) return 0.0;
        return Colonna(colonna, piano).begin()[riga - PrimaRiga()];
    }

    /// Rows `da` to `a` of a column, both included, as far as the table has them.
    std::span<const double> Righe(int colonna, Piano piano, std::int32_t da, std::int32_t a) const {
        const auto valori = Colonna(colonna, piano);
        const std::int64_t fine = std::ssize(valori);
        const std::int64_t primo =
            std::clamp<std::int64_t>(std::int64_t{da} - PrimaRiga(), 0, fine);
        const std::int64_t oltre =
            std::clamp<std::int64_t>(std::int64_t{a} - PrimaRiga() + 1, primo, fine);
        return {valori.begin() + primo, valori.begin() + oltre};
    }
};

}  // namespace lapvane
