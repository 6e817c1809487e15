// makesample BINDIR OUT.csv: a run of the simulated instrument, converted as the program does it.
#include <cstdio>
#include <filesystem>

#include "instrument/Circuito.h"
#include "instrument/Memoria.h"
#include "instrument/Sessione.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "logs/Scarico.h"
#include "shell/LoadStrings.h"
#include "shell/TabelleNomi.h"
#include "tools/support/BarePlatform.h"
#include "tools/support/BareViews.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;

/// Boxes are lines on the console.
class ConsolePlatform : public BarePlatform {
 public:
    using BarePlatform::BarePlatform;
    Answer MsgBox(const std::string& text, Buttons, Icon icon, const std::string&) override {
        std::fprintf(icon == Icon::Critical ? stderr : stdout, "%s\n", text.c_str());
        return Answer::Ok;
    }
};

/// Puts into the buffers what a download of the memory would leave there.
void Download(const strumento::Memoria& memory) {
    AzzeraBufferLog();
    for (std::int32_t b = 0; b < memory.Blocchi(); ++b) BlocchiLog.emplace_back(memory.Blocco(b));
    NumBlocchi = memory.Blocchi();
    NumeroGiri = static_cast<std::int16_t>(memory.Giri());
    BareDownloadView view;
    Scarico download(view);
    constexpr int kLapsPerBlock = 32;
    for (int lap = 1; lap <= NumeroGiri; lap += kLapsPerBlock) {
        BloccoDati1 = memory.LeggiGiri(static_cast<std::uint32_t>(4 * (lap - 1)));
        download.DecodificaGiri(lap);
    }
}

int Make(const fs::path& folder, const fs::path& csv) {
    ConsolePlatform machine(folder);
    CaricaTesti();
    CalcolaBaseTesti();
    CaricaTabelleNomi();
    strumento::Memoria memory;
    strumento::RegistraSessione(strumento::Circuito::Leggi(folder / "tracks" / "Valdoro.trk"), {},
                                memory);
    Download(memory);
    fs::create_directories(csv.parent_path());
    PercorsoCsv = csv;
    ConvertiLog();
    return 0;
}

}  // namespace
}  // namespace lapvane

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: makesample BINDIR OUT.csv\n");
        return 2;
    }
    try {
        return lapvane::Make(argv[1], argv[2]);
    } catch (const lapvane::ErroreRuntime& error) {
        std::fprintf(stderr, "makesample: %s: %s\n", error.File().string().c_str(), error.what());
    } catch (const lapvane::FineProgramma&) {
        // Told already.
    } catch (const std::exception& error) {
        std::fprintf(stderr, "makesample: %s\n", error.what());
    }
    return 1;
}
