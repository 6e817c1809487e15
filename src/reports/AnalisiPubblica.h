#pragma once

#include <string>

namespace lapvane {

/// What the reports ask of an open analysis. A channel is 0 to 20, a lap index 0 to 999; any other
/// raises error 9.
class AnalisiPubblica {
 public:
    virtual ~AnalisiPubblica() = default;

    virtual int NumCampi() const = 0;  ///< columns of the log; 3 and above are channels
    virtual int NumGiri() const = 0;   ///< complete laps; lap n has index n + 1

    /// Minimum, maximum and mean of a channel over the selected lap, with the machine's separator.
    virtual std::string GetMinVal(int c) const = 0;
    virtual std::string GetMaxVal(int c) const = 0;
    virtual std::string GetMediaVal(int c) const = 0;
    virtual std::string GetNomeMisura(int c) const = 0;  ///< "name unit"

    virtual std::string GetTempoGiro(int giro) const = 0;
    virtual std::string GetSessioneTempo(int giro) const = 0;
    /// km/h, "#.0##"; empty for a lap without a time.
    virtual std::string GetVelocitaGiro(int giro) const = 0;
};

}  // namespace lapvane
