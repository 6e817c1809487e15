#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "sensors/CSensore.h"

namespace lapvane {

/// The folder of the sensor files, below the program's.
std::filesystem::path CartellaSensori();

/// A sensor from the text of its file, without its path; empty if it is not one: wrong first line,
/// fewer lines than it declares, a number of points outside 0 to 21. Error 6 for a value beyond all
/// range.
std::optional<CSensore> LeggiSensore(std::string_view testo);

/// The text of a sensor file. `x` and `y` are the texts of the rows in use (1 to 20 of each) as the
/// user sees them; the last of them is repeated up to 20 lines, for the instrument's table has 20
/// rows and the tail of a curve is flat.
std::string TestoSensore(std::string_view tipo, std::string_view nome,
                         std::span<const std::string> x, std::span<const std::string> y);

/// Writes that text to a file, whole or not at all; errors as those of `ScriviFile`.
void ScriviSensore(const std::filesystem::path& percorso, std::string_view tipo,
                   std::string_view nome, std::span<const std::string> x,
                   std::span<const std::string> y);

}  // namespace lapvane
