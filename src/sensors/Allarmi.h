#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "project/DatiProgetto.h"
#include "sensors/CampiEditor.h"
#include "sensors/CanaliSensore.h"
#include "shell/Editor.h"

namespace lapvane {

// What the editor of alarms and signals works with, apart from its window.

/// A stored threshold as the box shows it (2500 at factor 1000: "2.500").
std::string MostraSoglia(const SogliaAllarme& soglia, std::int32_t valore);
/// What a box makes of its text when it loses the focus: point for comma, the factor's decimals,
/// the highest value for a higher one.
std::string SistemaSoglia(const SogliaAllarme& soglia, std::string_view testo);
/// The numeric prefix of a text times the factor, rounded half to even. Raises error 6 for what
/// does not fit the field.
std::int32_t ValoreSoglia(const SogliaAllarme& soglia, std::string_view testo);

/// The box of the first number that is none; a threshold that is off may hold anything.
std::optional<std::string_view> CasellaErrata(const ControlliEditor& controlli);

/// Shows a project. A type that its list does not have shows nothing.
void MostraDatiAllarmi(const RecordProgetto& record, ControlliEditor& controlli);

/// Stores everything; the number boxes hold numbers.
void SalvaDatiAllarmi(const ControlliEditor& controlli, RecordProgetto& record);

/// Name of a unit by the index of a project; empty for one that the list does not have.
std::string NomeUnita(const std::vector<std::string>& lista, std::int16_t indice);

}  // namespace lapvane
