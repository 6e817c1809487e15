#pragma once

#include "reports/AnalisiPubblica.h"
#include "reports/DatiSessione.h"
#include "support/PlatformProva.h"

namespace lapvane::prova {

/// An analysis that answers what a test puts into it.
class AnalisiFinta : public AnalisiPubblica {
 public:
    /// Texts of a channel: name, minimum, maximum and mean.
    using Misura = std::array<std::string, 4>;
    /// Texts of a lap: session, time and speed.
    using Giro = std::array<std::string, 3>;

    int NumCampi() const override { return Campi; }
    int NumGiri() const override { return static_cast<int>(Giri.size()); }
    std::string GetNomeMisura(int c) const override { return Canale(c)[0]; }
    std::string GetMinVal(int c) const override { return Canale(c)[1]; }
    std::string GetMaxVal(int c) const override { return Canale(c)[2]; }
    std::string GetMediaVal(int c) const override { return Canale(c)[3]; }
    std::string GetSessioneTempo(int giro) const override { return Indice(giro)[0]; }
    std::string GetTempoGiro(int giro) const override { return Indice(giro)[1]; }
    std::string GetVelocitaGiro(int giro) const override { return Indice(giro)[2]; }

    int Campi = 0;
    std::vector<Misura> Misure;  ///< channel 3 first
    std::vector<Giro> Giri;      ///< lap 1 first, whose index is 2

 private:
    Misura Canale(int c) const {
        const auto i = static_cast<std::size_t>(c - 3);
        return i < Misure.size() ? Misure[i] : Misura{};
    }
    const Giro& Indice(int giro) const { return Giri.at(static_cast<std::size_t>(giro - 2)); }
};

/// The machine around a report's window.
class DialogoDiReport : public ::testing::Test {
 protected:
    DialogoDiReport() { CaricaTestiVeri(1); }

    PlatformProva macchina;
    PrincipaleProva principale_;
    AnalisiFinta analisi;
};

}  // namespace lapvane::prova
