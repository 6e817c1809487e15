#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "tools/manual/Texts.h"

namespace lapvane::manual {

/// A table or a block of the manual that is made from the program's own tables, as Markdown in
/// UTF-8; nothing for a name that is none. `fields` are the meanings of the project's fields.
std::optional<std::string> Table(std::string_view name, const Texts& texts,
                                 const std::map<std::string, std::string>& fields);

/// A run-time error as its box names it, "53: File not found"; nothing for a number that is none.
std::optional<std::string> RunTimeError(int number, const Texts& texts);

}  // namespace lapvane::manual
