#pragma once

#include <string>

namespace lapvane {

/// The figures of a session, as its statistics show them.
struct FigureSessione {
    int NumGiri = 0;
    std::string TempoTotale;    ///< hh:mm:ss.cc
    std::string TempoMedio;     ///< mm:ss.cc; empty if no lap has a time
    std::string VelocitaMedia;  ///< km/h, "#.0##", as the next; empty without a time
    int GiroMigliore = 0;       ///< lap numbers
    std::string TempoMigliore;
    std::string VelocitaMigliore;
    int GiroPeggiore = 0;
    std::string TempoPeggiore;
    std::string VelocitaPeggiore;
    int GiriEsclusi = 0;  ///< laps whose line is no time: neither in the total nor in the means
};

}  // namespace lapvane
