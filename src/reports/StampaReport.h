#pragma once

#include <string>
#include <vector>

#include "platform/Printer.h"

namespace lapvane {

/// One line of the lap report, as the grid shows it.
struct RigaReport {
    std::string Sessione;
    std::string Giro;
    std::string Tempo;
    std::string Velocita;
};

/// Prints the data of the session and the laps, 80 a page in two groups of columns. `giri` are all
/// laps of the log, lap 1 first. Below stand `piede` and the number of the page. Without laps
/// nothing is printed.
void StampaReport(Printer& stampante, const std::vector<RigaReport>& giri,
                  const std::string& piede = {});

/// The heading of the speed column, on screen and paper.
std::string TitoloVelocita();

}  // namespace lapvane
