#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

namespace lapvane {

/// Values of a project file by position, as text; position 200 is the last.
extern std::array<std::string, 201> ValoriProgetto;

/// What is known of the open project beside its record and its path.
struct StatoProgetto {
    /// It has no file of its own yet, whatever `PercorsoProgetto` still holds. Set by New.
    bool SenzaFile = false;
};
StatoProgetto& progettoAperto();

/// The 102 lines of a project file made from `DatiProgetto`.
std::string TestoProgetto();

/// Reads the value lines of a project file (everything after the magic line) into
/// `ValoriProgetto`. False when a 202nd value ended the reading.
bool LeggiValoriProgetto(std::string_view righe);

/// Writes `DatiProgetto` to `PercorsoProgetto`, enables Save, shows name and path in the status
/// bar. A write error ends the program; the old file stays whole.
void SalvaProgetto();

/// Reads a project file into `DatiProgetto`; a name without a folder is looked for in the program's
/// folder. False, with a message, when the file was not accepted.
bool LeggiProgetto(const std::filesystem::path& percorso);

/// Converts `ValoriProgetto` positions 0 to 100, less 80, to the fields, until the first number or
/// flag that is none: the fields from there on keep what they had.
void ApplicaValoriProgetto();

// The commands.
void mnuNew_Click();
void mnuOpen_Click();
void mnuSave_Click();
void mnuSaveAs_Click();

/// The question before the program stops. False: the person wants to go on.
bool ConfermaChiusura();

}  // namespace lapvane
