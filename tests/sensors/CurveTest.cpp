// What passes through the shared arrays on the way to and from the instrument.
#include <gtest/gtest.h>

#include <cmath>

#include "sensors/CSensore.h"
#include "sensors/Curve.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

class Curve : public ::testing::Test {
 protected:
    Curve() {
        CurvaX.fill(-7.0);
        CurvaY.fill(-8.0);
    }
    /// X is 10, 20, 30 ...; Y is 0.5, 1.5, 2.5 ...
    static CSensore& Sensore(const char* tipo, const char* nome, int punti) {
        CSensore s;
        s.Tipo(tipo);
        s.Nome(nome);
        s.NumPunti(static_cast<std::int16_t>(punti));
        for (int i = 0; i < punti; ++i) {
            s.X(i, 10.0 * (i + 1));
            s.Y(i, i + 0.5);
        }
        LibreriaSensori.push_back(s);
        return LibreriaSensori.back();
    }
    prova::PlatformProva macchina;
};

TEST_F(Curve, AreScaledAndLeaveTheirTailUnlessTheyAreAFuelLevel) {
    for (const auto& [tipo, fattore] : {std::pair{"TemperaturaOlio", 10},
                                        {"TemperaturaAcqua", 10},
                                        {"Pressione", 1000},
                                        {"PressioneTurbo", 1000},
                                        {"LivelloBenzina", 10},
                                        {"Altro", 1},
                                        {"SensoreG", 1000},
                                        {"SensoreLambda", 100},
                                        {"Pressione ", 0}}) {
        Sensore(tipo, tipo, 20);
        CaricaCurvaSensore(tipo);
        EXPECT_EQ(CurvaX[2], 30.0) << tipo;
        EXPECT_EQ(CurvaY[2], 2.5 * fattore) << tipo;
        EXPECT_EQ(CurvaX[20], -7.0) << tipo;
    }
    Sensore("Pressione", "cinque", 5);
    Sensore("LivelloBenzina", "serbatoio", 3);
    Sensore("LivelloBenzina", "vuoto", 0);
    CaricaCurvaSensore("Altro");
    CaricaCurvaSensore("cinque");
    EXPECT_EQ(CurvaY[4], 4500.0);
    EXPECT_EQ(CurvaX[5], 60.0);
    EXPECT_EQ(CurvaY[5], 5.5);
    CaricaCurvaSensore("serbatoio");
    EXPECT_EQ(CurvaX[2], 30.0);
    for (const std::size_t i : {3u, 19u}) {
        EXPECT_EQ(CurvaX[i], 1024.0) << i;
        EXPECT_EQ(CurvaY[i], 25.0) << i;
    }
    EXPECT_EQ(CurvaX[20], -7.0);
    CaricaCurvaSensore("no such name");
    EXPECT_EQ(CurvaY[2], 25.0);
    CaricaCurvaSensore("vuoto");
    EXPECT_EQ(CurvaX[0], 1024.0);
    EXPECT_EQ(CurvaY[0], 0.0);
    CurvaY.fill(3.0);
    AzzeraCurvaSensore();
    EXPECT_EQ(CurvaX[0] + CurvaX[19] + CurvaY[0] + CurvaY[19], 0.0);
    EXPECT_EQ(CurvaX[20], -7.0);
    EXPECT_EQ(CurvaY[20], 3.0);
}

TEST_F(Curve, TheLastOfTwoSensorsOfOneNameIsSentAndTheFirstOfTwoEqualOnesFound) {
    Sensore("Altro", "doppio", 20).X(0, 1.0);
    Sensore("Pressione", "doppio", 20).X(0, 2.0);
    CaricaCurvaSensore("doppio");
    EXPECT_EQ(CurvaX[0], 2.0);
    LibreriaSensori.clear();
    Sensore("Altro", "altro tipo", 20);
    Sensore("Pressione", "primo", 20);
    Sensore("Pressione", "secondo", 20);
    CaricaCurvaSensore("altro tipo");
    EXPECT_EQ(CercaNomeSensore("Pressione"), "primo");
    EXPECT_EQ(CercaNomeSensore("PressioneTurbo"), "");
    // One bit in the last point of either axis, and the element that does not count.
    LibreriaSensori[1].Y(19, std::nextafter(19.5, 20.0));
    LibreriaSensori[2].X(20, 99.0);
    EXPECT_EQ(CercaNomeSensore("Pressione"), "secondo");
    LibreriaSensori[2].X(0, 11.0);
    EXPECT_EQ(CercaNomeSensore("Pressione"), "");
}

}  // namespace
}  // namespace lapvane
