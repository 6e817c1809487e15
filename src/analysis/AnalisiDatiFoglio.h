#pragma once

#include "analysis/AnalisiDati.h"
#include "analysis/Statistiche.h"
#include "analysis/TabellaFoglio.h"

namespace lapvane {

/// The analysis whose data the graph holds as a spreadsheet: columns as the file has them, figures
/// and curves over ranges of cells, time and distance axis.
class AnalisiDatiFoglio : public AnalisiDati {
 public:
    using AnalisiDati::AnalisiDati;

    const TabellaDati& Tabella() const override { return tabella_; }

 private:
    bool CaricaLog() override;
    std::string TitoloColonna(int c) const override { return tabella_.Titolo(c, Piano::Dati); }
    void PrimaRigaTempi(std::string_view) override {}
    double Massimo(std::span<const double> celle) const override { return MassimoCelle(celle); }
    double Minimo(std::span<const double> celle) const override { return MinimoCelle(celle); }
    int ColonnaX(bool asseDistanza) const override {
        return asseDistanza ? kColonnaDistanza : kColonnaTempo;
    }
    // Kept: the button of one step forward alone works on the stored window.
    bool LeggePrimaDiSpostare() const override { return false; }
    Piano PianoDelTempo(Grafico) const override { return Piano::Dati; }

    bool CaricaFoglio(Piano piano, const std::filesystem::path& percorso);
    bool CercaFileLaterale();

    TabellaFoglio tabella_;
};

}  // namespace lapvane
