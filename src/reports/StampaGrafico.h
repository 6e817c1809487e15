#pragma once

#include <array>
#include <string>

namespace lapvane {

/// What stands on the printed page of a graph beside the graph.
struct TestiStampaGrafico {
    /// Session, date, time, circuit, vehicle, drivers, notes; each label and value in one line.
    std::array<std::string, 7> Righe;
    std::string Titolo;  ///< what the graph shows: log, lap and lap time
    std::string Legenda;
};

/// The lines for the graph of the channels, but for the title.
TestiStampaGrafico TestiGraficoCanali();
/// The lines for the overview of the alarms, but for the title.
TestiStampaGrafico TestiGraficoAllarmi();

}  // namespace lapvane
