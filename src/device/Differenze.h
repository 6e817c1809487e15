#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "device/RecordStrumento.h"

namespace lapvane {

struct RecordProgetto;

/// A setting that is not the same on two sides, in a person's words.
struct Differenza {
    std::string Dove;   ///< setup, sensors, alarms, curves, project
    std::string Cosa;   ///< the setting
    std::string Prima;  ///< its value on the first side, entries of lists by their names
    std::string Ora;    ///< on the second side
    std::string Unita;  ///< empty: it has none; "Km/h / mph" where the sides have not the same
};

/// What an instrument holds: the replies to the reads of its records, in the order setup, second
/// half of the setup, sensors, alarms, and its nine curves.
struct CopiaStrumento {
    std::array<std::string, 4> Record;
    std::array<CurvaStrumento, 9> Curve;
};
extern const std::array<const TabellaRecord*, 4> kRecordCopiati;

/// What differs between a project and an instrument, compared as the wire holds it: values of which
/// the same bits travel are the same. What never travels (sampling rates, lamps green and blue,
/// texts) is left out. A curve is that of the project's sensor in `LibreriaSensori`; its points
/// behind the sensor's own are not compared, for the project does not say what they are. A channel
/// that is off has a zero curve.
std::vector<Differenza> Differenze(const RecordProgetto& progetto, const CopiaStrumento& strumento);

/// What differs between the settings of two runs. What travels is compared as above, the curves by
/// the names of their sensors; a group "Project" has what never travels. The dates of the project,
/// its pictures and the flag of the input are left out.
std::vector<Differenza> Differenze(const RecordProgetto& prima, const RecordProgetto& ora);

}  // namespace lapvane
