#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "analysis/AnalisiProva.h"

using namespace lapvane;
using namespace lapvane::prova;

using CaricamentoAnalisi = AnalisiProva;

TEST_F(CaricamentoAnalisi, FillsTableAndNamesAndShowsTheFirstStretch) {
    LogProva log = QuattroGiri();
    log.Righe[124].Celle[16] = "0,98";
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(analisi.NumCampi(), 16);
    EXPECT_EQ(analisi.NumRigheTesto(), "125");
    EXPECT_EQ(analisi.Tabella().Valore(16, Piano::Dati, 124), 0.98);
    EXPECT_EQ(analisi.Tabella().Valore(11, Piano::Laterale, 124), 4.0);
    EXPECT_EQ(vista.nomi[16], Testo(Voce::CanaleLambda)) << "one name in its two units";
    EXPECT_EQ(vista.unita_[8], "[\xB0 C]");
    for (int c = 3; c <= 20; ++c) EXPECT_EQ(vista.visibili[c], c <= 16) << c;
    EXPECT_EQ(vista.colori[3], 192u);
    EXPECT_EQ(vista.schede, Schede("1"));
    EXPECT_TRUE(AnalisiCaricata);
    EXPECT_EQ(macchina.Puntatori, (std::vector{Pointer::Busy, Pointer::Normal}));
    EXPECT_EQ(finestra.Storia,
              (std::vector<std::string>{
                  "2:" + Testo(Voce::LetturaFileDati), "3:" + Testo(Voce::CaricamentoDati),
                  "2:" + Testo(Voce::LetturaFileAllarmi), "3:" + Testo(Voce::CaricamentoDati),
                  "2:", "3:" + Testo(Voce::DatiCaricati),
                  "1:", "2:" + ConFine(Stelo(), ".csv").string(), "3:"}));
}

TEST_F(CaricamentoAnalisi, ShowsThePercentagePastAThousandRowsAndOnlyWhenItChanges) {
    ASSERT_TRUE(Apri(LogProva().Tratto(1, 1000)));
    ASSERT_TRUE(Apri(LogProva().Tratto(1, 2000)));
    std::vector<std::string> mostrati;
    for (const std::string& voce : finestra.Storia) {
        if (voce.ends_with(" %")) mostrati.push_back(voce);
    }
    // Row 1001 of 2000 is 50.05 per cent: from 50 to 100, once for each of the two files.
    ASSERT_EQ(mostrati.size(), 102u);
    EXPECT_EQ(mostrati[50], "3:" + Testo(Voce::CaricamentoDati) + "100 %");
}

TEST_F(CaricamentoAnalisi, ALoadThatIsStoppedLeavesNothing) {
    LogProva().Tratto(1, 3000).Scrivi(Stelo());
    DatiSessione.NoteSessione = "of the log before";
    vista.fermaA = 60;
    EXPECT_FALSE(ApriCsv());
    EXPECT_EQ(finestra.Testo(Pannello::Progresso), "") << "nor any reading";
    EXPECT_TRUE(vista.scaricata);
    EXPECT_EQ(analisi.NumRighe(), 0);
    EXPECT_EQ(analisi.Tabella().NumeroRighe(), 0);
    EXPECT_FALSE(AnalisiCaricata);
    analisi.Form_Unload();
    EXPECT_FALSE(FileEsiste(ConFine(Stelo(), ".ses"))) << "no session was read that could be saved";
    EXPECT_EQ(DatiSessione.NoteSessione, "of the log before");
}

TEST_F(CaricamentoAnalisi, TakesColumnsAndTitlesAsTheFilesHaveThem) {
    LogProva log = QuattroGiri();
    log.Tim.replace(0, 3, "1.3");  // an older log
    log.Righe[0].Celle[15] = "13.5";
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(analisi.NumCampi(), 15);
    EXPECT_EQ(analisi.Tabella().Valore(15, Piano::Dati, 0), 13.5);
    EXPECT_EQ(vista.unita_[15], "[A/F];Lambda sensor[Lambda]")
        << "the last title is all that is left of the line";
    log.Titoli = "t [s];d [m];Engine [RPM];Whatever;Fuel [bar]";
    log.Colonne = 5;
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(vista.nomi[4], "Whatever");
    EXPECT_EQ(vista.unita_[4], "[RPM]") << "the unit of the channel before";
    EXPECT_EQ(vista.nomi[6], "") << "a column that the file lacks has no title";
    analisi.RefreshLanguage();
    EXPECT_EQ(vista.nomi[4], Testo(Voce::CanaleVelocita)) << "no person gave that name";
}

TEST_F(CaricamentoAnalisi, LooksForASideFileInTheCurrentFolderAndClosesWithoutOne) {
    QuattroGiri().Scrivi(Stelo());
    macchina.CartellaCorrente = macchina.Cartella / "altrove";
    macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok};
    EXPECT_FALSE(ApriCsv());
    ASSERT_EQ(macchina.Mostrati.size(), 2u);
    for (const int i : {0, 1}) {
        const Box& box = macchina.Mostrati[static_cast<std::size_t>(i)];
        EXPECT_EQ(box.Testo, Testo(Voce::IlFile) + (i == 0 ? " run.txt " : " run.alm ") +
                                 Testo(Voce::NonTrovato));
        EXPECT_EQ(box.Icona, Icon::Critical);
    }
    EXPECT_TRUE(vista.scaricata);
    analisi.Form_Unload();
    EXPECT_FALSE(std::filesystem::exists(ConFine(Stelo(), ".ses"))) << "nothing was loaded";
    Scrivi(macchina.CartellaCorrente / "run.alm", "");
    std::filesystem::rename(ConFine(Stelo(), ".txt"), ConFine(Stelo(), ".alm"));
    ASSERT_TRUE(ApriCsv());
    EXPECT_EQ(analisi.Tabella().Valore(11, Piano::Laterale, 124), 4.0)
        << "it is read from the folder of the log";
    EXPECT_NE(Leggi(macchina.Cartella / "schema.ini").find("[run.alm]"), std::string::npos);
}

#ifndef _WIN32  // no such files there
TEST_F(CaricamentoAnalisi, SideFilesThatCannotBeReadAreReportedAndTheLogOpens) {
    QuattroGiri().Scrivi(Stelo());
    std::filesystem::remove(ConFine(Stelo(), ".tim"));
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    for (const char* fine : {".tim", ".ses"}) {  // there, and yet nothing to read from
        ASSERT_EQ(::mkfifo(ConFine(Stelo(), fine).c_str(), 0600), 0);
    }
    ASSERT_TRUE(ApriCsv());
    ASSERT_EQ(macchina.Mostrati.size(), 2u);
    for (const Box& box : macchina.Mostrati) {
        const char* const fine = &box == &macchina.Mostrati[0] ? ".tim " : ".ses ";
        EXPECT_EQ(box.Testo,
                  Testo(Voce::IlFile) + " " + Stelo().string() + fine + Testo(Voce::NonTrovato));
    }
    EXPECT_EQ(analisi.NumRighe(), 125);
}

TEST_F(CaricamentoAnalisi, AFileOfATerabyteIsNotWaitedFor) {
    QuattroGiri().Scrivi(Stelo());
    const std::filesystem::path csv = ConFine(Stelo(), ".csv");
    for (const char* inizio :
         {"no line", "t;d\r\n"}) {  // the second one: more than there is memory
#ifdef __SANITIZE_ADDRESS__
        if (inizio[0] != 'n') continue;  // its allocator ends the process in place of a bad_alloc
#endif
        std::string testo;
        while (testo.size() < 70000) testo += inizio;
        Scrivi(csv, testo);
        std::filesystem::resize_file(csv, std::uintmax_t{1} << 40);
        if (inizio[0] == 'n') macchina.Risposte = {Answer::Ok};
        ASSERT_TRUE(ApriCsv());
        EXPECT_EQ(analisi.NumRighe(), 0);
    }
    EXPECT_EQ(macchina.Mostrati.at(0).Testo, csv.string() + "\r\n" + Testo(Voce::NonUnLog));
}
#endif

TEST_F(CaricamentoAnalisi, SideFileHasTheStemBeforeTheLastPoint) {
    for (const auto& [nome, laterale] : {std::pair{"log", ".txt"}, {"gara.1.csv", "gara.1.txt"}}) {
        Scrivi(macchina.Cartella / nome, QuattroGiri().Csv());
        Scrivi(macchina.Cartella / laterale, QuattroGiri().Laterale());
        macchina.Risposte = {Answer::Ok};  // only the lap times are missing
        EXPECT_TRUE(analisi.Carica(macchina.Cartella / nome)) << nome;
    }
}

TEST_F(CaricamentoAnalisi, ClosingSavesAndPutsTheStatusBarBack) {
    ASSERT_TRUE(Apri(QuattroGiri()));
    DatiProgetto.NomeProgetto = "Montecorvo";
    PercorsoProgetto = "/tmp/m.pro";
    analisi.ChiudiAnalisi();
    EXPECT_TRUE(vista.scaricata);
    EXPECT_FALSE(AnalisiCaricata);
    EXPECT_EQ(finestra.Testo(Pannello::Progetto), "Montecorvo");
    EXPECT_EQ(finestra.Testo(Pannello::Percorso), "/tmp/m.pro");
    EXPECT_EQ(finestra.Testo(Pannello::Progresso), "");
    analisi.Form_Unload();
    EXPECT_FALSE(AnalisiInCorso);
    EXPECT_TRUE(std::filesystem::exists(ConFine(Stelo(), ".ses")));
}

TEST_F(CaricamentoAnalisi, NamesFollowTheLanguageUnlessAPersonGaveThem) {
    ASSERT_TRUE(Apri(QuattroGiri()));
    IndiceLingua = 0;
    analisi.RefreshLanguage();
    EXPECT_EQ(vista.nomi[8], Testo(Voce::CanaleTemperaturaAcqua));
    EXPECT_EQ(vista.schede, Schede("1")) << "the chosen lap stays";
    const auto rinomina = [&](int c, const std::string& nome, const char* unita) {
        analisi.cmdSetGraph_Click(c, [&](ImpostazioniCanale& valori) {
            valori.NomeCampo = nome;
            valori.UnitaCampo = unita;
        });
    };
    rinomina(8, "Acqua dx", "[F]");
    rinomina(7, "Gas", "[%]");
    rinomina(7, Testo(Voce::CanaleFarfalla), "[%]");  // the table's own again
    rinomina(6, vista.nomi[6], "[psi]");
    IndiceLingua = 1;
    analisi.RefreshLanguage();
    EXPECT_EQ(vista.nomi[8], "Acqua dx");
    EXPECT_EQ(analisi.GetNomeMisura(8), "Acqua dx [F]");
    EXPECT_EQ(vista.nomi[7], Testo(Voce::CanaleFarfalla));
    EXPECT_EQ(vista.nomi[6], Testo(Voce::CanalePressioneOlio));
}
