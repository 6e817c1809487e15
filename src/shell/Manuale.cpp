#include "shell/Manuale.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

struct VoceManuale {
    std::string_view Finestra;
    PostoManuale Posto;
};

constexpr std::array kPosti = std::to_array<VoceManuale>({
    {"frmMain", {"03-main", "main"}},
    {"dlgLanguages", {"03-main", "language"}},
    {"dlgNoteProgetto", {"04-setup", "notes"}},
    {"frmConfigurazione", {"04-setup", "setup"}},
    {"frmSensori", {"04-setup", "sensors"}},
    {"frmAllarmi", {"04-setup", "alarms"}},
    {"frmImpostaSensore", {"05-library", "library"}},
    {"dlgCalibrazione", {"05-library", "calibration"}},
    {"dlgStrumento", {"06-instrument", "program"}},
    {"dlgDifferenze", {"06-instrument", "compare"}},
    {"dlgDiagnostica", {"06-instrument", "live"}},
    {"frmDownload", {"07-download", "download"}},
    {"frmAnalisiDati", {"08-analysis", "window"}},
    {"frmAnalisiDatiSpeed", {"08-analysis", "window"}},
    {"dlgSetGraph", {"08-analysis", "graph"}},
    {"dlgDatiSessione", {"08-analysis", "session"}},
    {"dlgStatistiche", {"08-analysis", "reports"}},
    {"dlgStatisticheMisure", {"08-analysis", "reports"}},
    {"dlgReportGiri", {"08-analysis", "reports"}},
    {"frmConfronto", {"08-analysis", "compare"}},
    {"frmArchivio", {"08-analysis", "runs"}},
    {"dlgCsvConfronto", {"08-analysis", "compare"}},
});

}  // namespace

PostoManuale PostoDi(std::string_view finestra) {
    const auto trovato =
        std::find_if(kPosti.begin(), kPosti.end(),
                     [finestra](const VoceManuale& v) { return v.Finestra == finestra; });
    return trovato != kPosti.end() ? trovato->Posto : PostoManuale{};
}

std::filesystem::path PaginaManuale(const PostoManuale& posto) {
    const std::string nome(posto.Capitolo.empty() ? "index" : posto.Capitolo);
    return platform().InstallPath() / "manual" / (IndiceLingua == 0 ? "it" : "en") /
           (nome + ".html");
}

void ApriManuale(const PostoManuale& posto) {
    const std::filesystem::path pagina = PaginaManuale(posto);
    const bool manca = !FileEsiste(pagina);
    if (!manca && platform().OpenOutside(pagina, std::string(posto.Titolo))) return;
    platform().MsgBox(
        Testo(manca ? Voce::ManualeManca : Voce::ManualeChiuso) + "\r\n" + TestoDaPercorso(pagina),
        Buttons::Ok, Icon::Information, platform().ExeName());
}

}  // namespace lapvane
