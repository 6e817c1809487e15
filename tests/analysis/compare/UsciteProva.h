#pragma once

#include <filesystem>
#include <string>

#include "support/Cartelle.h"
#include "support/PlatformProva.h"

namespace lapvane::prova {

/// The sample run (laps 2 to 15, the best is 12 with 78.48), driven on Valdoro, as yesterday's
/// ("ieri") and as today's ("oggi"), with the tracks beside them.
inline void MettiDueUscite(const std::filesystem::path& cartella) {
    namespace fs = std::filesystem;
    fs::copy(CartellaDati() / "tracks", cartella / "tracks");
    for (const char* nome : {"ieri", "oggi"}) {
        for (const char* fine : {".csv", ".txt", ".tim"}) {
            fs::copy(CartellaBin() / "sample" / (std::string("Esempio") + fine),
                     cartella / (std::string(nome) + fine));
        }
        Scrivi(cartella / (std::string(nome) + ".ses"), "Prove\r\n\r\n\r\nValdoro\r\n");
    }
}

}  // namespace lapvane::prova
