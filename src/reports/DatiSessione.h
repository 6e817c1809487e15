#pragma once

#include <string>

namespace lapvane {

/// What the user knows about the analysed log beyond its numbers. All text, Windows-1252.
struct RecordSessione {
    std::string Sessione;
    std::string DataSessione;
    std::string OraSessione;
    std::string Circuito;         ///< also the base name of the track's files
    std::string LunghTracciato;   ///< metres, as digits
    std::string VeicoloSessione;  ///< Kept: never assigned; the vehicle is `DatiProgetto.Veicolo`
    std::string Piloti;
    std::string NoteSessione;
};

/// The session of the one log that is open. Written by the load of an analysis window and by the
/// session dialog.
inline RecordSessione DatiSessione;

}  // namespace lapvane
