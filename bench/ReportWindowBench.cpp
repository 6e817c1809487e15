// The lap report at its largest: shown, sorted and printed into a PDF file.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "analysis/CalcoloFigure.h"
#include "analysis/GiriLog.h"
#include "platform/qt/QtPrinter.h"
#include "reports/AnalisiPubblica.h"
#include "reports/DatiSessione.h"
#include "reports/StampaReport.h"
#include "reports/dlgReportGiri.h"
#include "shell/Utility.h"
#include "widgets/Tabella.h"

namespace {

using namespace lapvane;

constexpr int kLaps = kGiriMassimi - 1;  // lap index 1 is no lap

/// An analysis that has all the laps that it can hold.
struct FullReport : AnalisiPubblica {
    FullReport() {
        DatiSessione.LunghTracciato = "4909";
        FileTim file;
        for (int lap = 1; lap <= kLaps; ++lap) {
            file.Righe.push_back({CentesimiInTempo(8000 + lap * 7919 % 500), "1"});
        }
        file.Linee = kLaps + 1;
        Laps.Prendi(file);
    }
    int NumCampi() const override { return 0; }
    int NumGiri() const override { return Laps.NumGiri(); }
    std::string GetMinVal(int) const override { return {}; }
    std::string GetMaxVal(int) const override { return {}; }
    std::string GetMediaVal(int) const override { return {}; }
    std::string GetNomeMisura(int) const override { return {}; }
    std::string GetTempoGiro(int lap) const override { return Laps.GetTempoGiro(lap); }
    std::string GetSessioneTempo(int lap) const override { return Laps.GetSessioneTempo(lap); }
    std::string GetVelocitaGiro(int lap) const override { return VelocitaGiro(GetTempoGiro(lap)); }
    GiriLog Laps;
};

void ShowReport(benchmark::State& state) {
    FullReport report;
    for (auto _ : state) {
        dlgReportGiri dialog(report);
        dialog.show();
        benchmark::DoNotOptimize(dialog.grab());
    }
}
BENCHMARK(ShowReport)->Unit(benchmark::kMillisecond);

void SortReport(benchmark::State& state) {
    FullReport report;
    dlgReportGiri dialog(report);
    dialog.show();
    auto* const grid = dialog.findChild<Tabella*>();
    int column = 1;
    for (auto _ : state) {
        grid->Ordina(column = 3 - column);
        benchmark::DoNotOptimize(dialog.grab());
    }
}
BENCHMARK(SortReport)->Unit(benchmark::kMillisecond);

void PrintReport(benchmark::State& state) {
    std::vector<RigaReport> laps;
    for (int lap = 1; lap <= 999; ++lap) {
        laps.push_back({"1", std::to_string(lap), CentesimiInTempo(8000 + lap), "123.456"});
    }
    const auto file = std::filesystem::temp_directory_path() / "lapvane-report-bench.pdf";
    for (auto _ : state) {
        QtPrinter printer(file);
        StampaReport(printer, laps);
    }
    if (!std::filesystem::exists(file)) throw std::runtime_error("nothing was printed");
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file));
    std::filesystem::remove(file);
}
BENCHMARK(PrintReport)->Unit(benchmark::kMillisecond);

}  // namespace
