#include "platform/qt/QtPlatform.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

namespace lapvane {
namespace {

/// What is seen of the box that `azione` shows, before it is answered.
template <class G, class A>
void NelBox(G&& guarda, A&& azione) {
    bool visto = false;
    QTimer guardia;
    QObject::connect(&guardia, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr || visto) return;
        visto = true;
        guarda(*box);
        QTest::keyClick(box, Qt::Key_Escape);
    });
    guardia.start(5);
    azione();
    EXPECT_TRUE(visto);
}

TEST(MacchinaQt, BoxStandsOverTheWindowsOfTheProgramOrInTheMiddleOfTheScreen) {
    QtPlatform macchina;
    const auto mostra = [&] {
        EXPECT_EQ(macchina.MsgBox("x", Buttons::YesNoCancel, Icon::Question, "t"), Answer::Cancel);
    };
    NelBox(
        [](const QMessageBox& box) {
            const QPoint via = box.geometry().center() - box.screen()->availableGeometry().center();
            EXPECT_LT(via.manhattanLength(), 60);
        },
        mostra);
    QWidget finestra;
    finestra.show();
    QWidget senzaCornice(nullptr, Qt::Dialog | Qt::FramelessWindowHint);
    senzaCornice.show();
    for (QWidget* attiva : {static_cast<QWidget*>(nullptr), &finestra, &senzaCornice}) {
        QApplication::setActiveWindow(attiva);
        NelBox([&](const QMessageBox& box) { EXPECT_EQ(box.parentWidget(), &finestra); }, mostra);
    }
}

TEST(MacchinaQt, BusyPointerGivesWayToABoxAndComesBack) {
    QtPlatform macchina;
    macchina.MousePointer(Pointer::Busy);
    NelBox([](const QMessageBox&) { EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr); },
           [&] { macchina.MsgBox("x", Buttons::Ok, Icon::None, "t"); });
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    macchina.MousePointer(Pointer::Normal);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    NelBox([](const QMessageBox&) {}, [&] { macchina.MsgBox("x", Buttons::Ok, Icon::None, "t"); });
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(MacchinaQt, DatesHaveFourDigitsForTheYearInEveryLocale) {
    const QDateTime quando(QDate(2026, 11, 5), QTime(15, 4, 9));
    struct Caso {
        QLocale::Language Lingua;
        QLocale::Territory Paese;
        const char* Atteso;
    };
    for (const Caso& caso : {Caso{QLocale::Italian, QLocale::Italy, "05/11/2026 15:04:09"},
                             Caso{QLocale::English, QLocale::UnitedStates, "11/5/2026 3:04:09 PM"},
                             Caso{QLocale::English, QLocale::UnitedKingdom, "05/11/2026 15:04:09"},
                             Caso{QLocale::German, QLocale::Germany, "05.11.2026 15:04:09"}}) {
        EXPECT_EQ(FormatoGenerale(quando, QLocale(caso.Lingua, caso.Paese)).toStdString(),
                  caso.Atteso);
    }
}

}  // namespace
}  // namespace lapvane
