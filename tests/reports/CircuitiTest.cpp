#include "reports/Circuiti.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "platform/Testo1252.h"
#include "reports/DivisioneSettori.h"
#include "support/PlatformProva.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace fs = std::filesystem;

using Punti = std::vector<PuntoTracciato>;

TEST(Tracciato, ReadsPointsAsTheyCome) {
    EXPECT_EQ(LeggiTracciato("\"8,58\"\r\n\"-3, 7\r\n4,5\"\n"), (Punti{{8, 58}, {-3, 7}, {4, 5}}));
    EXPECT_EQ(LeggiTracciato("1,2\r\nniente\r\n\r\nx,9\r\n9,x\r\n99999999999,1"),
              (Punti{{1, 2}, {0, 0}, {0, 0}, {0, 9}, {9, 0}, {0, 1}}));
    // The number that each part begins with, rounded, ties to even.
    EXPECT_EQ(LeggiTracciato("12x,34 m\r\n\"2.5,3.5\"\r\n 1e2,-7,8\r\n.9,+4\r\n"),
              (Punti{{12, 34}, {2, 4}, {100, -7}, {1, 4}}));
    for (const std::size_t righe : {200u, 201u, 202u}) {
        std::string testo;
        for (std::size_t i = 0; i < righe; ++i) testo += std::to_string(i) + ",1\r\n";
        int contate = 0;
        const Punti punti = LeggiTracciato(testo, &contate);
        EXPECT_EQ(contate, static_cast<int>(righe)) << "those without a place count as well";
        EXPECT_EQ(punti.size(), std::min<std::size_t>(righe, 201));
    }
}

TEST(Settori, TextIsReadLineByLineAndWrittenByteForByte) {
    const FileSettori file = LeggiTestoSettori("1000\r\n250,5\r\n749.5\r\n0\r\n12\r\n", 21);
    EXPECT_EQ(file.Lunghezza, 1000.0);
    EXPECT_EQ(file.Settori, (std::vector<double>{250.5, 749.5, 0, 12}));
    EXPECT_EQ(LeggiTestoSettori("abc\r\n5 m\r\nx\r\n7", 21).Settori,
              (std::vector<double>{5, 0, 7}));
    EXPECT_EQ(LeggiTestoSettori("abc\r\n", 21).Lunghezza, 0.0);
    EXPECT_FALSE(LeggiTestoSettori("", 21).Lunghezza);
    std::string molti = "1000\r\n";
    for (int i = 0; i < 40; ++i) molti += "25\r\n";
    EXPECT_EQ(LeggiTestoSettori(molti, 15).Settori.size(), 15u);

    DivisioneSettori d;
    d.Prendi(LeggiTestoSettori(molti, 40).Settori);
    EXPECT_EQ(d.NumSettori, 15);
    d.Prendi(file.Settori);
    EXPECT_EQ(d.NumSettori, 2) << "a length of 0 ends the list of the dialog";
    d.Prendi(std::vector<double>{2.5, 3.5, -20, 1e300, 8});
    EXPECT_EQ(d.SettoriCircuito, (std::array<std::int32_t, 16>{2, 4, -20}));
    EXPECT_EQ(ScriviTestoSettori("3480", d.SettoriCircuito), "3480\r\n2\r\n4\r\n-20\r\n");
    EXPECT_EQ(ScriviTestoSettori(" 7", std::vector<std::int32_t>{0, 5}), " 7\r\n");
}

TEST(Settori, EqualDivisionLeavesTheRestToTheLast) {
    DivisioneSettori d;
    d.Dividi(8, 15);
    EXPECT_EQ(d.NumSettori, 15);
    EXPECT_EQ(d.SettoriCircuito[14], -6) << "refused when the dialog is confirmed";
    EXPECT_EQ(d.PrimoNegativo(), 14);
    d.Dividi(10, 4);
    EXPECT_EQ(d.SettoriCircuito, (std::array<std::int32_t, 16>{2, 2, 2, 4})) << "2.5 is 2";
    EXPECT_EQ(d.Somma(), 10);
    EXPECT_EQ(d.PrimoNegativo(), -1);
    d.Dividi(3480, 1);
    EXPECT_EQ(d.SettoriCircuito, (std::array<std::int32_t, 16>{3480}));
}

TEST(Settori, NeighbourPaysForAChange) {
    DivisioneSettori d;
    d.Dividi(1000, 4);  // 250 each
    EXPECT_TRUE(d.Cambia(0, 300, 1000));
    EXPECT_EQ(d.SettoriCircuito, (std::array<std::int32_t, 16>{300, 200, 250, 250}));
    EXPECT_TRUE(d.Cambia(2, 100, 1000)) << "the last but one: the last takes the rest";
    EXPECT_EQ(d.SettoriCircuito, (std::array<std::int32_t, 16>{300, 200, 100, 400}));
    for (const int nuovo : {0, -5, 1000, 1001}) EXPECT_FALSE(d.Cambia(1, nuovo, 1000)) << nuovo;
    EXPECT_FALSE(d.Cambia(3, 10, 1000)) << "the last never changes by itself";
    EXPECT_EQ(d.SettoriCircuito, (std::array<std::int32_t, 16>{300, 200, 100, 400}));
    EXPECT_TRUE(d.Cambia(0, 999, 1000)) << "the neighbour may go negative";
    EXPECT_EQ(d.SettoriCircuito[1], -499);
    EXPECT_EQ(d.PrimoNegativo(), 1);
    EXPECT_EQ(d.Somma(), 1000);
}

TEST(Settori, AreMappedToTheOutlineByTheirShareOfThePoints) {
    using Tratti = std::vector<TrattoSettore>;
    const std::vector<std::int32_t> quattro{905, 842, 1000, 733, 0};
    // 200 points, 3480 m: 905 m are 52.01 points, 842 m 48.39, 1000 m 57.47.
    EXPECT_EQ(TrattiDeiSettori(quattro, 200, 3480),
              (Tratti{{0, 0, 52}, {1, 52, 100}, {2, 100, 157}, {3, 157, 198}}));
    EXPECT_EQ(TrattiDeiSettori(std::vector<std::int32_t>{3480}, 200, 3480), (Tratti{{0, 0, 198}}));
    EXPECT_EQ(TrattiDeiSettori(std::vector<std::int32_t>{900, 900, 1}, 10, 1000),
              (Tratti{{0, 0, 9}, {1, 9, 9}, {2, 9, 8}}))
        << "sectors longer than the track end with the outline";
    EXPECT_EQ(TrattiDeiSettori(std::vector<std::int32_t>{0, 0, 5}, 10, 5), (Tratti{{2, 0, 8}}));
    EXPECT_EQ(TrattiDeiSettori(quattro, 1, 3480), Tratti{});
    EXPECT_EQ(TrattiDeiSettori(quattro, 200, 0), Tratti{});
}

class Cartella : public ::testing::Test {
 protected:
    PlatformProva macchina;
};

#ifndef _WIN32  // the file system itself looks past the case there
TEST_F(Cartella, IsFoundWhateverItsCase) {
    try {
        CaricaListaCircuiti();
        ADD_FAILURE();
    } catch (const ErroreRuntime& errore) {
        EXPECT_EQ(errore.Numero(), NumeroErrore::PathNotFound);
        EXPECT_EQ(errore.File(), macchina.Cartella / "tracks");
    }
    Scrivi(macchina.Cartella / "TRACKS" / "Monza 1.trk", "1,2\r\n");
    Scrivi(macchina.Cartella / "Tracks", "a file, not a folder");
    EXPECT_EQ(CartellaCircuiti(), macchina.Cartella / "TRACKS");
    EXPECT_TRUE(LeggiFileTracciato("Monza 1"));
    fs::create_directory(macchina.Cartella / "tracks");
    EXPECT_EQ(CartellaCircuiti(), macchina.Cartella / "tracks") << "the usual name comes first";
}
#endif

TEST_F(Cartella, ListsAndFindsNamesOfPeopleAndIsNeverLeft) {
    const fs::path tracks = macchina.Cartella / "tracks";
    const std::string accenti = "Citt\xE0 d'Este n. 2";
    Scrivi(tracks / PercorsoDaTesto(accenti + ".trk"), "1,2\r\n");
    Scrivi(tracks / "valle.TRK", "3,4\r\n");
    Scrivi(tracks / "valle.sec", "");
    Scrivi(tracks / "trk", "");
    Scrivi(tracks / "altro.trk.bak", "");
    Scrivi(tracks / "a" / "b.trk", "1,2\r\n");
    Scrivi(macchina.Cartella / "fuori.trk", "1,2\r\n");
    ListaCircuiti = {"prima"};
    CaricaListaCircuiti();
    EXPECT_EQ(ListaCircuiti, (std::vector<std::string>{"prima", accenti, "valle"}));
    EXPECT_EQ(LeggiFileTracciato(accenti), (Punti{{1, 2}}));
    EXPECT_EQ(LeggiFileTracciato("Valle"), (Punti{{3, 4}}));
    EXPECT_TRUE(fs::equivalent(FileCircuito("VALLE", "sec"), tracks / "valle.sec"));
    EXPECT_EQ(FileCircuito("nuova", "sec"), tracks / "nuova.sec");
    for (const std::string& nome :
         {std::string("../fuori"), std::string("a\\b"), (macchina.Cartella / "fuori").string(),
          std::string(), std::string("fuori\0x", 7)}) {
        EXPECT_EQ(FileCircuito(nome, "trk"), fs::path()) << nome;
        EXPECT_FALSE(LeggiFileTracciato(nome)) << nome;
    }
    EXPECT_FALSE(LeggiFileTracciato(std::string(5000, 'x')));
#ifndef _WIN32
    Scrivi(tracks / "VALLE.TRK", "5,6\r\n");
    EXPECT_EQ(LeggiFileTracciato("Valle"), (Punti{{5, 6}})) << "the first in the order of bytes";
    ASSERT_EQ(::mkfifo((tracks / "tubo.trk").c_str(), 0600), 0);
    EXPECT_FALSE(LeggiFileTracciato("tubo")) << "there, and yet nothing to read from";
#endif
}

#ifndef _WIN32
TEST_F(Cartella, NamesThatThePageLacksAreFoundIfTheyAreAlone) {
    const fs::path tracks = macchina.Cartella / "tracks";
    Scrivi(tracks / "\u0141ie.trk", "1,2\r\n");
    EXPECT_EQ(LeggiFileTracciato("?ie"), (Punti{{1, 2}}));
    EXPECT_EQ(FileCircuito("?ie", "sec"), tracks / "\u0141ie.sec") << "there is none yet";
    Scrivi(tracks / "\u0143ie.trk", "3,4\r\n");
    EXPECT_FALSE(LeggiFileTracciato("?ie")) << "neither, rather than the wrong one";
}
#endif
