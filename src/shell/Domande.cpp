#include "shell/Domande.h"

#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"

namespace lapvane {

bool ConfermaSostituzione(const std::filesystem::path& percorso) {
    const std::string scelto = TestoDaPercorso(percorso);
    const std::filesystem::path cartella = platform().AppPath();
    for (const std::string& nome : ElencaFile(cartella)) {
        if (!UgualiSenzaMaiuscole(TestoDaPercorso(cartella / PercorsoDaTesto(nome)), scelto)) {
            continue;
        }
        return platform().MsgBox(scelto + " " + Testo(132), Buttons::OkCancel, Icon::Question,
                                 Testo(133)) == Answer::Ok;
    }
    return true;
}

}  // namespace lapvane
