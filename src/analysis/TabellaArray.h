#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

#include "analysis/TabellaDati.h"

namespace lapvane {

/// The table as an array of its own: rows from 0, the heading is not in it. Each column of the data
/// lies in one piece, so that a lap of a channel is a span.
class TabellaArray : public TabellaDati {
 public:
    /// Empties the table and lays it out anew, all cells 0: columns 1 to `numCampi` on the plane of
    /// the data, 1 to `numCampiLaterali` on the side plane. Throws std::bad_alloc.
    void Alloca(int numCampi, int numCampiLaterali, std::int32_t numRighe);

    /// Reads the next lines into rows `da` to `a` - 1 of a plane, as `LeggiRighe` does; throws
    /// std::bad_alloc.
    std::int32_t Leggi(LettoreDati& lettore, Piano piano, std::int32_t da, std::int32_t a);

    /// All cells of the side plane 0 again.
    void AzzeraLaterale();

    std::span<const double> Colonna(int colonna) const override;
    const ColonneStrette& Laterale() const override { return laterale_; }
    std::int32_t PrimaRiga() const override { return 0; }
    std::int32_t NumeroRighe() const override { return numRighe_; }
    /// Columns of the data.
    int NumeroColonne() const { return static_cast<int>(numero_); }

 private:
    struct Libera {
        void operator()(double* p) const { std::free(p); }
    };

    std::unique_ptr<double, Libera> memoria_;  ///< one column behind the other
    std::array<double*, kNumCanali> inizi_{};
    std::size_t numero_ = 0;
    ColonneStrette laterale_;
    int numLaterali_ = 0;
    std::int32_t numRighe_ = 0;
};

}  // namespace lapvane
