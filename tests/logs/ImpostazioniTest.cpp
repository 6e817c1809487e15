// The copy of the settings beside a log.
#include "logs/Impostazioni.h"

#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"
#include "shell/StatoShell.h"
#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;

class Impostazioni : public ::testing::Test {
 protected:
    Impostazioni() {
        prova::CaricaTestiVeri(1);
        EXPECT_TRUE(LeggiProgetto(prova::CartellaDati() / "Esempio.pro"));
        PercorsoProgetto = macchina.Cartella / "day.pro";
    }
    /// Converts a log of no record; what is told behind text 269.
    std::string Converti() {
        macchina.Mostrati.clear();
        macchina.BoxLiberi = true;
        PercorsoCsv = csv;
        ConvertiLog();
        EXPECT_TRUE(fs::exists(csv)) << "the log goes before its copy";
        EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::ConversioneCompletata));
        return macchina.Mostrati.size() > 1 ? macchina.Mostrati[1].Testo : "";
    }
    prova::PlatformProva macchina;
    prova::PrincipaleProva finestra;
    fs::path csv = macchina.Cartella / "run.csv", file = macchina.Cartella / "run.set";
};

TEST_F(Impostazioni, AreReadBackAndOpenAsAProject) {
    DatiProgetto.NoteProgetto = "front=12\r\nrear=14\rwet";
    DatiProgetto.mskTO = -70000;
    ScriviImpostazioni(csv);
    const std::string testo = prova::Leggi(file);
    EXPECT_TRUE(testo.starts_with("ZEVProject\r\nID_NomeProgetto="));
    EXPECT_TRUE(testo.ends_with("\r\nID_ChannSensoreLambda=1\r\nLapvane settings=1\r\n"));
    const RecordProgetto diOra = std::exchange(DatiProgetto, {});
    RecordProgetto letto;
    ASSERT_TRUE(LeggiImpostazioni(csv, letto));
    EXPECT_EQ(letto.NoteProgetto, "front=12 rear=14 wet");
    EXPECT_EQ(letto.mskTO, -70000) << "the lines of the notes shift what is behind them";
    EXPECT_EQ(letto.TCampTO, diOra.TCampTO);
    EXPECT_EQ(TestoProgetto(DatiProgetto), TestoProgetto(RecordProgetto{})) << "the open project";
    EXPECT_TRUE(LeggiProgetto(file));
    EXPECT_EQ(DatiProgetto.Led4, diOra.Led4);
}

TEST_F(Impostazioni, CutOrForeignFilesAreRefused) {
    const std::string buono = TestoImpostazioni(DatiProgetto);
    const auto rifiutato = [&](const std::string& testo) {
        prova::Scrivi(file, testo);
        RecordProgetto record;
        record.Led0 = 77;
        return !LeggiImpostazioni(csv, record) && record.Led0 == 77;
    };
    EXPECT_FALSE(rifiutato(buono));
    for (std::size_t i = 0; i < buono.size(); i += 7) EXPECT_TRUE(rifiutato(buono.substr(0, i)));
    const auto con = [&](const std::string& vecchio, const std::string& nuovo) {
        std::string testo = buono;
        return testo.replace(testo.find(vecchio), vecchio.size(), nuovo);
    };
    EXPECT_TRUE(rifiutato(con("ZEVProject", "ZEVSensor")));
    EXPECT_TRUE(rifiutato(con("settings=1", "settings=2")));
    EXPECT_TRUE(rifiutato(con("ID_Led0=", "x=1\r\nID_Led0=")));
    EXPECT_TRUE(rifiutato(con("ID_Led0=", "ID_Led0 ")));
    EXPECT_TRUE(rifiutato(con("ID_Led0=", "ID_Led0=x")));
}

TEST_F(Impostazioni, NoneOfAnEarlierLogSurvivesANewOne) {
    const std::string vecchie = TestoImpostazioni({});
    prova::Scrivi(file, vecchie);
    EXPECT_EQ(Converti(), "");
    EXPECT_EQ(prova::Leggi(file), TestoImpostazioni(DatiProgetto));
#ifndef _WIN32
    DatiProgetto.NoteProgetto.assign(9000, 'x');
    {
        const prova::SpazioFinito poco(8000);  // room for the log
        EXPECT_EQ(Converti(), Testo(Voce::NonScritto) + "\r\n" + file.string() + "\r\n" +
                                  Testo(Voce::MotivoPieno) + "\r\n\r\n" +
                                  Testo(Voce::ImpostazioniNonCopiate));
    }
    EXPECT_FALSE(fs::exists(file));
#endif
    for (const bool scelta : {false, true}) {
        ScegliCopia(scelta);
        if (scelta) PercorsoProgetto.clear();  // no project either
        prova::Scrivi(file, vecchie);
        EXPECT_EQ(Converti(), "");
        EXPECT_FALSE(fs::exists(file)) << scelta;
    }
    progettoAperto().SenzaFile = true;
    EXPECT_EQ(Converti(), "");
    EXPECT_TRUE(fs::exists(file)) << "a project that has no file yet is one";
}

TEST_F(Impostazioni, WhatIsNotOursStaysAndIsTold) {
    const std::string detto = Testo(Voce::ImpostazioniEstranee) + "\r\n" + file.string() +
                              "\r\n\r\n" + Testo(Voce::ImpostazioniNonCopiate);
    for (const std::string& altrui : {std::string("a list"), TestoProgetto()}) {
        prova::Scrivi(file, altrui);
        ScegliCopia(true);
        EXPECT_EQ(Converti(), detto);
        ScegliCopia(false);
        EXPECT_EQ(Converti(), "");
        EXPECT_EQ(prova::Leggi(file), altrui);
    }
    fs::remove(file);
    fs::create_directory(file);
    ScegliCopia(true);
    EXPECT_TRUE(Converti().starts_with(Testo(Voce::NonScritto) + "\r\n" + file.string()));
    EXPECT_TRUE(fs::is_directory(file));
}

}  // namespace
}  // namespace lapvane
