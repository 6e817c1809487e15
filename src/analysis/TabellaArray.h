#pragma once

#include <cstdint>
#include <span>

#include "analysis/ColonneDati.h"
#include "analysis/TabellaDati.h"

namespace lapvane {

/// The table as an array of its own: rows from 0, the heading is not in it.
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

    std::span<const double> Colonna(int colonna) const override { return dati_.Colonna(colonna); }
    const ColonneStrette& Laterale() const override { return laterale_; }
    std::int32_t PrimaRiga() const override { return 0; }
    std::int32_t NumeroRighe() const override { return dati_.Righe(); }
    /// Columns of the data.
    int NumeroColonne() const { return dati_.Numero(); }

 private:
    ColonneDati dati_;
    ColonneStrette laterale_;
    int numLaterali_ = 0;
};

}  // namespace lapvane
