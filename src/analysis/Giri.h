#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "analysis/FileTim.h"

namespace lapvane {

/// One value a row of the full lap table, 0 to 1000.
template <class T>
class PerGiro {
 public:
    PerGiro() : valori_(kUltimaRiga + 1) {}
    T& operator[](int giro) { return valori_[static_cast<std::size_t>(giro)]; }
    const T& operator[](int giro) const { return valori_[static_cast<std::size_t>(giro)]; }
    auto begin() const { return valori_.begin(); }

 private:
    std::vector<T> valori_;
};

/// First and last row of each stretch of a log, by index from 1.
struct RigheGiri {
    PerGiro<std::int32_t> Inizio;
    PerGiro<std::int32_t> Fine;
    int Numero = 0;  ///< stretches found

    /// Whether the log has rows of that stretch at all.
    bool Esiste(int indice) const { return indice >= 1 && indice <= Numero; }
};

/// The runs of equal lap numbers, counted from 1: index 1 is the stretch before the first mark. The
/// two arrays reach to index 1000, the last row of a full lap table; what is not found is 0. Runs
/// past it are dropped.
RigheGiri CercaGiri(std::span<const std::int32_t> giri, std::int32_t primaRiga);

/// The same for a column of numbers; one that no lap can have counts as 0.
RigheGiri CercaGiriColonna(std::span<const double> giri, std::int32_t primaRiga);

}  // namespace lapvane
