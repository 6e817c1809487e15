// A log studied in the analysis windows.
#include <QApplication>
#include <QBrush>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <cmath>

#include "Tour.h"
#include "platform/qt/TestoQt.h"
#include "reports/DisegnoTracciato.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "widgets/Dialogo.h"

namespace lapvane::tour {

QWidget* Tour::Analysis() {
    QWidget* window = QApplication::activeModalWidget();
    return window != nullptr && window->objectName().startsWith(QLatin1String("frmAnalisiDati"))
               ? window
               : nullptr;
}

QTableView* Tour::Laps() {
    return In<QTableView>(Analysis(), "MSFlexGrid1");
}

bool Tour::LapsListed() {
    return Laps() != nullptr && Laps()->isVisible() && Laps()->model()->rowCount() > 12;
}

void Tour::OpenAnalysis() {
    robot_.Stop(
        QStringLiteral("analyse"), [this] { return Idle() && Button("Analize")->isEnabled(); },
        [this] { robot_.Click(Button("Analize")); });
    robot_.Stop(QStringLiteral("open dialog"), FileDialogIs(),
                [this] { AnswerFileDialog(Out(QStringLiteral("run.csv")), {}); });
    robot_.Stop(
        QStringLiteral("log loaded"), [this] { return LapsListed(); },
        [this] {
            // The size of a common laptop, whatever screen the tour runs on.
            Analysis()->showNormal();
            Analysis()->resize(NelloSchermo(*Analysis(), QSize(1366, 738)));
        });
}

void Tour::Tick(int channel) {
    auto* box = In<QCheckBox>(Analysis(), ("chkGrafico" + std::to_string(channel)).c_str());
    robot_.Check(box != nullptr && box->isVisible(),
                 QStringLiteral("the box of channel %1").arg(channel));
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    robot_.Check(box->isChecked(), QStringLiteral("the tick of channel %1").arg(channel));
}

void Tour::ClickLap(int row) {
    QTableView* laps = Laps();
    const QModelIndex cell = laps->model()->index(row, 1);
    laps->scrollTo(cell);
    QTest::mouseClick(laps->viewport(), Qt::LeftButton, {}, laps->visualRect(cell).center());
}

/// Row of the table view whose lap time is green; -1 if none is.
int Tour::BestRow() {
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

void Tour::OnAnalysis(const QString& name, std::function<void()> act) {
    robot_.Stop(
        name, [this] { return Analysis() != nullptr; }, std::move(act));
}

void Tour::Press(const char* control) {
    robot_.Click(In<QAbstractButton>(Analysis(), control));
}

QString Tour::Value(int column) {
    auto* box = In<QLineEdit>(Analysis(), ("txtValore" + std::to_string(column)).c_str());
    return box != nullptr ? box->text() : QString();
}

void Tour::Analyse() {
    AnalisiSpeed = true;
    OpenAnalysis();
    robot_.Stop(
        QStringLiteral("analysis open"), [this] { return LapsListed(); },
        [this] {
            robot_.Check(Analysis()->objectName() == QLatin1String("frmAnalisiDatiSpeed"),
                         QStringLiteral("the window over the array"));
            robot_.Check(BestRow() > 1, QStringLiteral("no best lap is marked"));
            robot_.Picture(Analysis(), QStringLiteral("analysis"));
            for (const int channel : {3, 4, 7}) Tick(channel);
        });
    OnAnalysis(QStringLiteral("channels drawn"), [this] {
        robot_.Picture(Analysis(), QStringLiteral("channels"));
        ClickLap(BestRow());
    });
    OnAnalysis(QStringLiteral("best lap"), [this] {
        auto* tabs = In<QTabWidget>(Analysis(), "SSTab1");
        const QString label = Laps()->model()->index(BestRow(), 0).data().toString();
        robot_.Check(
            tabs->tabText(0).endsWith(QLatin1Char(' ') + label.split(QLatin1Char(' ')).last()),
            QStringLiteral("the tab names another lap than the chosen one"));
        robot_.Picture(Analysis(), QStringLiteral("best-lap"));
    });
    MoveThroughTheLap();
    DescribeTheSession();
    Reports();
    OnAnalysis(QStringLiteral("close the analysis"), [this] { Press("Toolbar1_ChiudiGrafico"); });
    robot_.Stop(
        QStringLiteral("session written"),
        [] { return QApplication::activeModalWidget() == nullptr; },
        [this] {
            QFile session(Out(QStringLiteral("run.ses")));
            robot_.Check(
                session.open(QIODevice::ReadOnly) &&
                    session.readAll().contains(QByteArray("Circuito=") + kCircuit + "\r\n"),
                QStringLiteral("the session file"));
        });
    OverTheDistance();
}

void Tour::MoveThroughTheLap() {
    OnAnalysis(QStringLiteral("zoom"), [this] {
        Press("cmdZoomIn50");
        Press("cmdZoomIn50");
        Press("cmdSpostaDX10");
        robot_.Check(!Value(4).isEmpty(), QStringLiteral("the values at the cursor"));
        robot_.Picture(Analysis(), QStringLiteral("zoom"));
        timeBefore_ = Value(1).toDouble();
        Press("cmdScorriDX");
    });
    robot_.Stop(
        QStringLiteral("scroll"), [this] { return Value(1).toDouble() > timeBefore_ + 5.0; },
        [this] {
            robot_.Picture(Analysis(), QStringLiteral("scroll"));
            Press("cmdScorriDX");
            timeBefore_ = Value(1).toDouble();
        });
    OnAnalysis(QStringLiteral("cursor"), [this] {
        auto* graph = In<QWidget>(Analysis(), "NTGraph1");
        graph->setFocus();
        for (int i = 0; i < 30; ++i) QTest::keyClick(graph, Qt::Key_Right);
        robot_.Check(Value(1).toDouble() > timeBefore_ + 2.0, QStringLiteral("the cursor's time"));
        robot_.Picture(Analysis(), QStringLiteral("cursor"));
        In<QTabWidget>(Analysis(), "SSTab1")->setCurrentIndex(1);
    });
    OnAnalysis(QStringLiteral("alarms"), [this] {
        robot_.Picture(Analysis(), QStringLiteral("alarms"));
        In<QTabWidget>(Analysis(), "SSTab1")->setCurrentIndex(0);
        Press("Toolbar1_Separati");
    });
    OnAnalysis(QStringLiteral("separate panes"),
               [this] { robot_.Picture(Analysis(), QStringLiteral("separate")); });
    TooManyPanes();
    OnAnalysis(QStringLiteral("one pane again"), [this] {
        Press("Toolbar1_Sovrapposti");
        Press("Toolbar1_DimOriginali");
        Press("cmdSetGraph4");
    });
    robot_.Stop(QStringLiteral("graph settings"), ModalIs("lapvane::dlgSetGraph"), [this] {
        QWidget* dialog = Robot::Modal("lapvane::dlgSetGraph");
        In<QComboBox>(dialog, "cboWidth")->setCurrentIndex(2);
        robot_.Picture(dialog, QStringLiteral("graph-settings"));
        robot_.Click(In<QPushButton>(dialog, "OKButton"));
    });
}

void Tour::TooManyPanes() {
    OnAnalysis(QStringLiteral("a fourth channel"), [this] {
        auto* box = In<QCheckBox>(Analysis(), "chkGrafico8");
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    });
    robot_.Stop(QStringLiteral("too many"), ModalIs("QMessageBox"), [this] {
        auto* box = qobject_cast<QMessageBox*>(Robot::Modal("QMessageBox"));
        robot_.Check(box->text() == InQt(Testo(Voce::TreCanaliAlMassimo)),
                     QStringLiteral("the message"));
        robot_.Picture(box, QStringLiteral("too-many"));
        QTest::keyClick(box, Qt::Key_Return);
    });
    OnAnalysis(QStringLiteral("three again"), [this] {
        auto* box = In<QCheckBox>(Analysis(), "chkGrafico8");
        if (box->isChecked())
            QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    });
}

void Tour::DescribeTheSession() {
    OnAnalysis(QStringLiteral("open the session"), [this] { Press("Toolbar1_DatiSessione"); });
    robot_.Stop(QStringLiteral("session"), ModalIs("lapvane::dlgDatiSessione"), [this] {
        QWidget* dialog = Robot::Modal("lapvane::dlgDatiSessione");
        QTest::keyClicks(In<QLineEdit>(dialog, "txtSessione"), QStringLiteral("Prove libere"));
        QTest::keyClicks(In<QPlainTextEdit>(dialog, "txtPiloti"), QStringLiteral("Rossi, Bianchi"));
        auto* circuits = In<QComboBox>(dialog, "cboCircuito");
        circuits->setFocus();
        const int driven = circuits->findText(QString::fromLatin1(kCircuit));
        robot_.Check(driven >= 0, QStringLiteral("the circuit in the list"));
        while (circuits->currentIndex() != driven) {
            QTest::keyClick(circuits,
                            circuits->currentIndex() < driven ? Qt::Key_Down : Qt::Key_Up);
        }
        auto* sectors = In<QComboBox>(dialog, "cboNumSettori");
        sectors->setFocus();
        while (sectors->currentText() != QLatin1String("3")) {
            QTest::keyClick(sectors,
                            sectors->currentText().toInt() < 3 ? Qt::Key_Down : Qt::Key_Up);
        }
        robot_.Check(
            In<QLineEdit>(dialog, "txtX0")->text() == In<QLineEdit>(dialog, "txtX1")->text(),
            QStringLiteral("an equal division"));
        robot_.Picture(dialog, QStringLiteral("session"));
        robot_.Click(In<QPushButton>(dialog, "OKButton"));
    });
    OnAnalysis(QStringLiteral("sector times"), [this] {
        robot_.Check(Laps()->model()->index(3, 3).data().toString().contains(QLatin1Char(':')),
                     QStringLiteral("the sector times of a lap"));
        Press("Toolbar1_Circuito");
        auto* graph = In<QWidget>(Analysis(), "NTGraph1");
        graph->setFocus();
        for (int i = 0; i < 40; ++i) QTest::keyClick(graph, Qt::Key_Right);
        robot_.Check(In<DisegnoTracciato>(Analysis(), "Picture1")->PuntoMarcato() > 0,
                     QStringLiteral("the marker on the track map"));
        robot_.Picture(Analysis(), QStringLiteral("sectors"));
    });
}

void Tour::CompareSpeeds() {
    OnAnalysis(QStringLiteral("speeds"), [this] {
        robot_.Check(lapSpeed_ > 50.0 && std::fabs(meanSpeed_ / lapSpeed_ - 1.0) < 0.03,
                     QStringLiteral("the speed of the best lap is %1, the mean of its speed "
                                    "channel %2")
                         .arg(lapSpeed_)
                         .arg(meanSpeed_));
    });
}

void Tour::Reports() {
    // `figure`, if there is one, takes the number of a cell of the dialog's grid.
    const auto show = [this](const char* key, const char* dialog, const QString& picture,
                             int row = -1, int column = -1, double* figure = nullptr) {
        OnAnalysis(QStringLiteral("open ") + picture, [this, key] { Press(key); });
        robot_.Stop(picture, ModalIs(dialog), [this, dialog, picture, row, column, figure] {
            if (figure != nullptr) {
                const auto* grid = In<QTableView>(Robot::Modal(dialog), "MSFlexGrid1");
                QString text = grid->model()->index(row, column).data().toString();
                *figure = text.replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
            }
            robot_.Picture(Robot::Modal(dialog), picture);
            QTest::keyClick(Robot::Modal(dialog), Qt::Key_Escape);
        });
    };
    show("Toolbar1_Statistiche", "lapvane::dlgStatistiche", QStringLiteral("statistics"), 6, 1,
         &lapSpeed_);
    show("Toolbar1_StatisticheMisure", "lapvane::dlgStatisticheMisure",
         QStringLiteral("channel-statistics"), 1, 3, &meanSpeed_);
    CompareSpeeds();
    show("Toolbar1_ReportGiri", "lapvane::dlgReportGiri", QStringLiteral("lap-report"));
    // Where the machine has a printer the pages would come out of it.
    if (!QPrinterInfo::defaultPrinter().isNull()) return;
    const auto printed = [this](const QString& file) {
        robot_.Stop(QStringLiteral("name of ") + file, FileDialogIs(),
                    [this, file] { AnswerFileDialog(Out(file), {}); });
        robot_.Stop(
            file, [this, file] { return QFileInfo(Out(file)).size() > 1000; }, [] {});
    };
    OnAnalysis(QStringLiteral("print the graph"), [this] { Press("Toolbar1_Stampa"); });
    printed(QStringLiteral("graph.pdf"));
    OnAnalysis(QStringLiteral("report again"), [this] { Press("Toolbar1_ReportGiri"); });
    robot_.Stop(QStringLiteral("print the report"), ModalIs("lapvane::dlgReportGiri"), [this] {
        robot_.Click(In<QPushButton>(Robot::Modal("lapvane::dlgReportGiri"), "cmdStampa"));
    });
    printed(QStringLiteral("report.pdf"));
    robot_.Stop(QStringLiteral("report printed"), ModalIs("lapvane::dlgReportGiri"),
                [] { QTest::keyClick(Robot::Modal("lapvane::dlgReportGiri"), Qt::Key_Escape); });
}

void Tour::OverTheDistance() {
    robot_.Stop(
        QStringLiteral("the other window"), [] { return true; }, [] { AnalisiSpeed = false; });
    OpenAnalysis();
    robot_.Stop(
        QStringLiteral("over the distance"), [this] { return LapsListed(); },
        [this] {
            robot_.Check(Analysis()->objectName() == QLatin1String("frmAnalisiDati"),
                         QStringLiteral("the window over the sheet"));
            for (const int channel : {3, 4}) Tick(channel);
            ClickLap(BestRow());
            auto* distance = In<QCheckBox>(Analysis(), "chkDistanza");
            QTest::mouseClick(distance, Qt::LeftButton, {}, QPoint(8, distance->height() / 2));
            robot_.Check(!In<QCheckBox>(Analysis(), "chkTempo")->isChecked(),
                         QStringLiteral("the time axis gives way"));
            robot_.Picture(Analysis(), QStringLiteral("distance"));
            QTest::keyClick(Analysis(), Qt::Key_Escape);
        });
    robot_.Stop(
        QStringLiteral("closed again"), [] { return QApplication::activeModalWidget() == nullptr; },
        [] { AnalisiSpeed = true; });
}

}  // namespace lapvane::tour
