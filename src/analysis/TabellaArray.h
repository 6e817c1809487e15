#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

#include "analysis/TabellaDati.h"

namespace lapvane {

/// The table as an array of its own: rows from 0, the heading is not in it. Each column lies in one
/// piece, so that a lap of a channel is a span.
class TabellaArray : public TabellaDati {
 public:
    /// Empties the table and lays it out anew, all cells 0: columns 1 to `numCampi` on the plane of
    /// the data, 1 to `numCampiLaterali` on the side plane. Throws std::bad_alloc.
    void Alloca(int numCampi, int numCampiLaterali, std::int32_t numRighe);

    /// All cells of a plane 0 again.
    void Azzera(Piano piano);

    std::span<const double> Colonna(int colonna, Piano piano) const override;
    std::int32_t PrimaRiga() const override { return 0; }
    std::int32_t NumeroRighe() const override { return numRighe_; }

    /// Where the reader writes columns 1 up of a plane, in column order.
    std::span<double* const> Destinazioni(Piano piano);

 private:
    struct Libera {
        void operator()(double* p) const { std::free(p); }
    };
    struct PianoDati {
        std::unique_ptr<double, Libera> Memoria;  ///< one column behind the other
        std::array<double*, kNumCanali> Inizi{};
        std::size_t Numero = 0;
    };

    PerPiano<PianoDati> piani_;
    std::int32_t numRighe_ = 0;
};

}  // namespace lapvane
