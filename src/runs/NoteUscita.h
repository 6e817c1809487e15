#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lapvane {

constexpr int kRigaNote = 8;  ///< of a .ses file, from 1

/// The text of a .ses file with other notes. Nothing but the value of line 8 changes: its key, the
/// ends of the lines and all that stands behind it stay as they are. A text with fewer lines gets
/// those that are missing before the notes, empty. Each line break of the notes becomes one blank;
/// no notes are one blank, as everywhere in that file.
std::string ConNote(std::string_view ses, std::string_view note);

/// Saves the notes of a run into the .ses file beside its data file, onto what stands there at this
/// moment. Without one it is made, with the channels as an analysis finds them at first. Errors as
/// of `LeggiFile` and `ScriviFile`; the file is whole then, the old one.
void SalvaNote(const std::filesystem::path& csv, std::string_view note);

}  // namespace lapvane
