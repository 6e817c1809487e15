#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/Voci.h"
#include "tools/texttable/texttable.h"

namespace lapvane::manual {

enum class Language { Italian, English };

/// The program's own texts in one language, UTF-8.
struct Texts {
    Language In = Language::Italian;
    std::vector<std::string> All;          ///< text n at n - 1
    std::vector<texttable::Place> Places;  ///< of text n in the chapter of messages
    std::map<std::string, int> ByName;

    bool Italian() const { return In == Language::Italian; }
    bool Has(int number) const { return number >= 1 && number <= static_cast<int>(All.size()); }
    /// Without the blanks at its ends, which the program needs and a page does not.
    std::string Of(int number) const;
    std::string Of(Voce text) const { return Of(static_cast<int>(text)); }
    const char* Pick(const char* italian, const char* english) const {
        return Italian() ? italian : english;
    }
};

/// A text as Markdown shows it letter by letter, in a table too.
std::string Escaped(std::string_view text);

}  // namespace lapvane::manual
