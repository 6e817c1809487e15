#pragma once

#include "instrument/SerialeStrumento.h"
#include "support/PlatformProva.h"

namespace lapvane::prova {

/// The program with the simulated instrument on COM1, both on the virtual clock; English.
template <class Macchina>
class ConStrumento : public ::testing::Test {
 protected:
    ConStrumento() {
        CaricaTestiVeri(1);
        finestra.Seriale = &porta;
    }
    /// What the instrument gets wrong from now on, and nothing else; "": nothing.
    void Guasta(const std::string& come) {
        apparecchio.Difetti.Togli();
        if (!come.empty()) apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto(come));
    }
    /// Texts of the boxes from the `dal`-th on.
    std::vector<std::string> Detto(std::size_t dal = 0) const {
        std::vector<std::string> testi;
        for (std::size_t i = dal; i < macchina.Mostrati.size(); ++i) {
            testi.push_back(macchina.Mostrati[i].Testo);
        }
        return testi;
    }
    /// Commands of the frames that were written from the `dal`-th on, handshakes left out.
    std::vector<int> Comandi(std::size_t dal = 0) const {
        std::vector<int> comandi;
        for (std::size_t i = dal; i < porta.Richieste().size(); ++i) {
            if (porta.Richieste()[i][1] != 1) comandi.push_back(porta.Richieste()[i][1]);
        }
        return comandi;
    }

    Macchina macchina;
    PrincipaleProva finestra;
    strumento::Strumento apparecchio;
    strumento::SerialeStrumento porta{apparecchio, [this] { return macchina.Orologio; },
                                      [this](int ms) { macchina.Orologio += ms; }};
};

}  // namespace lapvane::prova
