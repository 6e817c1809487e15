// The windows that change the project, and the live view: each is opened, read, changed, and what
// its OK stores is looked at when it is opened again.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <filesystem>

#include "Tour.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "project/frmStampaDatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"

namespace lapvane::tour {

namespace {

/// The window of that name if it is the one in front.
QWidget* Front(const char* name) {
    QWidget* window = QApplication::activeModalWidget();
    return window != nullptr && window->isVisible() && window->objectName() == QLatin1String(name)
               ? window
               : nullptr;
}

/// Puts a text into a box as a person does.
void Type(QWidget* window, const char* box, const QString& text) {
    auto* edit = window->findChild<QLineEdit*>(QLatin1String(box));
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

}  // namespace

void Tour::Edit(const char* key, const char* window, const QString& picture,
                const std::function<void(QWidget*)>& act) {
    Command(key);
    robot_.Stop(
        picture, [window] { return Front(window) != nullptr; },
        [this, window, picture, act] {
            act(Front(window));
            robot_.Picture(Front(window), picture);
        });
    // What the window shows goes into the instrument and comes back; the project waits for OK.
    Exchange(window, "cmdInviaDati", picture + QStringLiteral(" sent"));
    Exchange(window, "cmdLeggiDati", picture + QStringLiteral(" read back"));
    robot_.Stop(
        picture + QStringLiteral(" taken over"), [window] { return Front(window) != nullptr; },
        [this, window] { robot_.Click(In<QPushButton>(Front(window), "OKButton")); });
}

void Tour::Exchange(const char* window, const char* button, const QString& name) {
    robot_.Stop(
        name + QStringLiteral(": button"), [window] { return Front(window) != nullptr; },
        [this, window, button] { robot_.Click(In<QPushButton>(Front(window), button)); });
    robot_.Stop(name + QStringLiteral(": question"), ModalIs("QMessageBox"), [this] {
        QTest::keyClick(Robot::Modal("QMessageBox"), Qt::Key_Return);
        answered_.start();
    });
    robot_.Stop(
        name,
        [this, window, button] {
            // The box is gone a moment before the exchange switches the buttons off.
            if (answered_.elapsed() < 300) return false;
            auto* again = In<QPushButton>(Front(window), button);
            return Robot::Modal("QMessageBox") != nullptr ||
                   (again != nullptr && again->isEnabled());
        },
        [this, name] {
            auto* box = qobject_cast<QMessageBox*>(Robot::Modal("QMessageBox"));
            if (box == nullptr) return;  // no closing message of its own
            robot_.Check(box->text() != InQt(Testo(Voce::ErroreDiComunicazione)) &&
                             box->text() != InQt(Testo(Voce::StrumentoNonRisponde)),
                         name + QStringLiteral(" failed"));
            QTest::keyClick(box, Qt::Key_Return);
        });
}

void Tour::Pour(int point, const QString& litres) {
    robot_.Stop(
        QStringLiteral("pour ") + litres, [] { return Front("dlgCalibrazione") != nullptr; },
        [this, litres] {
            console_(litres.toLatin1() + '\n');
            poured_.start();
        });
    robot_.Stop(
        litres + QStringLiteral(" litres"),
        [this] {
            auto* ok = In<QPushButton>(Front("dlgCalibrazione"), "OKButton");
            return poured_.elapsed() > 500 && ok != nullptr && ok->isEnabled();
        },
        [this, litres] {
            QWidget* window = Front("dlgCalibrazione");
            if (In<QLineEdit>(window, "txtLitri")->isVisible()) Type(window, "txtLitri", litres);
            robot_.Click(In<QPushButton>(window, "OKButton"));
        });
    // A click that comes while the instrument is polled acts later: only the table of points behind
    // the window tells that this measure is over, and that the tank may change.
    robot_.Stop(
        litres + QStringLiteral(" litres measured"),
        [point, litres] {
            QWidget* window = Front("dlgCalibrazione");
            if (window == nullptr) return false;
            auto* y =
                In<QLineEdit>(window->parentWidget(), ("txtY" + std::to_string(point)).c_str());
            return y != nullptr && y->text() == litres + QStringLiteral(".0");
        },
        [] {});
}

void Tour::CalibrateTheTank() {
    Command("CustSensors");
    robot_.Stop(
        QStringLiteral("fuel level"), [] { return Front("frmImpostaSensore") != nullptr; },
        [this] {
            QWidget* window = Front("frmImpostaSensore");
            In<QRadioButton>(window, "optLivelloBenzina")->click();
            auto* channels = In<QComboBox>(window, "cboTipiSensore");
            channels->setFocus();
            const int fuel = channels->findText(InQt(Testo(Voce::TipoLivelloBenzina)));
            for (int i = 0; i < 12 && channels->currentIndex() != fuel; ++i) {
                QTest::keyClick(channels,
                                channels->currentIndex() < fuel ? Qt::Key_Down : Qt::Key_Up);
            }
            robot_.Click(In<QPushButton>(window, "cmdCalibrazione"));
        });
    for (int point = 0; point < 4; ++point) Pour(point, QString::number(20 * point));
    robot_.Stop(
        QStringLiteral("calibrated"),
        [] {
            auto* end = In<QPushButton>(Front("dlgCalibrazione"), "cmdFineProcedura");
            return end != nullptr && end->isEnabled();
        },
        [this] {
            robot_.Picture(Front("dlgCalibrazione"), QStringLiteral("calibration"));
            robot_.Click(In<QPushButton>(Front("dlgCalibrazione"), "cmdFineProcedura"));
        });
    robot_.Stop(
        QStringLiteral("save the tank"), [] { return Front("frmImpostaSensore") != nullptr; },
        [this] {
            QWidget* window = Front("frmImpostaSensore");
            // 40 and 16 a litre is what the simulated tank shows.
            robot_.Check(In<QLineEdit>(window, "txtX1")->text() == QLatin1String("360") &&
                             In<QLineEdit>(window, "txtY1")->text().startsWith(QLatin1String("20")),
                         QStringLiteral("the second point of the curve: ") +
                             In<QLineEdit>(window, "txtX1")->text());
            Type(window, "txtNomeNuovo", QStringLiteral("Serbatoio tarato"));
            robot_.Picture(window, QStringLiteral("tank"));
            robot_.Click(In<QPushButton>(window, "cmdSalvaSensore"));
        });
    robot_.Stop(
        QStringLiteral("tank saved"),
        [this] {
            return std::filesystem::exists(machine_.AppPath() / "sensors" / "Serbatoio tarato.sns");
        },
        [] { QTest::keyClick(Front("frmImpostaSensore"), Qt::Key_Escape); });
    Edit("Sensor", "frmSensori", QStringLiteral("sensors"), [this](QWidget* window) {
        Type(window, "txtDiametroRuota", QStringLiteral("565"));
        In<QTabWidget>(window, "SSTab1")->setCurrentIndex(1);
        robot_.Picture(window, QStringLiteral("sensors-optional"));
        In<QTabWidget>(window, "SSTab1")->setCurrentIndex(0);
        auto* tank = In<QComboBox>(window, "cboLivelloBenzina0");
        robot_.Check(tank->findText(QStringLiteral("Serbatoio tarato")) >= 0,
                     QStringLiteral("the new sensor in the list"));
        tank->setFocus();
        tank->lineEdit()->selectAll();
        QTest::keyClicks(tank, QStringLiteral("Serbatoio tarato"));
    });
}

void Tour::Editors() {
    LiveView();
    Notes();
    Edit("Setup", "frmConfigurazione", QStringLiteral("setup"),
         [](QWidget* window) { Type(window, "txtSettoreCrono0", QStringLiteral("800")); });
    WrongNumber();
    Edit("Alarm", "frmAllarmi", QStringLiteral("alarm-settings"),
         [](QWidget* window) { Type(window, "txtLed4", QStringLiteral("12600")); });
    SensorLibrary();
    CalibrateTheTank();
    ProjectSheet();
    SaveAndOpenAgain();
}

void Tour::Notes() {
    Command("Note");
    robot_.Stop(
        QStringLiteral("notes"),
        [this] { return main_->findChild<QDialog*>(QStringLiteral("dlgNoteProgetto")) != nullptr; },
        [this] {
            auto* notes = main_->findChild<QDialog*>(QStringLiteral("dlgNoteProgetto"));
            In<QPlainTextEdit>(notes, "txtNoteProgetto")
                ->appendPlainText(QStringLiteral("Setup 2"));
            robot_.Picture(notes, QStringLiteral("notes"));
            robot_.Click(In<QPushButton>(notes, "OKButton"));
            robot_.Check(DatiProgetto.NoteProgetto.ends_with("Setup 2") && ProgettoModificato,
                         QStringLiteral("the notes in the project"));
        });
}

void Tour::SensorLibrary() {
    Command("CustSensors");
    robot_.Stop(
        QStringLiteral("sensor editor"), [] { return Front("frmImpostaSensore") != nullptr; },
        [this] {
            auto* list = In<QComboBox>(Front("frmImpostaSensore"), "cboListaSensori");
            robot_.Check(list->count() > 0, QStringLiteral("the sensors of the library"));
            list->setFocus();
            QTest::keyClick(list, Qt::Key_Down);
            robot_.Picture(Front("frmImpostaSensore"), QStringLiteral("sensor-editor"));
            QTest::keyClick(Front("frmImpostaSensore"), Qt::Key_Escape);
        });
}

void Tour::ProjectSheet() {
    robot_.Stop(
        QStringLiteral("project sheet"),
        [] { return QApplication::activeModalWidget() == nullptr; },
        [this] {
            // No command leads here.
            frmStampaDatiProgetto sheet;
            sheet.show();
            robot_.Picture(&sheet, QStringLiteral("project-sheet"));
        });
}

void Tour::SaveAndOpenAgain() {
    Command("Save");
    robot_.Stop(
        QStringLiteral("saved"), [] { return !ProgettoModificato; },
        [this] {
            QFile project(PercorsoInQt(machine_.AppPath() / "Esempio.pro"));
            robot_.Check(project.open(QIODevice::ReadOnly), QStringLiteral("the project file"));
            const QByteArray text = project.readAll();
            robot_.Check(text.contains("12600") && text.contains("Serbatoio tarato"),
                         QStringLiteral("the changed settings in the project file"));
        });
    Command("Open");
    robot_.Stop(QStringLiteral("open again"), FileDialogIs(),
                [this] { AnswerFileDialog(PercorsoInQt(machine_.AppPath() / "Esempio.pro"), {}); });
    Command("Alarm");
    robot_.Stop(
        QStringLiteral("opened again"), [] { return Front("frmAllarmi") != nullptr; },
        [this] {
            robot_.Check(
                In<QLineEdit>(Front("frmAllarmi"), "txtLed4")->text() == QLatin1String("12600"),
                QStringLiteral("the setting after the project was opened again"));
            QTest::keyClick(Front("frmAllarmi"), Qt::Key_Escape);
        });
}

void Tour::WrongNumber() {
    Command("Setup");
    robot_.Stop(
        QStringLiteral("wrong number"), [] { return Front("frmConfigurazione") != nullptr; },
        [this] {
            Type(Front("frmConfigurazione"), "txtStopRecSecondi", QStringLiteral("40000"));
            robot_.Click(In<QPushButton>(Front("frmConfigurazione"), "OKButton"));
        });
    robot_.Stop(QStringLiteral("refused"), ModalIs("QMessageBox"), [this] {
        auto* box = qobject_cast<QMessageBox*>(Robot::Modal("QMessageBox"));
        robot_.Check(box->text().contains(InQt(Testo(Voce::NumeroNellIntervallo))),
                     QStringLiteral("the limits"));
        robot_.Picture(box, QStringLiteral("wrong-number"));
        QTest::keyClick(box, Qt::Key_Return);
    });
    robot_.Stop(
        QStringLiteral("given up"), [] { return Front("frmConfigurazione") != nullptr; },
        [] { QTest::keyClick(Front("frmConfigurazione"), Qt::Key_Escape); });
}

void Tour::LiveView() {
    Command("ViewDev");
    robot_.Stop(
        QStringLiteral("live view"),
        [] {
            auto* engine = In<QLabel>(Front("dlgDiagnostica"), "txtValoreCampo0");
            auto* input = In<QLabel>(Front("dlgDiagnostica"), "txtValoreAnalogico0");
            return engine != nullptr && engine->text().toInt() > 0 && !input->text().isEmpty();
        },
        [this] { liveFrom_ = machine_.GetTickCount(); });
    // So long that the last minute shows lines and not dots.
    constexpr std::int64_t kLines = 30000;  // ms
    robot_.Stop(
        QStringLiteral("half a minute live"),
        [this] { return machine_.GetTickCount() - liveFrom_ >= kLines; },
        [this] {
            robot_.Picture(Front("dlgDiagnostica"), QStringLiteral("live"));
            QTest::keyClick(Front("dlgDiagnostica"), Qt::Key_Escape);
        },
        60);
}

}  // namespace lapvane::tour
