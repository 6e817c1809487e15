#include "analysis/compare/DisegnoQuadri.h"

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

#include "analysis/compare/DisegnoPittura.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

constexpr double kLunghezza = 1000.0;
constexpr int kVelocita = 1;  // the pane below the gained time

/// A point a metre: 100 for the reference with one of 130 at 500 m and, for A, 50 with a rise of
/// 0.1 a metre.
class QuadriDisegnati : public ::testing::Test {
 protected:
    QuadriDisegnati() {
        DatiQuadri dati;
        dati.Fine = kLunghezza;
        dati.Confini = {250.0, 500.0, 750.0};
        dati.Fuoco = 'A';
        CurvaGiro riferimento, giro{'A', {}, {}}, distacco{'A', {}, {}};
        for (int metri = 0; metri <= 1000; ++metri) {
            const double x = metri;
            for (CurvaGiro* c : {&riferimento, &giro, &distacco}) c->X.push_back(x);
            riferimento.Y.push_back(metri == 500 ? 130.0 : 100.0);
            giro.Y.push_back(50.0 + 0.1 * x);
            distacco.Y.push_back(0.0004 * x);
        }
        dati.Quadri = {{"Gained", "s", 2, true, {distacco}},
                       {"Speed", "Km/h", 0, false, {riferimento, giro}}};
        quadri.resize(768, 390);
        quadri.Imposta(dati);
    }
    QPoint Dove(double x) const { return {qRound(quadri.PixelX(x)), 150}; }
    void Rotella(const QPointF& dove, int scatti) {
        QWheelEvent gira(dove, dove, {}, {0, 120 * scatti}, Qt::NoButton, {}, Qt::NoScrollPhase,
                         false);
        QCoreApplication::sendEvent(&quadri, &gira);
    }
    void Trascina(const QPoint& da, int passi) {
        QTest::mousePress(&quadri, Qt::LeftButton, {}, da);
        QTest::mouseRelease(&quadri, Qt::LeftButton, {}, da + QPoint(passi, 0));
    }
    void Vede(double da, double a) const {
        EXPECT_NEAR(quadri.Da(), da, 1e-6);
        EXPECT_NEAR(quadri.A(), a, 1e-6);
    }

    prova::PlatformProva macchina;
    DisegnoQuadri quadri;
};

TEST_F(QuadriDisegnati, TheMouseZoomsWhereItStandsAndMovesWithinTheData) {
    const QPoint qui = Dove(800.0);
    const double sotto = quadri.ValoreX(qui.x());
    for (const int scatti : {3, 40, -30}) {
        Rotella(qui, scatti);
        EXPECT_NEAR(quadri.ValoreX(qui.x()), sotto, 1e-6) << scatti;
    }
    Rotella(qui, -60);
    Vede(0.0, kLunghezza);

    quadri.MettiVista(400.0, 600.0);
    const double preso = quadri.ValoreX(qui.x());
    Trascina(qui, -50);
    EXPECT_NEAR(quadri.ValoreX(qui.x() - 50), preso, 1e-6);
    EXPECT_NEAR(quadri.Cursore(), preso, 1e-6);
    for (int n = 0; n < 4; ++n) Trascina(qui, -400);
    Vede(800.0, kLunghezza);
    const double da = quadri.ValoreX(qui.x() - 100);
    const double a = quadri.ValoreX(qui.x());
    const QImage prima = quadri.grab().toImage();
    QTest::mousePress(&quadri, Qt::RightButton, {}, qui);
    QMouseEvent muove(QEvent::MouseMove, QPointF(qui) - QPointF(100, 0), QPointF(), Qt::NoButton,
                      {}, {});
    QCoreApplication::sendEvent(&quadri, &muove);
    EXPECT_NE(quadri.grab().toImage().pixel(qui - QPoint(50, 0)), prima.pixel(qui - QPoint(50, 0)));
    QTest::mouseRelease(&quadri, Qt::RightButton, {}, qui - QPoint(100, 0));
    Vede(da, a);
    QTest::mouseDClick(&quadri, Qt::LeftButton, {}, qui);
    Vede(0.0, kLunghezza);
    QTest::mouseClick(&quadri, Qt::LeftButton, {}, {Dove(600.0).x(), 5});
    Vede(500.0, 750.0);
}

TEST_F(QuadriDisegnati, KeysMoveCursorsAndView) {
    const struct {
        int Tasto;
        Qt::KeyboardModifiers Con;
        double Cursore, Secondo, Da, A;  // a second cursor below 0: there is none
    } casi[] = {
        {Qt::Key_Right, {}, 504.0, -1.0, 500.0, 750.0},
        {Qt::Key_Right, Qt::ControlModifier, 514.0, -1.0, 500.0, 750.0},
        {Qt::Key_Left, Qt::ShiftModifier, 514.0, 513.0, 500.0, 750.0},
        {Qt::Key_Home, {}, 500.0, 513.0, 500.0, 750.0},
        {Qt::Key_Escape, {}, 500.0, -1.0, 500.0, 750.0},
        {Qt::Key_End, {}, 750.0, -1.0, 500.0, 750.0},
        {Qt::Key_Right, {}, 751.0, -1.0, 526.0, 776.0},  // comes into view
        {Qt::Key_PageDown, {}, 751.0, -1.0, 726.0, 976.0},
        {Qt::Key_Minus, {}, 751.0, -1.0, 625.0, 1000.0},
        {Qt::Key_0, {}, 751.0, -1.0, 0.0, 1000.0},
    };
    quadri.VediParte(2);
    quadri.MettiCursore(503.4);
    for (const auto& caso : casi) {
        SCOPED_TRACE(QKeySequence(caso.Tasto).toString().toStdString());
        QTest::keyClick(&quadri, static_cast<Qt::Key>(caso.Tasto), caso.Con);
        EXPECT_NEAR(quadri.Cursore(), caso.Cursore, 1e-6);
        EXPECT_NEAR(quadri.Secondo().value_or(-1.0), caso.Secondo, 1e-6);
        Vede(caso.Da, caso.A);
    }
}

TEST_F(QuadriDisegnati, TheScaleFitsWhatIsInSightAndCurvesLieOnTheirValues) {
    for (const Tema tema : {Tema::Chiaro, Tema::Scuro}) {
        quadri.setPalette(PalettaDi(tema));
        for (const auto& [da, a] : {std::pair(0.0, 1000.0), std::pair(0.0, 200.0)}) {
            quadri.MettiVista(da, a);
            const auto [minimo, massimo] = quadri.EstremiY(kVelocita);
            const double alto = std::max(100.0, 50.0 + 0.1 * a);
            EXPECT_TRUE(minimo < 50.0 && minimo > 38.0) << minimo;
            EXPECT_TRUE(massimo > alto && massimo < alto + 12.0) << massimo;
            const QImage foto = quadri.grab().toImage();
            const struct {
                char Lettera;
                double X, Y;
            } punti[] = {{'R', 100.0, 100.0}, {'A', 100.0, 60.0}, {'R', 500.0, 118.0}};
            for (const auto& punto : punti) {
                if (punto.X > a) continue;
                const QRectF area = quadri.Area(kVelocita);
                const double y =
                    area.bottom() - area.height() * (punto.Y - minimo) / (massimo - minimo);
                EXPECT_EQ(foto.pixel(Dove(punto.X).x(), static_cast<int>(y)),
                          GiroDi(ColoriDi(tema), punto.Lettera).Tinta.rgb())
                    << punto.X << punto.Lettera;
            }
        }
    }
}

TEST(DisegnoPittura, HeightsAndLettersFindTheirRoom) {
    EXPECT_EQ(AltezzeQuadri({100.0, 50.0, 10.0}, 240.0, 40.0),
              (std::vector<double>{400.0 / 3.0, 200.0 / 3.0, 40.0}));
    EXPECT_EQ(Scosta({50.0, 52.0, 98.0}, 10.0, 0.0, 100.0),
              (std::vector<double>{46.0, 56.0, 95.0}));
    EXPECT_EQ(Scosta({1.0, 1.0, 1.0}, 10.0, 0.0, 24.0), (std::vector<double>{4.0, 12.0, 20.0}));
}

}  // namespace
}  // namespace lapvane
