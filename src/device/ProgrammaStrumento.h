#pragma once

#include <optional>
#include <string>

#include "device/Differenze.h"
#include "platform/Pointer.h"

namespace lapvane {

/// What a run through the whole instrument asks of its window.
class VistaStrumento {
 public:
    virtual ~VistaStrumento() = default;
    virtual void Mostra(const std::string& titolo) = 0;  ///< caption and Label2; shows the window
    virtual bool Visibile() const = 0;
    virtual void Puntatore(Pointer puntatore) = 0;        ///< over the window
    virtual void Aggiungi(const std::string& testo) = 0;  ///< to the end of Label1
    virtual void Chiusura(const std::string& testo) = 0;  ///< Label3
    virtual void Scarica() = 0;                           ///< unloads the window
};

/// Writes the whole project to the instrument: setup, sensor assignment, nine curves, alarms. Asks
/// first. A run that succeeded, and one that the check of the sensors ended, leave the window open;
/// one that failed or whose window was closed unloads it and opens the link anew. What was written
/// by then stays written.
void mnuProgramDevice_Click(VistaStrumento& vista);

/// The same the other way: reads everything into the project and finds the sensors' names by their
/// curves. A run that succeeded sets `ProgettoModificato`.
void mnuReadDevice_Click(VistaStrumento& vista);

/// The steps of a read into a copy: nothing else changes, however it ends. Asks nothing; without a
/// link it fails. Its window is unloaded at the end. Empty: it did not come through.
std::optional<CopiaStrumento> LeggiCopia(VistaStrumento& vista);

}  // namespace lapvane
