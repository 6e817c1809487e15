#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

#include "analysis/ColonneStrette.h"
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

    /// The samples of a column of the data; empty for a column that the table lacks.
    virtual std::span<const double> Colonna(int colonna) const = 0;
    /// The columns of the side file.
    virtual const ColonneStrette& Laterale() const = 0;
    /// Row number of the first sample.
    virtual std::int32_t PrimaRiga() const = 0;
    /// Rows that the load reports.
    virtual std::int32_t NumeroRighe() const = 0;

    /// Whether the table has a sample there.
    bool Contiene(int colonna, Piano piano, std::int32_t riga) const {
        const std::int64_t i = std::int64_t{riga} - PrimaRiga();
        return i >= 0 && i < Campioni(colonna, piano);
    }

    double Valore(int colonna, Piano piano, std::int32_t riga) const {
        if (!Contiene(colonna, piano, riga)) return 0.0;
        const std::int32_t i = riga - PrimaRiga();
        return piano == Piano::Dati ? Colonna(colonna).begin()[i] : Laterale().Valore(colonna, i);
    }

    /// Rows `da` to `a` of a column of the data, both included, as far as the table has them.
    std::span<const double> Righe(int colonna, std::int32_t da, std::int32_t a) const {
        const auto [primo, oltre] = Tratto(colonna, Piano::Dati, da, a);
        const auto valori = Colonna(colonna);
        return {valori.begin() + primo, valori.begin() + oltre};
    }

    /// Rows `da` to `a` of a column of the side file, as `Righe`.
    std::vector<double> RigheLaterali(int colonna, std::int32_t da, std::int32_t a) const {
        const auto [primo, oltre] = Tratto(colonna, Piano::Laterale, da, a);
        if (primo == oltre) return {};
        return Laterale().Celle(colonna, primo, oltre);
    }

 private:
    std::int32_t Campioni(int colonna, Piano piano) const {
        return piano == Piano::Dati ? static_cast<std::int32_t>(Colonna(colonna).size())
                                    : Laterale().Righe(colonna);
    }

    /// The samples of rows `da` to `a`: the first, and the one behind the last.
    std::pair<std::int32_t, std::int32_t> Tratto(int colonna, Piano piano, std::int32_t da,
                                                 std::int32_t a) const {
        const std::int64_t fine = Campioni(colonna, piano);
        const std::int64_t primo =
            std::clamp<std::int64_t>(std::int64_t{da} - PrimaRiga(), 0, fine);
        const std::int64_t oltre =
            std::clamp<std::int64_t>(std::int64_t{a} - PrimaRiga() + 1, primo, fine);
        return {static_cast<std::int32_t>(primo), static_cast<std::int32_t>(oltre)};
    }
};

}  // namespace lapvane
