#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Colore.h"
#include "reports/CanaliLog.h"
#include "reports/DatiSessione.h"

namespace lapvane {

/// How one channel of a log is drawn, as the .ses file keeps it.
struct CanaleSessione {
    std::string Nome;           ///< caption; written, never read back
    std::int16_t Filtro = 1;    ///< rows between plotted points, at least 1
    Colore Tinta = 0;           ///< of the line
    std::int16_t Spessore = 1;  ///< of the line, 1 to 6
    double Minimo = 0.0;
    double Massimo = 0.0;
};

/// The channels in order, one line each.
using CanaliSessione = std::array<CanaleSessione, kUltimoCanale - kPrimoCanale + 1>;

/// The text of a .ses file, always 26 lines: a line break inside a value becomes one blank.
std::string ScriviSessione(const RecordSessione& sessione, const CanaliSessione& canali);

/// Reads any text as a .ses file, by position. `sessione` and `veicolo` are emptied first; what the
/// text lacks stays empty. A channel keeps what it has where the text ends, where a field is no
/// number, and where a filter is below 1 or a width not 1 to 6.
void LeggiSessione(std::string_view testo, RecordSessione& sessione, std::string& veicolo,
                   CanaliSessione& canali);

}  // namespace lapvane
