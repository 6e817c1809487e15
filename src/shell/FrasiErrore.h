#pragma once

#include <string>

#include "platform/ErroreRuntime.h"
#include "shell/Voci.h"

namespace lapvane {

/// Words of a run-time error in the current language; English as long as there are no texts.
std::string FraseErrore(const Parole& parole);

/// Why a file was not written, as a sentence for a person.
std::string Motivo(const ErroreRuntime& errore);

/// That a file was not written: which one, why, and what is therefore not saved.
std::string FraseScrittura(const ErroreRuntime& errore, Voce perduto);

/// Tells it. The program goes on.
void SegnalaScrittura(const ErroreRuntime& errore, Voce perduto);

}  // namespace lapvane
