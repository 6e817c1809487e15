#pragma once

#include "device/SerialComm.h"
#include "project/FileRecenti.h"
#include "shell/StatoShell.h"

namespace lapvane {

// Process-wide flags and records put back to those of a fresh process.

inline void AzzeraStatoShell() {
    AnalisiSpeed = false;
    FaseComunicazione = 0;
    StrumentoPresente = false;
    StrumentoPresentePrec = false;
    AnalisiInCorso = false;
    AnalisiCaricata = false;
    FormAttiva = nullptr;
    ProgettoModificato = false;
    PercorsoProgetto.clear();
    ProgettoSenzaFile = false;
    FileRecenteScelto.clear();
}

inline void AzzeraSerialComm() {
    ErroreComunicazione = false;
    TrasferimentoAbbandonato = false;
    for (std::int32_t& tempo : TempoMassimo) tempo = 0;
}

inline void AzzeraFileRecenti() {
    for (std::string& voce : ListaRecenti) voce.clear();
    NumRecenti = 0;
}

}  // namespace lapvane
