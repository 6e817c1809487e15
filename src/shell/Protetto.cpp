#include "shell/Protetto.h"

#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

EsitoSoccorso (*mettiInSalvo)() = nullptr;

/// What the box says about what was not saved, with its blank line.
std::string TestoSoccorso() {
    if (mettiInSalvo == nullptr) return {};
    EsitoSoccorso esito{true, {}};
    try {
        esito = mettiInSalvo();
    } catch (const std::exception&) {
        // It is told that it failed.
    }
    if (!esito.Serviva) return {};
    if (esito.File.empty()) return Testo(Voce::SoccorsoFallito) + "\r\n\r\n";
    return Testo(Voce::SoccorsoScritto) + "\r\n" + TestoDaPercorso(esito.File) + "\r\n\r\n";
}

[[noreturn]] void MostraEChiudi(const std::string& descrizione) {
    platform().MousePointer(Pointer::Normal);
    const std::string soccorso = TestoSoccorso();
    platform().MsgBox(Testo(Voce::ErroreEsecuzione) + " " + descrizione + "\r\n\r\n" + soccorso +
                          Testo(Voce::ProgrammaChiude),
                      Buttons::Ok, Icon::Critical, platform().ExeName());
    EndProgram(1);
}

}  // namespace

void ImpostaSoccorso(EsitoSoccorso (*mettiDaParte)()) {
    mettiInSalvo = mettiDaParte;
}

void PortaDegliErrori(const ErroreRuntime& errore) {
    std::string testo = TestoNumero(static_cast<int>(errore.Numero())) + ": " +
                        FraseErrore(ParoleDi(errore.Numero())) + " (" +
                        FraseErrore(ParoleDi(errore.Cosa())) + ")";
    if (!errore.File().empty()) testo += "\r\n" + TestoDaPercorso(errore.File());
    if (errore.Riga() > 0) testo += " : " + TestoNumero(errore.Riga());
    MostraEChiudi(testo);
}

void PortaDegliErrori(const std::exception& errore) {
    MostraEChiudi(errore.what());
}

}  // namespace lapvane
