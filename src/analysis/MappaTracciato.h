#pragma once

#include "analysis/VistaAnalisi.h"

namespace lapvane {

/// The track map of the session's circuit, beside the lap table.
class MappaTracciato {
 public:
    explicit MappaTracciato(VistaAnalisi& vista) : vista_(vista) {}

    bool TracciatoVisibile() const { return tracciatoVisibile_; }
    /// Lines of the outline; the map shows the first 201.
    int NumPuntiTracciato() const { return numPuntiTracciato_; }

    /// Reads the outline and shows it with the marker at its first point. False, and no map, for a
    /// circuit without one.
    bool Carica();
    void Nascondi();
    /// The load begins: no map yet, whatever the window shows.
    void Azzera() { tracciatoVisibile_ = false; }

 private:
    VistaAnalisi& vista_;
    bool tracciatoVisibile_ = false;
    int numPuntiTracciato_ = 0;
};

}  // namespace lapvane
