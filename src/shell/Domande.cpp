#include "shell/Domande.h"

#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

bool Chiedi(const std::filesystem::path& file) {
    return platform().MsgBox(TestoDaPercorso(file) + " " + Testo(Voce::EsisteGia),
                             Buttons::OkCancel, Icon::Question,
                             Testo(Voce::SostituzioneFile)) == Answer::Ok;
}

}  // namespace

bool ConfermaSostituzione(const std::filesystem::path& percorso) {
    std::vector<std::filesystem::path> presenti;
    try {
        presenti = ElencaPercorsi(platform().AppPath());
    } catch (const ErroreRuntime&) {
        // A folder that can't be listed may still hold the very file.
        if (StessoPercorso(percorso.parent_path(), platform().AppPath()) && FileEsiste(percorso)) {
            presenti.push_back(percorso);
        }
    }
    for (const std::filesystem::path& file : presenti) {
        if (StessoNome(file, percorso)) return Chiedi(percorso);
    }
    return true;
}

bool PuoSostituire(const std::filesystem::path& file) {
    return !FileEsiste(file) || Chiedi(file);
}

}  // namespace lapvane
