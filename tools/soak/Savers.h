#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace lapvane::soak {

/// How a file is looked at after a kill.
enum class Look {
    Whole,  ///< the bytes of the old one or of the new one
    Pdf,    ///< a complete document; its bytes hold the time
};

/// One kind of save of the program. `Begin` runs once in the process that saves and returns what
/// saves the first (0) or the second (1) of two contents with the program's own routine.
struct Saver {
    const char* Name;
    Look How;
    bool Windows;                    ///< needs the application of the windows
    std::vector<const char*> Files;  ///< below the program's folder
    std::function<std::function<void(int)>()> Begin;
};

/// All kinds of save of a program that lives in `folder`.
std::vector<Saver> Savers(const std::filesystem::path& folder);

}  // namespace lapvane::soak
