// What only a process of its own shows: how long the program takes until its main window is
// painted, and how much memory it has needed with a full log open.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QEvent>
#include <QProcess>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

#include "BenchMain.h"
#include "FullLog.h"
#include "analysis/frmAnalisiDati.h"
#include "analysis/frmAnalisiDatiSpeed.h"
#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtSerialControl.h"
#include "shell/frmMain.h"
#include "widgets/style/Vesti.h"

namespace {

using namespace lapvane;
using namespace lapvane::bench;

constexpr double kSplash = 3000.0;  // ms for which the splash has to be seen

/// Of a clock that all processes share.
double Now() {
    return std::chrono::duration<double, std::milli>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// This program once more, as what `arguments` say; the number that it prints.
double Child(const QStringList& arguments) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QString::fromLocal8Bit(program_invocation_name), arguments);
    if (!child.waitForFinished(60000) || child.exitCode() != 0) return 0.0;
    return child.readAllStandardOutput().trimmed().toDouble();
}

/// Ends the program as soon as its main window has been painted.
class PaintWatch : public QObject {
 public:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint && dynamic_cast<frmMain*>(object) != nullptr && !seen_) {
            seen_ = true;
            // Behind the painting of all that is in the window.
            QTimer::singleShot(0, this, [] {
                std::printf("%.3f\n", Now());
                QApplication::exit(0);
            });
        }
        return false;
    }

 private:
    bool seen_ = false;
};

int StartProgram(int argc, char** argv) {
    QApplication application(argc, argv);
    QtPlatform machine;
    SetPlatform(&machine);
    PaintWatch watch;
    application.installEventFilter(&watch);
    return frmMain::Avvia();
}

/// The most memory that this process has had at once, in MB of a million bytes.
double Peak() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmHWM:", 0) == 0) return std::stod(line.substr(6)) * 1024 / 1e6;
    }
    throw std::runtime_error("the system does not tell the memory of a process");
}

template <class W>
void OpenWindow(const std::filesystem::path& log) {
    W window;
    window.NomeFileDati = log;
    if (!window.Carica()) throw std::runtime_error("the log was not opened");
    window.show();
    QApplication::processEvents();
    if (window.Analisi().NumRighe() < kRows) throw std::runtime_error("the log is not whole");
}

int OpenLog(int argc, char** argv) {
    const std::string kind = argv[2];
    const std::filesystem::path log = argv[3];
    std::filesystem::current_path(log.parent_path());  // as a file dialog leaves it
    QApplication application(argc, argv);
    Vesti();
    QtPlatform machine;
    SetPlatform(&machine);
    frmMain window(std::make_unique<QtSerialControl>());
    window.Carica();
    window.show();
    QApplication::processEvents();
    if (kind == "array") {
        OpenWindow<frmAnalisiDatiSpeed>(log);
    } else {
        OpenWindow<frmAnalisiDati>(log);
    }
    std::printf("%.3f\n", Peak());
    return 0;
}

void StartUp(benchmark::State& state) {
    for (auto _ : state) {
        const double from = Now();
        const double painted = Child({QStringLiteral("--start")});
        if (painted == 0.0) state.SkipWithError("the main window did not appear");
        state.SetIterationTime((painted - from - kSplash) / 1e3);
    }
}
BENCHMARK(StartUp)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void Memory(benchmark::State& state, const char* window) {
    for (auto _ : state) {
        const double peak = Child({QStringLiteral("--open"), QString::fromLatin1(window),
                                   QString::fromStdString(Log().Csv().native())});
        if (peak == 0.0) state.SkipWithError("the log was not opened");
        state.counters["peak_MB"] = peak;
    }
}
BENCHMARK_CAPTURE(Memory, array, "array")->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Memory, sheet, "sheet")->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char* argv[]) try {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::string role = argc > 1 ? argv[1] : "";
    if (role == "--start") return StartProgram(argc, argv);
    if (role == "--open" && argc == 4) return OpenLog(argc, argv);
    return RunBenches("process", argc, argv);
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
