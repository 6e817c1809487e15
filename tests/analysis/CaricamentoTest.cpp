#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "analysis/AnalisiProva.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

/// Start (5 rows), three laps of 6, 5 and 7 rows, End (4 rows).
LogProva TreGiri() {
    LogProva log;
    log.Tratto(1, 5).Tratto(2, 6).Tratto(3, 5).Tratto(4, 7).Tratto(5, 4);
    log.Tim = "1.4\r\n01:02.30, 1\r\n01:01.90, 1\r\n01:03.10, 2\r\n\r\n";
    return log;
}

}  // namespace

using CaricamentoAnalisi = AnalisiProva;

TEST_F(CaricamentoAnalisi, ASaveThatWasCutIsCompletedFirst) {
    LogProva log;
    log.Tratto(1, 3).Tratto(2, 11).Tratto(3, 3);
    log.Tim = "1.4\r\n01:02.30, 1\r\n\r\n";
    log.Scrivi(Stelo());
    // Killed between the renames of the first and the second of three new files.
    std::string marca = "Lapvane save 1\r\n";
    for (const char* fine : {".txt", ".tim", ".csv"}) {
        const std::string copia = std::string(".lapvane-copia") + fine;
        marca += "R\r\nrun" + std::string(fine) + "\r\n" + copia + "\r\n";
        if (fine != std::string(".csv")) {
            std::filesystem::rename(ConFine(Stelo(), fine), macchina.Cartella / copia);
        }
    }
    Scrivi(macchina.Cartella / ".lapvane+bfee071f6f5897ec", marca + "end\r\n");
    ASSERT_TRUE(ApriCsv());
    EXPECT_TRUE(macchina.Mostrati.empty());
    EXPECT_EQ(analisi.NumRighe(), 17);
    EXPECT_FALSE(std::filesystem::exists(macchina.Cartella / ".lapvane-copia.txt"));
}

TEST_F(CaricamentoAnalisi, FillsTableAndNamesAndShowsTheFirstStretch) {
    LogProva log = TreGiri();
    log.Righe[26].Celle[16] = "0,98";
    log.Righe[0].Celle[3] = "1250";
    DatiProgetto.NomeProgetto = "Montecorvo";
    ASSERT_TRUE(Apri(log));

    EXPECT_EQ(analisi.NumCampi(), 16);
    EXPECT_EQ(analisi.NumRighe(), 27);
    EXPECT_EQ(analisi.NumRigheTesto(), "27");
    EXPECT_EQ(analisi.Tabella().Valore(16, Piano::Dati, 26), 0.98);
    EXPECT_EQ(analisi.Tabella().Valore(3, Piano::Dati, 0), 1250.0);
    EXPECT_EQ(analisi.Tabella().Valore(11, Piano::Laterale, 26), 5.0);
    EXPECT_EQ(analisi.Tabella().Valore(10, Piano::Laterale, 26), 15.0);

    EXPECT_EQ(vista.nomi[1], Testo(Voce::CanaleTempo));
    EXPECT_EQ(vista.nomi[4], Testo(Voce::CanaleVelocita));
    EXPECT_EQ(vista.nomi[15], Testo(Voce::CanaleLambda));
    EXPECT_EQ(vista.nomi[16], Testo(Voce::CanaleLambda))
        << "the lambda in its two units has one name";
    EXPECT_EQ(vista.unita_[1], "[sec]");
    EXPECT_EQ(vista.unita_[8], "[\xB0 C]");
    EXPECT_EQ(vista.unita_[12], "[]");
    EXPECT_EQ(vista.unita_[16], "[Lambda]");
    EXPECT_TRUE(vista.visibili[3]);
    EXPECT_TRUE(vista.visibili[16]);
    EXPECT_FALSE(vista.visibili[17]);
    EXPECT_FALSE(vista.visibili[20]);
    EXPECT_EQ(vista.colori[3], 192u);
    EXPECT_EQ(vista.colori[20], Rgb(192, 192, 255));

    EXPECT_EQ(vista.scheda, 0);
    EXPECT_EQ(analisi.Giri().GiroSelezionato(), 1);
    EXPECT_EQ(vista.corrente, (VistaProva::Posto{1, 1}));
    EXPECT_EQ(vista.schede[0], Testo(Voce::Grafici) + " " + Testo(Voce::Giro) + " 1");
    EXPECT_EQ(vista.schede[1], Testo(Voce::Allarmi) + " " + Testo(Voce::Giro) + " 1");
    EXPECT_TRUE(AnalisiCaricata);
    EXPECT_EQ(macchina.Puntatori, (std::vector{Pointer::Busy, Pointer::Normal}));
    EXPECT_EQ(Leggi(macchina.Cartella / "schema.ini").substr(0, 31),
              "[run.csv]\r\nColNameHeader=True\r\n");
}

TEST_F(CaricamentoAnalisi, TellsItsSteppingStonesInTheStatusBar) {
    ASSERT_TRUE(Apri(TreGiri()));
    const std::string percorso = ConFine(Stelo(), ".csv").string();
    EXPECT_EQ(finestra.Storia,
              (std::vector<std::string>{
                  "2:" + Testo(Voce::LetturaFileDati), "3:" + Testo(Voce::CaricamentoDati),
                  "2:" + Testo(Voce::LetturaFileAllarmi), "3:" + Testo(Voce::CaricamentoDati),
                  "2:", "3:" + Testo(Voce::DatiCaricati), "1:", "2:" + percorso, "3:"}));
}

TEST_F(CaricamentoAnalisi, ShowsThePercentagePastAThousandRowsAndOnlyWhenItChanges) {
    LogProva log;
    log.Tratto(1, 2000);
    ASSERT_TRUE(Apri(log));
    std::vector<std::string> mostrati;
    for (const std::string& voce : finestra.Storia) {
        if (voce.ends_with(" %")) mostrati.push_back(voce);
    }
    // Row 1001 of 2000 is 50.05 per cent; row 1010 is 50.5 and row 1030 is 51.5, ties to even: 50
    // ends with row 1010, 51 with row 1029. From 50 to 100, once for each of the two files.
    ASSERT_EQ(mostrati.size(), 102u);
    EXPECT_EQ(mostrati[0], "3:" + Testo(Voce::CaricamentoDati) + "50 %");
    EXPECT_EQ(mostrati[1], "3:" + Testo(Voce::CaricamentoDati) + "51 %");
    EXPECT_EQ(mostrati[50], "3:" + Testo(Voce::CaricamentoDati) + "100 %");
    EXPECT_EQ(mostrati[51], "3:" + Testo(Voce::CaricamentoDati) + "50 %");

    finestra.Storia.clear();
    LogProva corto;
    corto.Tratto(1, 1000);
    ASSERT_TRUE(Apri(corto));
    for (const std::string& voce : finestra.Storia) EXPECT_FALSE(voce.ends_with(" %")) << voce;
}

TEST_F(CaricamentoAnalisi, ReadsFifteenColumnsOfAnOlderLog) {
    LogProva log = TreGiri();
    log.Tim.replace(0, 3, "1.3");
    log.Righe[0].Celle[15] = "13.5";
    log.Righe[0].Celle[16] = "0.9";
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(analisi.NumCampi(), 15);
    EXPECT_TRUE(vista.visibili[15]);
    EXPECT_FALSE(vista.visibili[16]);
    EXPECT_EQ(analisi.Tabella().Valore(15, Piano::Dati, 0), 13.5);
    EXPECT_EQ(analisi.Tabella().Valore(16, Piano::Dati, 0), 0.0);
    EXPECT_EQ(vista.unita_[15], "[A/F];Lambda sensor[Lambda]")
        << "the last title is all that is left of the line";
}

TEST_F(CaricamentoAnalisi, KeepsTheTitleOfAColumnWithoutUnit) {
    LogProva log = TreGiri();
    log.Titoli = "t [s];d [m];Engine [RPM];Whatever;Fuel [bar]";
    log.Colonne = 5;
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(vista.nomi[4], "Whatever");
    EXPECT_EQ(vista.unita_[4], "[RPM]") << "the unit of the channel before";
    EXPECT_EQ(vista.nomi[5], Testo(Voce::CanalePressioneBenzina));
    EXPECT_EQ(vista.nomi[6], "") << "a column that the file lacks has no title";
    analisi.RefreshLanguage();
    EXPECT_EQ(vista.nomi[4], Testo(Voce::CanaleVelocita)) << "no person gave that name";
    EXPECT_EQ(vista.nomi[6], Testo(Voce::CanalePressioneOlio));
}

TEST_F(CaricamentoAnalisi, TakesTheAlmFileAfterAMessage) {
    const LogProva log = TreGiri();
    log.Scrivi(Stelo());
    std::filesystem::rename(ConFine(Stelo(), ".txt"), ConFine(Stelo(), ".alm"));
    macchina.Risposte = {Answer::Ok};
    ASSERT_TRUE(ApriCsv());
    ASSERT_EQ(macchina.Mostrati.size(), 1u);
    EXPECT_EQ(macchina.Mostrati[0].Testo,
              Testo(Voce::IlFile) + " run.txt " + Testo(Voce::NonTrovato));
    EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Critical);
    EXPECT_EQ(macchina.Mostrati[0].Titolo, "lapvane");
    EXPECT_EQ(analisi.Tabella().Valore(11, Piano::Laterale, 26), 5.0);
    EXPECT_NE(Leggi(macchina.Cartella / "schema.ini").find("[run.alm]"), std::string::npos);
}

TEST_F(CaricamentoAnalisi, ClosesWithoutAnySideFile) {
    TreGiri().Scrivi(Stelo());
    std::filesystem::remove(ConFine(Stelo(), ".txt"));
    DatiProgetto.NomeProgetto = "Montecorvo";
    PercorsoProgetto = "/tmp/m.pro";
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    EXPECT_FALSE(ApriCsv());
    ASSERT_EQ(macchina.Mostrati.size(), 2u);
    EXPECT_EQ(macchina.Mostrati[1].Testo,
              Testo(Voce::IlFile) + " run.alm " + Testo(Voce::NonTrovato));
    EXPECT_TRUE(vista.scaricata);
    analisi.Form_Unload();
    EXPECT_FALSE(std::filesystem::exists(ConFine(Stelo(), ".ses"))) << "nothing was loaded";
    EXPECT_FALSE(AnalisiCaricata);
    EXPECT_EQ(finestra.Testo(Pannello::Progetto), "Montecorvo");
    EXPECT_EQ(finestra.Testo(Pannello::Percorso), "/tmp/m.pro");
    EXPECT_FALSE(std::filesystem::exists(macchina.Cartella / "schema.ini"));
}

TEST_F(CaricamentoAnalisi, LooksForTheSideFileInTheCurrentFolder) {
    TreGiri().Scrivi(Stelo());
    macchina.CartellaCorrente = macchina.Cartella / "altrove";
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    EXPECT_FALSE(ApriCsv());
    Scrivi(macchina.CartellaCorrente / "run.txt", "");
    EXPECT_TRUE(ApriCsv());
    EXPECT_EQ(analisi.Tabella().Valore(11, Piano::Laterale, 26), 5.0)
        << "it is read from the folder of the log";
}

#ifndef _WIN32  // no such files there
TEST_F(CaricamentoAnalisi, SideFilesThatCannotBeReadAreReportedAndTheLogOpens) {
    TreGiri().Scrivi(Stelo());
    // There, and yet nothing to read from.
    for (const char* fine : {".tim", ".ses"}) {
        std::filesystem::remove(ConFine(Stelo(), fine));
        ASSERT_EQ(::mkfifo(ConFine(Stelo(), fine).c_str(), 0600), 0);
    }
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    ASSERT_TRUE(ApriCsv());
    ASSERT_EQ(macchina.Mostrati.size(), 2u);
    std::string detti = macchina.Mostrati[0].Testo + macchina.Mostrati[1].Testo;
    EXPECT_NE(detti.find("run.tim " + Testo(Voce::NonTrovato)), std::string::npos);
    EXPECT_NE(detti.find("run.ses " + Testo(Voce::NonTrovato)), std::string::npos);
    EXPECT_EQ(analisi.NumGiri(), 0);
    EXPECT_EQ(analisi.NumRighe(), 27);
}
#endif

TEST_F(CaricamentoAnalisi, NameWithoutAPointHasAnEmptyStem) {
    Scrivi(macchina.Cartella / "log", TreGiri().Csv());
    Scrivi(macchina.Cartella / ".txt", TreGiri().Laterale());
    macchina.Risposte = {Answer::Ok};  // no file of lap times either
    EXPECT_TRUE(analisi.Carica(macchina.Cartella / "log"));
    EXPECT_EQ(macchina.Mostrati.size(), 1u) << "its side file is .txt";
}

TEST_F(CaricamentoAnalisi, WithoutLapTimesNoChannelShows) {
    TreGiri().Scrivi(Stelo());
    std::filesystem::remove(ConFine(Stelo(), ".tim"));
    macchina.Risposte = {Answer::Ok};
    EXPECT_TRUE(ApriCsv());
    EXPECT_EQ(macchina.Mostrati[0].Testo,
              Testo(Voce::IlFile) + " " + Stelo().string() + ".tim " + Testo(Voce::NonTrovato));
    EXPECT_EQ(analisi.NumCampi(), 0);
    EXPECT_EQ(analisi.NumRighe(), 27);
    for (int c = 3; c <= 20; ++c) EXPECT_FALSE(vista.visibili[c]) << c;
    EXPECT_FALSE(vista.griglia);
    EXPECT_FALSE(std::filesystem::exists(macchina.Cartella / "schema.ini"));
    analisi.chkGrafico_Click(3, true);  // no way there from the window, and no harm either
}

TEST_F(CaricamentoAnalisi, LogsThatAreNoneOpenWithoutCurves) {
    const std::string lunga(3'000'000, 'x');
    const std::string casi[] = {"", "Time [sec];Distance [m]\r\n", std::string(4096, '\0'), lunga,
                                lunga + "\r\n" + lunga};
    for (const std::string& csv : casi) {
        SCOPED_TRACE(csv.size());
        TreGiri().Scrivi(Stelo());
        Scrivi(ConFine(Stelo(), ".csv"), csv);
        ASSERT_TRUE(ApriCsv());
        EXPECT_LE(analisi.NumRighe(), 1);
        EXPECT_LE(vista.nomi[1].size(), 255u);
        analisi.chkGrafico_Click(3, true);
        EXPECT_TRUE(grafico.elementi.empty() || grafico.elementi[0].Y.size() <= 1);
        analisi.chkGrafico_Click(3, false);
    }
    // A folder in the place of the data file, and one in the place of the lap times.
    std::filesystem::remove(ConFine(Stelo(), ".csv"));
    std::filesystem::create_directory(ConFine(Stelo(), ".csv"));
    std::filesystem::remove(ConFine(Stelo(), ".tim"));
    std::filesystem::create_directory(ConFine(Stelo(), ".tim"));
    macchina.Risposte = {Answer::Ok};
    EXPECT_TRUE(ApriCsv());
    EXPECT_EQ(analisi.NumRighe(), 0);
}

TEST_F(CaricamentoAnalisi, SchemaThatCannotBeWrittenStopsNothing) {
    std::filesystem::create_directory(macchina.Cartella / "schema.ini");
    EXPECT_TRUE(Apri(TreGiri()));
    EXPECT_EQ(analisi.NumRighe(), 27);
}

TEST_F(CaricamentoAnalisi, SideFileThatIsCutLeavesTheRestWithoutLap) {
    const LogProva log = TreGiri();
    log.Scrivi(Stelo());
    const std::string intero = log.Laterale();
    Scrivi(ConFine(Stelo(), ".txt"), intero.substr(0, intero.size() / 2));
    ASSERT_TRUE(ApriCsv());
    EXPECT_EQ(analisi.NumRighe(), 27);
    EXPECT_EQ(analisi.Tabella().Valore(11, Piano::Laterale, 26), 0.0);
    EXPECT_EQ(analisi.Giri().FineGiro(4), 26);
}

TEST_F(CaricamentoAnalisi, ChiudiAnalisiPutsTheStatusBarBack) {
    ASSERT_TRUE(Apri(TreGiri()));
    DatiProgetto.NomeProgetto = "Montecorvo";
    PercorsoProgetto = "/tmp/m.pro";
    analisi.ChiudiAnalisi();
    EXPECT_TRUE(vista.scaricata);
    EXPECT_FALSE(AnalisiCaricata);
    EXPECT_EQ(finestra.Testo(Pannello::Progetto), "Montecorvo");
    EXPECT_EQ(finestra.Testo(Pannello::Percorso), "/tmp/m.pro");
    EXPECT_EQ(finestra.Testo(Pannello::Progresso), "");
    const int prima = grafico.pulizie;
    analisi.Form_Unload();
    EXPECT_FALSE(AnalisiInCorso);
    EXPECT_EQ(grafico.pulizie, prima + 1);
}

TEST_F(CaricamentoAnalisi, RefreshLanguageFollowsTheLanguage) {
    ASSERT_TRUE(Apri(TreGiri()));
    const std::string inglese = vista.nomi[8];
    IndiceLingua = 0;
    analisi.RefreshLanguage();
    EXPECT_NE(vista.nomi[8], inglese);
    EXPECT_EQ(vista.nomi[8], Testo(Voce::CanaleTemperaturaAcqua));
    EXPECT_EQ(vista.nomi[16], Testo(Voce::CanaleLambda));
    EXPECT_EQ(vista.schede[0], Testo(Voce::Grafici) + " " + Testo(Voce::Giro) + " 1")
        << "the chosen lap stays";
    EXPECT_EQ(vista.schede[1], Testo(Voce::Allarmi) + " " + Testo(Voce::Giro) + " 1");
    EXPECT_EQ(vista.unita_[8], "[\xB0 C]");

    // A name that a person gave stays; one that is the table's own follows the language.
    const auto rinomina = [&](int c, const std::string& nome, const char* unita) {
        analisi.cmdSetGraph_Click(c, [&](ImpostazioniCanale& valori) {
            valori.NomeCampo = nome;
            valori.UnitaCampo = unita;
        });
    };
    rinomina(8, "Acqua dx", "[F]");
    rinomina(7, "Gas", "[%]");
    rinomina(7, Testo(Voce::CanaleFarfalla), "[%]");
    rinomina(6, vista.nomi[6], "[psi]");
    IndiceLingua = 1;
    analisi.MSFlexGrid1_Click(3, 1);
    analisi.RefreshLanguage();
    EXPECT_EQ(vista.nomi[8], "Acqua dx");
    EXPECT_EQ(analisi.GetNomeMisura(8), "Acqua dx [F]");
    EXPECT_EQ(vista.nomi[7], Testo(Voce::CanaleFarfalla));
    EXPECT_EQ(vista.nomi[6], Testo(Voce::CanalePressioneOlio));
    EXPECT_EQ(vista.schede[0], Testo(Voce::Grafici) + " " + Testo(Voce::Giro) + " 3");
}
