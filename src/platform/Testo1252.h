#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lapvane {

/// UTF-8 of a Windows-1252 text. The five codes without a character map to the control of the same
/// code, so that every byte comes back from `Utf8In1252`.
std::string Utf8Da1252(std::string_view testo);

/// Windows-1252 of a UTF-8 text; a character that the code page lacks becomes "?".
std::string Utf8In1252(std::string_view utf8);

/// A path as text of the program, and back.
std::string TestoDaPercorso(const std::filesystem::path& percorso);
std::filesystem::path PercorsoDaTesto(std::string_view testo);

/// Whether that text gives the path back: false for a name with characters that the page lacks.
bool InTesto(const std::filesystem::path& percorso);

/// A path as a line of a file: as text, or, where the page lacks one of its characters, as UTF-8
/// behind the bytes EF BB BF. And back.
std::string RigaDaPercorso(const std::filesystem::path& percorso);
std::filesystem::path PercorsoDaRiga(std::string_view riga);

}  // namespace lapvane
