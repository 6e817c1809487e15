#include "sensors/Allarmi.h"

#include <gtest/gtest.h>

#include <limits>

#include "sensors/Calibrazione.h"
#include "sensors/Configurazione.h"

namespace lapvane {
namespace {

TEST(Soglie, ShowTidyAndScale) {
    const SogliaAllarme& olio = kSoglie[0];       // factor 10, up to 999.9
    const SogliaAllarme& pressione = kSoglie[1];  // factor 1000, up to 9.999
    const SogliaAllarme& livello = kSoglie[4];    // factor 10, up to 9999
    EXPECT_EQ(MostraSoglia(pressione, -500), "-0.500");
    EXPECT_EQ(MostraSoglia(pressione, 7), "0.007");
    EXPECT_EQ(MostraSoglia(olio, 1205), "120.5");
    struct Caso {
        const SogliaAllarme& Soglia;
        const char *Scritta, *Sistemata;
    };
    for (const auto& [soglia, scritta, sistemata] : std::initializer_list<Caso>{
             {olio, "", "0.0"},
             {olio, " 12 ", "12.0"},
             {olio, "999.91", "999.9"},
             {olio, "1e400", "1e400.0"},  // no number, and no overflow either
             {pressione, "9.999", "9.999"},
             {pressione, ".5", "0.500"},
             {pressione, "1.23456", "1.23456"},
             {livello, "10", "10.0"},
             {livello, "10000", "9999"}}) {  // the literal has no decimals
        EXPECT_EQ(SistemaSoglia(soglia, scritta), sistemata);
    }
    EXPECT_EQ(ValoreSoglia(pressione, "2.345"), 2345);
    EXPECT_EQ(ValoreSoglia(olio, "12.25"), 122) << "ties to even";
    EXPECT_EQ(ValoreSoglia(olio, "12 C"), 120) << "the numeric prefix";
    for (const std::int32_t v : {1, 1234567, std::numeric_limits<std::int32_t>::max(),
                                 std::numeric_limits<std::int32_t>::min()}) {
        for (const SogliaAllarme& s : kSoglie) EXPECT_EQ(ValoreSoglia(s, MostraSoglia(s, v)), v);
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

TEST(Calibrazione, WithoutAPointNothingChanges) {
    Prova nessuno;
    nessuno.Misure.FineProcedura();
    EXPECT_EQ(nessuno.Misure.StatoCalibrazione, 2);
    EXPECT_EQ(nessuno.Righe(), Punti{});
}

}  // namespace
}  // namespace lapvane
