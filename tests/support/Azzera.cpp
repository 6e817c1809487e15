#include "device/Diagnostica.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "project/FileProgetto.h"
#include "reports/Circuiti.h"
#include "reports/DatiSessione.h"
#include "sensors/CSensore.h"
#include "sensors/Curve.h"
#include "shell/TabelleNomi.h"
#include "support/PlatformProva.h"
#include "tools/support/FreshState.h"

namespace lapvane::prova {

void AzzeraTutto() {
    AzzeraFileRecenti();
    AzzeraSerialComm();
    AzzeraBufferLog();
    PercorsoCsv.clear();
    DatiProgetto = {};
    ValoriProgetto.fill({});
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
    ListaLingue.clear();
    ListaUMVelocita.clear();
    ListaUMTemperatura.clear();
    ListaUMPressione.clear();
    ListaIngressiAN.clear();
    ListaCanaliA.clear();
    ListaCanaliB.clear();
    ListaTipiSensore.clear();
    ListaAllarmeBase.clear();
    ListaAllarmi.clear();
    ListaAllarmeExtra.clear();
}

}  // namespace lapvane::prova
