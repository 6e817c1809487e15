#include <gtest/gtest.h>

#include <QImage>
#include <QTest>
#include <cmath>
#include <limits>

#include "support/PlatformProva.h"
#include "widgets/GraficoWidget.h"

using namespace lapvane;

namespace {

constexpr Colore kRosso = Rgb(255, 0, 0);
constexpr Colore kVerde = Rgb(0, 128, 0);
constexpr Colore kBlu = Rgb(0, 0, 255);

class GraficoDisegnato : public ::testing::Test {
 protected:
    GraficoDisegnato() {
        QPalette chiara;
        chiara.setColor(QPalette::Base, Qt::white);
        chiara.setColor(QPalette::Text, Qt::black);
        grafico.setPalette(chiara);
        grafico.resize(640, 400);
        grafico.ImpostaIntervallo(0, 10, 0, 100, 0);
    }

    void Curva(const std::vector<double>& x, const std::vector<double>& y, Colore colore,
               double scala = 1.0, int passo = 1) {
        grafico.ColoreElemento(colore);
        grafico.DisegnaArray(x, y, grafico.ElementoCorrente(), scala, passo, {});
    }
    /// Pixel of a point in axis values.
    QPoint Dove(double x, double y, int riquadro = 0, double yMin = 0, double yMax = 100) const {
        const QRectF area = grafico.AreaDisegno(riquadro);
        return QPointF(area.left() + area.width() * x / 10.0,
                       area.bottom() - area.height() * (y - yMin) / (yMax - yMin))
            .toPoint();
    }
    /// Whether a line of that colour passes within two pixels of the point.
    bool Passa(const QPoint& punto, const QColor& colore) {
        const QImage foto = grafico.grab().toImage();
        for (int dx = -2; dx <= 2; ++dx) {
            for (int dy = -2; dy <= 2; ++dy) {
                const QColor c = foto.pixelColor(punto.x() + dx, punto.y() + dy);
                if (std::abs(c.red() - colore.red()) < 60 &&
                    std::abs(c.green() - colore.green()) < 60 &&
                    std::abs(c.blue() - colore.blue()) < 60) {
                    return true;
                }
            }
        }
        return false;
    }

    prova::PlatformProva macchina;
    GraficoWidget grafico;
};

}  // namespace

TEST_F(GraficoDisegnato, DrawsScaledAndThinnedCurvesAtTheirPlaces) {
    // A spike at x = 5 that a row step of 2 leaves out: the line goes straight from 4 to 6.
    const std::vector<double> x = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    const std::vector<double> y = {2, 2, 2, 2, 2, 9, 2, 2, 2, 2, 2};
    EXPECT_EQ(grafico.ElementoCorrente(), 1);
    Curva(x, y, kRosso, 10.0);
    EXPECT_EQ(grafico.ElementoCorrente(), 2);
    EXPECT_TRUE(Passa(Dove(2.5, 20), Qt::red));
    EXPECT_TRUE(Passa(Dove(5, 90), Qt::red));
    grafico.PulisciGrafico();
    EXPECT_EQ(grafico.ElementoCorrente(), 1);
    EXPECT_FALSE(Passa(Dove(2.5, 20), Qt::red));
    Curva(x, y, kRosso, 10.0, 2);
    EXPECT_TRUE(Passa(Dove(5, 20), Qt::red));
    EXPECT_FALSE(Passa(Dove(5, 90), Qt::red));
    EXPECT_EQ(grafico.IndiceDaX(5.9, 1.0), 3) << "points of the element: 0, 2, 4, 6 ...";
    // A step of 0 counts as 1.
    Curva(x, y, kVerde, 10.0, 0);
    EXPECT_TRUE(Passa(Dove(5, 90), QColor(0, 128, 0)));
    // What leaves the window is cut at its edge.
    grafico.ImpostaIntervallo(0, 10, 0, 50, 0);
    EXPECT_TRUE(Passa(Dove(4.0 + 3.0 / 7.0, 50, 0, 0, 50), QColor(0, 128, 0)));
    const QRectF area = grafico.AreaDisegno();
    // Eight pixels above the edge the line would stand at 51.2, going on as it came in.
    const int sopra = static_cast<int>(area.top()) - 8;
    EXPECT_FALSE(Passa(QPoint(Dove(4.0 + 31.2 / 70.0, 0).x(), sopra), QColor(0, 128, 0)));
}

TEST_F(GraficoDisegnato, SeparatePanesHaveTheirOwnRange) {
    for (int riquadro = 1; riquadro <= 3; ++riquadro) {
        grafico.ColoreAsse(kRosso);
        grafico.EtichettaY("canale " + std::to_string(riquadro));
        grafico.ImpostaIntervallo(0, 10, 0, 10.0 * riquadro, riquadro);
        Curva({0, 10}, {5, 5}, kVerde);
    }
    const QRectF primo = grafico.AreaDisegno(0);
    const QRectF terzo = grafico.AreaDisegno(2);
    EXPECT_GT(terzo.top(), grafico.AreaDisegno(1).bottom());
    EXPECT_GT(grafico.AreaDisegno(1).top(), primo.bottom());
    EXPECT_NEAR(primo.height(), terzo.height(), 0.1);
    EXPECT_TRUE(Passa(Dove(4, 5, 0, 0, 10), QColor(0, 128, 0)));
    EXPECT_TRUE(Passa(Dove(4, 5, 2, 0, 30), QColor(0, 128, 0)));
    EXPECT_FALSE(Passa(Dove(4, 15, 2, 0, 30), QColor(0, 128, 0)));
    EXPECT_EQ(grafico.LeggiIntervallo().YMax, 100) << "the range of the overlaid view is kept";
    grafico.PulisciGrafico();
    EXPECT_GT(grafico.AreaDisegno(0).height(), 2.5 * primo.height());
}

TEST_F(GraficoDisegnato, RedrawsOnlyWhenSomethingChanged) {
    Curva({0, 10}, {10, 90}, kRosso);
    grafico.AggiungiCursore();
    grafico.CursoreVisibile(true);
    grafico.ColoreCursore(kBlu);
    EXPECT_TRUE(Passa(Dove(5, 50), Qt::red));
    const int prima = grafico.Ridisegni();
    grafico.grab();
    grafico.CursoreX(5.0);
    EXPECT_TRUE(Passa(Dove(5, 20), Qt::blue));
    grafico.CursoreX(7.0);
    EXPECT_TRUE(Passa(Dove(7, 20), Qt::blue));
    EXPECT_FALSE(Passa(Dove(5, 20), Qt::blue)) << "the cursor has moved away";
    grafico.CursoreX(70.0);
    grafico.grab();
    EXPECT_EQ(grafico.Ridisegni(), prima) << "the cursor moves over the picture";
    grafico.ScalaY(2.0);
    grafico.grab();
    EXPECT_EQ(grafico.Ridisegni(), prima + 1);
}

TEST_F(GraficoDisegnato, CursorKeepsToThePointsAndTellsThem) {
    Curva({0, 2, 4, 6, 8, 10}, {0, 20, 40, 60, 80, 100}, kRosso);
    std::vector<std::int32_t> indici;
    double x = -1, y = -1;
    grafico.EventoCursore = [&](double ex, double ey, std::int32_t indice) {
        x = ex;
        y = ey;
        indici.push_back(indice);
    };
    QTest::mouseMove(&grafico, Dove(4.3, 50));
    QTest::mouseClick(&grafico, Qt::LeftButton, {}, Dove(4.3, 50));
    EXPECT_TRUE(indici.empty()) << "no cursor, no event";
    grafico.AggiungiCursore();
    grafico.ImpostaModoCursore(ModoCursore::Aggancio);
    grafico.CursoreVisibile(true);
    EXPECT_EQ(grafico.NumeroCursori(), 1);
    QTest::mouseClick(&grafico, Qt::LeftButton, {}, Dove(4.3, 50));
    ASSERT_FALSE(indici.empty());
    EXPECT_EQ(indici.back(), 2);
    EXPECT_EQ(x, 4.0);
    EXPECT_EQ(y, 40.0);
    EXPECT_EQ(grafico.CursoreX(), 4.0);
    grafico.CursoreAttivo(false);
    QTest::mouseClick(&grafico, Qt::LeftButton, {}, Dove(8, 50));
    EXPECT_EQ(grafico.CursoreX(), 4.0);
}

TEST_F(GraficoDisegnato, ZoomRectangleSetsTheRange) {
    Curva({0, 10}, {0, 100}, kRosso);
    const auto trascina = [&](const QPoint& da, const QPoint& a) {
        QTest::mousePress(&grafico, Qt::LeftButton, {}, da);
        QTest::mouseMove(&grafico, a);
        QTest::mouseRelease(&grafico, Qt::LeftButton, {}, a);
    };
    trascina(Dove(2, 80), Dove(6, 30));
    EXPECT_EQ(grafico.LeggiIntervallo().XMax, 10) << "not armed";
    grafico.ImpostaModoMouse(ModoMouse::Zoom);
    trascina(Dove(2, 80), Dove(2, 80) + QPoint(2, 2));
    EXPECT_EQ(grafico.LeggiIntervallo().XMax, 10) << "a click is no rectangle";
    trascina(Dove(6, 30), Dove(2, 80));
    const IntervalloGrafico i = grafico.LeggiIntervallo();
    EXPECT_NEAR(i.XMin, 2, 0.05);
    EXPECT_NEAR(i.XMax, 6, 0.05);
    EXPECT_NEAR(i.YMin, 30, 0.5);
    EXPECT_NEAR(i.YMax, 80, 0.5);
    grafico.ImpostaIntervallo(0, 10, 0, 100, 0);
    trascina(Dove(8, 50), QPoint(2000, -300));
    EXPECT_NEAR(grafico.LeggiIntervallo().XMax, 10, 0.001) << "no further than the axis";
}

TEST_F(GraficoDisegnato, PointsOneByOneMakeOneElement) {
    grafico.ColoreElemento(kRosso);
    grafico.ColoreSfondo(Rgb(255, 255, 255));
    for (int i = 0; i <= 10; ++i) grafico.AggiungiPunto(i, 10.0 * i);
    EXPECT_EQ(grafico.ElementoCorrente(), 1);
    EXPECT_TRUE(Passa(Dove(5, 50), Qt::red));
    grafico.PulisciGrafico();
    EXPECT_FALSE(Passa(Dove(5, 50), Qt::red));
}

TEST_F(GraficoDisegnato, SurvivesRangesAndValuesThatAreNone) {
    constexpr double kInfinito = std::numeric_limits<double>::infinity();
    const std::pair<double, double> intervalli[] = {
        {0, 0}, {5, -5}, {0, kInfinito}, {-kInfinito, kInfinito}, {-1e308, 1e308}, {0, 1e-320}};
    Curva({0, 1, 2}, {1e308, -1e308, kInfinito}, kRosso, 1e10);
    Curva({kInfinito, 1e300}, {1, 2}, kRosso);
    Curva({}, {}, kRosso);
    grafico.AggiungiCursore();
    grafico.CursoreVisibile(true);
    grafico.ScalaY(0.0);
    for (const auto& [da, a] : intervalli) {
        grafico.ImpostaIntervallo(da, a, 0, 100, 0);
        grafico.grab();
        grafico.ImpostaIntervallo(0, 10, da, a, 0);
        grafico.grab();
        QTest::mouseClick(&grafico, Qt::LeftButton, {}, QPoint(300, 200));
    }
    for (const QSize& misura : {QSize(1, 1), QSize(40, 30), QSize(3000, 20)}) {
        grafico.resize(misura);
        grafico.grab();
    }
    EXPECT_GE(grafico.Ridisegni(), 3);
}
