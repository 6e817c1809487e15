#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSvgGenerator>
#include <QTest>
#include <cmath>
#include <limits>
#include <map>

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
                // A line between two rows covers each by a good half only.
                if (std::abs(c.red() - colore.red()) < 90 &&
                    std::abs(c.green() - colore.green()) < 90 &&
                    std::abs(c.blue() - colore.blue()) < 90) {
                    return true;
                }
            }
        }
        return false;
    }

    /// The axis value in the middle of a pixel row, the rows of the plot area counted from 0.
    double ValoreRiga(int riga) const {
        return 100.0 - 100.0 * (riga + 0.5) / grafico.AreaDisegno().height();
    }
    double ValoreColonna(int colonna) const {
        return 10.0 * (colonna + 0.5) / grafico.AreaDisegno().width();
    }
    /// Adds the cursor and writes down where it goes.
    void SeguiCursore() {
        grafico.AggiungiCursore();
        grafico.ImpostaModoCursore(ModoCursore::Aggancio);
        grafico.CursoreVisibile(true);
        grafico.EventoCursore = [this](double x, double y, std::int32_t indice) {
            passi.push_back({x, y, static_cast<double>(indice)});
        };
    }
    void Trascina(const QPoint& da, const QPoint& a) {
        QTest::mousePress(&grafico, Qt::LeftButton, {}, da);
        QTest::mouseMove(&grafico, a);
        QTest::mouseRelease(&grafico, Qt::LeftButton, {}, a);
    }
    /// The labels of the y axis from the top, as they stand on paper.
    std::vector<std::string> EtichetteY() const {
        QBuffer buffer;
        QSvgGenerator svg;
        svg.setOutputDevice(&buffer);
        svg.setSize(QSize(1000, 640));
        {
            QPainter penna(&svg);
            grafico.DisegnaSu(penna, QRectF(0, 0, 1000, 640));
        }
        static const QRegularExpression kTesto(
            QStringLiteral(" x=\"([^\"]+)\" y=\"([^\"]+)\"[^>]*>([^<]*)</text>"));
        std::map<double, std::string> dallAlto;
        auto trovati = kTesto.globalMatch(QString::fromUtf8(buffer.data()));
        while (trovati.hasNext()) {
            const auto t = trovati.next();
            if (t.captured(1).toDouble() > 60.0) continue;
            dallAlto[t.captured(2).toDouble()] = t.captured(3).trimmed().toStdString();
        }
        std::vector<std::string> testi;
        for (const auto& [y, testo] : dallAlto) testi.push_back(testo);
        if (!testi.empty()) testi.pop_back();  // the first number of the x axis
        return testi;
    }

    prova::PlatformProva macchina;
    GraficoWidget grafico;
    std::vector<std::vector<double>> passi;
};

QRgb Punto(const QImage& foto, double x, double y) {
    return foto.pixel(static_cast<int>(x), static_cast<int>(y));
}

constexpr QRgb kBianco = 0xFFFFFFFFU;
constexpr QRgb kRossoPieno = 0xFFFF0000U;

}  // namespace

TEST_F(GraficoDisegnato, AValueColoursItsOwnPixelRow) {
    grafico.MostraGriglia(false);
    const int riga = 100;
    Curva({0, 10}, {ValoreRiga(riga), ValoreRiga(riga)}, kRosso);
    const QRectF area = grafico.AreaDisegno();
    const double x = area.left() + 200;
    const double y = area.top() + riga;
    const QImage foto = grafico.Fotografa(1.0);
    EXPECT_EQ(Punto(foto, x, y), kRossoPieno);
    for (const int vicina : {-1, 1}) {
        EXPECT_GT(qGreen(Punto(foto, x, y + vicina)), 180) << "no more than a trace beside it";
        EXPECT_EQ(Punto(foto, x, y + 2 * vicina), kBianco);
    }
    // At twice the scale it lies at the doubled place, between two rows of pixels, and is sharp.
    const QImage doppia = grafico.Fotografa(2.0);
    EXPECT_EQ(doppia.size(), 2 * foto.size());
    EXPECT_EQ(Punto(doppia, 2 * x, 2 * y), kRossoPieno);
    EXPECT_EQ(Punto(doppia, 2 * x, 2 * y + 1), kRossoPieno);
    for (const int vicina : {-1, 2}) {
        EXPECT_GT(qGreen(Punto(doppia, 2 * x, 2 * y + vicina)), 120);
    }
    for (const int lontana : {-2, 3}) EXPECT_EQ(Punto(doppia, 2 * x, 2 * y + lontana), kBianco);
}

TEST_F(GraficoDisegnato, AStepColoursItsOwnPixelColumn) {
    grafico.MostraGriglia(false);
    const int colonna = 150;
    const double x = ValoreColonna(colonna);
    Curva({0, x, x, 10}, {20, 20, 80, 80}, kRosso);
    const QRectF area = grafico.AreaDisegno();
    const QImage foto = grafico.Fotografa(1.0);
    const double y = area.top() + area.height() / 2;
    EXPECT_EQ(Punto(foto, area.left() + colonna, y), kRossoPieno);
    for (const int vicina : {-1, 1}) {
        EXPECT_GT(qGreen(Punto(foto, area.left() + colonna + vicina, y)), 180);
        EXPECT_EQ(Punto(foto, area.left() + colonna + 2 * vicina, y), kBianco);
    }
    const QImage doppia = grafico.Fotografa(2.0);
    EXPECT_EQ(Punto(doppia, 2 * (area.left() + colonna), 2 * y), kRossoPieno);
    EXPECT_EQ(Punto(doppia, 2 * (area.left() + colonna) + 1, 2 * y), kRossoPieno);
    EXPECT_EQ(Punto(doppia, 2 * (area.left() + colonna) - 2, 2 * y), kBianco);
}

TEST_F(GraficoDisegnato, PlotAreaLiesOnWholePixelsWhateverTheLetters) {
    grafico.MostraGriglia(false);
    grafico.EtichettaX("Time [sec]");
    for (const double punti : {6.3, 7.7, 8.2, 9.0, 9.4, 10.6, 11.1, 13.9}) {
        SCOPED_TRACE(punti);
        QFont carattere = grafico.font();
        carattere.setPointSizeF(punti);
        grafico.setFont(carattere);
        const QRectF area = grafico.AreaDisegno();
        EXPECT_EQ(area, QRectF(area.toRect()));
        for (const double scala : {1.0, 2.0, 3.0}) {
            const QImage foto = grafico.Fotografa(scala);
            const auto chiaro = [&](double x, double y) { return Punto(foto, x, y) == kBianco; };
            // The frame is one row and one column of the picture, around the enlarged area.
            const double x = scala * (area.left() + 7.0);
            const double y = scala * (area.top() + 7.0);
            EXPECT_TRUE(chiaro(x, scala * area.bottom() - 1.0));
            EXPECT_FALSE(chiaro(x, scala * area.bottom()));
            EXPECT_TRUE(chiaro(x, scala * area.bottom() + 1.0));
            EXPECT_FALSE(chiaro(x, scala * area.top() - 1.0));
            EXPECT_TRUE(chiaro(x, scala * area.top()));
            EXPECT_TRUE(chiaro(scala * area.right() - 1.0, y));
            EXPECT_FALSE(chiaro(scala * area.right(), y));
            EXPECT_TRUE(chiaro(scala * area.right() + 1.0, y));
            EXPECT_FALSE(chiaro(scala * area.left() - 1.0, y));
            EXPECT_TRUE(chiaro(scala * area.left(), y));
        }
    }
}

TEST_F(GraficoDisegnato, NothingLeavesThePlotArea) {
    for (const int riquadri : {0, 3}) {
        // The same axes without and with a curve that is far out on all sides.
        grafico.PulisciGrafico();
        QImage vuota;
        for (const bool piena : {false, true}) {
            grafico.PulisciGrafico();
            for (int r = riquadri == 0 ? 0 : 1; r <= riquadri; ++r) {
                grafico.EtichettaY("c" + std::to_string(r));
                grafico.ImpostaIntervallo(0, 10, 0, 100, r);
                grafico.SpessoreElemento(6);
                if (piena) {
                    Curva({-5, 0, 2, 2.1, 5, 10, 15}, {50, -30, 300, 50, -400, 1e9, 0}, kRosso);
                } else {
                    Curva({}, {}, kRosso);
                }
            }
            if (!piena) vuota = grafico.Fotografa(1.0);
        }
        const QImage foto = grafico.Fotografa(1.0);
        int dentro = 0;
        for (int y = 0; y < foto.height(); ++y) {
            for (int x = 0; x < foto.width(); ++x) {
                if (foto.pixel(x, y) == vuota.pixel(x, y)) continue;
                ++dentro;
                bool inArea = false;
                for (int r = 0; r < std::max(1, riquadri); ++r) {
                    // The frame around the area may be covered; the axis to its left may not.
                    inArea =
                        inArea || grafico.AreaDisegno(r).adjusted(0, -1, 0.5, 0.5).contains(x, y);
                }
                ASSERT_TRUE(inArea) << x << " " << y;
            }
        }
        EXPECT_GT(dentro, 1000);
    }
}

TEST_F(GraficoDisegnato, PanesHaveBordersAndAxesInTheirColours) {
    grafico.MostraGriglia(false);
    const Colore colori[] = {kRosso, kVerde, kBlu};
    const QColor toni[] = {Qt::red, QColor(0, 128, 0), Qt::blue};
    for (int r = 1; r <= 3; ++r) {
        grafico.ColoreAsse(colori[r - 1]);
        grafico.ImpostaIntervallo(0, 10, 0, 100, r);
    }
    const QImage foto = grafico.Fotografa(1.0);
    for (int r = 0; r < 3; ++r) {
        const QRectF area = grafico.AreaDisegno(r);
        const QRgb asse = toni[r].rgb();
        EXPECT_EQ(Punto(foto, area.left() - 1, area.top() + 20), asse);
        EXPECT_EQ(Punto(foto, area.left() - 2, area.top() + 20), asse);
        EXPECT_EQ(Punto(foto, area.left(), area.top() + 20), kBianco);
        const QRgb cornice = Punto(foto, area.right(), area.top() + 20);
        EXPECT_LT(qGray(cornice), 160);
        EXPECT_EQ(Punto(foto, area.left() + 90, area.top() - 1), cornice);
        EXPECT_EQ(Punto(foto, area.left() + 90, area.bottom()), cornice);
        EXPECT_EQ(Punto(foto, area.right() + 1, area.top() + 20), kBianco);
        EXPECT_EQ(Punto(foto, area.left() + 90, area.top() - 2), kBianco);
        // Numbers of the x axis stand below the lowest pane only, and so do their ticks.
        const bool tacca = Punto(foto, area.left(), area.bottom() + 3) != kBianco;
        EXPECT_EQ(tacca, r == 2);
    }
}

TEST_F(GraficoDisegnato, LabelsAreTheAxisValuesDividedByTheFactor) {
    using Testi = std::vector<std::string>;
    EXPECT_EQ(EtichetteY(),
              (Testi{"100", "90", "80", "70", "60", "50", "40", "30", "20", "10", "0"}));
    grafico.ScalaY(25.0);
    EXPECT_EQ(EtichetteY(), (Testi{"4.0", "3.5", "3.0", "2.5", "2.0", "1.5", "1.0", "0.5", "0"}));
    // With a negative factor they fall upwards.
    grafico.ScalaY(-50.0);
    EXPECT_EQ(EtichetteY(), (Testi{"-2.0", "-1.8", "-1.6", "-1.4", "-1.2", "-1.0", "-0.8", "-0.6",
                                   "-0.4", "-0.2", "0"}));
    for (const double nessuno : {0.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        grafico.ScalaY(nessuno);
        EXPECT_EQ(EtichetteY().front(), "100") << nessuno;
    }
}

TEST_F(GraficoDisegnato, KeysMoveTheCursorFromPointToPoint) {
    std::vector<double> x, y;
    for (int i = 0; i <= 40; ++i) {
        x.push_back(0.5 * i);
        y.push_back(i);
    }
    Curva(x, y, kRosso);
    grafico.show();
    QTest::keyClick(&grafico, Qt::Key_Right);
    EXPECT_TRUE(passi.empty()) << "no cursor yet";
    SeguiCursore();
    grafico.ImpostaIntervallo(1.2, 15, 0, 100, 0);
    const auto premi = [&](Qt::Key tasto, Qt::KeyboardModifiers con = {}) {
        QTest::keyClick(&grafico, tasto, con);
        return grafico.CursoreX();
    };
    EXPECT_EQ(premi(Qt::Key_Home), 1.5) << "the first point in sight";
    EXPECT_EQ(passi.back(), (std::vector<double>{1.5, 3, 3}));
    EXPECT_EQ(premi(Qt::Key_Right), 2.0);
    EXPECT_EQ(premi(Qt::Key_Right, Qt::ControlModifier), 7.0);
    EXPECT_EQ(passi.back(), (std::vector<double>{7.0, 14, 14}));
    EXPECT_EQ(premi(Qt::Key_Left), 6.5);
    EXPECT_EQ(premi(Qt::Key_End), 15.0);
    EXPECT_EQ(premi(Qt::Key_Right), 15.0) << "no further than what is in sight";
    EXPECT_EQ(premi(Qt::Key_Left, Qt::ControlModifier), 10.0);
    const std::size_t prima = passi.size();
    grafico.CursoreAttivo(false);
    EXPECT_EQ(premi(Qt::Key_Left), 10.0);
    grafico.CursoreAttivo(true);
    grafico.ImpostaModoMouse(ModoMouse::Zoom);
    EXPECT_EQ(premi(Qt::Key_Left), 10.0);
    EXPECT_EQ(passi.size(), prima);
    EXPECT_EQ(grafico.focusPolicy() & Qt::TabFocus, Qt::TabFocus);
}

TEST_F(GraficoDisegnato, ShowsItsFocusAndSaysWhatItShows) {
    grafico.NomeElemento("Speed");
    Curva({0, 10}, {10, 90}, kRosso);
    grafico.EtichettaX("Time [sec]");
    grafico.show();
    grafico.activateWindow();
    grafico.setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(QTest::qWaitFor([&] { return grafico.hasFocus(); }));
    const QImage con = grafico.grab().toImage();
    grafico.clearFocus();
    const QImage senza = grafico.grab().toImage();
    EXPECT_EQ(senza.pixel(0, 100), kBianco);
    EXPECT_NE(con.pixel(0, 100), kBianco);
    EXPECT_NE(con.pixel(con.width() - 1, 100), kBianco);
    EXPECT_EQ(con.pixel(3, 100), kBianco) << "a border, nothing more";
    EXPECT_EQ(grafico.accessibleName(), QStringLiteral("Speed / Time [sec]"));
    grafico.setAccessibleName(QStringLiteral("Lap"));
    grafico.EtichettaX("Distance [m]");
    grafico.grab();
    EXPECT_EQ(grafico.accessibleName(), QStringLiteral("Lap")) << "the window knows better";
}

TEST_F(GraficoDisegnato, DrawsOnPaperAsLinesAndLetters) {
    QPalette scura;
    scura.setColor(QPalette::Base, Qt::black);
    scura.setColor(QPalette::Text, Qt::white);
    grafico.setPalette(scura);
    grafico.EtichettaX("Time [sec]");
    grafico.NomeElemento("Speed");
    Curva({0, 10}, {50, 50}, kRosso);
    grafico.AggiungiCursore();
    grafico.CursoreVisibile(true);
    grafico.ColoreCursore(kBlu);
    grafico.CursoreX(5);
    // Beside the rectangle nothing is touched.
    for (const double scala : {1.0, 3.0}) {
        const QRectF posto(20 * scala, 10 * scala, 1000 * scala, 640 * scala);
        QImage foto(static_cast<int>(1040 * scala), static_cast<int>(660 * scala),
                    QImage::Format_RGB32);
        foto.fill(Qt::magenta);
        {
            QPainter penna(&foto);
            grafico.DisegnaSu(penna, posto);
        }
        int neri = 0, blu = 0, fuori = 0;
        int primaRossa = foto.height(), ultimaRossa = 0;
        const QRect foglio = posto.toRect();
        for (int y = 0; y < foto.height(); ++y) {
            for (int x = 0; x < foto.width(); ++x) {
                const QColor c = foto.pixelColor(x, y);
                if (!foglio.contains(x, y)) {
                    fuori += c != QColor(Qt::magenta) ? 1 : 0;
                    continue;
                }
                neri += std::max({c.red(), c.green(), c.blue()}) < 80 ? 1 : 0;
                blu += c == QColor(Qt::blue) ? 1 : 0;
                if (x == foglio.center().x() && y > posto.top() + 60 * scala && c.red() > 200 &&
                    c.green() < 128) {
                    primaRossa = std::min(primaRossa, y);
                    ultimaRossa = std::max(ultimaRossa, y);
                }
            }
        }
        EXPECT_EQ(fuori, 0);
        EXPECT_GT(neri, 40) << "black letters, whatever the palette";
        EXPECT_EQ(blu, 0) << "no cursor on paper";
        EXPECT_EQ(
            foto.pixelColor(static_cast<int>(posto.left()) + 2, static_cast<int>(posto.top()) + 2),
            QColor(Qt::white));
        // The line is in the middle of the plot area and as broad as the page is large.
        EXPECT_NEAR((primaRossa + ultimaRossa) / 2.0, posto.top() + posto.height() * 0.48,
                    posto.height() * 0.04);
        EXPECT_NEAR(ultimaRossa - primaRossa + 1, scala, 1.0);
    }
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter carta(&buffer);
        QPainter penna(&carta);
        grafico.DisegnaSu(penna, QRectF(0, 0, carta.width(), carta.height()));
    }
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_FALSE(pdf.contains("/Subtype /Image")) << "a picture instead of lines";
    EXPECT_TRUE(pdf.contains("/Font"));
    EXPECT_LT(pdf.size(), 60000);
}

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

TEST_F(GraficoDisegnato, ACurveThatLeavesAndComesBackIsDrawnWhereItIsInside) {
    // Far out to the top, back, far out to the bottom and back again.
    Curva({0, 2, 2.5, 4, 4.5, 6, 6.5, 8, 8.5, 10}, {20, 20, 1e7, 1e7, 60, 60, -1e7, -1e7, 40, 40},
          kRosso);
    for (const auto& [x, y] : {std::pair{1.0, 20.0},
                               {5.2, 60.0},
                               {9.0, 40.0},
                               {2.0, 90.0},
                               {4.5, 90.0},
                               {6.0, 10.0},
                               {8.5, 10.0}}) {
        EXPECT_TRUE(Passa(Dove(x, y), Qt::red)) << x << " " << y;
    }
    for (const auto& [x, y] : {std::pair{3.2, 98.0}, {3.2, 50.0}, {7.2, 2.0}, {7.2, 50.0}}) {
        EXPECT_FALSE(Passa(Dove(x, y), Qt::red)) << x << " " << y;
    }
}

TEST_F(GraficoDisegnato, GridIsFaintOnAnyGroundAndALongLegendLeavesRoom) {
    for (const bool scuro : {false, true}) {
        QPalette tavolozza;
        tavolozza.setColor(QPalette::Base, scuro ? QColor(20, 20, 20) : QColor(Qt::white));
        tavolozza.setColor(QPalette::Text, scuro ? QColor(Qt::white) : QColor(Qt::black));
        grafico.setPalette(tavolozza);
        const QImage foto = grafico.Fotografa(1.0);
        const QRectF area = grafico.AreaDisegno();
        const int fondo = qGray(Punto(foto, area.left() + 7, area.top() + 7));
        // The grid lines of a pixel row of the area.
        int righe = 0;
        for (int x = static_cast<int>(area.left()) + 7; x < area.right() - 7; ++x) {
            const int tono = qGray(Punto(foto, x, area.top() + 7)) - fondo;
            if (tono == 0) continue;
            ++righe;
            EXPECT_EQ(tono > 0, scuro) << "towards the letters";
            EXPECT_GT(std::abs(tono), 20);
            EXPECT_LT(std::abs(tono), 60);
        }
        EXPECT_GT(righe, 2);
    }
    // Three rows of names at most; the curves keep their room.
    double alto = 0.0;
    for (int n = 1; n <= 60; ++n) {
        grafico.NomeElemento("A channel with a name of some length " + std::to_string(n));
        Curva({0, 10}, {50, 50}, kRosso);
        if (n == 12) alto = grafico.AreaDisegno().top();
    }
    EXPECT_EQ(grafico.AreaDisegno().top(), alto);
    EXPECT_GT(grafico.AreaDisegno().height(), 200.0);
    EXPECT_TRUE(Passa(Dove(5, 50), Qt::red));
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
    QTest::mouseClick(&grafico, Qt::LeftButton, {}, Dove(4.3, 50));
    SeguiCursore();
    EXPECT_EQ(grafico.NumeroCursori(), 1);
    EXPECT_TRUE(passi.empty());
    QTest::mouseClick(&grafico, Qt::LeftButton, {}, Dove(4.3, 50));
    ASSERT_FALSE(passi.empty());
    EXPECT_EQ(passi.back(), (std::vector<double>{4.0, 40.0, 2}));
    EXPECT_EQ(grafico.CursoreX(), 4.0);
    grafico.CursoreAttivo(false);
    QTest::mouseClick(&grafico, Qt::LeftButton, {}, Dove(8, 50));
    EXPECT_EQ(grafico.CursoreX(), 4.0);
}

TEST_F(GraficoDisegnato, ZoomRectangleSetsTheRange) {
    Curva({0, 10}, {0, 100}, kRosso);
    int eventi = 0;
    double visto = 0;
    grafico.EventoZoom = [&] {
        ++eventi;
        visto = grafico.LeggiIntervallo().XMax;
    };
    Trascina(Dove(2, 80), Dove(6, 30));
    EXPECT_EQ(grafico.LeggiIntervallo().XMax, 10) << "not armed";
    grafico.ImpostaModoMouse(ModoMouse::Zoom);
    Trascina(Dove(2, 80), Dove(2, 80) + QPoint(2, 2));
    EXPECT_EQ(grafico.LeggiIntervallo().XMax, 10) << "a click is no rectangle";
    // Esc and the right button drop a rectangle that is being drawn.
    for (const bool conTasto : {true, false}) {
        QTest::mousePress(&grafico, Qt::LeftButton, {}, Dove(2, 80));
        QTest::mouseMove(&grafico, Dove(6, 30));
        if (conTasto) {
            QTest::keyClick(&grafico, Qt::Key_Escape);
        } else {
            QTest::mouseClick(&grafico, Qt::RightButton, {}, Dove(6, 30));
        }
        QTest::mouseRelease(&grafico, Qt::LeftButton, {}, Dove(6, 30));
        EXPECT_EQ(grafico.LeggiIntervallo().XMax, 10);
    }
    EXPECT_EQ(eventi, 0);
    Trascina(Dove(6, 30), Dove(2, 80));
    const IntervalloGrafico i = grafico.LeggiIntervallo();
    EXPECT_NEAR(i.XMin, 2, 0.05);
    EXPECT_NEAR(i.XMax, 6, 0.05);
    EXPECT_NEAR(i.YMin, 30, 0.5);
    EXPECT_NEAR(i.YMax, 80, 0.5);
    EXPECT_EQ(eventi, 1);
    EXPECT_EQ(visto, i.XMax) << "the range is there when the event comes";
    grafico.ImpostaIntervallo(0, 10, 0, 100, 0);
    Trascina(Dove(8, 50), QPoint(2000, -300));
    EXPECT_NEAR(grafico.LeggiIntervallo().XMax, 10, 0.001) << "no further than the axis";
}

TEST_F(GraficoDisegnato, ZoomOfSeparatePanesSharesTheXAxis) {
    for (int r = 1; r <= 3; ++r) {
        grafico.ImpostaIntervallo(0, 10, 0, 100, r);
        Curva({0, 4, 10}, {50, 20, 50}, kRosso);
    }
    grafico.ImpostaModoMouse(ModoMouse::Zoom);
    const int alto = static_cast<int>(grafico.AreaDisegno(1).top()) + 5;
    Trascina(QPoint(Dove(2, 0).x(), alto), QPoint(Dove(6, 0).x(), alto + 1));
    const IntervalloGrafico i = grafico.LeggiIntervallo();
    EXPECT_NEAR(i.XMin, 2, 0.05);
    EXPECT_NEAR(i.XMax, 6, 0.05);
    EXPECT_EQ(i.YMin, 0);
    EXPECT_EQ(i.YMax, 100);
    // x = 4 is in the middle now, in every pane.
    for (int r = 0; r < 3; ++r) EXPECT_TRUE(Passa(Dove(5, 20, r), Qt::red)) << r;
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
