#include "sensors/ImpostaSensore.h"

#include <set>

#include "platform/Testo1252.h"
#include "sensors/Curve.h"
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

    for (const bool nuovo : {false, true}) {
        for (int i = 0; i < 20; ++i) tabella.Spunta(i, true);
        tabella.Y(11, "7");
        nuovo ? tabella.NuovoSensore() : tabella.SvuotaTabella();
        EXPECT_EQ(Figura(tabella), "o...................") << nuovo;
        EXPECT_EQ(Aperte(tabella), "--------------------") << nuovo;
        EXPECT_EQ(tabella.NumPuntiTabella(), 0) << nuovo;
        EXPECT_EQ(tabella.Riga(11).X + tabella.Riga(11).Y, "") << nuovo;
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

TEST_F(Salvataggio, WritesTheRowsInUseAndLoadsTheLibraryAnew) {
    EXPECT_TRUE(Salva("Mia prova"));
    const std::string testo = prova::Leggi(Cartella() / "Mia prova.sns");
    EXPECT_EQ(testo.substr(0, 54),
              "ZEVSensor\r\nPressione\r\nMia prova\r\n20\r\n52\r\n128\r\n243\r\n243");
    ASSERT_EQ(LibreriaSensori.size(), 1u);
    EXPECT_EQ(NomiSensori("Pressione"), V{"Mia prova"});

    // A file that differs by case alone is the one that is asked about and replaced.
    tabella.Y(2, "2");
    macchina.Risposte = {Answer::Cancel};
    EXPECT_FALSE(Salva("MIA PROVA"));
    EXPECT_EQ(macchina.Mostrati.at(0).Testo, Testo(Voce::IlFileConSpazio) +
                                                 (Cartella() / "MIA PROVA.sns").string() + " " +
                                                 Testo(Voce::EsisteGia));
    EXPECT_EQ(prova::Leggi(Cartella() / "Mia prova.sns"), testo);
    macchina.Risposte = {Answer::Ok};
    EXPECT_TRUE(Salva("MIA PROVA"));
    EXPECT_EQ(File(), (std::set<std::string>{"LANGUAGES.DAT", "sensors/Mia prova.sns"}));
    ASSERT_EQ(LibreriaSensori.size(), 1u);
    EXPECT_EQ(LibreriaSensori[0].Nome(), "MIA PROVA");
    EXPECT_EQ(LibreriaSensori[0].Y(19), 2.0);
#ifndef _WIN32  // where there can be two
    // Of two such files the one of the very name.
    fs::copy(Cartella() / "Mia prova.sns", Cartella() / "mia prova.sns");
    macchina.Risposte = {Answer::Ok};
    EXPECT_TRUE(Salva("mia prova"));
    EXPECT_EQ(LibreriaSensori[0].Nome() + LibreriaSensori[1].Nome(), "MIA PROVAmia prova");
#endif

    // The editor shows the first of two sensors of one name.
    prova::Scrivi(Cartella() / "zeta.sns", "ZEVSensor\r\nAltro\r\nMIA PROVA\r\n1\r\n7\r\n7\r\n");
    EXPECT_TRUE(Salva("\xC3\xA8"));  // UTF-8
    EXPECT_EQ(CercaSensore("MIA PROVA")->Tipo(), "Pressione");
    EXPECT_EQ(CercaSensore("\xE8")->NomeFile(), Cartella() / PercorsoDaTesto("\xE8.sns"));
    EXPECT_EQ(CercaSensore("nessuno"), nullptr);
}

TEST_F(Salvataggio, WhatCouldNotBeReadAgainIsRefused) {
    EXPECT_TRUE(Salva("Buono"));
    const auto prima = File();
    const std::string buono = prova::Leggi(Cartella() / "Buono.sns");
    const auto rifiutato = [&](const std::string& nome, const std::string& motivo) {
        macchina.Risposte = {Answer::Ok};
        EXPECT_FALSE(Salva(nome)) << nome;
        ASSERT_EQ(macchina.Mostrati.size(), 1u) << nome;
        EXPECT_EQ(macchina.Mostrati[0].Testo, motivo);
        EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Critical);
        EXPECT_EQ(macchina.Mostrati[0].Titolo, "Titolo");
        EXPECT_EQ(LibreriaSensori.size(), 1u);
    };
    const std::string fine = Testo(Voce::SensoreNonSalvato);
    for (const std::string& nome :
         {std::string("a/b"), std::string("../fuori"), (macchina.Cartella / "assoluto").string(),
          std::string(".nascosto"), std::string("\xE6\xB8\xA9\xE5\xBA\xA6")}) {
        rifiutato(nome,
                  Testo(Voce::MotivoNome) + "\r\n\"" + Utf8In1252(nome) + "\"\r\n\r\n" + fine);
    }
    rifiutato("", Testo(Voce::InserireNomeSensore));
#ifndef _WIN32  // wine says of such a name that it is not there
    const std::string lungo(300, 'x');
    rifiutato(lungo, Testo(Voce::IlFile) + " " + (Cartella() / "").string() + lungo + ".sns " +
                         Testo(Voce::NonTrovato) + "\r\n\r\n" + Testo(Voce::MotivoNegato) + "\r\n" +
                         fine);
#endif
    tabella.SvuotaTabella();
    for (const std::string nome : {"Vuoto", "Buono"}) {
        rifiutato(nome, Testo(Voce::MotivoSenzaPunti) + "\r\n\"" + nome + "\"\r\n\r\n" + fine);
    }
    EXPECT_EQ(File(), prima);
    EXPECT_EQ(prova::Leggi(Cartella() / "Buono.sns"), buono);
}

}  // namespace
}  // namespace lapvane
