#pragma once

#include "analysis/AnalisiDati.h"
#include "analysis/LettoreDati.h"
#include "analysis/Statistiche.h"
#include "analysis/TabellaArray.h"

namespace lapvane {

/// The analysis that owns its data in a plain array: reading, figures and drawing run over arrays,
/// which is much faster on a long log.
class AnalisiDatiSpeed : public AnalisiDati {
 public:
    using AnalisiDati::AnalisiDati;

    const TabellaDati& Tabella() const override { return tabella_; }

 private:
    bool CaricaLog() override;
    std::string TitoloColonna(int c) const override;
    void PrimaRigaTempi(std::string_view riga) override;
    double Massimo(std::span<const double> celle) const override { return MassimoColonna(celle); }
    double Minimo(std::span<const double> celle) const override { return MinimoColonna(celle); }
    // Kept: this window draws over time only; with the distance axis its graphs stay empty.
    int ColonnaX(bool asseDistanza) const override { return asseDistanza ? 0 : kColonnaTempo; }
    bool LeggePrimaDiSpostare() const override { return true; }
    Piano PianoDelTempo(Grafico grafico) const override {
        return grafico == Grafico::Allarmi ? Piano::Laterale : Piano::Dati;
    }

    bool CercaFileLaterale();
    void LeggiTitoli(std::string_view titolo);
    bool LeggiDati();
    bool LeggiPiano(LettoreDati& lettore, Piano piano);

    TabellaArray tabella_;
    PerCanale<std::string> titoli_;
    int NumCampiTxt_ = 0;                 ///< columns of the side file, less the lap number
    std::filesystem::path Cartella_;      ///< folder of the CSV
    std::filesystem::path NomeCsv_;       ///< its name
    std::filesystem::path NomeLaterale_;  ///< bare name of the side file
};

}  // namespace lapvane
