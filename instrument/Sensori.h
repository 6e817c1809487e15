#pragma once

#include <filesystem>

#include "instrument/Memoria.h"

namespace lapvane::strumento {

/// Programs the curves of the sensors that the simulated car has on board, from the files of a
/// sensor library. A channel whose file is missing, or is no sensor file of twenty points, keeps
/// its curve. Returns how many channels were programmed.
int MontaSensori(const std::filesystem::path& cartella, Memoria& memoria);

}  // namespace lapvane::strumento
