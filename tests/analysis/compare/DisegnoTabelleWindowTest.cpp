#include <gtest/gtest.h>

#include <QTest>

#include "analysis/compare/DisegnoNumeri.h"
#include "analysis/compare/DisegnoParti.h"
#include "analysis/compare/DisegnoValori.h"
#include "support/Cartelle.h"
#include "support/PlatformProva.h"

namespace lapvane {

TEST(DisegnoNumeri, SignsAndTimes) {
    prova::PlatformProva macchina;
    macchina.Separatore = ',';
    const std::pair<double, const char*> casi[] = {
        {0.31, "+0,31"}, {-0.126, "\u22120,13"}, {0.004, "0,00"}, {-0.004, "0,00"}};
    for (const auto& [valore, atteso] : casi) {
        EXPECT_EQ(Differenza(valore, 2).toStdString(), atteso);
    }
    EXPECT_EQ(TempoGiro(6422).toStdString(), "1:04,22");
    EXPECT_EQ(TempoGiro(618).toStdString(), "6,18");
    EXPECT_EQ(TempoGiro(0).toStdString(), "");
}

TEST(DisegnoParti, BarsBestPartsClicksAndKeys) {
    prova::PlatformProva macchina;
    prova::CaricaTestiVeri(1);
    DisegnoParti parti;
    parti.resize(700, 150);
    parti.Imposta({{{'R', "Lap 3", {600, 700}, 1300, 0},
                    {'A', "Lap 4", {590, 720}, 1310, 10},
                    {'B', "Lap 5", {}, 1420, 120},
                    {0, "", {590, 700}, 1290, -10}},
                   {1}});
    EXPECT_EQ(parti.Testo().toStdString(),
              "Lap\t1\t2\tLap time\tGap\nR Lap 3\t6.00\t7.00\t13.00\t0.00\n"
              "A Lap 4\t5.90\t7.20\t13.10\t+0.10\nB Lap 5\t\t\t14.20\t+1.20\n"
              "Ideal lap\t5.90\t7.00\t12.90\t-0.10\n");
    const QImage foto = parti.grab().toImage();
    const Colori& colori = ColoriDi(parti);
    // That many pixels from the right end of the figures.
    const auto barra = [&](int parte, int pixel) {
        const QPointF fine = parti.Cella(1, parte).bottomRight() - QPointF(8, 4);
        return foto.pixelColor(fine.toPoint() - QPoint(pixel, 0));
    };
    EXPECT_EQ(barra(1, 70), colori.Loss);
    EXPECT_EQ(barra(0, 34), colori.Gain);
    EXPECT_EQ(barra(0, 38), colori.Base);

    std::string detto;
    QObject::connect(&parti, &DisegnoParti::Scelto, [&](char lettera) { detto += lettera; });
    QObject::connect(&parti, &DisegnoParti::ParteScelta,
                     [&](int parte) { detto += std::to_string(parte); });
    for (const int riga : {-1, 1}) {
        QTest::mouseClick(parti.viewport(), Qt::LeftButton, {},
                          parti.Cella(riga, riga < 0 ? 0 : 1).center().toPoint());
    }
    EXPECT_EQ(detto, "0A1");
    detto.clear();
    for (const Qt::Key tasto : {Qt::Key_Left, Qt::Key_Return, Qt::Key_Up, Qt::Key_Down}) {
        QTest::keyClick(&parti, tasto);
    }
    EXPECT_EQ(detto, "0BA");
}

TEST(DisegnoValori, CopiesWhatStandsAtTheCursorAndBetweenBoth) {
    prova::PlatformProva macchina;
    prova::CaricaTestiVeri(1);
    DisegnoValori valori;
    TabellaCursore tabella{1318.2, 27.571, true, {"Km/h"}, {1}, {}};
    tabella.Righe = {{'R', "12", 0.0, {{152.0, 0.0, 100.0, 180.0, 140.0, true}}, 4.0, 120.0, 0.0},
                     {'A', "9", -0.37, {ValoreCursore{}}, 4.2, 120.0, 0.2}};
    valori.Imposta(tabella, 'A');
    EXPECT_EQ(valori.Testo().toStdString(),
              "At 1318 m\t27.57 s of the reference\n"
              "Lap\t\u0394 s\tTime\tDistance\tLost\t"
              "Km/h\t\u0394 Km/h\tKm/h min\tKm/h max\tKm/h mean\n"
              "R 12\t0.00\t4.00\t120\t0.00\t152.0\t0.0\t100.0\t180.0\t140.0\n"
              "A 9\t-0.37\t4.20\t120\t+0.20\t\t\t\t\t\n");
}

}  // namespace lapvane
