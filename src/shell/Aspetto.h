#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lapvane {

enum class TemaScelto { Desktop, Chiaro, Scuro };

/// How the program looks, as a person has chosen it.
struct Aspetto {
    TemaScelto Tema = TemaScelto::Desktop;
    bool ModoBox = false;  ///< the mode for the pit lane

    bool operator==(const Aspetto&) const = default;
};

/// Reads the text of such a file; a text that this program did not write is no choice.
Aspetto LeggiAspetto(std::string_view testo);
std::string ScriviAspetto(const Aspetto& aspetto);

/// The choice of the last time; none without a file that can be read.
Aspetto CaricaAspetto();
/// Writes it; a folder that takes no file leaves things as they are.
void SalvaAspetto(const Aspetto& aspetto);

}  // namespace lapvane
