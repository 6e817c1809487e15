// The road to the instrument and back: the open project goes into it, a new project takes its place
// on the screen, the instrument is read into that, and what is saved then is held against the first
// project's file. At the end that project is open again.
#include <QAction>
#include <QFile>
#include <QLabel>
#include <QMap>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "Tour.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"

namespace lapvane::tour {

namespace {

QWidget* Run() {
    QWidget* window = Robot::Modal("QDialog");
    return window != nullptr && window->objectName() == QLatin1String("dlgStrumento") ? window
                                                                                      : nullptr;
}

QString Label(const char* name) {
    auto* label = Run() != nullptr ? Run()->findChild<QLabel*>(QLatin1String(name)) : nullptr;
    return label != nullptr ? label->text() : QString();
}

/// The lines of a project file, value by key.
QMap<QByteArray, QByteArray> Lines(const QString& path) {
    QMap<QByteArray, QByteArray> lines;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return lines;
    const QList<QByteArray> all = file.readAll().split('\n');
    for (const QByteArray& line : all) {
        const qsizetype equals = line.indexOf('=');
        if (equals > 0) lines.insert(line.left(equals), line.mid(equals + 1).trimmed());
    }
    return lines;
}

/// Keys whose values differ, of those that the instrument holds.
QString Differences(const QString& before, const QString& after) {
    // What describes the project, the sampling rates and page 1 never travel; acceleration and gear
    // are off, so that their curves went out as zeros.
    const auto travels = [](const QByteArray& key) {
        for (const char* start :
             {"ID_NomeP", "ID_Data", "ID_Autore", "ID_Strumento", "ID_Veicolo", "ID_Note",
              "ID_TCamp", "ID_PaginaAbilitata1", "ID_SensoreG", "ID_Cambio"}) {
            if (key.startsWith(start)) return false;
        }
        return true;
    };
    const auto old = Lines(before);
    const auto now = Lines(after);
    QString keys;
    for (auto line = old.cbegin(); line != old.cend(); ++line) {
        if (travels(line.key()) && now.value(line.key(), "missing") != line.value()) {
            keys += QLatin1Char(' ') + QString::fromLatin1(line.key());
        }
    }
    return old.size() < 90 || now.size() != old.size() ? QStringLiteral(" (lines)") : keys;
}

}  // namespace

void Tour::Command(const char* key) {
    robot_.Stop(
        QLatin1String(key), [this, key] { return Idle() && Button(key)->isEnabled(); },
        [this, key] { robot_.Click(Button(key)); });
}

void Tour::LongCommand(const char* key, Voce question, Voce title, const QString& name) {
    Command(key);
    robot_.Stop(
        name + QStringLiteral(": question"), [] { return Robot::Modal("QMessageBox") != nullptr; },
        [this, question, name] {
            auto* box = qobject_cast<QMessageBox*>(Robot::Modal("QMessageBox"));
            robot_.Check(box->text() == InQt(Testo(question) + "\n" + Testo(Voce::Continuare)),
                         QStringLiteral("the question before the instrument is touched"));
            robot_.Picture(box, name + QStringLiteral("-question"));
            QTest::keyClick(box, Qt::Key_Return);
        });
    robot_.Stop(
        name + QStringLiteral(": half-way"),
        [] { return Label("Label1").count(QLatin1Char('\n')) >= 6; },
        [this, name] {
            robot_.Check(Label("Label3").isEmpty(), QStringLiteral("success told too early"));
            robot_.Picture(Run(), name);
        });
    robot_.Stop(
        name + QStringLiteral(": done"), [] { return !Label("Label3").isEmpty(); },
        [this, title, name] {
            robot_.Check(Label("Label3") == InQt(Testo(title) + " " + Testo(Voce::Riuscito)),
                         QStringLiteral("the closing line"));
            robot_.Check(
                Label("Label1").count(InQt(" ...   " + Testo(Voce::Riuscito) + "\n")) == 12,
                QStringLiteral("the twelve steps"));
            robot_.Picture(Run(), name + QStringLiteral("-done"));
            auto* compare = Run()->findChild<QPushButton*>(QStringLiteral("cmdConfronta"));
            if (compare->isVisible()) return robot_.Click(compare);
            QTest::keyClick(Run(), Qt::Key_Return);
        });
}

void Tour::Compared(const QString& name, const std::function<void(QTableWidget*)>& look) {
    robot_.Stop(
        name,
        [] {
            QWidget* window = Robot::Modal("QDialog");
            return window != nullptr && window->objectName() == QLatin1String("dlgDifferenze");
        },
        [this, name, look] {
            QWidget* window = Robot::Modal("QDialog");
            look(In<QTableWidget>(window, "tabDifferenze"));
            robot_.Picture(window, name);
            QTest::keyClick(window, Qt::Key_Escape);
        });
}

void Tour::CompareWithTheInstrument() {
    robot_.Stop(
        QStringLiteral("compare"), [this] { return Idle(); },
        [this] { main_->findChild<QAction*>(QStringLiteral("mnuCompareDevice"))->trigger(); });
    Compared(QStringLiteral("differences"), [this](QTableWidget* table) {
        QStringList seen;
        for (int row = 0; row < table->rowCount(); ++row) {
            seen << table->item(row, 2)->text() + QLatin1Char('/') + table->item(row, 3)->text();
        }
        for (const char* one : {"812/1000", "560/590", "12400/11500", "130.0/125.0"}) {
            robot_.Check(seen.contains(QLatin1String(one)),
                         QLatin1String(one) + QStringLiteral(" does not differ"));
        }
        robot_.Check(seen.last().startsWith(InQt(Testo(Voce::FlagNonAttivo) + ": 0 mV = 0.000/")),
                     QStringLiteral("the curve of a channel that is off"));
    });
}

void Tour::ProgramAndRead() {
    const QString project = PercorsoInQt(machine_.AppPath() / "Esempio.pro");
    const QString saved = Out(QStringLiteral("read.pro"));
    const auto answer = [this](const QString& path) {
        robot_.Stop(QStringLiteral("file dialog"), FileDialogIs(),
                    [this, path] { AnswerFileDialog(path, {}); });
    };
    LongCommand("ProgDev", Voce::StrumentoSovrascritto, Voce::ProgrammazioneStrumento,
                QStringLiteral("program"));
    Compared(QStringLiteral("no-differences"), [this](QTableWidget* table) {
        robot_.Check(!table->isVisible(), QStringLiteral("the instrument is not the project's"));
    });
    Command("New");
    robot_.Stop(
        QStringLiteral("new project"),
        [this] { return Panel(1) == InQt(Testo(Voce::ProgettoSenzaNome)); },
        [this] {
            robot_.Check(!Button("ProgDev")->isEnabled(),
                         QStringLiteral("a project that was never saved can be programmed"));
        });
    LongCommand("ReadDev", Voce::DatiSostituiti, Voce::LetturaStrumento, QStringLiteral("read"));
    Command("SaveAs");
    answer(saved);
    robot_.Stop(
        QStringLiteral("what was read"), [this, saved] { return Panel(2) == saved; },
        [this, project, saved] {
            const QString keys = Differences(project, saved);
            robot_.Check(keys.isEmpty(),
                         QStringLiteral("read back otherwise than written:") + keys);
        });
    Command("Open");
    answer(project);
    robot_.Stop(
        QStringLiteral("first project again"), [this, project] { return Panel(2) == project; },
        [] {});
}

}  // namespace lapvane::tour
