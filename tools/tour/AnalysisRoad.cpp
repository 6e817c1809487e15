// A log studied in the analysis windows.
#include <QApplication>
#include <QBrush>
#include <QCheckBox>
#include <QTabWidget>
#include <QTest>

#include "Tour.h"

namespace lapvane::tour {

QWidget* Tour::Analysis() {
    QWidget* window = QApplication::activeModalWidget();
    return window != nullptr && window->objectName() == QLatin1String("frmAnalisiDatiSpeed")
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
        QStringLiteral("analyse"), [this] { return Button("Analize")->isEnabled(); },
        [this] { robot_.Click(Button("Analize")); });
    robot_.Stop(QStringLiteral("open dialog"), ModalIs("QFileDialog"),
                [this] { AnswerFileDialog(out_ + QStringLiteral("/run.csv"), {}); });
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

void Tour::Analyse() {
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

}  // namespace lapvane::tour
