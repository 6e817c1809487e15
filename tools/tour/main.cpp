// Plays the roads of a typical run in the real windows, with a simulated instrument on a
// pseudo-terminal. Takes a picture at each stop and ends with a failure when a stop does not show
// what it should.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QProcess>
#include <QTest>
#include <cstdio>

#include "Tour.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "tools/support/OffscreenScreen.h"
#include "tools/support/QuietQt.h"
#include "widgets/Dialogo.h"
#include "widgets/PannelloStato.h"
#include "widgets/style/Vesti.h"

namespace lapvane::tour {
namespace {

namespace fs = std::filesystem;

/// Makes the language file open in Italian; it is delivered in English.
void ChooseItalian(const fs::path& languages) {
    QFile file(PercorsoInQt(languages));
    if (file.open(QIODevice::ReadWrite)) file.write("0");
}

/// A program's folder with everything that is delivered, and nothing that an earlier run left.
void LayProgramFolder(const fs::path& from, const fs::path& to, bool italian) {
    fs::remove_all(to);
    fs::create_directories(to / "ports");
    for (const char* name : {"LANGUAGES.DAT", "Esempio.pro"}) fs::copy_file(from / name, to / name);
    if (italian) ChooseItalian(to / "LANGUAGES.DAT");
    for (const char* name : {"sensors", "tracks", "pages"}) {
        fs::copy(from / name, to / name, fs::copy_options::recursive);
    }
    QFile recent(PercorsoInQt(to / "RecentFiles.ini"));
    if (recent.open(QIODevice::WriteOnly)) recent.write("1\r\n");
}

/// Takes a word and the one behind it out of the arguments; empty: it is not there.
QString TakeWord(QStringList& words, const QString& word) {
    const qsizetype place = words.indexOf(word);
    if (place < 0 || place + 1 >= words.size()) return {};
    const QString value = words.at(place + 1);
    words.remove(place, 2);
    return value;
}

/// The simulated instrument behind COM1: one of the tour's own, on a pseudo-terminal, or one that
/// somebody has started already, whose console reads the lines of a file that grows.
class Instrument {
 public:
    /// An empty `console`: one of our own. False: it does not start.
    bool Start(const QString& bin, const fs::path& program, const QString& console) {
        if (!console.isEmpty()) {
            file_.setFileName(console);
            return file_.open(QIODevice::Append | QIODevice::Unbuffered);
        }
        process_.setProcessChannelMode(QProcess::ForwardedChannels);
        process_.start(
            bin + QStringLiteral("/lapvane-instrument"),
            {QStringLiteral("--quiet"), QStringLiteral("--link"),
             PercorsoInQt(program / "ports" / "COM1"), QStringLiteral("--tank"),
             QStringLiteral("30"), QStringLiteral("--tracks"), PercorsoInQt(program / "tracks"),
             QStringLiteral("--track"), QString::fromLatin1(kCircuit)});
        return process_.waitForStarted(5000);
    }
    void Type(const QByteArray& line) {
        if (file_.isOpen()) {
            file_.write(line);
        } else {
            process_.write(line);
        }
    }
    void Kill() { process_.kill(); }
    void Stop() {
        process_.terminate();
        process_.waitForFinished(3000);
    }

 private:
    QFile file_;
    QProcess process_;
};

/// The screen that is asked for as COLUMNSxROWS, before there is an application.
QSize ScreenOf(int argc, char* argv[]) {
    QStringList words;
    for (int i = 1; i < argc; ++i) words << QString::fromLocal8Bit(argv[i]);
    const QStringList sides = TakeWord(words, QStringLiteral("screen")).split(QLatin1Char('x'));
    const QSize pixels(sides.value(0).toInt(), sides.value(1).toInt());
    return pixels.isEmpty() ? QSize(1366, 768) : pixels;
}

}  // namespace

Tour::Tour(QString out, bool italian, TourPlatform& machine,
           std::function<void(const QByteArray&)> console, std::function<void()> stop)
    : out_(std::move(out)),
      italian_(italian),
      machine_(machine),
      robot_(out_),
      console_(std::move(console)) {
    robot_.OnFailure = std::move(stop);
}

int Tour::Play() {
    Splash();
    Connect();
    OpenProject();
    CompareWithTheInstrument();
    ProgramAndRead();
    Editors();
    Download();
    Analyse();
    CompareLaps();
    ListRuns();
    RecentProjects();
    UnsavedChanges();
    OtherLanguage();
    Leave();
    frmSplash splash;
    splash_ = &splash;
    splash.AlTermine = [this] {
        main_ = std::make_unique<frmMain>(MachineSerialControl());
        main_->Carica();
        main_->resize(NelloSchermo(*main_, QSize(1366, 720)));
        main_->show();
        main_->activateWindow();
        main_->AvviaSorveglianza();
    };
    splash.show();
    robot_.Start();
    const int result = QApplication::exec();
    std::printf("%d stops\n", robot_.Stops());
    if (robot_.Faults() != 0) std::fprintf(stderr, "%d faults in the windows\n", robot_.Faults());
    return robot_.Faults() != 0 ? 1 : result;
}

QString Tour::Panel(int n) {
    auto* panel = In<PannelloStato>(main_.get(), ("sbStatusBar_" + std::to_string(n)).c_str());
    return panel != nullptr ? panel->Testo() : QString();
}

QToolButton* Tour::Button(const char* key) {
    return In<QToolButton>(main_.get(), (std::string("Toolbar1_") + key).c_str());
}

bool Tour::Idle() const {
    return QApplication::activeModalWidget() == nullptr &&
           main_->findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly).isEmpty();
}

void Tour::AnswerFileDialog(const QString& path, const QString& picture) {
    auto* dialog = qobject_cast<QFileDialog*>(Robot::Modal("QFileDialog"));
    auto* name = In<QLineEdit>(dialog, "fileNameEdit");
    robot_.Check(name != nullptr, QStringLiteral("the file dialog has no name box"));
    if (name == nullptr) return;
    name->clear();
    QTest::keyClicks(name, path);
    if (!picture.isEmpty()) robot_.Picture(dialog, picture);
    QTest::keyClick(name, Qt::Key_Return);
}

}  // namespace lapvane::tour

int main(int argc, char* argv[]) {
    lapvane::QuietOffscreen();
    const QSize pixels = lapvane::tour::ScreenOf(argc, argv);
    const lapvane::OffscreenScreen screen(pixels.width(), pixels.height());
    QApplication application(argc, argv);
    QStringList words = QApplication::arguments().mid(1);
    const bool dark = words.removeAll(QStringLiteral("dark")) != 0;
    const bool pit = words.removeAll(QStringLiteral("pit")) != 0;
    const bool quick = words.removeAll(QStringLiteral("quick")) != 0;
    lapvane::tour::TakeWord(words, QStringLiteral("screen"));
    const int points = lapvane::tour::TakeWord(words, QStringLiteral("font")).toInt();
    const QString console = lapvane::tour::TakeWord(words, QStringLiteral("console"));
    const QString language = words.size() == 2 ? words.takeLast() : QStringLiteral("en");
    if (words.size() != 1 || (language != QLatin1String("it") && language != QLatin1String("en"))) {
        std::fprintf(
            stderr,
            "usage: tour OUTPUT_FOLDER [it|en] [dark] [pit] [quick] [font POINTS] "
            "[screen COLUMNSxROWS] [console FILE]\n"
            "FILE is what an instrument on COM1 that runs already reads as its console.\n");
        return 2;
    }
    const bool italian = language == QLatin1String("it");
    if (points > 0) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    lapvane::Vesti();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setQuitOnLastWindowClosed(false);
    const QString out = QDir::toNativeSeparators(QDir(words.front()).absolutePath());
    const QString bin = QCoreApplication::applicationDirPath();
    const std::filesystem::path program = lapvane::PercorsoDaQt(out) / "program";
    lapvane::tour::LayProgramFolder(lapvane::PercorsoDaQt(bin), program, italian);

    lapvane::tour::Instrument instrument;
    if (!instrument.Start(bin, program, console)) {
        std::fprintf(stderr, "the simulated instrument does not start\n");
        return 1;
    }
    lapvane::tour::TourPlatform machine(program, quick ? lapvane::tour::kQuick : 1);
    lapvane::SetPlatform(&machine);
    // As somebody has left it.
    using lapvane::TemaScelto;
    lapvane::SalvaAspetto({dark ? TemaScelto::Scuro : TemaScelto::Desktop, pit});
    lapvane::IndossaAspetto(lapvane::CaricaAspetto());
    const int result =
        lapvane::tour::Tour(
            out, italian, machine, [&instrument](const QByteArray& line) { instrument.Type(line); },
            [&instrument] { instrument.Kill(); })
            .Play();
    instrument.Stop();
    return result;
}
