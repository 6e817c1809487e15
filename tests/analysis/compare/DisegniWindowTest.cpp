#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include "analysis/compare/DisegnoIstogramma.h"
#include "analysis/compare/DisegnoMappa.h"
#include "support/PlatformProva.h"

using namespace lapvane;

namespace {

/// A square track, the line at its upper left corner, driven clockwise.
std::vector<PuntoTracciato> Quadrato() {
    std::vector<PuntoTracciato> punti;
    for (int i = 0; i < 10; ++i) punti.push_back({i * 10, 0});
    for (int i = 0; i < 10; ++i) punti.push_back({100, i * 10});
    for (int i = 0; i < 10; ++i) punti.push_back({100 - i * 10, 100});
    for (int i = 0; i < 10; ++i) punti.push_back({0, 100 - i * 10});
    return punti;
}

void Muovi(QWidget& dove, QPointF posto) {
    QMouseEvent evento(QEvent::MouseMove, posto, posto, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&dove, &evento);
}

}  // namespace

TEST(DisegnoMappa, KnowsThePlaceUnderTheMouseAndItsColour) {
    DatiMappa dati;
    dati.Punti = Quadrato();
    // Lost fast on the right, slowly at the bottom, gained on the left.
    for (const double valore : {0.01, 0.08, 0.04, -0.07})
        dati.Valori.insert(dati.Valori.end(), 5, valore);
    DisegnoMappa mappa;
    mappa.resize(300, 320);
    mappa.Imposta(dati);
    const Colori& c = ColoriDi(mappa);
    const QImage foto = mappa.grab().toImage();
    QSignalSpy mosso(&mappa, &DisegnoMappa::Mosso);
    const struct {
        QPoint Mouse;  // beside the middle of a side
        double Quota;
        QColor Colore;
        int Largo;
    } casi[] = {{{150, 30}, 0.125, c.Edge, 2},
                {{270, 146}, 0.375, c.Loss, 8},
                {{150, 270}, 0.625, c.Loss, 4},
                {{30, 146}, 0.875, c.Gain, 8}};
    for (const auto& caso : casi) {
        Muovi(mappa, caso.Mouse);
        ASSERT_FALSE(mosso.isEmpty());
        EXPECT_NEAR(mosso.takeLast().at(0).toDouble(), caso.Quota, 0.02);
        const QPointF dove = mappa.Posizione(caso.Quota);
        const bool orizzontale = caso.Mouse.x() == 150;
        int largo = 0;
        for (int i = -6; i <= 6; ++i) {
            const QPoint p = (dove + (orizzontale ? QPointF(0, i) : QPointF(i, 0))).toPoint();
            if (foto.pixelColor(p) == caso.Colore) ++largo;
        }
        EXPECT_NEAR(largo, caso.Largo, 1) << caso.Quota;
    }
    mosso.clear();
    Muovi(mappa, {150, 146});
    EXPECT_TRUE(mosso.isEmpty()) << "too far from the track";
    mappa.Cursore(0.005);
    QTest::keyClick(&mappa, Qt::Key_Left);
    ASSERT_EQ(mosso.size(), 1);
    EXPECT_NEAR(mosso.takeLast().at(0).toDouble(), 0.995, 1e-9) << "over the line, backwards";
}

TEST(DisegnoIstogramma, ABarIsAsHighAsItsShare) {
    const prova::PlatformProva macchina;
    DatiIstogramma dati;
    dati.Tratto = QStringLiteral("%1-%2");
    dati.Fasce = {60.0, 20.0, 2, {{'R', {0.2, 0.8}}, {'A', {0.4, 0.6}}}};
    DisegnoIstogramma istogramma;
    istogramma.resize(400, 300);
    istogramma.Imposta(dati);
    const QImage foto = istogramma.grab().toImage();
    const auto alta = [&](int fascia, int giro, char lettera) {
        const int x = static_cast<int>(istogramma.Barra(fascia, giro).center().x());
        int righe = 0;
        for (int y = 0; y < foto.height(); ++y) {
            righe += foto.pixelColor(x, y) == GiroDi(ColoriDi(istogramma), lettera).Tinta;
        }
        return righe;
    };
    const int quinto = alta(0, 0, 'R');
    EXPECT_GT(quinto, 30);
    EXPECT_NEAR(alta(1, 0, 'R'), 4 * quinto, 4);
    EXPECT_NEAR(alta(0, 1, 'A'), 2 * quinto, 3);
    EXPECT_NEAR(alta(1, 1, 'A'), 3 * quinto, 3);
}
