#pragma once

#include <exception>
#include <utility>

#include "platform/ErroreRuntime.h"

namespace lapvane {

/// What became of what was not saved when the program had to end.
struct EsitoSoccorso {
    bool Serviva = false;        ///< something was not saved
    std::filesystem::path File;  ///< where it is now; empty: it could not be put aside
};

/// What the door has done before it tells; null: nothing. Whoever knows what is unsaved sets it.
void ImpostaSoccorso(EsitoSoccorso (*mettiDaParte)());

/// The one door for what nobody caught: puts aside what is not saved, shows the error with what the
/// program was doing and in which file, and ends the program through `Platform::End`.
[[noreturn]] void PortaDegliErrori(const ErroreRuntime& errore);
[[noreturn]] void PortaDegliErrori(const std::exception& errore);

/// Runs what an event sets off; nothing that is thrown leaves it.
template <class F>
void Protetto(F&& azione) noexcept {
    try {
        try {
            std::forward<F>(azione)();
        } catch (const ErroreRuntime& errore) {
            PortaDegliErrori(errore);
        } catch (const FineProgramma&) {
            throw;
        } catch (const std::exception& errore) {
            PortaDegliErrori(errore);
        }
    } catch (const FineProgramma&) {
        // The program is over; the event that noticed it ends here.
    }
}

}  // namespace lapvane
