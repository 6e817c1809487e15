#include "analysis/SessioneLog.h"

#include "analysis/FileMancante.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "reports/FileSessione.h"
#include "shell/FrasiErrore.h"

namespace lapvane {

namespace {

constexpr std::size_t kByteMassimi = 1 << 24;  // far beyond the longest notes

}  // namespace

void SessioneLog::LeggiDatiSessione(const std::filesystem::path& nomeFileDati,
                                    ElencoCanali& canali) {
    NomeFileSessione_ = SenzaFine(nomeFileDati, 3, "ses");
    std::string testo;
    try {
        if (FileEsiste(NomeFileSessione_)) {
            testo = LeggiFile(NomeFileSessione_, Lavoro::LeggereSessione, kByteMassimi);
        }
    } catch (const ErroreRuntime&) {
        FileMancante(TestoDaPercorso(NomeFileSessione_));
    }
    CanaliSessione letti = canali.PerSessione();
    LeggiSessione(testo, DatiSessione, DatiProgetto.Veicolo, letti);
    canali.Prendi(letti);
}

void SessioneLog::SalvaDatiSessione(const ElencoCanali& canali) const {
    if (NomeFileSessione_.empty()) return;
    try {
        // Kept: the file is not emptied first, so that a shorter text leaves the end of the old one
        // behind it. The reader takes 26 lines and never gets there.
        RiscriviInizio(NomeFileSessione_, ScriviSessione(DatiSessione, canali.PerSessione()),
                       Lavoro::ScrivereSessione);
    } catch (const ErroreRuntime& errore) {
        // A medium that cannot be written to must not take the window with it.
        SegnalaScrittura(errore, Voce::SessioneNonSalvata);
    }
}

}  // namespace lapvane
