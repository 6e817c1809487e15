#include "shell/Protetto.h"

#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

/// A text of the table, or its English stand-in while there is no table.
std::string TestoOppure(int n, const char* sostituto) {
    const std::int64_t posizione = std::int64_t{BaseTesti} + n;
    return posizione > 0 && posizione < static_cast<std::int64_t>(Testi.size()) ? Testo(n)
                                                                                : sostituto;
}

[[noreturn]] void MostraEChiudi(const std::string& descrizione) {
    platform().MousePointer(Pointer::Normal);
    platform().MsgBox(TestoOppure(36, "Run-time error") + " " + descrizione + "\r\n\r\n" +
                          TestoOppure(37, "The program will now close."),
                      Buttons::Ok, Icon::Critical, platform().ExeName());
    EndProgram(1);
}

}  // namespace

void PortaDegliErrori(const ErroreRuntime& errore) {
    std::string testo = TestoNumero(static_cast<int>(errore.Numero())) + ": " + FraseErrore(errore.what());
    if (!errore.Cosa().empty()) testo += " (" + FraseErrore(errore.Cosa()) + ")";
    if (!errore.File().empty()) testo += "\r\n" + TestoDaPercorso(errore.File());
    if (errore.Riga() > 0) testo += " : " + TestoNumero(errore.Riga());
    MostraEChiudi(testo);
}

void PortaDegliErrori(const std::exception& errore) {
    MostraEChiudi(errore.what());
}

}  // namespace lapvane
