#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "analysis/FileTim.h"
#include "analysis/TabellaDati.h"

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

/// Looks for the runs of equal lap numbers, counted from 1: index 1 is the stretch before the first
/// mark. The two arrays reach to index 1000, the last row of a full lap table; what is not found is
/// 0. Runs past it are dropped.
class RicercaGiri {
 public:
    explicit RicercaGiri(std::int32_t primaRiga) : riga_(primaRiga) {}

    /// The lap numbers of the next rows; one that no lap can have counts as 0.
    void Righe(std::span<const double> giri);
    const RigheGiri& Trovate() const { return righe_; }

 private:
    void Giro(std::int32_t numero);

    RigheGiri righe_;
    std::int32_t riga_;
    double ultimo_ = 0.0;      // lap number of the row before, as it stands there ...
    std::int32_t numero_ = 0;  // ... and as a lap
    bool piena_ = false;
};

/// The runs of a whole log.
RigheGiri CercaGiri(const TabellaDati& tabella);

}  // namespace lapvane
