#include "sensors/CSensore.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

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
