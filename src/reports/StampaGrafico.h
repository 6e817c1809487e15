#pragma once

#include <array>
#include <string>
#include <vector>

namespace lapvane {

/// What stands on the printed page of a graph beside the graph.
struct TestiStampaGrafico {
    /// Session, date, time, circuit, vehicle, drivers, notes; each label and value in one line.
    std::array<std::string, 7> Righe;
    std::string Legenda;
};

/// The lines for the graph of the channels; `canali` are the names of those that are drawn.
TestiStampaGrafico TestiGraficoCanali(const std::vector<std::string>& canali);
/// The lines for the overview of the alarms.
TestiStampaGrafico TestiGraficoAllarmi();

}  // namespace lapvane
