#include "sensors/ImpostaSensore.h"

#include <gtest/gtest.h>

#include <set>

#include "platform/Testo1252.h"
#include "sensors/Curve.h"
#include "shell/LoadStrings.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using V = std::vector<std::string>;

/// Rows with an enabled tick, as a picture: x in use, o can be ticked, . cannot.
std::string Figura(const TabellaPunti& tabella) {
    std::string figura;
    for (int i = 0; i < TabellaPunti::kRighe; ++i) {
        const RigaPunto& riga = tabella.Riga(i);
        figura += riga.Spunta ? 'x' : riga.SpuntaAttiva ? 'o' : '.';
    }
    return figura;
}

std::string Aperte(const TabellaPunti& tabella) {
    std::string figura;
    for (int i = 0; i < TabellaPunti::kRighe; ++i) figura += tabella.Riga(i).Caselle ? '#' : '-';
    return figura;
}

void Riempi(TabellaPunti& tabella, const std::vector<std::pair<std::string, std::string>>& punti) {
    for (std::size_t i = 0; i < punti.size(); ++i) {
        const int n = static_cast<int>(i);
        tabella.Spunta(n, true);
        tabella.X(n, punti[i].first);
        tabella.Y(n, punti[i].second);
    }
}

TEST(Tabella, OnlyTheBorderOfTheRowsInUseMoves) {
    TabellaPunti tabella;
    EXPECT_EQ(Figura(tabella), "o...................");
    EXPECT_EQ(Aperte(tabella), "--------------------");
    EXPECT_FALSE(tabella.DaDisegnare());
    for (int i = 0; i < 12; ++i) tabella.Spunta(i, true);
    EXPECT_EQ(Figura(tabella), "xxxxxxxxxxxxo.......");
    EXPECT_EQ(Aperte(tabella), "############--------");
    EXPECT_TRUE(tabella.DaDisegnare());
    tabella.Spunta(6, false);
    EXPECT_EQ(Figura(tabella), "xxxxxxxxxxxxo.......") << "the tick comes back at once";
    EXPECT_EQ(tabella.NumPuntiTabella(), 12);
    EXPECT_FALSE(tabella.DaDisegnare());
    tabella.X(11, "77");
    tabella.Spunta(11, false);
    EXPECT_EQ(Figura(tabella), "xxxxxxxxxxxo........");
    EXPECT_EQ(Aperte(tabella), "############--------") << "its own boxes stay";
    EXPECT_EQ(tabella.Riga(11).X, "77");
    EXPECT_EQ(tabella.NumPuntiTabella(), 11);

    for (int i = 11; i < 20; ++i) tabella.Spunta(i, true);
    for (const bool nuovo : {false, true}) {
        for (int i = 0; i < 20; ++i) tabella.Spunta(i, true);
        EXPECT_EQ(Figura(tabella), "xxxxxxxxxxxxxxxxxxxx");
        nuovo ? tabella.NuovoSensore() : tabella.SvuotaTabella();
        EXPECT_EQ(Figura(tabella), "o...................") << nuovo;
        EXPECT_EQ(Aperte(tabella), "--------------------") << nuovo;
        EXPECT_EQ(tabella.NumPuntiTabella(), 0) << nuovo;
        EXPECT_EQ(tabella.Riga(11).X, "") << nuovo;
    }
}

TEST(Tabella, ShowsSensorsAndCurvesInTheirDecimals) {
    CSensore sensore;
    sensore.NumPunti(21);
    for (int i = 0; i < 21; ++i) sensore.X(i, i);
    sensore.X(0, 0.5);
    sensore.Y(1, 0.5);
    sensore.Y(2, -0.25);
    sensore.Y(3, 12);
    sensore.Y(4, 1.2345);
    const auto mostra = [&](const char* tipo) {
        TabellaPunti tabella;
        tabella.MostraSensore(sensore, tipo);
        EXPECT_EQ(tabella.NumPuntiTabella(), 20);
        V testi = tabella.AsseY();
        testi.resize(5);
        testi.push_back(tabella.Riga(0).X);
        return testi;
    };
    // The zero before the point is put back behind nothing but the beginning of the text.
    EXPECT_EQ(mostra("PressioneTurbo"), (V{"0.000", "0.500", "-.250", "12.000", "1.2345", ".5"}));
    EXPECT_EQ(mostra("SensoreLambda"), (V{"0.00", "0.50", "-.25", "12.00", "1.2345", ".5"}));
    EXPECT_EQ(mostra("Altro"), (V{"0", ".5", "-.25", "12", "1.2345", ".5"}));

    CurvaX.fill(0);
    CurvaY.fill(0);
    CurvaX[1] = -25536;
    CurvaY[0] = 5;
    CurvaY[19] = 1500;
    TabellaPunti tabella;
    tabella.MostraCurva(1000);
    EXPECT_EQ(Figura(tabella), "xxxxxxxxxxxxxxxxxxxx");
    EXPECT_EQ(Aperte(tabella), "####################");
    EXPECT_EQ(tabella.Riga(1).X, "-25536");
    EXPECT_EQ(tabella.Riga(0).Y, "0.005");
    EXPECT_EQ(tabella.Riga(19).Y, "1.500");
    EXPECT_EQ(CurvaY[19], 1.5) << "the reader divides the array itself";

    const LimitiCurva limiti = tabella.CalcolaLimiti();
    EXPECT_EQ(limiti.XMin, -25536.0);
    EXPECT_EQ(limiti.XMax, 0.0) << "zero is always inside";
    EXPECT_EQ(limiti.YMin, 0.0);
    EXPECT_EQ(limiti.YMax, 1.5);
}

TEST(Tabella, XMayStandStillButNotFall) {
    TabellaPunti tabella;
    Riempi(tabella, {{"100", "1"}, {"100", "2"}, {"90", "3"}, {"testo", "4"}, {"100,5", "5"}});
    EXPECT_TRUE(tabella.Crescente(0));
    EXPECT_TRUE(tabella.Crescente(1));
    EXPECT_FALSE(tabella.Crescente(2));
    EXPECT_FALSE(tabella.Crescente(3)) << "a text that is none counts as 0";
    EXPECT_EQ(tabella.X(4), 100.0) << "a comma ends the number";
}

class Salvataggio : public ::testing::Test {
 protected:
    Salvataggio() {
        prova::CaricaTestiVeri(1);
        fs::create_directory(Cartella());
        Riempi(tabella, {{"52", "-.5"}, {"128", "0.250"}, {"243", "1,5"}});
    }
    fs::path Cartella() { return macchina.Cartella / "sensors"; }
    bool Salva(const std::string& nome) {
        macchina.Mostrati.clear();
        return SalvaSensore("Pressione", nome, tabella, "Titolo");
    }
    /// All files below the machine's folder.
    std::set<std::string> File() {
        std::set<std::string> nomi;
        for (const auto& voce : fs::recursive_directory_iterator(macchina.Cartella)) {
            if (!voce.is_directory()) {
                nomi.insert(fs::relative(voce.path(), macchina.Cartella).generic_string());
            }
        }
        return nomi;
    }
    prova::PlatformProva macchina;
    TabellaPunti tabella;
};

std::string Volte(int n, const std::string& riga) {
    std::string testo;
    for (int i = 0; i < n; ++i) testo += riga + "\r\n";
    return testo;
}

TEST_F(Salvataggio, WritesTwentyRowsAndLoadsTheLibraryAnew) {
    EXPECT_TRUE(Salva("Mia prova"));
    EXPECT_EQ(prova::Leggi(Cartella() / "Mia prova.sns"),
              "ZEVSensor\r\nPressione\r\nMia prova\r\n20\r\n52\r\n128\r\n" + Volte(18, "243") +
                  "-.5\r\n0.250\r\n" + Volte(18, "1,5"));
    ASSERT_EQ(LibreriaSensori.size(), 1u);
    EXPECT_EQ(NomiSensori("Pressione"), V{"Mia prova"});
    EXPECT_EQ(NomiSensori("Altro"), V{});
    TabellaPunti letta;
    letta.MostraSensore(*CercaSensore("Mia prova"), "Pressione");
    EXPECT_EQ(letta.NumPuntiTabella(), 20);
    EXPECT_EQ(letta.Riga(19).X, "243");
    EXPECT_EQ(letta.Riga(19).Y, "1.000") << "a comma ended the number";

    // A file that differs by case alone is the one that is asked about and replaced.
    tabella.Y(2, "2");
    macchina.Risposte = {Answer::Cancel};
    EXPECT_FALSE(Salva("MIA PROVA"));
    const std::string percorso = (Cartella() / "MIA PROVA.sns").string();
    EXPECT_EQ(macchina.Mostrati[0].Testo,
              Testo(Voce::IlFileConSpazio) + percorso + " " + Testo(Voce::EsisteGia));
    EXPECT_EQ(macchina.Mostrati[0].Titolo, Testo(Voce::SostituzioneFile));
    EXPECT_EQ(macchina.Mostrati[0].Pulsanti, Buttons::OkCancel);
    EXPECT_EQ(LibreriaSensori[0].Y(2), 1.0);
    macchina.Risposte = {Answer::Ok};
    EXPECT_TRUE(Salva("MIA PROVA"));
    EXPECT_EQ(File(), (std::set<std::string>{"LANGUAGES.DAT", "sensors/Mia prova.sns"}));
    ASSERT_EQ(LibreriaSensori.size(), 1u);
    EXPECT_EQ(LibreriaSensori[0].Nome(), "MIA PROVA");
    EXPECT_EQ(LibreriaSensori[0].Y(19), 2.0);

    // The editor shows the first of two sensors of one name.
    prova::Scrivi(Cartella() / "zeta.sns", "ZEVSensor\r\nAltro\r\nMIA PROVA\r\n1\r\n7\r\n7\r\n");
    EXPECT_TRUE(Salva("\xC3\xA8"));  // UTF-8
    EXPECT_EQ(LibreriaSensori.size(), 3u);
    EXPECT_EQ(CercaSensore("MIA PROVA")->Tipo(), "Pressione");
    EXPECT_EQ(CercaSensore("\xE8")->NomeFile(), Cartella() / PercorsoDaTesto("\xE8.sns"));
    EXPECT_EQ(CercaSensore("nessuno"), nullptr);
}

TEST_F(Salvataggio, NamesThatAreNoFileOfTheLibraryAreRefused) {
    fs::create_directory(Cartella() / "sotto");
    EXPECT_TRUE(Salva("Buono"));
    const auto prima = File();
    for (const std::string& nome :
         {std::string("a/b"), std::string("sotto/b"), std::string("../fuori"),
          (macchina.Cartella / "assoluto").string(), std::string("/"), std::string("."),
          std::string(".."), std::string(".nascosto"), std::string(300, 'x'),
          std::string("\xE6\xB8\xA9\xE5\xBA\xA6")}) {
        macchina.Risposte = {Answer::Ok};
        EXPECT_FALSE(Salva(nome)) << nome;
        ASSERT_EQ(macchina.Mostrati.size(), 1u) << nome;
        EXPECT_EQ(macchina.Mostrati[0].Testo,
                  nome.size() == 300
                      ? Testo(Voce::IlFile) + " " + (Cartella() / "").string() + nome + ".sns " +
                            Testo(Voce::NonTrovato) + "\r\n\r\n" + Testo(Voce::MotivoNegato) +
                            "\r\n" + Testo(Voce::SensoreNonSalvato)
                      : Testo(Voce::MotivoNome) + "\r\n\"" + Utf8In1252(nome) + "\"\r\n\r\n" +
                            Testo(Voce::SensoreNonSalvato));
        EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Critical);
        EXPECT_EQ(macchina.Mostrati[0].Titolo, "Titolo");
        EXPECT_EQ(File(), prima) << nome;
        EXPECT_EQ(LibreriaSensori.size(), 1u);
    }
    macchina.Risposte = {Answer::Ok};
    EXPECT_FALSE(Salva(""));
    EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::InserireNomeSensore));
    EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Critical);
    EXPECT_EQ(tabella.NumPuntiTabella(), 3);

    fs::remove_all(Cartella());
    macchina.Risposte = {Answer::Ok};
    EXPECT_FALSE(Salva("Senza cartella"));
    EXPECT_EQ(macchina.Mostrati.size(), 1u);
    EXPECT_EQ(LibreriaSensori.size(), 1u);
}

TEST_F(Salvataggio, WithoutARowNothingIsWrittenOrAsked) {
    EXPECT_TRUE(Salva("Buono"));
    const std::string buono = prova::Leggi(Cartella() / "Buono.sns");
    const auto prima = File();
    tabella.SvuotaTabella();
    for (const std::string nome : {"Vuoto", "Buono"}) {
        macchina.Risposte = {Answer::Ok};
        EXPECT_FALSE(Salva(nome));
        ASSERT_EQ(macchina.Mostrati.size(), 1u);
        EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::MotivoSenzaPunti) + "\r\n\"" + nome +
                                                  "\"\r\n\r\n" + Testo(Voce::SensoreNonSalvato));
    }
    EXPECT_EQ(File(), prima);
    EXPECT_EQ(prova::Leggi(Cartella() / "Buono.sns"), buono);
}

}  // namespace
}  // namespace lapvane
