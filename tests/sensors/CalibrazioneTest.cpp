#include "sensors/Calibrazione.h"

#include <gtest/gtest.h>

namespace lapvane {
namespace {

using Punto = std::pair<std::string, std::string>;
using Punti = std::vector<Punto>;

struct Prova {
    TabellaPunti Tabella;
    Calibrazione Misure{Tabella};

    void Misura(std::int16_t grezzo, const char* litri) {
        Misure.ValoreBenzina = grezzo;
        Misure.Misura(Calibrazione::SistemaLitri(litri));
    }
    /// The rows in use.
    Punti Righe() {
        Punti righe;
        for (int i = 0; i < Tabella.NumPuntiTabella(); ++i) {
            righe.emplace_back(Tabella.Riga(i).X, Tabella.Riga(i).Y);
            EXPECT_TRUE(Tabella.Riga(i).Spunta);
        }
        return righe;
    }
};

TEST(Calibrazione, LitresGetAPointAndADecimalAndNoOtherCheck) {
    for (const auto& [scritti, letti] :
         Punti{{"", "0.0"}, {"12,5", "12.5"}, {"7", "7.0"}, {".25", "0.25"}, {"abc", "abc.0"}}) {
        EXPECT_EQ(Calibrazione::SistemaLitri(scritti), letti);
    }
}

// By value and not by text; what the middle does does not count.
TEST(Calibrazione, FallingCurvesAreTurnedRoundAndTheTailIsTheEndOfTheRange) {
    struct Caso {
        Punti Misurati, Attesi;
    };
    for (auto& [misurati, attesi] :
         std::vector<Caso>{{{{"40", ""}, {"360", "20"}, {"361", "20,5"}},
                            {{"40", "0.0"}, {"360", "20.0"}, {"361", "20.5"}}},
                           {{{"983", ""}, {"823", "10"}, {"830", "15"}, {"503", "30"}},
                            {{"503", "30.0"}, {"830", "15.0"}, {"823", "10.0"}, {"983", "0.0"}}},
                           {{{"1000", "0"}, {"40", "60"}}, {{"40", "60.0"}, {"1000", "0.0"}}},
                           {{{"500", "1"}, {"400", "2"}, {"500", "3"}},
                            {{"500", "1.0"}, {"400", "2.0"}, {"500", "3.0"}}}}) {
        Prova p;
        for (const auto& [grezzo, litri] : misurati) {
            p.Misura(static_cast<std::int16_t>(std::stoi(grezzo)), litri.c_str());
        }
        EXPECT_EQ(p.Tabella.NumPuntiTabella(), p.Misure.NumeroPunto());
        p.Misure.FineProcedura();
        EXPECT_EQ(p.Misure.StatoCalibrazione, 2);
        attesi.resize(20, {"1024", attesi.back().second});
        EXPECT_EQ(p.Righe(), attesi);
    }
}

TEST(Calibrazione, NineteenPointsAreTheMostAndNoneChangesNothing) {
    Prova p;
    for (int i = 0; i < 25; ++i) {
        EXPECT_EQ(p.Misure.Piena(), i >= 19) << i;
        p.Misura(static_cast<std::int16_t>(100 + i), "1");
    }
    EXPECT_EQ(p.Tabella.NumPuntiTabella(), 19);
    p.Misure.FineProcedura();
    EXPECT_EQ(p.Righe().at(18), (Punto{"118", "1.0"}));
    EXPECT_EQ(p.Righe().at(19), (Punto{"1024", "1.0"}));
    Prova nessuno;
    nessuno.Misure.FineProcedura();
    EXPECT_EQ(nessuno.Misure.StatoCalibrazione, 2);
    EXPECT_EQ(nessuno.Righe(), Punti{});
}

}  // namespace
}  // namespace lapvane
