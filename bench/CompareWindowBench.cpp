// The whole window of the comparison over two full logs: opened up to the first picture, and the
// cursor moved with its tables and the map.
#include <QApplication>
#include <QEvent>
#include <filesystem>

#include "BenchMain.h"
#include "LoadLog.h"
#include "analysis/compare/DisegnoQuadri.h"
#include "analysis/compare/frmConfronto.h"
#include "shell/LoadStrings.h"
#include "tools/support/BarePlatform.h"

namespace {

using namespace lapvane;
using namespace lapvane::bench;

/// The full log once more under another name, with its own choices.
struct Logs {
    Logs() : Machine(Log().Folder) {  // `Restored` is made before it and goes behind it
        std::filesystem::copy_file(std::string(LAPVANE_BIN_DIR) + "/LANGUAGES.DAT",
                                   std::filesystem::path(Log().Folder) / "LANGUAGES.DAT",
                                   std::filesystem::copy_options::skip_existing);
        CaricaTesti();
        for (const char* end : {".csv", ".txt", ".tim"}) {
            std::filesystem::path from = Log().Csv();
            from.replace_extension(end);
            std::filesystem::path to = Other();
            to.replace_extension(end);
            std::filesystem::copy_file(from, to, std::filesystem::copy_options::skip_existing);
        }
    }
    static std::filesystem::path Other() {
        return std::filesystem::path(Log().Folder) / "other.csv";
    }
    /// The machine of the other benches is there again behind these.
    struct Restore {
        Platform* Before = &platform();
        ~Restore() { SetPlatform(Before); }
    } Restored;
    BarePlatform Machine;
};

void Paint(QWidget& window) {
    QEvent update(QEvent::UpdateRequest);
    QApplication::sendEvent(&window, &update);
}

void CompareOpen(benchmark::State& state) {
    const Logs logs;
    double beyond = 0.0;
    for (auto _ : state) {
        frmConfronto window;
        window.resize(1600, 900);
        window.show();
        QApplication::processEvents();
        const double loads = Milliseconds([] {
            LoadLog();
            LoadLog();
        });
        beyond += Milliseconds([&] {
                      window.Apri(Log().Csv());
                      window.Apri(Logs::Other());
                      Paint(window);
                  }) -
                  loads;
        if (window.Dati().Accanto().size() != 2) state.SkipWithError("the laps were not chosen");
    }
    state.counters["beyond_ms"] = benchmark::Counter(beyond, benchmark::Counter::kAvgIterations);
}
BENCHMARK(CompareOpen)->Unit(benchmark::kMillisecond);

void CompareCursor(benchmark::State& state) {
    const Logs logs;
    frmConfronto window;
    window.resize(1600, 900);
    window.Apri(Log().Csv(), 50);
    window.Apri(Logs::Other());
    window.show();
    QApplication::processEvents();
    auto* graph = window.findChild<DisegnoQuadri*>(QStringLiteral("grafico"));
    double share = 0.0;
    for (auto _ : state) {
        share = share > 0.9 ? 0.05 : share + 0.0317;
        graph->MettiCursore(share * graph->Dati().Fine);
        Paint(window);
    }
}
BENCHMARK(CompareCursor)->Unit(benchmark::kMillisecond);

}  // namespace
