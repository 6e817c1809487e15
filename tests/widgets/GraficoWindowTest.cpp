#include <QBackingStore>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <limits>

#include "support/WindowPdf.h"
#include "support/WindowPlatform.h"
#include "widgets/GraficoWidget.h"

using namespace lapvane;

namespace {

constexpr Colore kRosso = Rgb(255, 0, 0);
constexpr Colore kVerde = Rgb(0, 128, 0);
constexpr Colore kBlu = Rgb(0, 0, 255);
constexpr QRgb kBianco = 0xFFFFFFFFU;
constexpr double kInfinito = std::numeric_limits<double>::infinity();

QRgb Punto(const QImage& foto, double x, double y) {
    return foto.pixel(static_cast<int>(x), static_cast<int>(y));
}

class GraficoDisegnato : public ::testing::Test {
 protected:
    GraficoDisegnato() {
        Tavolozza(Qt::white, Qt::black);
        grafico.resize(640, 400);
        grafico.ImpostaIntervallo(0, 10, 0, 100, 0);
    }
    void Tavolozza(const QColor& fondo, const QColor& lettere) {
        QPalette tavolozza;
        tavolozza.setColor(QPalette::Base, fondo);
        tavolozza.setColor(QPalette::Text, lettere);
        grafico.setPalette(tavolozza);
    }
    void Curva(const std::vector<double>& x, const std::vector<double>& y, Colore colore = kRosso,
               double scala = 1.0, int passo = 1) {
        grafico.ColoreElemento(colore);
        grafico.DisegnaArray(x, y, grafico.ElementoCorrente(), scala, passo, {});
    }
    /// Pixel of a point in axis values.
    QPoint Dove(double x, double y, int riquadro = 0, double yMax = 100) const {
        const QRectF area = grafico.AreaDisegno(riquadro);
        return QPointF(area.left() + area.width() * x / 10.0,
                       area.bottom() - area.height() * y / yMax)
            .toPoint();
    }
    /// Whether a line of that colour passes within two pixels of the point.
    bool Passa(const QPoint& punto, const QColor& colore = Qt::red) {
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
    /// Adds the cursor and writes down where it goes.
    void SeguiCursore() {
        grafico.AggiungiCursore();
        grafico.ImpostaModoCursore(ModoCursore::Aggancio);
        grafico.CursoreVisibile(true);
        grafico.ColoreCursore(kBlu);
        grafico.EventoCursore = [this](double x, double y, std::int32_t indice) {
            passi.push_back({x, y, static_cast<double>(indice)});
        };
    }
    void Muovi(const QPointF& dove) {
        QMouseEvent muove(QEvent::MouseMove, dove, dove, Qt::NoButton, {}, {});
        QCoreApplication::sendEvent(&grafico, &muove);
    }
    void Trascina(const QPoint& da, const QPoint& a) {
        QTest::mousePress(&grafico, Qt::LeftButton, {}, da);
        QTest::mouseMove(&grafico, a);
        QTest::mouseRelease(&grafico, Qt::LeftButton, {}, a);
    }
    /// The texts on paper left of `fino`, from the top.
    std::vector<std::string> TestiSuCarta(double fino) const {
        std::vector<std::string> testi;
        for (const auto& testo : prova::TestiDisegnati(QSize(1000, 640), [&](QPainter& penna) {
                 grafico.DisegnaSu(penna, QRectF(0, 0, 1000, 640));
             })) {
            if (testo.X <= fino) testi.push_back(testo.Testo.toStdString());
        }
        return testi;
    }

    prova::PlatformProva macchina;
    GraficoWidget grafico;
    std::vector<std::vector<double>> passi;
};

}  // namespace

TEST_F(GraficoDisegnato, PanesHaveTheirOwnRangesBordersAndColours) {
    grafico.MostraGriglia(false);
    const double intero = grafico.AreaDisegno().height();
    const QColor toni[] = {Qt::red, QColor(0, 128, 0), Qt::blue};
    const auto valore = [](int r) { return 2.0 * r + 3.0; };
    for (int r = 0; r < 3; ++r) {
        grafico.ColoreAsse(Rgb(toni[r].red(), toni[r].green(), toni[r].blue()));
        grafico.EtichettaY("canale " + std::to_string(r));
        grafico.ImpostaIntervallo(0, 10, 0, 10.0 * (r + 1), r + 1);
        Curva({0, 10}, {valore(r), valore(r)});
    }
    const QImage foto = grafico.Fotografa(1.0);
    for (int r = 0; r < 3; ++r) {
        SCOPED_TRACE(r);
        const QRectF area = grafico.AreaDisegno(r);
        const double y = area.top() + 7;
        const double x = area.left() + 90;
        // The axis in its colour, the frame one pixel around the area.
        for (const int n : {1, 2}) EXPECT_EQ(Punto(foto, area.left() - n, y), toni[r].rgb());
        const QRgb cornice = Punto(foto, area.right(), y);
        EXPECT_LT(qGray(cornice), 160);
        EXPECT_EQ(Punto(foto, x, area.top() - 1), cornice);
        // Numbers of the x axis stand below the lowest pane only, and so do their ticks.
        EXPECT_EQ(Punto(foto, area.left(), area.bottom() + 3) != kBianco, r == 2);
        for (const int altro : {0, 1, 2}) {
            EXPECT_EQ(Passa(Dove(4, valore(altro), r, 10.0 * (r + 1))), altro == r) << altro;
        }
        EXPECT_TRUE(r == 0 || area.top() > grafico.AreaDisegno(r - 1).bottom());
        int lettere = 0;  // of the text at the left edge, upwards
        for (int n = 10; n < 24; ++n) {
            for (int v = -20; v < 20; ++v) {
                lettere += Punto(foto, n, area.center().y() + v) != kBianco ? 1 : 0;
            }
        }
        EXPECT_GT(lettere, 10);
    }
    EXPECT_EQ(grafico.LeggiIntervallo().YMax, 100) << "the range of the overlaid view is kept";
    grafico.PulisciGrafico();
    EXPECT_GT(grafico.AreaDisegno().height(), intero - 1);
}

TEST_F(GraficoDisegnato, LabelsAreTheAxisValuesDividedByTheFactor) {
    using Testi = std::vector<std::string>;
    const Testi intere = {"100", "90", "80", "70", "60", "50", "40", "30", "20", "10", "0", "0"};
    EXPECT_EQ(TestiSuCarta(60), intere) << "the last is the first of the x axis";
    grafico.ScalaY(25.0);
    EXPECT_EQ(TestiSuCarta(60),
              (Testi{"4.0", "3.5", "3.0", "2.5", "2.0", "1.5", "1.0", "0.5", "0", "0"}));
    // With a negative factor they fall upwards.
    grafico.ScalaY(-50.0);
    EXPECT_EQ(TestiSuCarta(60), (Testi{"-2.0", "-1.8", "-1.6", "-1.4", "-1.2", "-1.0", "-0.8",
                                       "-0.6", "-0.4", "-0.2", "0", "0"}));
    for (const double nessuno : {0.0, std::nan(""), kInfinito}) {
        grafico.ScalaY(nessuno);
        EXPECT_EQ(TestiSuCarta(60), intere) << nessuno;
    }
    grafico.MostraNumeriY(false);
    grafico.Livelli({{75, kRosso, "High"}, {25, kBlu, "Low"}});
    EXPECT_EQ(TestiSuCarta(60), (Testi{"High", "Low", "0"})) << "levels in place of numbers";
    const QImage foto = grafico.Fotografa(1.0);
    int blu = 0;  // letters inside of the plot
    for (int n = 0; n < 60 * 20; ++n) {
        const QColor c = foto.pixelColor(Dove(0, 25) + QPoint(2 + n % 60, n / 60 - 10));
        blu += c.blue() > c.red() + 60 ? 1 : 0;
    }
    EXPECT_GT(blu, 10);
}

TEST_F(GraficoDisegnato, KeysMoveTheCursorFromPointToPoint) {
    std::vector<double> x, y;
    for (int i = 0; i <= 40; ++i) {
        x.push_back(0.5 * i);
        y.push_back(i);
    }
    Curva(x, y);
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
    QKeyEvent altro(QEvent::KeyPress, Qt::Key_A, {});
    QCoreApplication::sendEvent(&grafico, &altro);
    EXPECT_FALSE(altro.isAccepted()) << "another key is the window's";
}

TEST_F(GraficoDisegnato, MouseMovesTheCursorOverThePicture) {
    Curva({0, 2, 4, 6, 8, 10}, {0, 20, 40, 60, 80, 100});
    QTest::mouseClick(&grafico, Qt::LeftButton, {}, Dove(4.3, 50));
    SeguiCursore();
    grafico.grab();
    const int prima = grafico.Ridisegni();
    Muovi(Dove(4.3, 50));
    EXPECT_EQ(passi, (std::vector<std::vector<double>>{{4.0, 40.0, 2}})) << "a point, and told";
    EXPECT_TRUE(Passa(Dove(4, 10), Qt::blue));
    Muovi(QPoint(2, 2));
    EXPECT_EQ(grafico.CursoreX(), 4.0) << "not outside of the graph";
    QTest::mouseClick(&grafico, Qt::LeftButton, {}, Dove(6.9, 50));
    EXPECT_EQ(passi.back(), (std::vector<double>{6.0, 60.0, 3}));
    EXPECT_TRUE(Passa(Dove(6, 20), Qt::blue));
    EXPECT_FALSE(Passa(Dove(4, 10), Qt::blue)) << "it has moved away";
    grafico.CursoreX(0.0);
    const QRectF area = grafico.AreaDisegno();
    EXPECT_NE(Punto(grafico.grab().toImage(), area.left() - 1, area.top() + 7), 0xFF0000FFU)
        << "the axis stays in sight";
    grafico.CursoreX(-0.1);
    EXPECT_FALSE(Passa(Dove(0, 20), Qt::blue)) << "out of sight";
    EXPECT_EQ(grafico.Ridisegni(), prima) << "the picture below is kept";
    grafico.CursoreAttivo(false);
    Muovi(Dove(8, 50));
    EXPECT_EQ(grafico.CursoreX(), -0.1);
    for (int r = 1; r <= 2; ++r) grafico.ImpostaIntervallo(0, 10, 0, 100, r);
    grafico.CursoreX(5.0);
    EXPECT_TRUE(Passa(Dove(5, 20, 0), Qt::blue) && Passa(Dove(5, 20, 1), Qt::blue));
    EXPECT_EQ(grafico.Ridisegni(), prima + 1);
    EXPECT_TRUE(prova::Ridipinto(grafico, [&] { grafico.CursoreX(8.0); }).contains(Dove(5, 20)))
        << "the old cursor stays";
    EXPECT_FALSE(prova::Ridipinto(grafico, [&] { grafico.EtichettaY("rpm"); }).isEmpty());
}

TEST_F(GraficoDisegnato, StandsAtItsPlaceInTheWindowBelowWhatCoversIt) {
    QWidget finestra;
    finestra.resize(700, 460);
    grafico.setParent(&finestra);
    grafico.move(31, 17);
    grafico.setFocusPolicy(Qt::NoFocus);
    QWidget sopra(&finestra);
    sopra.setGeometry(200, 100, 50, 40);
    sopra.setAutoFillBackground(true);
    sopra.setPalette(QPalette(Qt::magenta, Qt::magenta));
    finestra.show();
    for (const bool coperto : {true, false, true}) {
        sopra.setVisible(coperto);
        QCoreApplication::processEvents();
        Curva({0, 10}, {10, 90}, coperto ? kRosso : kBlu);  // the graph alone is painted
        QCoreApplication::processEvents();
        QImage atteso = grafico.Fotografa(1.0);
        if (coperto) QPainter(&atteso).fillRect(200 - 31, 100 - 17, 50, 40, Qt::magenta);
        const auto* pixel = static_cast<QImage*>(finestra.backingStore()->paintDevice());
        EXPECT_EQ(pixel->convertToFormat(QImage::Format_RGB32).copy(31, 17, 640, 400), atteso)
            << coperto;
    }
    grafico.setParent(nullptr);
}

TEST_F(GraficoDisegnato, ShowsItsFocusAndSaysWhatItShows) {
    grafico.NomeElemento("Speed");
    Curva({0, 10}, {10, 90});
    grafico.EtichettaX("Time [sec]");
    grafico.show();
    grafico.activateWindow();
    grafico.setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(QTest::qWaitFor([&] { return grafico.hasFocus(); }));
    const QImage con = grafico.grab().toImage();
    grafico.clearFocus();
    EXPECT_EQ(grafico.grab().toImage().pixel(0, 100), kBianco);
    EXPECT_NE(con.pixel(0, 100), kBianco);
    EXPECT_EQ(grafico.accessibleName(), QStringLiteral("Speed / Time [sec]"));
    grafico.setAccessibleName(QStringLiteral("Lap"));
    const int prima = grafico.Ridisegni();
    grafico.EtichettaX("Distance [m]");
    grafico.grab();
    EXPECT_EQ(grafico.Ridisegni(), prima + 1);
    EXPECT_EQ(grafico.accessibleName(), QStringLiteral("Lap")) << "the window knows better";
}

TEST_F(GraficoDisegnato, DrawsOnPaperAsLinesAndLetters) {
    Tavolozza(Qt::black, Qt::white);
    grafico.EtichettaX("Time [sec]");
    for (int r = 1; r <= 2; ++r) {
        grafico.ImpostaIntervallo(0, 10, 0, 100, r);
        // Level, then up and down past the frame: many points, and no gap between them.
        std::vector<double> x, y;
        for (int i = 0; i <= 600; ++i) {
            x.push_back(i / 60.0);
            y.push_back(i < 400 ? 25.0 * r : i % 2 == 0 ? 150.0 : 50.0);
        }
        Curva(x, y);
    }
    SeguiCursore();
    grafico.CursoreX(5);
    for (const int scala : {1, 3}) {
        const QRect foglio(20 * scala, 10 * scala, 1000 * scala, 640 * scala);
        QImage foto(1040 * scala, 660 * scala, QImage::Format_RGB32);
        foto.fill(Qt::magenta);
        {
            QPainter penna(&foto);
            grafico.DisegnaSu(penna, foglio, scala == 3);
        }
        int neri = 0, blu = 0, fuori = 0;
        std::map<int, int> rosse;  // pixels of a row
        for (int y = 0; y < foto.height(); ++y) {
            for (int x = 0; x < foto.width(); ++x) {
                const QColor c = foto.pixelColor(x, y);
                if (!foglio.contains(x, y)) fuori += c != QColor(Qt::magenta) ? 1 : 0;
                neri += std::max({c.red(), c.green(), c.blue()}) < 80 ? 1 : 0;
                blu += c == QColor(Qt::blue) ? 1 : 0;
                if (c.red() > 200 && c.green() < 160 && c.blue() < 160) ++rosse[y];
            }
        }
        EXPECT_EQ(fuori, 0) << "beside the rectangle nothing is touched";
        EXPECT_GT(neri, 40) << "black letters, whatever the palette";
        EXPECT_EQ(blu > 2 * 300, scala == 3) << "the cursor, in both panes, where asked for";
        // A level line in each pane, over two thirds of the width, as broad as the page is large.
        int lunghe = 0;
        for (const auto& [y, pixel] : rosse) lunghe += pixel > 580 * scala ? 1 : 0;
        EXPECT_GE(lunghe, 2 * scala - 2) << scala;
        EXPECT_LE(lunghe, 2 * scala + 4) << scala;
        EXPECT_GT(rosse.begin()->first, foglio.top() + 8 * scala) << "nothing above the frame";
    }
}

TEST_F(GraficoDisegnato, DrawsScaledAndThinnedCurvesAtTheirPlaces) {
    // A spike at x = 5 that a row step of 2 leaves out: the line goes straight from 4 to 6.
    const std::vector<double> x = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    const std::vector<double> y = {2, 2, 2, 2, 2, 9, 2, 2, 2, 2, 2};
    Curva(x, y, kRosso, 10.0);
    EXPECT_EQ(grafico.ElementoCorrente(), 2);
    EXPECT_TRUE(Passa(Dove(2.5, 20)));
    EXPECT_TRUE(Passa(Dove(5, 90)));
    grafico.PulisciGrafico();
    EXPECT_EQ(grafico.ElementoCorrente(), 1);
    EXPECT_FALSE(Passa(Dove(2.5, 20)));
    Curva(x, y, kRosso, 10.0, 2);
    EXPECT_TRUE(Passa(Dove(5, 20)));
    EXPECT_FALSE(Passa(Dove(5, 90)));
    EXPECT_EQ(grafico.IndiceDaX(5.1, 1.0), 3) << "points of the element: 0, 2, 4, 6 ...";
    EXPECT_EQ(grafico.IndiceDaX(0.51, 10.0), 3);
    grafico.SpessoreElemento(5);
    Curva(x, y, kVerde, 10.0, 0);  // a step of 0 counts as 1
    const QPoint sotto = Dove(2.5, 20) + QPoint(0, 2);
    EXPECT_EQ(QColor(grafico.grab().toImage().pixel(sotto)), QColor(0, 128, 0)) << "broad";
    grafico.SpessoreElemento(1);
    EXPECT_TRUE(Passa(Dove(5, 90), QColor(0, 128, 0)));
    // Far out to the top, back, far out to the bottom and back again; not through what is no
    // number.
    grafico.PulisciGrafico();
    Curva({0, 2, 2.5, 4, 4.5, 6, 6.5, 8, 8.5, 9, 9.5, 10},
          {20, 20, 1e7, 1e7, 60, 60, -1e7, -1e7, 40, 40, kInfinito, 40});
    const std::pair<double, double> dove[] = {{1.0, 20.0}, {5.2, 60.0}, {8.7, 40.0}, {2.0, 90.0},
                                              {4.5, 90.0}, {6.0, 10.0}, {8.5, 10.0}};
    for (const auto& [px, py] : dove) EXPECT_TRUE(Passa(Dove(px, py))) << px << " " << py;
    EXPECT_FALSE(Passa(Dove(9.6, 40)));
    // Points one by one make one element, each with its mark where these are asked for.
    grafico.PulisciGrafico();
    grafico.ColoreElemento(kBlu);
    for (const double v : {0.0, 5.0, 10.0}) grafico.AggiungiPunto(v, 10.0 * v);
    EXPECT_EQ(grafico.ElementoCorrente(), 1);
    EXPECT_TRUE(Passa(Dove(3, 30), Qt::blue));
    const QRectF area = grafico.AreaDisegno();
    for (const bool segni : {false, true}) {
        grafico.MostraPunti(segni);
        const QRgb accanto = grafico.grab().toImage().pixel(area.center().toPoint() + QPoint(2, 1));
        EXPECT_EQ(accanto != kBianco, segni);
    }
    const QPointF fine = area.topRight() + QPointF(-area.width(), area.height()) * 0.04 / 1.08;
    EXPECT_TRUE(Passa(fine.toPoint() + QPoint(2, 3), Qt::blue)) << "away from the frame";
}

TEST_F(GraficoDisegnato, GridIsFaintOnAnyGroundAndALongLegendLeavesRoom) {
    for (const bool scuro : {false, true}) {
        Tavolozza(scuro ? QColor(20, 20, 20) : QColor(Qt::white), scuro ? Qt::white : Qt::black);
        const QImage foto = grafico.grab().toImage();
        const QRectF area = grafico.AreaDisegno();
        const int fondo = qGray(Punto(foto, area.left() + 7, area.top() + 7));
        int righe = 0;  // of the grid, in one row of pixels
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
    // Letters that the palette would hide are made readable.
    const double cima = grafico.AreaDisegno().top();
    grafico.Titolo("Title");
    EXPECT_GT(grafico.AreaDisegno().top(), cima);
    grafico.Titolo({});
    grafico.EtichettaX("Time");
    Tavolozza(Qt::white, Qt::white);
    const QImage foto = grafico.Fotografa(1.0);
    int scuri = 0;
    for (int x = 0; x < foto.width(); ++x) {
        for (int y = foto.height() - 28; y < foto.height(); ++y) {
            scuri += qGray(foto.pixel(x, y)) < 160 ? 1 : 0;
        }
    }
    EXPECT_GT(scuri, 10);
    // Names in the colours of their curves, three rows at most; the curves keep their room.
    double alto = 0.0;
    for (int n = 1; n <= 60; ++n) {
        grafico.NomeElemento("A channel with a name of some length " + std::to_string(n));
        Curva({0, 10}, {50, 50});
        if (n == 12) alto = grafico.AreaDisegno().top();
    }
    EXPECT_EQ(grafico.AreaDisegno().top(), alto);
    EXPECT_GT(alto, 3 * grafico.fontMetrics().height());
    EXPECT_LT(alto, 6 * grafico.fontMetrics().height());
    EXPECT_TRUE(Passa(QPoint(14, 10 + grafico.fontMetrics().height() * 3 / 5)));
    const auto testi = TestiSuCarta(60);
    EXPECT_GT(std::count_if(testi.begin(), testi.end(), [](const auto& t) { return t[0] == 'A'; }),
              3)
        << "all of them on paper";
}

TEST_F(GraficoDisegnato, ZoomRectangleSetsTheRange) {
    Curva({0, 10}, {0, 100});
    int eventi = 0;
    double visto = 0;
    grafico.EventoZoom = [&] {
        ++eventi;
        visto = grafico.LeggiIntervallo().XMax;
    };
    Trascina(Dove(2, 80), Dove(6, 30));
    EXPECT_EQ(grafico.LeggiIntervallo().XMax, 10) << "not armed";
    grafico.ImpostaModoMouse(ModoMouse::Zoom);
    EXPECT_EQ(grafico.cursor().shape(), Qt::CrossCursor);
    Trascina(Dove(2, 80), Dove(2, 80) + QPoint(2, 2));
    EXPECT_EQ(grafico.LeggiIntervallo().XMax, 10) << "a click is no rectangle";
    // Esc, the right button and the other mode drop a rectangle that is being drawn.
    for (const int come : {0, 1, 2}) {
        const QImage prima = grafico.grab().toImage();
        QTest::mousePress(&grafico, Qt::LeftButton, {}, Dove(2, 80));
        QTest::mouseMove(&grafico, Dove(6, 30));
        EXPECT_NE(grafico.grab().toImage().pixel(Dove(4, 60)), prima.pixel(Dove(4, 60)));
        if (come == 0) QTest::keyClick(&grafico, Qt::Key_Escape);
        if (come == 1) QTest::mouseClick(&grafico, Qt::RightButton, {}, Dove(6, 30));
        if (come == 2) grafico.ImpostaModoMouse(ModoMouse::Zoom);
        QTest::mouseRelease(&grafico, Qt::LeftButton, {}, Dove(6, 30));
        EXPECT_EQ(grafico.LeggiIntervallo().XMax, 10) << come;
    }
    QTest::mousePress(&grafico, Qt::RightButton, {}, Dove(2, 80));
    QTest::mouseMove(&grafico, Dove(6, 30));
    QTest::mouseRelease(&grafico, Qt::LeftButton, {}, Dove(6, 30));
    QTest::mouseRelease(&grafico, Qt::RightButton, {}, Dove(6, 30));
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
    // Panes share the x axis only, whatever the height of the rectangle.
    for (int r = 1; r <= 3; ++r) grafico.ImpostaIntervallo(0, 10, 0, 100, r);
    const int alto = static_cast<int>(grafico.AreaDisegno(1).top()) + 5;
    Trascina(QPoint(Dove(2, 0).x(), alto), QPoint(Dove(6, 0).x(), alto + 1));
    EXPECT_NEAR(grafico.LeggiIntervallo().XMin, 2, 0.05);
    EXPECT_NEAR(grafico.LeggiIntervallo().XMax, 6, 0.05);
    EXPECT_EQ(grafico.LeggiIntervallo().YMax, 100);
}
