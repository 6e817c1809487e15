// What is read when the program starts, by the first byte of the input: the language table or the
// list of recent files. Any bytes are read or refused with a run-time error, and what was read can
// be used.

#include "fuzz/Fuzz.h"
#include "fuzz/FuzzPlatform.h"
#include "project/FileRecenti.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "shell/TabelleNomi.h"
#include "tools/support/BareViews.h"
#include "tools/support/FreshState.h"

namespace {

using namespace lapvane;

void Languages(const FuzzFolder& folder, std::string_view text) {
    folder.Write("LANGUAGES.DAT", text);
    Testi.clear();
    Accepted([text] {
        CaricaTesti();
        Must(MetaTesti >= 0 && Testi.size() >= 1 && Testi.size() <= text.size() + 1);
        CalcolaBaseTesti();
        for (int n = 0; n <= 334; ++n) Testo(static_cast<Voce>(n));
        CaricaTabelleNomi();
    });
}

void Recent(FuzzPlatform& machine, const FuzzFolder& folder, std::string_view text) {
    folder.Write("RecentFiles.ini", text);
    AzzeraFileRecenti();
    if (!Accepted(LeggiFileRecenti)) return;
    Must(recenti().Quante >= 0 && recenti().Quante <= 4);
    // What is written now can be read again, with the file that was opened on top.
    const bool fast = AnalisiSpeed;
    FileRecenteScelto = machine.Folder / "new.pro";
    ScriviFileRecenti();
    AzzeraFileRecenti();
    LeggiFileRecenti();
    Must(AnalisiSpeed == fast && recenti().Quante >= 1 &&
         recenti().Righe[0] == FileRecenteScelto.native());
}

}  // namespace

void Fuzz(std::string_view input) {
    static FuzzPlatform machine;
    static BareMainWindow window;
    static const FuzzFolder folder;
    machine.Folder = folder.Path;
    if (input.empty()) return;
    const std::string_view text = input.substr(1);
    if (static_cast<unsigned char>(input[0]) % 2 == 0) {
        Languages(folder, text);
    } else {
        Recent(machine, folder, text);
    }
}
