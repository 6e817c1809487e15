#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "project/DatiProgetto.h"
#include "sensors/CanaliSensore.h"

namespace lapvane {

// What the editor of alarms and signals works with, apart from its window.

/// Speeds of the shift light in RPM, first light first.
extern const std::array<std::int16_t RecordProgetto::*, 5> kShiftLight;

/// A stored threshold as the box shows it (2500 at factor 1000: "2.500").
std::string MostraSoglia(const SogliaAllarme& soglia, std::int32_t valore);
/// What a box makes of its text when it loses the focus: point for comma, the factor's decimals,
/// the highest value for a higher one.
std::string SistemaSoglia(const SogliaAllarme& soglia, std::string_view testo);
/// The numeric prefix of a text times the factor, rounded half to even. Raises error 6 for what
/// does not fit the field.
std::int32_t ValoreSoglia(const SogliaAllarme& soglia, std::string_view testo);

/// List position of a type counted from 1, -1 for none and for what the list does not have.
int PosizioneTipo(std::int64_t tipo, std::size_t voci);
int PosizioneTipo(std::string_view tipo, std::size_t voci);

/// Name of a unit by the index of a project; empty for one that the list does not have.
std::string NomeUnita(const std::vector<std::string>& lista, std::int16_t indice);

}  // namespace lapvane
