#include "analysis/AnalisiDatiFoglio.h"

#include <new>
#include <system_error>

#include "analysis/FileMancante.h"
#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "platform/PuntatoreOccupato.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Principale.h"

namespace lapvane {

namespace fs = std::filesystem;

bool AnalisiDatiFoglio::CaricaLog() {
    const PuntatoreOccupato occupato;
    IniziaCaricamento();
    if (!CaricaFoglio(Piano::Dati, NomeFileDati())) return Interrotto();
    ImpostaNumRighe(tabella_.NumeroRighe());
    ImpostaNumCampi(tabella_.NumeroColonne(Piano::Dati));
    MostraCanali();
    if (!CercaFileLaterale()) return false;
    MostraLettura(Voce::LetturaFileAllarmi);
    if (!CaricaFoglio(Piano::Laterale, SenzaFine(NomeFileDati(), 4, ".txt"))) return Interrotto();
    LeggiTempi();
    ImpostaCanali();
    ConcludiCaricamento();
    return true;
}

/// False if it was stopped.
bool AnalisiDatiFoglio::CaricaFoglio(Piano piano, const fs::path& percorso) {
    try {
        return tabella_.CaricaFile(piano, ApriLog(percorso), [this](int percento) {
            MostraAvanzamento(TestoNumeroConSpazio(percento));
            return Prosegue(percento);
        });
    } catch (const std::bad_alloc&) {
        // An empty sheet.
    } catch (const ErroreRuntime&) {
        // A medium that is gone half-way: the same.
    }
    return true;
}

bool AnalisiDatiFoglio::CercaFileLaterale() {
    // Kept: the test asks for any entry of the current folder at all, not for the side file, so
    // that a missing side file is not noticed here; the overview stays empty then.
    ImpostaFileLatiTrovati(true);
    if (!LettoreCartella(platform().CurDir()).Fine()) return true;
    FileMancante({});
    ImpostaFileLatiTrovati(false);
    constexpr const char* kSoloEstensione = ".alm";
    if (GenereDi(platform().CurDir() / kSoloEstensione) != Genere::Niente) return true;
    FileMancante(kSoloEstensione);
    ChiudiAnalisi();
    return false;
}

}  // namespace lapvane
