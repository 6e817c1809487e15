#pragma once

#include <string>
#include <vector>

#include "analysis/compare/Confronto.h"

namespace lapvane {

/// How numbers and fields stand in a file of compared laps.
struct FormaCsv {
    char Decimale = '.';
    char Campi = ',';    ///< never the decimal separator
    double Passo = 1.0;  ///< metres, above 0
};

/// The compared laps over one grid of metres along the reference: `distance`, the seconds that each
/// lap has lost there, then each channel of the reference and of each lap. Laps go by the numbers
/// of their lap tables, with the log's name where several logs are open. A lap that can't be
/// aligned is left out; empty where the reference can't be.
std::string CsvConfronto(const Confronto& confronto, const std::vector<std::string>& canali,
                         const FormaCsv& forma);

}  // namespace lapvane
