#include "analysis/AnalisiDati.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kByteMassimi = 1 << 20;  // of a file that a person can look through

}  // namespace

void AnalisiDati::LeggiTempi() {
    const fs::path percorso = SenzaFine(NomeFileDati, 4, ".tim");
    std::string testo;
    try {
        if (!FileEsiste(percorso)) {
            FileMancante(TestoDaPercorso(percorso));
            return;
        }
        testo = LeggiFile(percorso, "reading the lap times", kByteMassimi);
    } catch (const ErroreRuntime&) {
        FileMancante(TestoDaPercorso(percorso));  // its text says "or cannot be accessed" as well
        return;
    }
    const FileTim file = LeggiFileTim(testo);
    PrimaRigaTempi(file.PrimaRiga);
    for (std::size_t i = 0; i < file.Righe.size(); ++i) {
        TempiGiro[i + 2][1] = file.Righe[i].Tempo;
        TempiSessione[i + 2] = file.Righe[i].Sessione;
    }
    if (file.TroppiGiri) {
        platform().MsgBox(Testo(Voce::TroppiGiri), Buttons::Ok, Icon::Information,
                          platform().ExeName());
    }
    // The first line, the empty last line and the line index past the end are no laps.
    NumRigheTabella = file.IndiceFine();
    NumGiri = NumRigheTabella - 3;
}

}  // namespace lapvane
