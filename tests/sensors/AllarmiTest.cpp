#include "sensors/Allarmi.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/ErroreRuntime.h"
#include "sensors/Configurazione.h"

namespace lapvane {
namespace {

TEST(Soglie, ShowTidyAndScale) {
    const SogliaAllarme& olio = kSoglie[0];       // factor 10, up to 999.9
    const SogliaAllarme& pressione = kSoglie[1];  // factor 1000, up to 9.999
    const SogliaAllarme& livello = kSoglie[4];    // factor 10, up to 9999
    EXPECT_EQ(MostraSoglia(pressione, 2500), "2.500");
    EXPECT_EQ(MostraSoglia(pressione, -500), "-0.500");
    EXPECT_EQ(MostraSoglia(pressione, 7), "0.007");
    EXPECT_EQ(MostraSoglia(olio, 1205), "120.5");
    EXPECT_EQ(MostraSoglia(olio, 0), "0.0");

    EXPECT_EQ(SistemaSoglia(olio, "12,5"), "12.5");
    EXPECT_EQ(SistemaSoglia(olio, ""), "0.0");
    EXPECT_EQ(SistemaSoglia(olio, " 12 "), "12.0");
    EXPECT_EQ(SistemaSoglia(olio, "999.9"), "999.9");
    EXPECT_EQ(SistemaSoglia(olio, "999.91"), "999.9");
    EXPECT_EQ(SistemaSoglia(olio, "-5"), "-5.0") << "no lower limit";
    EXPECT_EQ(SistemaSoglia(pressione, "15"), "9.999");
    EXPECT_EQ(SistemaSoglia(pressione, "9.999"), "9.999");
    EXPECT_EQ(SistemaSoglia(pressione, "2"), "2.000");
    EXPECT_EQ(SistemaSoglia(pressione, ".5"), "0.500");
    EXPECT_EQ(SistemaSoglia(pressione, "1.23456"), "1.23456") << "more decimals stay";
    EXPECT_EQ(SistemaSoglia(livello, "10"), "10.0");
    EXPECT_EQ(SistemaSoglia(livello, "10000"), "9999") << "the literal has no decimals";
    EXPECT_EQ(SistemaSoglia(olio, "1e400"), "1e400.0") << "no number, and no overflow either";

    EXPECT_EQ(ValoreSoglia(pressione, "2.000"), 2000);
    EXPECT_EQ(ValoreSoglia(olio, "12.25"), 122) << "ties to even";
    EXPECT_EQ(ValoreSoglia(olio, "12.35"), 124);
    EXPECT_EQ(ValoreSoglia(olio, "12 C"), 120) << "the numeric prefix";
    for (const SogliaAllarme& soglia : kSoglie) {
        for (const std::int32_t v : {0, 1, 1234567, std::numeric_limits<std::int32_t>::max(),
                                     std::numeric_limits<std::int32_t>::min()}) {
            EXPECT_EQ(ValoreSoglia(soglia, MostraSoglia(soglia, v)), v) << soglia.Casella;
        }
    }
}

TEST(Unita, OnlyWhatTheListHasHasAName) {
    EXPECT_EQ(NomeUnita({"bar", "psi"}, 1), "psi");
    EXPECT_EQ(NomeUnita({"bar", "psi"}, 2), "");
    EXPECT_EQ(NomeUnita({"bar", "psi"}, -1), "");
}

TEST(PagineSetup, StayWithinThePagesThatThereAre) {
    RecordProgetto r;
    for (const auto& [massimo, atteso] :
         {std::pair{9, 9}, {1, 1}, {10, 10}, {0, 9}, {-3, 9}, {11, 9}, {32767, 9}}) {
        r.MaxPagine = static_cast<std::int16_t>(massimo);
        PagineSetup pagine;
        pagine.Carica(r);
        for (int i = 0; i < 40; ++i) pagine.Avanti();
        EXPECT_EQ(pagine.Corrente(), atteso) << massimo;
        EXPECT_TRUE(pagine.Ultima());
        for (int i = 0; i < 40; ++i) pagine.Indietro();
        EXPECT_TRUE(pagine.Prima());
        EXPECT_EQ(pagine.Conteggio(), " 1/ " + std::to_string(atteso));
    }
}

}  // namespace
}  // namespace lapvane
