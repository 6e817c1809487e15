#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "instrument/Guasti.h"
#include "instrument/Sessione.h"
#include "instrument/Strumento.h"

namespace lapvane::strumento {

/// What the program was asked for.
struct Options {
    std::filesystem::path Link;     ///< empty: no link is made
    std::filesystem::path Tracks;   ///< folder of the circuits; empty: the default
    std::filesystem::path Sensors;  ///< folder of the car's sensors; empty: the default
    std::string Track;              ///< circuit's name; empty: the first of the folder
    std::string Identity = kIdentitaNormale;
    ParametriSessione Session;
    std::vector<Guasto> Faults;
    std::optional<Serbatoio> Tank;
    bool Pace = false;
    bool Quiet = false;
    bool Help = false;
};

/// Reads the arguments behind the program's name. Raises `std::invalid_argument` with a text for
/// people.
Options ParseOptions(const std::vector<std::string>& arguments);

std::string HelpText();

}  // namespace lapvane::strumento
