// The session of a log: its side file, and the sectors of its track.
#include <algorithm>

#include "analysis/AnalisiDati.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "reports/Circuiti.h"
#include "reports/FileSessione.h"
#include "shell/FrasiErrore.h"

namespace lapvane {

namespace {

constexpr std::size_t kByteMassimi = 1 << 24;  // far beyond the longest notes

}  // namespace

void AnalisiDati::LeggiSettori() {
    NumSettori = 1;
    const auto file = LeggiFileSettori(DatiSessione.Circuito, DistanzeSettori.size());
    if (!file) return;
    DistanzeSettori.fill(0.0);
    std::copy(file->Settori.begin(), file->Settori.end(), DistanzeSettori.begin());
    NumSettori = static_cast<int>(file->Settori.size()) + 1;
}

void AnalisiDati::LeggiDatiSessione() {
    NomeFileSessione = SenzaFine(NomeFileDati, 3, "ses");
    std::string testo;
    try {
        if (FileEsiste(NomeFileSessione)) {
            testo = LeggiFile(NomeFileSessione, "reading the session", kByteMassimi);
        }
    } catch (const ErroreRuntime&) {
        FileMancante(TestoDaPercorso(NomeFileSessione));
    }
    CanaliSessione canali;
    for (std::size_t k = 0; k < canali.size(); ++k) {
        const std::size_t c = kPrimoCanaleSessione + k;
        canali[k] = {{},           FiltroCanale[c], ColoreCanale[c], SpessoreCanale[c],
                     MinCanale[c], MaxCanale[c]};
    }
    LeggiSessione(testo, DatiSessione, DatiProgetto.Veicolo, canali);
    for (std::size_t k = 0; k < canali.size(); ++k) {
        const std::size_t c = kPrimoCanaleSessione + k;
        FiltroCanale[c] = canali[k].Filtro;
        SpessoreCanale[c] = canali[k].Spessore;
        MinCanale[c] = canali[k].Minimo;
        MaxCanale[c] = canali[k].Massimo;
        if (ColoreCanale[c] != canali[k].Tinta) {
            ColoreCanale[c] = canali[k].Tinta;
            vista_.ColoreCanale(static_cast<int>(c), canali[k].Tinta);
        }
    }
}

void AnalisiDati::SalvaDatiSessione() const {
    if (NomeFileSessione.empty()) return;  // nothing was loaded
    CanaliSessione canali;
    for (std::size_t k = 0; k < canali.size(); ++k) {
        const std::size_t c = kPrimoCanaleSessione + k;
        canali[k] = {NomeCampo[c],      FiltroCanale[c], ColoreCanale[c],
                     SpessoreCanale[c], MinCanale[c],    MaxCanale[c]};
    }
    try {
        // Kept: the file is not emptied first, so that a shorter text leaves the end of the old one
        // behind it. The reader takes 26 lines and never gets there.
        RiscriviInizio(NomeFileSessione, ScriviSessione(DatiSessione, canali),
                       "writing the session");
    } catch (const ErroreRuntime& errore) {
        // A medium that cannot be written to must not take the window with it.
        SegnalaScrittura(errore, Voce::SessioneNonSalvata);
    }
}

}  // namespace lapvane
