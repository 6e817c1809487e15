#include <gtest/gtest.h>

#include <bit>
#include <iterator>
#include <numeric>
#include <vector>

#include "analysis/FileTim.h"
#include "analysis/Giri.h"
#include "analysis/LettoreDati.h"
#include "analysis/Schema.h"
#include "analysis/Statistiche.h"
#include "analysis/TabellaArray.h"

using namespace lapvane;

namespace {

/// Every row of a text over three columns, read in pieces of some bytes, a few rows at a time; a
/// cell that is not written shows as -99.
std::vector<std::vector<double>> Righe(std::string_view testo, std::size_t pezzo) {
    LettoreDati lettore(testo, pezzo);
    std::vector<std::vector<double>> colonne(
        3, std::vector<double>(static_cast<std::size_t>(lettore.NumeroRecord()) + 1, -99));
    std::vector<double*> inizi;
    for (auto& colonna : colonne) inizi.push_back(colonna.data());
    std::int32_t riga = lettore.LeggiRighe(inizi, 0, std::min(1, lettore.NumeroRecord()));
    riga = lettore.LeggiRighe(inizi, riga, lettore.NumeroRecord() + 1);
    EXPECT_EQ(riga, lettore.NumeroRecord());
    std::vector<std::vector<double>> righe;
    for (std::int32_t r = 0; r < riga; ++r) {
        const auto i = static_cast<std::size_t>(r);
        righe.push_back({colonne[0][i], colonne[1][i], colonne[2][i]});
    }
    return righe;
}

using Tabella = std::vector<std::vector<double>>;

}  // namespace

TEST(LettoreDati, TakesEveryShapeOfRowThatALogCanHave) {
    struct Caso {
        const char* Cosa;
        const char* Testo;
        Tabella Atteso;
    };
    const Caso casi[] = {
        {"point and comma", "t\r\n0.1;-2,5;300\r\n", {{0.1, -2.5, 300}}},
        {"many digits",
         "t\n12345678901234567;1234567890.123456789;0.12345678901234567891\n",
         {{12345678901234567.0, 1234567890.123456789, 0.12345678901234567891}}},
        {"empty field keeps its cell", "t\n1;;3\n", {{1, -99, 3}}},
        {"not a number", "t\n1;abc;3\n", {{1, 0, 3}}},
        {"fewer fields", "t\n1\n2;4\n", {{1, -99, -99}, {2, 4, -99}}},
        {"surplus fields", "t\n1;2;3;4;5\n6;7;8;9\n", {{1, 2, 3}, {6, 7, 8}}},
        {"last line without its end", "t\n1;2;3\n4;5", {{1, 2, 3}, {4, 5, -99}}},
        {"last field open", "t\n1;2;", {{1, 2, -99}}},
        {"empty lines at the end", "t\r\n1;2;3\r\n\r\n\r\n", {{1, 2, 3}}},
        {"empty line between rows keeps its place",
         "t\r\n1;2;3\r\n\r\n4;5;6\r\n",
         {{1, 2, 3}, {0, -99, -99}, {4, 5, 6}}},
        {"carriage returns alone", "t\r1;2;3\r4;5;6", {{1, 2, 3}, {4, 5, 6}}},
        {"heading alone", "t;u;v\r\n", {}},
        {"nothing", "", {}},
        {"only line ends", "\r\n\r\n\r\n", {}},
    };
    for (const Caso& caso : casi) {
        SCOPED_TRACE(caso.Cosa);
        for (const std::size_t pezzo : {1, 2, 5, 1000}) {
            EXPECT_EQ(Righe(caso.Testo, pezzo), caso.Atteso) << pezzo;
        }
    }
    EXPECT_EQ(LettoreDati("a [x];b\r\n1\r\n").Titolo(), "a [x];b");
    EXPECT_EQ(LettoreDati("a;b").Titolo(), "a;b");
}

TEST(TabellaArray, IsZeroOutsideAndKeepsItsPlanesApart) {
    TabellaArray tabella;
    tabella.Alloca(3, 2, 4);
    LettoreDati dati("t\n1;2;3\n1;2;3\n1;2;3\n1;2;7.5"), laterali("t\n1;2.5\n");
    EXPECT_EQ(tabella.Leggi(dati, Piano::Dati, 0, 4), 4);
    EXPECT_EQ(tabella.Leggi(laterali, Piano::Laterale, 0, 4), 1);
    EXPECT_EQ(tabella.Valore(3, Piano::Dati, 3), 7.5);
    EXPECT_EQ(tabella.Valore(2, Piano::Laterale, 0), 2.5);
    EXPECT_EQ(tabella.Valore(2, Piano::Laterale, 1), 0.0);
    EXPECT_EQ(tabella.Valore(2, Piano::Dati, 0), 2.0);
    for (const int colonna : {-1, 0, 4}) EXPECT_TRUE(tabella.Colonna(colonna).empty());
    for (const int colonna : {-1, 0, 3}) EXPECT_EQ(tabella.Laterale().Righe(colonna), 0);
    for (const std::int32_t riga : {-1, 4, 2147483647}) {
        EXPECT_EQ(tabella.Valore(3, Piano::Dati, riga), 0.0) << riga;
        EXPECT_EQ(tabella.Valore(1, Piano::Laterale, riga), 0.0) << riga;
    }
    EXPECT_EQ(tabella.Righe(3, -5, 99).size(), 4u);
    EXPECT_EQ(tabella.Righe(3, 1, 2).size(), 2u);
    EXPECT_TRUE(tabella.Righe(3, 3, 2).empty());
    EXPECT_EQ(tabella.RigheLaterali(1, -5, 99), (std::vector<double>{1, 0, 0, 0}));
    EXPECT_EQ(tabella.RigheLaterali(2, 0, 1), (std::vector<double>{2.5, 0}));
    tabella.Alloca(25, 0, 4);
    EXPECT_EQ(tabella.Valore(3, Piano::Dati, 3), 0.0);
    EXPECT_EQ(tabella.Laterale().Righe(1), 0);
    EXPECT_EQ(tabella.NumeroColonne(), 20) << "a log holds 20 columns at most";
    tabella.Alloca(0, 0, 4);
    EXPECT_TRUE(tabella.Colonna(1).empty());
}

TEST(ColonneStrette, GiveBackTheNumbersThatTheReaderGaveToTheLastBit) {
    // Each column grows wider at one of these, in its own row, behind many that were narrow.
    const char* const numeri[] = {
        "127",         "128",     "-128",         "-129",        "32767", "32768",  "-32768",
        "-32769",      "2147483", "2147484",      "-2147483648", "0.1",   "-0.001", "0.0001",
        "2147483.647", "-0",      "-2147483.648", "2147483.648", "1e300", "0,7"};
    std::string testo = "t";
    constexpr int kPerNumero = 300;
    for (int riga = 0; riga < kPerNumero * static_cast<int>(std::size(numeri)); ++riga) {
        testo += '\n';
        for (int c = 0; c < static_cast<int>(std::size(numeri)); ++c) {
            testo += riga == kPerNumero * c ? numeri[c] : std::to_string((riga + c) % 100);
            // Some rows are short, some fields empty.
            if (riga % 7 == 3 && c == riga % 20) break;
            if (riga % 5 == 2 && c == riga % 19) testo += ';';
            testo += ';';
        }
    }
    LettoreDati larghi(testo), stretti(testo);
    const std::int32_t righe = larghi.NumeroRecord();
    constexpr int kColonne = static_cast<int>(std::size(numeri));
    std::vector<std::vector<double>> attese(kColonne,
                                            std::vector<double>(static_cast<std::size_t>(righe)));
    std::vector<double*> inizi;
    for (auto& colonna : attese) inizi.push_back(colonna.data());
    larghi.LeggiRighe(inizi, 0, righe);
    ColonneStrette colonne;
    colonne.Alloca(kColonne, righe);
    EXPECT_EQ(colonne.Celle(2, 1, 4), std::vector<double>(3)) << "what no line has filled is 0";
    EXPECT_EQ(colonne.Valore(2, 1), 0.0);
    ASSERT_EQ(colonne.Leggi(stretti, 0, 1), 1);
    ASSERT_EQ(colonne.Leggi(stretti, 1, righe + 9), righe);
    const auto bit = [](double valore) { return std::bit_cast<std::uint64_t>(valore); };
    for (int c = 1; c <= kColonne; ++c) {
        const auto celle = colonne.Celle(c, 0, righe);
        for (std::int32_t r = 0; r < righe; ++r) {
            const auto i = static_cast<std::size_t>(r);
            const std::uint64_t vero = bit(attese[static_cast<std::size_t>(c - 1)][i]);
            ASSERT_EQ(bit(celle[i]), vero) << c << ", " << r;
            ASSERT_EQ(bit(colonne.Valore(c, r)), vero) << c << ", " << r;
        }
    }
}

TEST(FileTim, SplitsTimeAndSession) {
    const FileTim file = LeggiFileTim("1.4\r\n01:20.00, 2\r\n01:19.50\r\n01:18.00,\r\n\r\n");
    EXPECT_EQ(file.PrimaRiga, "1.4");
    std::string letti;
    for (const RigaTim& riga : file.Righe) letti += riga.Tempo + "/" + riga.Sessione + " ";
    // Without a comma it is session 1; the empty last line counts.
    EXPECT_EQ(letti, "01:20.00/2 01:19.50/1 01:18.00/ /1 ");
    EXPECT_EQ(file.IndiceFine(), 6);
}

TEST(CercaGiri, CountsRunsOfEqualNumbersFromOneAndNoMoreThanTheTable) {
    const std::vector<double> giri = {1, 1, 1, 2, 2, 1e300, 2, 3, 3};  // what is no lap is lap 0
    const auto cerca = [](std::span<const double> tutti, std::int32_t prima) {
        RicercaGiri ricerca(prima);
        // In two pieces, wherever the end of a lap comes to lie.
        ricerca.Righe(tutti.first(tutti.size() / 2));
        ricerca.Righe(tutti.subspan(tutti.size() / 2));
        return ricerca.Trovate();
    };
    const RigheGiri dati = cerca(giri, 0);
    EXPECT_EQ(std::vector(dati.Inizio.begin(), dati.Inizio.begin() + 7),
              (std::vector<std::int32_t>{0, 0, 3, 5, 6, 7, 0}));
    EXPECT_EQ(std::vector(dati.Fine.begin(), dati.Fine.begin() + 7),
              (std::vector<std::int32_t>{0, 2, 4, 5, 6, 8, 0}));
    for (const int giro : {0, 1, 5, 6}) EXPECT_EQ(dati.Esiste(giro), giro == 1 || giro == 5);
    EXPECT_EQ(cerca(giri, 2).Inizio[2], 5) << "where the heading is row 1";
    EXPECT_EQ(cerca({}, 0).Numero, 0);
    std::vector<double> molti(3000);
    std::iota(molti.begin(), molti.end(), 0);
    EXPECT_EQ(cerca(molti, 0).Numero, 1000) << "998 laps between the start and the end";
    EXPECT_EQ(cerca(molti, 0).Inizio[1000], 999);
}

TEST(Schema, NamesEveryColumnOfBothFiles) {
    EXPECT_EQ(TestoSchema("run.csv", 3, "run.txt", 2),
              "[run.csv]\r\nColNameHeader=True\r\nFormat=Delimited(;)\r\nMaxScanRows=1\r\n"
              "CharacterSet=ANSI\r\nCol1=F1 Double\r\nCol2=F2 Double\r\nCol3=F3 Double\r\n"
              "[run.txt]\r\nColNameHeader=True\r\nFormat=Delimited(;)\r\nMaxScanRows=1\r\n"
              "CharacterSet=ANSI\r\nCol1=F1 Double\r\nCol2=F2 Double\r\nCol3=F3 Integer\r\n");
}

TEST(Statistiche, TheMeanIsOneSumInTheOrderOfTheRows) {
    // A large value swallows the 1 that comes next; in any other order it would not.
    EXPECT_EQ(MediaColonna(std::vector<double>{1e16, 1.0, -1e16, 1.0}, 4.0), 0.25);
    EXPECT_EQ(MediaColonna(std::vector<double>{1.0, 2.0}, 4.0), 0.75) << "by what was asked";
    // Any number of columns at once, of whatever lengths, each as if it were alone.
    for (std::size_t numero = 0; numero <= 19; ++numero) {
        std::vector<std::vector<double>> valori(numero);
        std::vector<std::span<const double>> colonne;
        std::vector<double> attese;
        for (std::size_t c = 0; c < numero; ++c) {
            double somma = 0.0;
            for (std::size_t r = 0; r < 101 + c % 3; ++r) {
                valori[c].push_back(static_cast<double>((r * 311 + c * 7) % 1600) / 10.0 + 0.1);
                somma += valori[c].back();
            }
            colonne.emplace_back(valori[c]);
            attese.push_back(somma / 101.0);
        }
        EXPECT_EQ(MediaColonne(colonne, 101.0), attese) << numero;
        EXPECT_EQ(MediaColonne(colonne, 0.0), std::vector<double>(numero, 0.0));
    }
}
