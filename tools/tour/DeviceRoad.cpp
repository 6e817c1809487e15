#include "DeviceRoad.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMessageBox>
#include <QTest>
#include <QToolButton>

#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "widgets/PannelloStato.h"

namespace lapvane::tour {

namespace {

template <class W>
W* In(QWidget* window, const char* name) {
    return window != nullptr ? window->findChild<W*>(QLatin1String(name)) : nullptr;
}

QWidget* Run() {
    QWidget* window = Robot::Modal("QDialog");
    return window != nullptr && window->objectName() == QLatin1String("dlgStrumento") ? window
                                                                                      : nullptr;
}

QString Label(const char* name) {
    auto* label = In<QLabel>(Run(), name);
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
    // What describes the project, the sampling rates and page 1 never travel; acceleration is off,
    // so that its curve went out as zeros.
    const auto travels = [](const QByteArray& key) {
        for (const char* start : {"ID_NomeP", "ID_Data", "ID_Autore", "ID_Strumento", "ID_Veicolo",
                                  "ID_Note", "ID_TCamp", "ID_PaginaAbilitata1", "ID_SensoreG"}) {
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

DeviceRoad::DeviceRoad(Robot& robot, std::function<frmMain*()> window, QString project,
                       QString saved)
    : robot_(robot),
      window_(std::move(window)),
      project_(std::move(project)),
      saved_(std::move(saved)) {}

QString DeviceRoad::Panel(int n) const {
    auto* panel = In<PannelloStato>(window_(), ("sbStatusBar_" + std::to_string(n)).c_str());
    return panel != nullptr ? panel->Testo() : QString();
}

void DeviceRoad::Click(const char* key) {
    const std::string name = std::string("Toolbar1_") + key;
    robot_.Stop(
        QLatin1String(key),
        [this, name] {
            auto* button = In<QToolButton>(window_(), name.c_str());
            return Robot::Modal("QWidget") == nullptr && button != nullptr && button->isEnabled();
        },
        [this, name] { robot_.Click(In<QToolButton>(window_(), name.c_str())); });
}

void DeviceRoad::FileDialog(const QString& path) {
    robot_.Stop(
        QStringLiteral("file dialog"), [] { return Robot::Modal("QFileDialog") != nullptr; },
        [path] {
            auto* name = In<QLineEdit>(Robot::Modal("QFileDialog"), "fileNameEdit");
            name->clear();
            QTest::keyClicks(name, path);
            QTest::keyClick(name, Qt::Key_Return);
        });
}

void DeviceRoad::LongCommand(const char* key, int question, int title, const QString& name) {
    Click(key);
    robot_.Stop(
        name + QStringLiteral(": question"), [] { return Robot::Modal("QMessageBox") != nullptr; },
        [this, question] {
            auto* box = qobject_cast<QMessageBox*>(Robot::Modal("QMessageBox"));
            robot_.Check(box->text() == InQt(Testo(question) + "\n" + Testo(148)),
                         QStringLiteral("the question before the instrument is touched"));
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
            robot_.Check(Label("Label3") == InQt(Testo(title) + " " + Testo(237)),
                         QStringLiteral("the closing line"));
            robot_.Check(Label("Label1").count(InQt(" ...   " + Testo(237) + "\n")) == 12,
                         QStringLiteral("the twelve steps"));
            robot_.Picture(Run(), name + QStringLiteral("-done"));
            QTest::keyClick(Run(), Qt::Key_Return);
        });
}

void DeviceRoad::Play() {
    LongCommand("ProgDev", 147, 238, QStringLiteral("program"));
    Click("New");
    robot_.Stop(
        QStringLiteral("new project"), [this] { return Panel(1) == InQt(Testo(131)); },
        [this] {
            robot_.Check(!In<QToolButton>(window_(), "Toolbar1_ProgDev")->isEnabled(),
                         QStringLiteral("a project that was never saved can be programmed"));
        });
    LongCommand("ReadDev", 232, 239, QStringLiteral("read"));
    Click("SaveAs");
    FileDialog(saved_);
    robot_.Stop(
        QStringLiteral("what was read"), [this] { return Panel(2) == saved_; },
        [this] {
            const QString keys = Differences(project_, saved_);
            robot_.Check(keys.isEmpty(),
                         QStringLiteral("read back otherwise than written:") + keys);
        });
    Click("Open");
    FileDialog(project_);
    robot_.Stop(
        QStringLiteral("first project again"), [this] { return Panel(2) == project_; }, [] {});
}

}  // namespace lapvane::tour
