#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "platform/ErroreRuntime.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"
#include "sensors/CSensore.h"
#include "shell/LoadStrings.h"
#include "support/Cartelle.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::PlatformProva;

class Libreria : public ::testing::Test {
 protected:
    Libreria() { prova::CaricaTestiVeri(0); }
    void File(const std::string& nome, const std::string& testo) {
        prova::Scrivi(macchina.Cartella / "sensors" / nome, testo);
    }
    static std::string Curva(const std::string& tipo, const std::string& nome, int punti) {
        std::string testo =
            "ZEVSensor\r\n" + tipo + "\r\n" + nome + "\r\n" + std::to_string(punti) + "\r\n";
        for (int i = 0; i < punti; ++i) testo += std::to_string(10 * i) + "\r\n";
        for (int i = 0; i < punti; ++i) testo += std::to_string(i) + ".5\r\n";
        return testo;
    }
    PlatformProva macchina;
};

TEST_F(Libreria, OrderIsThatOfTheFileNamesAndTheNameThatOfLineThree) {
    File("beta.sns", Curva("Pressione", "Primo", 3));
    File("Alfa.txt", Curva("Altro", "Secondo", 2));
    CaricaLibreriaSensori();
    ASSERT_EQ(LibreriaSensori.size(), 2u);
    EXPECT_EQ(LibreriaSensori[0].Nome(), "Secondo");
    EXPECT_EQ(LibreriaSensori[1].Tipo(), "Pressione");
    EXPECT_EQ(LibreriaSensori[1].NumPunti(), 3);
    EXPECT_EQ(LibreriaSensori[1].X(2), 20.0);
    EXPECT_EQ(LibreriaSensori[1].Y(2), 2.5);
    EXPECT_EQ(LibreriaSensori[1].X(3), 0.0);
    EXPECT_EQ(LibreriaSensori[1].NomeFile(), macchina.Cartella / "sensors" / "beta.sns");
    EXPECT_THROW(LibreriaSensori[1].X(21), ErroreRuntime);
    EXPECT_THROW(LibreriaSensori[1].Y(-1), ErroreRuntime);
}

TEST_F(Libreria, AFileOfAnyNameLoadsUnderItsLineThree) {
    File("\u0414\u0430\u0442\u0447\u0438\u043A.sns", Curva("Pressione", "Lodz", 2));
    CaricaLibreriaSensori();
    ASSERT_EQ(LibreriaSensori.size(), 1u);
    EXPECT_EQ(LibreriaSensori[0].Nome(), "Lodz");
}

TEST_F(Libreria, FuelLevelIsFilledUpWithItsLastPoint) {
    File("a.sns", Curva("LivelloBenzina", "Serbatoio", 5));
    CaricaLibreriaSensori();
    EXPECT_EQ(LibreriaSensori.at(0).NumPunti(), 5);
    EXPECT_EQ(LibreriaSensori[0].X(5), 40.0);
    EXPECT_EQ(LibreriaSensori[0].X(19), 40.0);
    EXPECT_EQ(LibreriaSensori[0].Y(19), 4.5);
    EXPECT_EQ(LibreriaSensori[0].X(20), 0.0);
}

TEST_F(Libreria, FilesThatAreNoSensorsAreReportedAndLeftOut) {
    CaricaLibreriaSensori();  // no folder
    EXPECT_TRUE(LibreriaSensori.empty());
    const std::string intera = Curva("Altro", "x", 4);
    File("1.txt", "zevsensor\r\n");
    File("2.sns", intera.substr(0, intera.size() - 6));  // cut short: the last line is gone
    File("3.sns", Curva("Altro", "x", 22));
    File("4.sns", "");
    File("5.sns", intera);
    File("6.sns", "ZEVSensor\r\nAltro\r\nx\r\nmolti\r\n");
    for (int i = 0; i < 5; ++i) macchina.Risposte.push_back(Answer::Ok);
    CaricaLibreriaSensori();
    EXPECT_EQ(LibreriaSensori.size(), 1u);
    ASSERT_EQ(macchina.Mostrati.size(), 5u);
    EXPECT_EQ(macchina.Mostrati[0].Testo,
              Testo(Voce::IlFileConSpazio) + "1.txt " + Testo(Voce::NonEUnSensore));
    EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Critical);
}

TEST_F(Libreria, FolderWithoutFilesIsEmptyAndAFileInItsPlaceIsReported) {
    fs::create_directories(macchina.Cartella / "sensors" / "old");
    File(".hidden", "x");
    CaricaLibreriaSensori();
    EXPECT_TRUE(macchina.Mostrati.empty());
    fs::remove_all(macchina.Cartella / "sensors");
    prova::Scrivi(macchina.Cartella / "sensors", "no folder");
    macchina.Risposte = {Answer::Ok};
    CaricaLibreriaSensori();
    EXPECT_EQ(macchina.Mostrati.at(0).Testo,
              Testo(Voce::IlFileConSpazio) + "sensors " + Testo(Voce::NonEUnSensore));
    EXPECT_TRUE(LibreriaSensori.empty());
}

TEST_F(Libreria, DeliveredFilesLoadAndTheSampleProjectNamesThem) {
    fs::copy(prova::CartellaDati() / "sensors", macchina.Cartella / "sensors");
    CaricaLibreriaSensori();
    std::set<std::string> tipi, nomi;
    for (const CSensore& s : LibreriaSensori) {
        tipi.insert(s.Tipo());
        EXPECT_TRUE(nomi.insert(s.Nome()).second) << "two sensors of the name " << s.Nome();
        EXPECT_EQ(s.NumPunti(), 20) << s.Nome();
        EXPECT_EQ(s.NomeFile().stem().string(), s.Nome());
    }
    EXPECT_EQ(tipi, (std::set<std::string>{"Altro", "LivelloBenzina", "Pressione", "PressioneTurbo",
                                           "SensoreG", "SensoreLambda", "TemperaturaAcqua",
                                           "TemperaturaOlio"}));
    ASSERT_TRUE(LeggiProgetto(prova::CartellaDati() / "Esempio.pro"));
    EXPECT_EQ(DatiProgetto.MaxPagine, 9);
    for (const std::string& nome :
         {DatiProgetto.TemperaturaOlio, DatiProgetto.PressioneOlio, DatiProgetto.TemperaturaAcqua,
          DatiProgetto.PressioneBenzina, DatiProgetto.LivelloBenzina, DatiProgetto.SensoreLambda}) {
        EXPECT_TRUE(nomi.contains(nome)) << nome;
    }
    // Two analogue inputs: no two of the sensors that are on share one.
    const RecordProgetto& p = DatiProgetto;
    std::multiset<int> ingressi;
    for (const auto& [acceso, ingresso] : {std::pair{p.AbilSG, p.ChannSG},
                                           {p.AbilCambio, p.ChannCambio},
                                           {p.AbilPT, p.ChannPT},
                                           {p.AbilSensoreLambda, p.ChannSensoreLambda}}) {
        if (acceso) ingressi.insert(ingresso);
    }
    EXPECT_EQ(ingressi, (std::multiset<int>{0, 1}));
}

}  // namespace
}  // namespace lapvane
