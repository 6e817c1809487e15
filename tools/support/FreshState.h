#pragma once

#include "device/SerialComm.h"
#include "project/FileProgetto.h"
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
    progettoAperto() = {};
    FileRecenteScelto.clear();
}

inline void AzzeraSerialComm() {
    ErroreComunicazione = false;
    collegamento() = {};
}

inline void AzzeraFileRecenti() {
    recenti() = {};
}

}  // namespace lapvane
