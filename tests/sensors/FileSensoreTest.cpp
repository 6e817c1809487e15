#include "sensors/FileSensore.h"

#include "sensors/CSensore.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

using Righe = std::vector<std::string>;

std::string Volte(int n, const std::string& riga) {
    std::string testo;
    for (int i = 0; i < n; ++i) testo += riga + "\r\n";
    return testo;
}

TEST(FileSensore, WritesTheUsersTextsAndPadsWithTheLast) {
    const std::string testa = "ZEVSensor\r\nPressione\r\nOlio \xE0 10\r\n20\r\n";
    Righe x{"0", "512", "1023"}, y{"0.000", "5.25", "10.000"};
    // One row more than the table has does not reach the file.
    x.resize(20, "7");
    x.push_back("9999");
    EXPECT_EQ(TestoSensore("Pressione", "Olio \xE0 10", x, y),
              testa + "0\r\n512\r\n1023\r\n" + Volte(17, "7") + "0.000\r\n5.25\r\n" +
                  Volte(18, "10.000"));
}

TEST(FileSensore, AFailureSaysWhatItWasAndLeavesTheOldFile) {
    const prova::PlatformProva macchina;
    const auto percorso = macchina.Cartella / "sensors" / "Prova.sns";
    try {
        ScriviSensore(percorso, "Altro", "Prova", Righe{"1"}, Righe{"2"});
        FAIL() << "there is no folder";
    } catch (const ErroreRuntime& errore) {
        EXPECT_EQ(errore.Cosa(), Lavoro::ScrivereSensore);
    }
    std::filesystem::create_directory(percorso.parent_path());
    ScriviSensore(percorso, "Altro", "Prova", Righe{"10", "20,7"}, Righe{"-1.5", ""});
    const std::string prima = prova::Leggi(percorso);
    EXPECT_THROW(ScriviSensore(percorso / "y.sns", "Altro", "Prova", Righe{"1"}, Righe{"2"}),
                 ErroreRuntime);
    EXPECT_EQ(prova::Leggi(percorso), prima);
    const auto s = LeggiSensore(prima);
    ASSERT_TRUE(s);
    EXPECT_EQ(s->NumPunti(), 20);
    EXPECT_EQ(s->X(19), 20.0) << "a comma ends the number";
    EXPECT_EQ(s->Y(0), -1.5);
    EXPECT_EQ(s->Y(19), 0.0);
}

TEST(FileSensore, AFileCutAtAnyLineIsRejected) {
    for (const char* tipo : {"Pressione", "LivelloBenzina"}) {
        const std::string intero = TestoSensore(tipo, "x", Righe{"1", "2"}, Righe{"3", "4"});
        EXPECT_TRUE(LeggiSensore(intero + "more behind it\r\n"));
        EXPECT_TRUE(LeggiSensore(intero.substr(0, intero.size() - 2)));  // last line not ended
        int tagli = 0;
        for (std::size_t fine = 0; fine + 3 < intero.size(); ++tagli) {
            EXPECT_FALSE(LeggiSensore(intero.substr(0, fine))) << tagli;
            fine = intero.find("\r\n", fine) + 2;
        }
        EXPECT_EQ(tagli, 43);
    }
}

TEST(FileSensore, NumberOfPointsIsTakenFrom0To21) {
    const auto letto = [](const std::string& tipo, const std::string& n, int righe) {
        std::string testo = "ZEVSensor\r\n" + tipo + "\r\nx\r\n" + n + "\r\n";
        for (int i = 1; i <= righe; ++i) testo += std::to_string(i) + "\r\n";
        return LeggiSensore(testo);
    };
    EXPECT_EQ(letto("Pressione", "0", 0)->NumPunti(), 0);
    EXPECT_EQ(letto("Altro", " 2.5 ", 4)->NumPunti(), 2) << "half to even";
    EXPECT_EQ(letto("Pressione", "21", 42)->X(20), 21.0);
    EXPECT_EQ(letto("Pressione", "21", 42)->Y(20), 42.0);
    for (const char* tipo : {"Pressione", "LivelloBenzina"}) {
        for (const char* n : {"22", "-1", "molti", "", "40000", "1E9"}) {
            EXPECT_FALSE(letto(tipo, n, 60)) << tipo << " " << n;
        }
    }
    // A fuel level is filled up to the table's end, not to the array's.
    const auto corto = letto("LivelloBenzina", "3", 6);
    EXPECT_EQ(corto->NumPunti(), 3);
    EXPECT_EQ(corto->X(19), 3.0);
    EXPECT_EQ(corto->Y(3), 6.0);
    EXPECT_EQ(corto->X(20), 0.0);
    EXPECT_EQ(letto("Altro", "3", 6)->X(3), 0.0);
    EXPECT_FALSE(LeggiSensore("zevsensor\r\nAltro\r\nx\r\n0\r\n"));
    EXPECT_THROW(corto->X(21), ErroreRuntime);
    EXPECT_THROW(corto->Y(-1), ErroreRuntime);
}

namespace fs = std::filesystem;

std::string Curva(const std::string& tipo, const std::string& nome, int punti) {
    std::string testo =
        "ZEVSensor\r\n" + tipo + "\r\n" + nome + "\r\n" + std::to_string(punti) + "\r\n";
    for (int i = 0; i < 2 * punti; ++i) testo += std::to_string(10 * i) + ".5\r\n";
    return testo;
}

TEST(Libreria, LoadsInTheOrderOfTheFilesAndTellsWhatIsNoSensor) {
    prova::PlatformProva macchina;
    prova::CaricaTestiVeri(0);
    const fs::path cartella = macchina.Cartella / "sensors";
    CaricaLibreriaSensori();  // no folder
    fs::create_directories(cartella / "old");
    prova::Scrivi(cartella / ".hidden", "x");
    CaricaLibreriaSensori();
    EXPECT_TRUE(LibreriaSensori.empty());
    const std::string intera = Curva("Altro", "Secondo", 4);
    std::string fuori = intera;
    fuori.replace(fuori.rfind("70"), 2, "1e400");
    for (const auto& [nome, testo] : std::vector<std::pair<std::string, std::string>>{
             {"beta.sns", Curva("Pressione", "Primo", 3)},
             {"Alfa.txt", intera},
             {"zz\u0414\u0430.sns", Curva("SensoreG", "Lodz", 2)},
             {"1.txt", "zevsensor\r\n"},
             {"2.sns", intera.substr(0, intera.size() - 6)},  // the last line is gone
             {"3.sns", Curva("Altro", "x", 22)},
             {"4.sns", ""},
             {"5.sns", fuori}}) {
        prova::Scrivi(cartella / nome, testo);
    }
    macchina.Risposte.assign(5, Answer::Ok);
    CaricaLibreriaSensori();
    ASSERT_EQ(macchina.Mostrati.size(), 5u);
    EXPECT_EQ(macchina.Mostrati[0].Testo,
              Testo(Voce::IlFileConSpazio) + "1.txt " + Testo(Voce::NonEUnSensore));
    EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Critical);
    EXPECT_EQ(macchina.Mostrati[0].Titolo, "lapvane");
    ASSERT_EQ(LibreriaSensori.size(), 3u);
    EXPECT_EQ(LibreriaSensori[0].Nome(), "Secondo");
    EXPECT_EQ(LibreriaSensori[1].Tipo(), "Pressione");
    EXPECT_EQ(LibreriaSensori[1].NomeFile(), cartella / "beta.sns");
    EXPECT_EQ(LibreriaSensori[2].Nome(), "Lodz");

    fs::remove_all(cartella);
    prova::Scrivi(cartella, "no folder");
    macchina.Risposte = {Answer::Ok};
    CaricaLibreriaSensori();
    EXPECT_EQ(macchina.Mostrati.back().Testo,
              Testo(Voce::IlFileConSpazio) + "sensors " + Testo(Voce::NonEUnSensore));
}

}  // namespace
}  // namespace lapvane
