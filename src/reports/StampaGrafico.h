#pragma once

#include <array>
#include <string>
#include <vector>

#include "platform/Colore.h"

namespace lapvane {

/// A value at the cursor.
struct ValoreStampato {
    std::string Nome;
    std::string Valore;
    std::string Unita;
    Colore Tinta = 0;
};

/// What stands on the printed page of a graph beside the graph.
struct TestiStampaGrafico {
    /// Session, date, time, circuit, vehicle, drivers, notes; each label and value in one line.
    std::array<std::string, 7> Righe;
    std::string Titolo;  ///< what the graph shows: lap and lap time
    std::string Log;     ///< its file
    std::string Legenda;
    std::vector<ValoreStampato> Valori;  ///< none: nobody has moved the cursor
};

/// The lines for the graph of the channels, but for the title.
TestiStampaGrafico TestiGraficoCanali();
/// The lines for the overview of the alarms, but for the title.
TestiStampaGrafico TestiGraficoAllarmi();

}  // namespace lapvane
