#pragma once

#include <string>

#include "reports/FigureSessione.h"

namespace lapvane {

class GiriLog;

/// The figures of laps over the track of `DatiSessione`. There must be laps.
FigureSessione CalcolaStatistiche(const GiriLog& giri);

/// Speed of a lap time over that track, km/h, "#.0##"; empty for what is no time.
std::string VelocitaGiro(const std::string& tempo);

}  // namespace lapvane
