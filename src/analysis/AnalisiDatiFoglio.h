#pragma once

#include "analysis/AnalisiDati.h"
#include "analysis/TabellaFoglio.h"

namespace lapvane {

/// The analysis whose data the graph holds as a spreadsheet: columns as the file has them, figures
/// and curves over ranges of cells, time and distance axis.
class AnalisiDatiFoglio : public AnalisiDati {
 public:
    using AnalisiDati::AnalisiDati;

    bool Carica() override;
    const TabellaDati& Tabella() const override { return tabella_; }

 private:
    std::string TitoloColonna(int c) const override { return tabella_.Titolo(c, Piano::Dati); }
    RigheGiri TrovaGiri() const override;
    void PrimaRigaTempi(std::string_view) override {}
    double MassimoCanale(int c, std::int32_t da, std::int32_t a) const override;
    double MinimoCanale(int c, std::int32_t da, std::int32_t a) const override;
    double MediaDelCanale(int c, std::int32_t da, std::int32_t a) const override;
    void DisegnaElemento(GraphControl& grafico, int c, double scala, int passo) override;
    void DisegnaAllarme(GraphControl& grafico, int c, int passo) override;
    // Kept: the button of one step forward alone works on the stored window.
    bool LeggePrimaDiSpostare() const override { return false; }
    Piano PianoDelTempo(bool) const override { return Piano::Dati; }

    void CaricaFoglio(Piano piano, const std::filesystem::path& percorso);
    bool CercaFileLaterale();
    int ColonnaX() const { return AsseDistanza ? kColonnaDistanza : kColonnaTempo; }

    TabellaFoglio tabella_;
};

}  // namespace lapvane
