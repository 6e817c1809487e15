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

    bool Carica() override;
    const TabellaDati& Tabella() const override { return tabella_; }

    /// The description of the two files that a text driver looks for, written beside them.
    void ScriviSchema() const;

    int NumCampiTxt = 0;                 ///< columns of the side file, less the lap number
    std::filesystem::path Cartella;      ///< folder of the CSV
    std::filesystem::path NomeCsv;       ///< its name
    std::filesystem::path NomeLaterale;  ///< bare name of the side file

 private:
    std::string TitoloColonna(int c) const override;
    void PrimaRigaTempi(std::string_view riga) override;
    double Massimo(std::span<const double> celle) const override { return MassimoColonna(celle); }
    double Minimo(std::span<const double> celle) const override { return MinimoColonna(celle); }
    // Kept: this window draws over time only; with the distance axis its graphs stay empty.
    int ColonnaX() const override { return AsseDistanza ? 0 : kColonnaTempo; }
    bool LeggePrimaDiSpostare() const override { return true; }
    Piano PianoDelTempo(bool panoramica) const override {
        return panoramica ? Piano::Laterale : Piano::Dati;
    }

    bool CercaFileLaterale();
    void LeggiTitoli(std::string_view titolo);
    void LeggiDati();
    void LeggiPiano(LettoreDati& lettore, Piano piano);

    TabellaArray tabella_;
    PerCanale<std::string> titoli_;
};

}  // namespace lapvane
