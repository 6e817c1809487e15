#pragma once

#include <filesystem>
#include <string_view>

namespace lapvane {

/// A place of the manual: the name of a chapter and, where it is not its top, a heading in it.
struct PostoManuale {
    std::string_view Capitolo;
    std::string_view Titolo;
};

/// The place that tells about a window; empty for one of which the manual says nothing.
PostoManuale PostoDi(std::string_view finestra);

/// The chapter of the keyboard.
constexpr PostoManuale kPostoTasti{"12-keyboard", "keyboard"};

/// The page of a place in the program's language; the first page for an empty one.
std::filesystem::path PaginaManuale(const PostoManuale& posto);

/// Shows it in the person's browser. A page that is missing, or that nothing opens, is told of.
void ApriManuale(const PostoManuale& posto);

}  // namespace lapvane
