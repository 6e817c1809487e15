// Plays the road of a typical run in the real windows, with a simulated instrument on a
// pseudo-terminal: connect, download, save, analyse, tick channels, choose the best lap. Takes a
// picture at each stop and ends with a failure when a stop does not show what it should.
#include <QAbstractItemModel>
#include <QAction>
#include <QApplication>
#include <QBrush>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <cstdio>
#include <filesystem>

#include "DeviceRoad.h"
#include "Robot.h"
#include "platform/ErroreRuntime.h"
#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtSerialControl.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"
#include "widgets/PannelloStato.h"

namespace lapvane::tour {
namespace {

namespace fs = std::filesystem;

/// The machine of the tour: the real one, in a program's folder of its own, where the end of the
/// program is noted and not carried out.
class TourPlatform : public QtPlatform {
 public:
    explicit TourPlatform(fs::path folder) : folder_(std::move(folder)) {}
    fs::path AppPath() override { return folder_; }
    std::string ExeName() override { return "lapvane"; }
    void End(int code) override {
        Ended = true;
        throw FineProgramma{code};
    }
    bool Ended = false;

 private:
    fs::path folder_;
};

/// A program's folder with everything that is delivered, and nothing that an earlier run left.
void LayProgramFolder(const fs::path& from, const fs::path& to) {
    fs::remove_all(to);
    fs::create_directories(to / "ports");
    for (const char* name : {"LANGUAGES.DAT", "Esempio.pro"}) fs::copy_file(from / name, to / name);
    for (const char* name : {"sensors", "tracks"}) {
        fs::copy(from / name, to / name, fs::copy_options::recursive);
    }
    QFile recent(PercorsoInQt(to / "RecentFiles.ini"));
    if (recent.open(QIODevice::WriteOnly)) recent.write("1\r\n");
}

class Tour {
 public:
    Tour(QString out, TourPlatform& machine, QProcess& instrument)
        : out_(std::move(out)),
          machine_(machine),
          robot_(out_),
          device_(
              robot_, [this] { return main_.get(); },
              PercorsoInQt(machine.AppPath() / "Esempio.pro"), out_ + QStringLiteral("/read.pro")) {
        robot_.OnFailure = [&instrument] { instrument.kill(); };
    }

    int Play() {
        Splash();
        Connect();
        OpenProject();
        device_.Play();
        Download();
        Analyse();
        Italian();
        Leave();
        frmSplash splash;
        splash_ = &splash;
        splash.AlTermine = [this] {
            main_ = std::make_unique<frmMain>(std::make_unique<QtSerialControl>());
            main_->Carica();
            main_->resize(1366, 720);
            main_->show();
            main_->activateWindow();
            main_->AvviaSorveglianza();
        };
        splash.show();
        robot_.Start();
        const int result = QApplication::exec();
        std::printf("%d stops\n", robot_.Stops());
        return result;
    }

 private:
    template <class W>
    static W* In(QWidget* window, const char* name) {
        return window != nullptr ? window->findChild<W*>(QString::fromLatin1(name)) : nullptr;
    }
    QString Panel(int n) {
        auto* panel = In<PannelloStato>(main_.get(), ("sbStatusBar_" + std::to_string(n)).c_str());
        return panel != nullptr ? panel->Testo() : QString();
    }
    QToolButton* Button(const char* key) {
        return In<QToolButton>(main_.get(), (std::string("Toolbar1_") + key).c_str());
    }
    static std::function<bool()> ModalIs(const char* type) {
        return [type] { return Robot::Modal(type) != nullptr; };
    }
    QWidget* Analysis() {
        QWidget* window = QApplication::activeModalWidget();
        return window != nullptr && window->objectName() == QLatin1String("frmAnalisiDatiSpeed")
                   ? window
                   : nullptr;
    }
    QTableView* Laps() { return In<QTableView>(Analysis(), "MSFlexGrid1"); }
    bool LapsListed() {
        return Laps() != nullptr && Laps()->isVisible() && Laps()->model()->rowCount() > 12;
    }

    /// Types a path into the open file dialog and presses Enter.
    void AnswerFileDialog(const QString& path, const QString& picture) {
        auto* dialog = qobject_cast<QFileDialog*>(Robot::Modal("QFileDialog"));
        auto* name = In<QLineEdit>(dialog, "fileNameEdit");
        robot_.Check(name != nullptr, QStringLiteral("the file dialog has no name box"));
        name->clear();
        QTest::keyClicks(name, path);
        if (!picture.isEmpty()) robot_.Picture(dialog, picture);
        QTest::keyClick(name, Qt::Key_Return);
    }

    void Splash() {
        // Where windows have no manager the splash may have lost its focus, and gone, by now.
        robot_.Stop(
            QStringLiteral("splash"), [] { return true; },
            [this] {
                robot_.Check(In<QLabel>(splash_, "lblVersion")->text() == QLatin1String("1.5.1"),
                             QStringLiteral("the version"));
                robot_.Picture(splash_, QStringLiteral("splash"));
            });
    }

    void Connect() {
        robot_.Stop(
            QStringLiteral("main window"), [this] { return main_ && main_->isVisible(); },
            [this] {
                robot_.Check(!Button("Save")->isEnabled() && Button("New")->isEnabled(),
                             QStringLiteral("the first states of the commands"));
            });
        robot_.Stop(
            QStringLiteral("instrument found"),
            [this] { return Panel(7) == QLatin1String("LVX-4 1.08"); },
            [this] {
                robot_.Check(Panel(4) == QLatin1String("COM 1"),
                             QStringLiteral("the link's panel"));
            });
        robot_.Stop(
            QStringLiteral("download enabled"), [this] { return Button("DownData")->isEnabled(); },
            [this] { robot_.Picture(main_.get(), QStringLiteral("connected")); });
    }

    void OpenProject() {
        robot_.Stop(
            QStringLiteral("open a project"), [] { return true; },
            [this] { robot_.Click(Button("Open")); });
        robot_.Stop(QStringLiteral("open dialog"), ModalIs("QFileDialog"), [this] {
            AnswerFileDialog(PercorsoInQt(machine_.AppPath() / "Esempio.pro"), {});
        });
        robot_.Stop(
            QStringLiteral("project open"), [this] { return Button("Save")->isEnabled(); },
            [this] {
                robot_.Check(Panel(2).endsWith(QLatin1String("Esempio.pro")),
                             QStringLiteral("the project's path in the status bar"));
                robot_.Check(Button("Setup")->isEnabled(),
                             QStringLiteral("the editors of an open project"));
                robot_.Picture(main_.get(), QStringLiteral("project"));
            });
    }

    void Download() {
        robot_.Stop(
            QStringLiteral("download"), [this] { return Button("DownData")->isEnabled(); },
            [this] { robot_.Click(Button("DownData")); });
        robot_.Stop(
            QStringLiteral("download at 40 %"),
            [] {
                auto* bar = In<QProgressBar>(Robot::Modal("QDialog"), "ProgressBar1");
                return bar != nullptr && bar->value() >= 40;
            },
            [this] { robot_.Picture(Robot::Modal("QDialog"), QStringLiteral("download")); }, 90);
        robot_.Stop(
            QStringLiteral("download complete"),
            [] {
                auto* ok = In<QPushButton>(Robot::Modal("QDialog"), "OKButton");
                return ok != nullptr && ok->isEnabled();
            },
            [this] {
                QWidget* window = Robot::Modal("QDialog");
                robot_.Check(In<QLabel>(window, "lblStatoDownload")->text() == InQt(Testo(268)),
                             QStringLiteral("the end of the download"));
                robot_.Picture(window, QStringLiteral("downloaded"));
                QTest::keyClick(window, Qt::Key_Return);
            },
            90);
        robot_.Stop(QStringLiteral("save dialog"), ModalIs("QFileDialog"), [this] {
            AnswerFileDialog(out_ + QStringLiteral("/run"), QStringLiteral("save"));
        });
        robot_.Stop(QStringLiteral("converted"), ModalIs("QMessageBox"), [this] {
            auto* box = qobject_cast<QMessageBox*>(Robot::Modal("QMessageBox"));
            robot_.Check(box->text() == InQt(Testo(269)), QStringLiteral("the closing message"));
            robot_.Picture(box, QStringLiteral("converted"));
            QTest::keyClick(box, Qt::Key_Return);
        });
        robot_.Stop(
            QStringLiteral("files"), [] { return Robot::Modal("QWidget") == nullptr; },
            [this] {
                for (const char* name : {"/run.csv", "/run.txt", "/run.tim"}) {
                    QFile file(out_ + QLatin1String(name));
                    robot_.Check(file.exists() && file.size() > 100,
                                 QLatin1String(name) + QStringLiteral(" was not written"));
                }
                robot_.Check(
                    !Button("SaveData")->isEnabled() &&
                        main_->findChild<QAction*>(QStringLiteral("mnuSaveData"))->isEnabled(),
                    QStringLiteral("Save Data on in the menu alone"));
            });
    }

    void OpenAnalysis() {
        robot_.Stop(
            QStringLiteral("analyse"), [this] { return Button("Analize")->isEnabled(); },
            [this] { robot_.Click(Button("Analize")); });
        robot_.Stop(QStringLiteral("open dialog"), ModalIs("QFileDialog"),
                    [this] { AnswerFileDialog(out_ + QStringLiteral("/run.csv"), {}); });
    }

    void Tick(int channel) {
        auto* box = In<QCheckBox>(Analysis(), ("chkGrafico" + std::to_string(channel)).c_str());
        robot_.Check(box != nullptr && box->isVisible(),
                     QStringLiteral("the box of channel %1").arg(channel));
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
        robot_.Check(box->isChecked(), QStringLiteral("the tick of channel %1").arg(channel));
    }

    void ClickLap(int row) {
        QTableView* laps = Laps();
        const QModelIndex cell = laps->model()->index(row, 1);
        laps->scrollTo(cell);
        QTest::mouseClick(laps->viewport(), Qt::LeftButton, {}, laps->visualRect(cell).center());
    }

    /// Row of the table view whose lap time is green; -1 if none is.
    int BestRow() {
        const QAbstractItemModel* laps = Laps()->model();
        for (int row = 0; row < laps->rowCount(); ++row) {
            const QVariant ground = laps->index(row, 1).data(Qt::BackgroundRole);
            if (ground.value<QBrush>().color() == QColor(0, 255, 0) ||
                ground.value<QColor>() == QColor(0, 255, 0)) {
                return row;
            }
        }
        return -1;
    }

    void Analyse() {
        OpenAnalysis();
        robot_.Stop(
            QStringLiteral("analysis open"), [this] { return LapsListed(); },
            [this] {
                robot_.Check(BestRow() > 1, QStringLiteral("no best lap is marked"));
                robot_.Picture(Analysis(), QStringLiteral("analysis"));
                for (const int channel : {3, 4, 7}) Tick(channel);
            });
        robot_.Stop(
            QStringLiteral("channels drawn"), [] { return true; },
            [this] {
                robot_.Picture(Analysis(), QStringLiteral("channels"));
                ClickLap(BestRow());
            });
        robot_.Stop(
            QStringLiteral("best lap"), [] { return true; },
            [this] {
                auto* tabs = In<QTabWidget>(Analysis(), "SSTab1");
                const QString number = Laps()
                                           ->model()
                                           ->index(BestRow(), 0)
                                           .data()
                                           .toString()
                                           .split(QLatin1Char(' '))
                                           .last();
                robot_.Check(tabs->tabText(0).endsWith(QLatin1Char(' ') + number),
                             QStringLiteral("the tab names another lap than the chosen one"));
                robot_.Picture(Analysis(), QStringLiteral("best-lap"));
                QTest::keyClick(Analysis(), Qt::Key_Escape);
            });
    }

    void Italian() {
        robot_.Stop(
            QStringLiteral("analysis closed"),
            [] { return QApplication::activeModalWidget() == nullptr; },
            [this] {
                QFile::remove(out_ + QStringLiteral("/program/LANGUAGES.DAT.bak"));
                QDir::setCurrent(PercorsoInQt(machine_.AppPath()));
                robot_.Click(Button("Language"));
            });
        robot_.Stop(QStringLiteral("language dialog"), ModalIs("QDialog"), [this] {
            QWidget* dialog = Robot::Modal("QDialog");
            auto* italian = In<QRadioButton>(dialog, "optItaliano");
            QTest::mouseClick(italian, Qt::LeftButton, {}, QPoint(8, italian->height() / 2));
            robot_.Picture(dialog, QStringLiteral("language"));
            robot_.Click(In<QPushButton>(dialog, "OKButton"));
        });
        robot_.Stop(
            QStringLiteral("in Italian"),
            [this] { return Button("Open")->toolTip() == QLatin1String("Apri progetto"); },
            [this] { robot_.Picture(main_.get(), QStringLiteral("italiano")); });
        OpenAnalysis();
        robot_.Stop(
            QStringLiteral("analysis in Italian"), [this] { return LapsListed(); },
            [this] {
                for (const int channel : {3, 8, 10}) Tick(channel);
                ClickLap(BestRow());
                robot_.Check(In<QTabWidget>(Analysis(), "SSTab1")
                                 ->tabText(0)
                                 .contains(QLatin1String("Giro")),
                             QStringLiteral("the tab in Italian"));
            });
        robot_.Stop(
            QStringLiteral("picture in Italian"), [] { return true; },
            [this] {
                robot_.Picture(Analysis(), QStringLiteral("analisi"));
                QTest::keyClick(Analysis(), Qt::Key_Escape);
            });
    }

    void Leave() {
        robot_.Stop(
            QStringLiteral("exit"), [] { return QApplication::activeModalWidget() == nullptr; },
            [this] { robot_.Click(Button("Exit")); });
        robot_.Stop(
            QStringLiteral("ended"), [this] { return machine_.Ended; },
            [this] {
                robot_.Check(!main_->SerialComm().PortOpen(),
                             QStringLiteral("the port is left open"));
                QFile recent(PercorsoInQt(machine_.AppPath() / "RecentFiles.ini"));
                robot_.Check(recent.open(QIODevice::ReadOnly) &&
                                 recent.readAll().contains("Esempio.pro\r\n"),
                             QStringLiteral("the recent list"));
            });
    }

    QString out_;
    TourPlatform& machine_;
    Robot robot_;
    DeviceRoad device_;
    frmSplash* splash_ = nullptr;
    std::unique_ptr<frmMain> main_;
};

}  // namespace
}  // namespace lapvane::tour

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: tour OUTPUT_FOLDER\n");
        return 2;
    }
    QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setQuitOnLastWindowClosed(false);
    const QString out = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    const QString bin = QCoreApplication::applicationDirPath();
    const std::filesystem::path program = lapvane::PercorsoDaQt(out) / "program";
    lapvane::tour::LayProgramFolder(lapvane::PercorsoDaQt(bin), program);

    QProcess instrument;
    instrument.setProcessChannelMode(QProcess::ForwardedChannels);
    instrument.start(bin + QStringLiteral("/lapvane-instrument"),
                     {QStringLiteral("--quiet"), QStringLiteral("--link"),
                      lapvane::PercorsoInQt(program / "ports" / "COM1"), QStringLiteral("--tracks"),
                      lapvane::PercorsoInQt(program / "tracks")});
    if (!instrument.waitForStarted(5000)) {
        std::fprintf(stderr, "the simulated instrument does not start\n");
        return 1;
    }
    lapvane::tour::TourPlatform machine(program);
    lapvane::SetPlatform(&machine);
    const int result = lapvane::tour::Tour(out, machine, instrument).Play();
    instrument.terminate();
    instrument.waitForFinished(3000);
    return result;
}
