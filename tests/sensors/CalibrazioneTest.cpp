#include "sensors/Calibrazione.h"

#include <gtest/gtest.h>

namespace lapvane {
namespace {

using Punto = std::pair<std::string, std::string>;

struct Prova {
    TabellaPunti Tabella;
    Calibrazione Misure{Tabella};

    void Misura(std::int16_t grezzo, const char* litri) {
        Misure.ValoreBenzina = grezzo;
        Misure.Misura(Calibrazione::SistemaLitri(litri));
    }
    std::vector<Punto> Righe(int fino) {
        std::vector<Punto> righe;
        for (int i = 0; i < fino; ++i) righe.emplace_back(Tabella.Riga(i).X, Tabella.Riga(i).Y);
        return righe;
    }
    /// Every row from `da` on is the end of the range with these litres.
    void Coda(int da, const char* litri) {
        EXPECT_EQ(Tabella.NumPuntiTabella(), 20);
        for (int i = da; i < 20; ++i) {
            EXPECT_EQ(Tabella.Riga(i).X, "1024") << i;
            EXPECT_EQ(Tabella.Riga(i).Y, litri) << i;
            EXPECT_TRUE(Tabella.Riga(i).Spunta) << i;
        }
    }
};

TEST(Calibrazione, LitresGetAPointAndADecimalAndNoOtherCheck) {
    for (const auto& [scritti, letti] : std::vector<Punto>{
             {"", "0.0"}, {"12,5", "12.5"}, {"7", "7.0"}, {".25", "0.25"}, {"abc", "abc.0"}}) {
        EXPECT_EQ(Calibrazione::SistemaLitri(scritti), letti);
    }
}

TEST(Calibrazione, RisingValuesStayAndTheTailIsTheEndOfTheRange) {
    Prova p;
    p.Misura(40, "");
    p.Misura(360, "20");
    p.Misura(361, "20,5");
    EXPECT_EQ(p.Misure.NumeroPunto(), 3);
    EXPECT_EQ(p.Tabella.NumPuntiTabella(), 3);
    p.Misure.FineProcedura();
    EXPECT_EQ(p.Misure.StatoCalibrazione, 2);
    EXPECT_EQ(p.Righe(3), (std::vector<Punto>{{"40", "0.0"}, {"360", "20.0"}, {"361", "20.5"}}));
    p.Coda(3, "20.5");
}

TEST(Calibrazione, FallingValuesAreTurnedRound) {
    Prova p;
    p.Misura(983, "");
    p.Misura(823, "10");
    p.Misura(830, "15");  // the middle does not count
    p.Misura(503, "30");
    p.Misure.FineProcedura();
    EXPECT_EQ(p.Righe(4), (std::vector<Punto>{
                              {"503", "30.0"}, {"830", "15.0"}, {"823", "10.0"}, {"983", "0.0"}}));
    p.Coda(4, "0.0");

    // By value and not by text: "1000" is above "40" but sorts before it.
    Prova q;
    q.Misura(1000, "0");
    q.Misura(40, "60");
    q.Misure.FineProcedura();
    EXPECT_EQ(q.Righe(2), (std::vector<Punto>{{"40", "60.0"}, {"1000", "0.0"}}));

    Prova uguali;
    uguali.Misura(500, "1");
    uguali.Misura(400, "2");
    uguali.Misura(500, "3");
    uguali.Misure.FineProcedura();
    EXPECT_EQ(uguali.Righe(3),
              (std::vector<Punto>{{"500", "1.0"}, {"400", "2.0"}, {"500", "3.0"}}));
}

TEST(Calibrazione, NineteenPointsAreTheMostAndNoneChangesNothing) {
    Prova p;
    for (std::int16_t i = 0; i < 25; ++i) {
        EXPECT_EQ(p.Misure.Piena(), i >= 19) << i;
        p.Misura(static_cast<std::int16_t>(100 + i), "1");
    }
    EXPECT_EQ(p.Tabella.NumPuntiTabella(), 19);
    EXPECT_EQ(p.Tabella.Riga(18).X, "118");
    p.Misure.FineProcedura();
    EXPECT_EQ(p.Tabella.Riga(18).X, "118");
    p.Coda(19, "1.0");

    Prova nessuno;
    nessuno.Misure.FineProcedura();
    EXPECT_EQ(nessuno.Misure.StatoCalibrazione, 2);
    EXPECT_EQ(nessuno.Tabella.NumPuntiTabella(), 0);
    EXPECT_EQ(nessuno.Righe(20), std::vector<Punto>(20));
}

}  // namespace
}  // namespace lapvane
