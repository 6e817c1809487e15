#include "shell/StatoShell.h"

namespace lapvane {

bool AnalisiSpeed = false;
std::int16_t FaseComunicazione = 0;
bool StrumentoPresente = false;
bool StrumentoPresentePrec = false;
bool AnalisiInCorso = false;
bool AnalisiCaricata = false;
Editor* FormAttiva = nullptr;
bool ProgettoModificato = false;
std::filesystem::path PercorsoProgetto;
std::filesystem::path FileRecenteScelto;

void ImpostaFormAttiva(Editor* editor) {
    FormAttiva = editor;
}

}  // namespace lapvane
