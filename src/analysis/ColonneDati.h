#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

#include "reports/CanaliLog.h"

namespace lapvane {

/// Columns of numbers, each in one piece, one behind the other: a lap of a channel is a span.
class ColonneDati {
 public:
    /// Empties them and lays them out anew, columns 1 to `colonne` or to the last channel, all
    /// cells 0. Throws std::bad_alloc.
    void Alloca(int colonne, std::int32_t righe);

    /// Where each column begins.
    std::span<double* const> Inizi() const { return {inizi_.data(), numero_}; }
    /// A column; empty for one that is not there.
    std::span<const double> Colonna(int colonna) const;
    int Numero() const { return static_cast<int>(numero_); }
    std::int32_t Righe() const { return righe_; }

 private:
    struct Libera {
        void operator()(double* p) const { std::free(p); }
    };

    std::unique_ptr<double, Libera> memoria_;
    std::array<double*, kUltimoCanale> inizi_{};
    std::size_t numero_ = 0;
    std::int32_t righe_ = 0;
};

}  // namespace lapvane
