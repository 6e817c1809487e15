#pragma once

#include "analysis/AnalisiProva.h"

namespace lapvane::prova {

/// An analysis whose laps and channels a test fills in by hand.
class AnalisiDiDialogo : public ::testing::Test {
 protected:
    explicit AnalisiDiDialogo(int lingua = 1) {
        CaricaTestiVeri(lingua);
        DatiSessione = {};
    }
    ~AnalisiDiDialogo() override { AzzeraTutto(); }

    /// Laps in the order of the log: time and session of each.
    void Giri(const std::vector<std::pair<std::string, std::string>>& giri) {
        analisi.NumGiri = static_cast<int>(giri.size());
        analisi.NumRigheTabella = analisi.NumGiri + 3;
        for (std::size_t i = 0; i < giri.size(); ++i) {
            analisi.TempiGiro[i + 2][1] = giri[i].first;
            analisi.TempiSessione[i + 2] = giri[i].second;
        }
    }

    PlatformProva macchina;
    PrincipaleProva principale_;
    VistaProva vista;
    GraficoProva grafico;
    GraficoProva panoramica;
    AnalisiDatiSpeed analisi{vista, grafico, panoramica};
};

}  // namespace lapvane::prova
