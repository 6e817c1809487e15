#include "device/Diagnostica.h"
#include "logs/BufferLog.h"
#include "project/DatiProgetto.h"
#include "reports/Circuiti.h"
#include "reports/DatiSessione.h"
#include "sensors/CSensore.h"
#include "sensors/Curve.h"
#include "shell/LoadStrings.h"
#include "support/PlatformProva.h"
#include "tools/support/FreshState.h"

namespace lapvane::prova {

void AzzeraTutto() {
    AzzeraFileRecenti();
    AzzeraSerialComm();
    AzzeraBufferLog();
    DatiProgetto = {};
    DatiSessione = {};
    ListaCircuiti.clear();
    LibreriaSensori.clear();
    CurvaX = {};
    CurvaY = {};
    ValoriAnalogici = {};
    AzzeraStatoShell();
    Testi.clear();
    MetaTesti = 0;
    IndiceLingua = 0;
    BaseTesti = 0;
}

}  // namespace lapvane::prova
