#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "analysis/ColonneDati.h"
#include "analysis/LettoreDati.h"
#include "analysis/TabellaDati.h"

namespace lapvane {

/// The table in the manner of a spreadsheet: each file is a sheet whose heading is row 1 and whose
/// first sample is row 2. Lines may be of different lengths; a cell that a line lacks is 0.
class TabellaFoglio : public TabellaDati {
 public:
    /// Percentage of the file that has been read; false stops it.
    using EventoAvanzamento = std::function<bool(int)>;

    /// Reads a delimited file into the sheet of a plane, over what was there. Columns beyond the
    /// twentieth count and are not held. After std::bad_alloc and the errors of the reader the
    /// sheet is empty, and where it was stopped: then it returns false.
    bool CaricaFile(Piano piano, LettoreDati lettore, const EventoAvanzamento& avanzamento);

    std::span<const double> Colonna(int colonna) const override {
        return fogli_[Piano::Dati].Colonne.Colonna(colonna);
    }
    const ColonneStrette& Laterale() const override { return fogli_[Piano::Laterale].Strette; }
    std::int32_t PrimaRiga() const override { return 2; }
    /// Rows of the data file, its heading among them; 0 for an empty file.
    std::int32_t NumeroRighe() const override { return fogli_[Piano::Dati].Righe; }
    /// Columns that the heading of a sheet has; 32767 at most.
    std::int16_t NumeroColonne(Piano piano) const { return fogli_[piano].NumeroColonne; }
    /// Row 1 of a column; empty for one that the sheet lacks.
    std::string Titolo(int colonna, Piano piano) const;

 private:
    struct FoglioDati {
        ColonneDati Colonne;     ///< of the data ...
        ColonneStrette Strette;  ///< ... and of the side file
        std::vector<std::string> Titoli;
        std::int16_t NumeroColonne = 0;
        std::int32_t Righe = 0;
    };

    PerPiano<FoglioDati> fogli_;
};

}  // namespace lapvane
