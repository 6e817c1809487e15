// Laps laid beside one another.
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include "Tour.h"
#include "analysis/compare/DisegnoElenco.h"
#include "analysis/compare/DisegnoQuadri.h"
#include "analysis/compare/frmConfronto.h"
#include "widgets/Dialogo.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane::tour {

namespace {

frmConfronto* Comparison() {
    return qobject_cast<frmConfronto*>(Robot::Modal("lapvane::frmConfronto"));
}

}  // namespace

void Tour::CompareLaps() {
    robot_.Stop(
        QStringLiteral("compare laps"), [this] { return Idle(); },
        [this] { main_->findChild<QAction*>(QStringLiteral("mnuConfronto"))->trigger(); });
    robot_.Stop(
        QStringLiteral("empty comparison"), [] { return Comparison() != nullptr; },
        [this] {
            Comparison()->showNormal();
            Comparison()->resize(NelloSchermo(*Comparison(), QSize(1366, 738)));
            robot_.Click(In<QPushButton>(Comparison(), "cmdApri"));
        });
    robot_.Stop(QStringLiteral("log to compare"), FileDialogIs(),
                [this] { AnswerFileDialog(Out(QStringLiteral("run.csv")), {}); });
    robot_.Stop(
        QStringLiteral("laps to compare"),
        [] { return Comparison() != nullptr && Comparison()->Dati().Accanto().size() == 1; },
        [this] {
            auto* laps = In<DisegnoElenco>(Comparison(), "lstGiri");
            for (const int row : {2, 5}) {
                if (laps->Voci()[static_cast<std::size_t>(row)].Spuntata) continue;
                laps->scrollToItem(laps->item(row));
                QTest::mouseClick(laps->viewport(), Qt::LeftButton, {},
                                  laps->PostoSpunta(row).center());
            }
            robot_.Check(Comparison()->Dati().Accanto().size() >= 2, QStringLiteral("ticked laps"));
            auto* graph = In<DisegnoQuadri>(Comparison(), "grafico");
            robot_.Check(graph->Dati().Quadri.size() == 4, QStringLiteral("four panes"));
            graph->MettiCursore(graph->A() * 0.42);
        });
    robot_.Stop(
        QStringLiteral("compared"), [] { return Comparison() != nullptr; },
        [this] {
            robot_.Picture(Comparison(), QStringLiteral("compare"));
            In<QTabWidget>(Comparison(), "schede")->setCurrentIndex(1);
        });
    robot_.Stop(
        QStringLiteral("one channel against another"), [] { return Comparison() != nullptr; },
        [this] {
            robot_.Picture(Comparison(), QStringLiteral("compare-xy"));
            In<QTabWidget>(Comparison(), "schede")->setCurrentIndex(2);
        });
    robot_.Stop(
        QStringLiteral("share of time"), [] { return Comparison() != nullptr; },
        [this] {
            robot_.Picture(Comparison(), QStringLiteral("compare-histogram"));
            Comparison()->resize(1024, 700);
            ImpostaTema(Tema::Scuro);
            In<QTabWidget>(Comparison(), "schede")->setCurrentIndex(0);
        });
    robot_.Stop(
        QStringLiteral("narrow and dark"), [] { return Comparison() != nullptr; },
        [this] {
            robot_.Picture(Comparison(), QStringLiteral("compare-dark"));
            ImpostaTema({});
            Comparison()->close();
        });
}

}  // namespace lapvane::tour
