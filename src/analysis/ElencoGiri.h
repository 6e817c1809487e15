#pragma once

#include <string>

#include "analysis/PartiAnalisi.h"
#include "platform/Colore.h"

namespace lapvane {

/// The lap table of the window, MSFlexGrid1: what stands in its cells and how they are marked.
class ElencoGiri {
 public:
    explicit ElencoGiri(PartiAnalisi& parti) : parti_(parti) {}

    /// Fills the table; there must be laps.
    void Compila();
    /// The lap times anew, with best and worst marked. Nothing without laps.
    void EvidenziaTempi();
    /// Takes the colours of the selected lap away, or gives them.
    void TogliScelta();
    void MostraScelta();
    /// Empties every row, its time and its label apart.
    void Svuota();
    /// " lap n" of the selected lap.
    std::string EtichettaGiro() const;
    /// The selected lap and its time, if it has one.
    std::string NomeGiro() const;

 private:
    void ColoraRiga(int riga, Colore sfondo, Colore caratteri);
    void CompilaRiga(int riga);

    PartiAnalisi& parti_;
};

}  // namespace lapvane
