#pragma once

#include <filesystem>
#include <iosfwd>

namespace lapvane::manual {

/// Where the manual is made from and where it goes.
struct Folders {
    std::filesystem::path Source;           ///< the source tree
    std::filesystem::path PicturesItalian;  ///< what the tour in that language left
    std::filesystem::path PicturesEnglish;
    std::filesystem::path Out;  ///< replaced as a whole
};

/// Makes both languages. 0, or 1 with every fault written to `errors` as file:line: what; nothing
/// of `Out` is touched then.
int MakeManual(const Folders& folders, std::ostream& errors);

}  // namespace lapvane::manual
