#include "shell/Protetto.h"

#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

[[noreturn]] void MostraEChiudi(const std::string& descrizione) {
    platform().MousePointer(Pointer::Normal);
    platform().MsgBox(Testo(Voce::ErroreEsecuzione) + " " + descrizione + "\r\n\r\n" +
                          Testo(Voce::ProgrammaChiude),
                      Buttons::Ok, Icon::Critical, platform().ExeName());
    EndProgram(1);
}

}  // namespace

void PortaDegliErrori(const ErroreRuntime& errore) {
    std::string testo =
        TestoNumero(static_cast<int>(errore.Numero())) + ": " + FraseErrore(errore.what());
    if (!errore.Cosa().empty()) testo += " (" + FraseErrore(errore.Cosa()) + ")";
    if (!errore.File().empty()) testo += "\r\n" + TestoDaPercorso(errore.File());
    if (errore.Riga() > 0) testo += " : " + TestoNumero(errore.Riga());
    MostraEChiudi(testo);
}

void PortaDegliErrori(const std::exception& errore) {
    MostraEChiudi(errore.what());
}

}  // namespace lapvane
