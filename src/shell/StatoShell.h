#pragma once

#include <cstdint>
#include <filesystem>

namespace lapvane {

class Editor;

// Shared state of the shell; it lives as long as the program.

/// Which analysis window opens: true `frmAnalisiDatiSpeed`, false `frmAnalisiDati`. Set true at the
/// load of the main window, then by a line "0" or "1" of the recent list.
extern bool AnalisiSpeed;
/// 0 when idle; any other value: a transfer with the instrument runs and the poll keeps off the
/// port. Written by the transfer routines; the value is the transfer's first command.
extern std::int16_t FaseComunicazione;
/// The instrument answered its last identity query. Written by `VerificaComunicazione`.
extern bool StrumentoPresente;
/// The value of `StrumentoPresente` last spread to the open editor. Written by the poll.
extern bool StrumentoPresentePrec;
/// An analysis window is being opened or is open; the poll does nothing. Set by the Analyze
/// command, cleared by the unload of the window.
extern bool AnalisiInCorso;
/// An analysis window is loaded, so that a change of language has to reach it.
extern bool AnalisiCaricata;
/// The open editor that the poll keeps in step with the instrument; may be null.
extern Editor* FormAttiva;
/// The project record differs from its file.
extern bool ProgettoModificato;
/// Full path of the open project; empty for one never saved.
extern std::filesystem::path PercorsoProgetto;
/// Path handed from an entry of the recent list to the Open command; empty otherwise.
extern std::filesystem::path FileRecenteScelto;

/// Called by the load of an editor.
void ImpostaFormAttiva(Editor* editor);

}  // namespace lapvane
