#include "analysis/FileMancante.h"

#include "platform/Platform.h"
#include "shell/LoadStrings.h"

namespace lapvane {

void FileMancante(const std::string& nome) {
    platform().MsgBox(Testo(Voce::IlFile) + " " + nome + " " + Testo(Voce::NonTrovato), Buttons::Ok,
                      Icon::Critical, platform().ExeName());
}

}  // namespace lapvane
