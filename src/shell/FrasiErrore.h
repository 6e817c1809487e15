#pragma once

#include <string>
#include <string_view>

#include "platform/ErroreRuntime.h"
#include "shell/Voci.h"

namespace lapvane {

/// A phrase of the run-time error box in the current language. The code writes its phrases in
/// English where an error is raised; one without an Italian form comes back as it stands.
std::string FraseErrore(std::string_view inglese);

/// Why a file was not written, as a sentence for a person.
std::string Motivo(const ErroreRuntime& errore);

/// Tells that a file was not written: which one, why, and what is therefore not saved. The program
/// goes on.
void SegnalaScrittura(const ErroreRuntime& errore, Voce perduto);

}  // namespace lapvane
