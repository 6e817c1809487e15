// The windows that change the project, and the live view: each is opened, read, changed, and what
// its OK stores is looked at when it is opened again.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include "Tour.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "project/frmStampaDatiProgetto.h"
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
            robot_.Click(In<QPushButton>(Front(window), "OKButton"));
        });
}

void Tour::Editors() {
    LiveView();
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
    Edit("Setup", "frmConfigurazione", QStringLiteral("setup"),
         [](QWidget* window) { Type(window, "txtSettoreCrono0", QStringLiteral("800")); });
    Edit("Alarm", "frmAllarmi", QStringLiteral("alarm-settings"),
         [](QWidget* window) { Type(window, "txtLed4", QStringLiteral("12600")); });
    Edit("Sensor", "frmSensori", QStringLiteral("sensors"),
         [](QWidget* window) { Type(window, "txtDiametroRuota", QStringLiteral("565")); });
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
    robot_.Stop(
        QStringLiteral("project sheet"),
        [] { return QApplication::activeModalWidget() == nullptr; },
        [this] {
            // No command leads here.
            frmStampaDatiProgetto sheet;
            sheet.show();
            robot_.Picture(&sheet, QStringLiteral("project-sheet"));
        });
    Command("Save");
    robot_.Stop(
        QStringLiteral("saved"), [] { return !ProgettoModificato; },
        [this] {
            QFile project(PercorsoInQt(machine_.AppPath() / "Esempio.pro"));
            robot_.Check(project.open(QIODevice::ReadOnly) && project.readAll().contains("12600"),
                         QStringLiteral("the changed setting in the project file"));
        });
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
        [this] {
            robot_.Picture(Front("dlgDiagnostica"), QStringLiteral("live"));
            QTest::keyClick(Front("dlgDiagnostica"), Qt::Key_Escape);
        });
}

}  // namespace lapvane::tour
