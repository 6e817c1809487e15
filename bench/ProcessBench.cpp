// What only a process of its own shows: how long the program takes until its main window is
// painted and until its first log is, and how much memory it has needed with a full log open.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QEvent>
#include <QMimeData>
#include <QProcess>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include "BenchMain.h"
#include "FullLog.h"
#include "analysis/frmAnalisiDati.h"
#include "analysis/frmAnalisiDatiSpeed.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtSerialControl.h"
#include "shell/StatoShell.h"
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

/// This program once more, as what `arguments` say; the numbers that it prints, none if it fails.
QList<double> Child(const QStringList& arguments) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QString::fromLocal8Bit(program_invocation_name), arguments);
    QList<double> numbers;
    if (!child.waitForFinished(60000) || child.exitCode() != 0) return numbers;
    const auto words = child.readAllStandardOutput().split(' ');
    for (const QByteArray& word : words) numbers.append(word.toDouble());
    return numbers;
}

/// Calls `action` as soon as a window of the kind, and all that is in it, has been painted.
template <class W>
class PaintWatch : public QObject {
 public:
    explicit PaintWatch(std::function<void()> action) : action_(std::move(action)) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint && dynamic_cast<W*>(object) != nullptr && !seen_) {
            seen_ = true;
            QTimer::singleShot(0, this, action_);
        }
        return false;
    }

 private:
    std::function<void()> action_;
    bool seen_ = false;
};

int StartProgram(int argc, char** argv) {
    QApplication application(argc, argv);
    QtPlatform machine;
    SetPlatform(&machine);
    const PaintWatch<frmMain> watch([] {
        std::printf("%.3f\n", Now());
        QApplication::exit(0);
    });
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

/// The machine of a program whose folder is that of the log.
class LogFolderMachine : public QtPlatform {
 public:
    explicit LogFolderMachine(std::filesystem::path folder) : folder_(std::move(folder)) {}
    std::filesystem::path AppPath() override { return folder_; }

 private:
    std::filesystem::path folder_;
};

/// Opens a log as who drops it on the main window does. Milliseconds until its first lap is on the
/// screen.
template <class W>
double Opened(frmMain& window, const std::filesystem::path& log) {
    double painted = 0.0;
    const PaintWatch<W> watch([&painted] {
        painted = Now();
        auto* analysis = qobject_cast<W*>(QApplication::activeModalWidget());
        if (analysis == nullptr || analysis->Analisi().NumRighe() < kRows) {
            std::fputs("the log was not opened whole\n", stderr);
            std::exit(1);
        }
        analysis->close();
    });
    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(PercorsoInQt(log))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    QDropEvent drop({10, 10}, Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
    const double from = Now();
    QApplication::sendEvent(&window, &drop);
    // The analysis is one event.
    while (painted == 0.0) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return painted - from;
}

int OpenLog(int argc, char** argv) {
    const std::string kind = argv[2];
    const std::filesystem::path log = argv[3];
    QApplication application(argc, argv);
    Vesti();
    // What the program does not start without.
    const std::filesystem::path bin = PercorsoDaQt(QApplication::applicationDirPath());
    for (const char* file : {"LANGUAGES.DAT", "RecentFiles.ini"}) {
        std::filesystem::copy_file(bin / file, log.parent_path() / file,
                                   std::filesystem::copy_options::overwrite_existing);
    }
    LogFolderMachine machine(log.parent_path());
    SetPlatform(&machine);
    frmMain window(std::make_unique<QtSerialControl>());
    window.Carica();
    window.show();
    QApplication::processEvents();
    AnalisiSpeed = kind == "array";
    const double opened = AnalisiSpeed ? Opened<frmAnalisiDatiSpeed>(window, log)
                                       : Opened<frmAnalisiDati>(window, log);
    std::printf("%.3f %.3f\n", Peak(), opened);
    return 0;
}

void StartUp(benchmark::State& state) {
    for (auto _ : state) {
        const double from = Now();
        const auto painted = Child({QStringLiteral("--start")});
        if (painted.isEmpty()) {
            state.SkipWithError("the main window did not appear");
            break;
        }
        state.SetIterationTime((painted[0] - from - kSplash) / 1e3);
    }
}
BENCHMARK(StartUp)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void Memory(benchmark::State& state, const char* window) {
    for (auto _ : state) {
        const auto numbers = Child({QStringLiteral("--open"), QString::fromLatin1(window),
                                    QString::fromStdString(Log().Csv().native())});
        if (numbers.size() != 2) {
            state.SkipWithError("the log was not opened");
            break;
        }
        state.counters["peak_MB"] = numbers[0];
        state.counters["open_ms"] = numbers[1];
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
