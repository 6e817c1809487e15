// From the splash to the files of a run; the change of language; the end.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include "Tour.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "widgets/style/Misure.h"

namespace lapvane::tour {

void Tour::Splash() {
    // Where windows have no manager the splash may have lost its focus, and gone, by now.
    robot_.Stop(
        QStringLiteral("splash"), [] { return true; },
        [this] {
            robot_.Check(In<QLabel>(splash_, "lblVersion")->text() == QLatin1String("1.5.1"),
                         QStringLiteral("the version"));
            robot_.Picture(splash_, QStringLiteral("splash"));
        });
}

void Tour::Connect() {
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
            robot_.Check(Panel(4) == QLatin1String("COM 1"), QStringLiteral("the link's panel"));
        });
    robot_.Stop(
        QStringLiteral("download enabled"), [this] { return Button("DownData")->isEnabled(); },
        [this] { robot_.Picture(main_.get(), QStringLiteral("connected")); });
}

void Tour::OpenProject() {
    robot_.Stop(
        QStringLiteral("open a project"), [] { return true; },
        [this] { robot_.Click(Button("Open")); });
    robot_.Stop(QStringLiteral("open dialog"), FileDialogIs(),
                [this] { AnswerFileDialog(PercorsoInQt(machine_.AppPath() / "Esempio.pro"), {}); });
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

void Tour::Download() {
    robot_.Stop(
        QStringLiteral("download"), [this] { return Idle() && Button("DownData")->isEnabled(); },
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
            robot_.Check(In<QLabel>(window, "lblStatoDownload")->text() ==
                             InQt(Testo(Voce::ScaricamentoCompletato)),
                         QStringLiteral("the end of the download"));
            robot_.Picture(window, QStringLiteral("downloaded"));
            QTest::keyClick(window, Qt::Key_Return);
        },
        90);
    robot_.Stop(QStringLiteral("save dialog"), FileDialogIs(),
                [this] { AnswerFileDialog(Out(QStringLiteral("run")), QStringLiteral("save")); });
    robot_.Stop(QStringLiteral("converted"), ModalIs("QMessageBox"), [this] {
        auto* box = qobject_cast<QMessageBox*>(Robot::Modal("QMessageBox"));
        robot_.Check(box->text() == InQt(Testo(Voce::ConversioneCompletata)),
                     QStringLiteral("the closing message"));
        robot_.Picture(box, QStringLiteral("converted"));
        QTest::keyClick(box, Qt::Key_Return);
    });
    robot_.Stop(
        QStringLiteral("files"), [] { return Robot::Modal("QWidget") == nullptr; },
        [this] {
            for (const char* name : {"run.csv", "run.txt", "run.tim", "run.set"}) {
                QFile file(Out(QLatin1String(name)));
                robot_.Check(file.exists() && file.size() > 100,
                             QLatin1String(name) + QStringLiteral(" was not written"));
            }
            robot_.Check(!Button("SaveData")->isEnabled() &&
                             main_->findChild<QAction*>(QStringLiteral("mnuSaveData"))->isEnabled(),
                         QStringLiteral("Save Data on in the menu alone"));
        });
}

void Tour::OtherLanguage() {
    robot_.Stop(
        QStringLiteral("analysis closed"), [this] { return Idle(); },
        [this] {
            QFile::remove(Out(QStringLiteral("program/LANGUAGES.DAT.bak")));
            QDir::setCurrent(PercorsoInQt(machine_.AppPath()));
            robot_.Click(Button("Language"));
        });
    robot_.Stop(QStringLiteral("language dialog"), ModalIs("QDialog"), [this] {
        QWidget* dialog = Robot::Modal("QDialog");
        auto* other = In<QRadioButton>(dialog, italian_ ? "optInglese" : "optItaliano");
        QTest::mouseClick(other, Qt::LeftButton, {}, QPoint(8, other->height() / 2));
        robot_.Picture(dialog, QStringLiteral("language"));
        robot_.Click(In<QPushButton>(dialog, "OKButton"));
    });
    robot_.Stop(
        QStringLiteral("in the other language"),
        [this] {
            return Button("Open")->toolTip() ==
                   QLatin1String(italian_ ? "Open project" : "Apri progetto");
        },
        [this] { robot_.Picture(main_.get(), QStringLiteral("other-language")); });
    OpenAnalysis();
    robot_.Stop(
        QStringLiteral("other analysis"), [this] { return LapsListed(); },
        [this] {
            for (const int channel : {3, 8, 10}) Tick(channel);
            ClickLap(BestRow());
            robot_.Check(In<QTabWidget>(Analysis(), "SSTab1")
                             ->tabText(0)
                             .contains(QLatin1String(italian_ ? "Lap" : "Giro")),
                         QStringLiteral("the tab in the other language"));
        });
    robot_.Stop(
        QStringLiteral("other picture"), [] { return true; },
        [this] {
            robot_.Picture(Analysis(), QStringLiteral("other-analysis"));
            In<QTabWidget>(Analysis(), "SSTab1")->setCurrentIndex(1);
            robot_.Picture(Analysis(), QStringLiteral("other-alarms"));
            QTest::keyClick(Analysis(), Qt::Key_Escape);
        });
    robot_.Stop(
        QStringLiteral("the other window again"),
        [] { return QApplication::activeModalWidget() == nullptr; }, [] { AnalisiSpeed = false; });
    OpenAnalysis();
    robot_.Stop(
        QStringLiteral("the distance again"), [this] { return LapsListed(); },
        [this] {
            for (const int channel : {3, 4, 7}) Tick(channel);
            ClickLap(BestRow());
            auto* distance = In<QCheckBox>(Analysis(), "chkDistanza");
            QTest::mouseClick(distance, Qt::LeftButton, {}, QPoint(8, distance->height() / 2));
            robot_.Click(In<QAbstractButton>(Analysis(), "Toolbar1_Separati"));
            robot_.Picture(Analysis(), QStringLiteral("other-distance"));
            QTest::keyClick(Analysis(), Qt::Key_Escape);
        });
}

void Tour::RecentProjects() {
    Command("Open");
    robot_.Stop(QStringLiteral("another project"), FileDialogIs(),
                [this] { AnswerFileDialog(Out(QStringLiteral("read.pro")), {}); });
    Command("Open");
    robot_.Stop(QStringLiteral("the first again"), FileDialogIs(),
                [this] { AnswerFileDialog(PercorsoInQt(machine_.AppPath() / "Esempio.pro"), {}); });
    robot_.Stop(
        QStringLiteral("two recent projects"),
        [this] {
            // The one opened last stands first.
            const auto names = [this](const char* entry, const char* file) {
                const auto* action = main_->findChild<QAction*>(QLatin1String(entry));
                return action->isVisible() &&
                       action->text().trimmed().endsWith(QLatin1String(file));
            };
            return Idle() && names("mnuRecentFiles0", "Esempio.pro") &&
                   names("mnuRecentFiles1", "read.pro");
        },
        [this] {
            auto* menu = In<QMenu>(main_.get(), "mnuProjectFile");
            menu->popup(main_->mapToGlobal(QPoint(0, 30)));
            robot_.Picture(menu, QStringLiteral("recent"));
            menu->close();
        });
    PitLane();
}

/// Larger letters in the open window and back, whichever it had.
void Tour::PitLane() {
    robot_.Stop(
        QStringLiteral("the pit lane"), [this] { return Idle(); },
        [this] {
            const QSize before = main_->size();
            const bool pit = ModoBox();
            const auto press = [this] {
                QTest::keyClick(main_.get(), Qt::Key_F11);
                QApplication::processEvents();
            };
            press();
            robot_.Check(ModoBox() != pit, QStringLiteral("F11 does nothing"));
            robot_.Picture(main_.get(), QStringLiteral("pit"));
            press();
            robot_.Check(ModoBox() == pit && main_->size() == before,
                         QStringLiteral("F11 does not give the window back"));
        });
}

void Tour::UnsavedChanges() {
    // The program asks, and is told to stay.
    Command("Note");
    robot_.Stop(
        QStringLiteral("a change"),
        [this] { return main_->findChild<QDialog*>(QStringLiteral("dlgNoteProgetto")) != nullptr; },
        [this] {
            auto* notes = main_->findChild<QDialog*>(QStringLiteral("dlgNoteProgetto"));
            robot_.Click(In<QPushButton>(notes, "OKButton"));
        });
    Command("Exit");
    robot_.Stop(QStringLiteral("unsaved"), ModalIs("QMessageBox"), [this] {
        auto* box = qobject_cast<QMessageBox*>(Robot::Modal("QMessageBox"));
        robot_.Check(box->text().endsWith(InQt(Testo(Voce::SalvareLeModifiche))),
                     QStringLiteral("the question"));
        robot_.Picture(box, QStringLiteral("unsaved"));
        QTest::keyClick(box, Qt::Key_Escape);
    });
    Command("Save");
}

void Tour::Leave() {
    robot_.Stop(
        QStringLiteral("exit"), [this] { return Idle(); },
        [this] { robot_.Click(Button("Exit")); });
    robot_.Stop(
        QStringLiteral("ended"), [this] { return machine_.Ended; },
        [this] {
            robot_.Check(!main_->SerialComm().PortOpen(), QStringLiteral("the port is left open"));
            QFile recent(PercorsoInQt(machine_.AppPath() / "RecentFiles.ini"));
            robot_.Check(
                recent.open(QIODevice::ReadOnly) && recent.readAll().contains("Esempio.pro\r\n"),
                QStringLiteral("the recent list"));
        });
}

}  // namespace lapvane::tour
