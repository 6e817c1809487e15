#include "analysis/AnalisiProva.h"
#include "shell/LoadStrings.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

constexpr Colore kVerde = Rgb(0, 255, 0);
constexpr Colore kRosso = Rgb(255, 0, 0);
constexpr Colore kBlu = Rgb(0, 0, 255);
constexpr Colore kBianco = Rgb(255, 255, 255);

/// Start (5 rows), laps of 13, 9 and 2 rows, End (4 rows); 10 m a row.
LogProva TreGiri() {
    LogProva log;
    log.Tratto(1, 5).Tratto(2, 13).Tratto(3, 9).Tratto(4, 2).Tratto(5, 4);
    log.Tim = "1.4\r\n01:02.30, 1\r\n01:01.90, 1\r\n01:03.10, 2\r\n\r\n";
    return log;
}

std::string TempiDi(const std::vector<std::string>& tempi) {
    std::string tim = "1.4\r\n";
    for (const std::string& tempo : tempi) tim += tempo + ", 1\r\n";
    return tim + "\r\n";
}

}  // namespace

using TabellaGiri = AnalisiProva;

TEST_F(TabellaGiri, ListsLapsBetweenStartAndEnd) {
    ASSERT_TRUE(Apri(TreGiri()));
    EXPECT_EQ(analisi.Giri().NumRigheTabella(), 6);
    EXPECT_EQ(analisi.NumGiri(), 3);
    EXPECT_EQ(vista.righe, 6);
    EXPECT_TRUE(vista.griglia);
    EXPECT_EQ(vista.Cella(0, 1), Testo(Voce::ColonnaTempoGiro));
    EXPECT_EQ(vista.Cella(0, 2), "") << "no circuit, no sector";
    EXPECT_EQ(vista.Cella(1, 0), "Start");
    EXPECT_EQ(vista.Cella(2, 0), Testo(Voce::RigaGiro) + "2") << "the lap number of the data";
    EXPECT_EQ(vista.Cella(2, 1), "01:02.30");
    EXPECT_EQ(vista.Cella(4, 0), Testo(Voce::RigaGiro) + "4");
    EXPECT_EQ(vista.Cella(4, 1), "01:03.10");
    EXPECT_EQ(vista.Cella(5, 0), "End");
    EXPECT_EQ(vista.Cella(5, 1), "");
    EXPECT_EQ(analisi.GetSessioneTempo(4), "2");
}

TEST_F(TabellaGiri, MarksBestAndWorst) {
    struct Caso {
        std::vector<std::string> Tempi;
        int Migliore;  // table rows
        int Peggiore;
    };
    const Caso casi[] = {
        {{"01:02.30", "01:01.90", "01:03.10"}, 3, 4},
        {{"01:00.00", "01:01.00", "01:02.00"}, 2, 4},
        {{"01:03.00", "01:02.00", "01:02.00"}, 3, 2},
        {{"01:02.00", "01:01.00", "01:02.00", "01:01.00"}, 3, 2},
        {{"10:00.00", "09:59.99"}, 3, 2},
    };
    for (const Caso& caso : casi) {
        SCOPED_TRACE(caso.Tempi[0]);
        VistaProva questa;
        AnalisiDatiSpeed analisiQuesta(questa, grafico, panoramica);
        LogProva log = TreGiri();
        log.Tim = TempiDi(caso.Tempi);
        log.Scrivi(Stelo());
        ASSERT_TRUE(analisiQuesta.Carica(ConFine(Stelo(), ".csv")));
        EXPECT_EQ((questa.sfondi[{caso.Migliore, 1}]), kVerde);
        EXPECT_EQ((questa.sfondi[{caso.Peggiore, 1}]), kRosso);
        EXPECT_EQ(analisiQuesta.Giri().GiroMigliore(), caso.Migliore - 1);
        EXPECT_EQ(analisiQuesta.Giri().GiroPeggiore(), caso.Peggiore - 1);
        int colorate = 0;
        for (const auto& [posto, colore] : questa.sfondi) colorate += posto.second == 1 ? 1 : 0;
        EXPECT_EQ(colorate, 2);
    }
}

TEST_F(TabellaGiri, CutsLapsAtTheSectorsOfTheTrack) {
    Scrivi(macchina.Cartella / "tracks" / "Prova.sec", "100\r\n30\r\n30\r\n40\r\n");
    std::string ses = "a=\r\nb=\r\nc=\r\nCircuito=Prova\r\ne=100\r\nf=\r\ng=\r\nh=\r\n";
    for (int c = 3; c <= 20; ++c) ses += "x;1;255;1;0;0\r\n";
    Scrivi(ConFine(Stelo(), ".ses"), ses);
    ASSERT_TRUE(Apri(TreGiri()));
    EXPECT_EQ(analisi.Giri().NumSettori(), 4);
    EXPECT_EQ(vista.Cella(0, 2), Testo(Voce::ColonnaSettore) + "1");
    EXPECT_EQ(vista.Cella(0, 4), Testo(Voce::ColonnaSettore) + "3");
    EXPECT_EQ(vista.Cella(0, 5), "");
    // 13 rows, 0 to 120 m: 30 m at row 3, 60 m at row 6, 100 m at row 10.
    EXPECT_EQ(vista.Cella(2, 2), "00:00.30");
    EXPECT_EQ(vista.Cella(2, 3), "00:00.30");
    EXPECT_EQ(vista.Cella(2, 4), "00:00.40");
    EXPECT_EQ(vista.Cella(2, 5), "");
    // Past the track's length each row closes a slot that no column shows, until the loop is left
    // early and the row stands on the last boundary.
    EXPECT_EQ(analisi.Giri().TempoGiro(2, 6), "00:00.10");
    EXPECT_EQ(analisi.Giri().TempoGiro(2, 7), "00:00.00");
    // 9 rows, 0 to 80 m: what is left of the lap goes to the third sector, 9 rows in all.
    EXPECT_EQ(vista.Cella(3, 2), "00:00.30");
    EXPECT_EQ(vista.Cella(3, 3), "00:00.30");
    EXPECT_EQ(vista.Cella(3, 4), "00:00.30");
    // 2 rows: the lap ends within the first sector.
    EXPECT_EQ(vista.Cella(4, 2), "00:00.20");
    EXPECT_EQ(vista.Cella(4, 3), "");
    EXPECT_EQ(vista.Cella(4, 4), "");
    EXPECT_EQ((vista.sfondi[{4, 2}]), kVerde) << "lowest first sector";
    EXPECT_EQ((vista.sfondi[{2, 2}]), kRosso) << "equal to lap 3, and first";
    EXPECT_EQ((vista.sfondi[{2, 4}]), kRosso);

    // Another division leaves nothing of the old one behind.
    Scrivi(macchina.Cartella / "tracks" / "Prova.sec", "100\r\n200\r\n");
    analisi.RicompilaTabella();
    EXPECT_EQ(analisi.Giri().NumSettori(), 2);
    EXPECT_EQ(analisi.Giri().TempoGiro(2, 2), "00:01.30");
    EXPECT_EQ(analisi.Giri().TempoGiro(2, 3), "");
}

TEST_F(TabellaGiri, AnotherCircuitCutsTheLapsAnewAndKeepsTheChosenOne) {
    Scrivi(macchina.Cartella / "tracks" / "Prova.sec", "100\r\n30\r\n30\r\n40\r\n");
    Scrivi(macchina.Cartella / "tracks" / "Prova.trk", "0,0\r\n10,10\r\n");
    ASSERT_TRUE(Apri(TreGiri()));
    analisi.MSFlexGrid1_Click(2, 1);
    DatiSessione.Circuito = "Prova";
    DatiSessione.LunghTracciato = "100";
    analisi.RicompilaTabella();
    EXPECT_EQ(vista.Cella(0, 4), Testo(Voce::ColonnaSettore) + "3");
    EXPECT_EQ(vista.Cella(2, 4), "00:00.40");
    EXPECT_EQ(vista.Cella(3, 1), "01:01.90");
    EXPECT_EQ((vista.sfondi[{2, 5}]), kBlu) << "the lap that is drawn stays the chosen one";
    EXPECT_EQ((vista.sfondi[{4, 1}]), kRosso);
    EXPECT_FALSE(vista.mappa) << "nobody asked for a map";
    // Without a circuit again: no sector, no map.
    analisi.Circuito_Click();
    EXPECT_TRUE(vista.mappa);
    DatiSessione.Circuito = "";
    analisi.RicompilaTabella();
    EXPECT_FALSE(vista.mappa);
    EXPECT_EQ(vista.Cella(0, 2), "");
    EXPECT_EQ(vista.Cella(2, 4), "");
    EXPECT_EQ(vista.Cella(2, 1), "01:02.30");
}

TEST_F(TabellaGiri, LeggiSettoriTakesWhatATrackCanHave) {
    const auto file = macchina.Cartella / "tracks" / "Prova.sec";
    std::string molti = "1000\r\n";
    for (int i = 0; i < 40; ++i) molti += "25\r\n";
    Scrivi(file, molti);
    ASSERT_TRUE(Apri(TreGiri()));  // its session has no circuit
    DatiSessione.Circuito = "Prova";
    analisi.RicompilaTabella();
    EXPECT_EQ(analisi.Giri().NumSettori(), 22) << "21 lengths are kept";
    EXPECT_EQ(vista.Cella(0, 20), Testo(Voce::ColonnaSettore) + "19");
    EXPECT_EQ(vista.Cella(0, 21), "");
    Scrivi(file, "1000\r\n30,5\r\n29.5\r\n0\r\n12\r\n");
    analisi.RicompilaTabella();
    EXPECT_EQ(analisi.Giri().NumSettori(), 5) << "each line is a sector, one of length 0 as well";
    // Boundaries at 30.5, 60, 60 and 72 m, one row is 10 m.
    EXPECT_EQ(vista.Cella(2, 2), "00:00.40");
    EXPECT_EQ(vista.Cella(2, 3), "00:00.20");
    EXPECT_EQ(vista.Cella(2, 4), "00:00.10");
    EXPECT_EQ(vista.Cella(2, 5), "00:00.10");
    std::filesystem::remove(file);
    analisi.RicompilaTabella();
    EXPECT_EQ(analisi.Giri().NumSettori(), 1) << "no file, one sector";
}

TEST_F(TabellaGiri, ClickOnALapTimeSelectsAndDrawsTheLap) {
    ASSERT_TRUE(Apri(TreGiri()));
    const int prima = grafico.pulizie;
    analisi.MSFlexGrid1_Click(3, 1);
    EXPECT_EQ(analisi.Giri().GiroSelezionato(), 3);
    EXPECT_EQ(analisi.Giri().RigheGiro(), 8);
    EXPECT_EQ(vista.giro, 3);
    EXPECT_EQ(vista.schede[0], Testo(Voce::Grafici) + " " + Testo(Voce::Giro) + " 3");
    EXPECT_EQ(vista.schede[1], Testo(Voce::Allarmi) + " " + Testo(Voce::Giro) + " 3");
    EXPECT_EQ((vista.sfondi[{3, 2}]), kBlu);
    EXPECT_EQ((vista.sfondi[{3, 20}]), kBlu);
    EXPECT_EQ((vista.caratteri[{3, 2}]), kBianco);
    EXPECT_EQ((vista.sfondi[{1, 2}]), kBianco) << "the stretch that was selected before";
    EXPECT_EQ((vista.caratteri[{1, 2}]), 0u);
    EXPECT_EQ((vista.sfondi[{3, 1}]), kVerde) << "the mark of the best lap stays";
    EXPECT_EQ(grafico.intervallo.XMax, 0.8);
    EXPECT_GT(grafico.pulizie, prima);

    analisi.MSFlexGrid1_Click(3, 1);
    EXPECT_EQ((vista.sfondi[{3, 2}]), kBlu) << "a second click selects it again";
    vista.sfondi.clear();
    analisi.MSFlexGrid1_Click(4, 2);
    EXPECT_EQ(analisi.Giri().GiroSelezionato(), 3) << "only the column of lap times selects";
    EXPECT_EQ(vista.sfondi.size(), 2u) << "the marks are set all the same";
    analisi.MSFlexGrid1_Click(0, 1);
    analisi.MSFlexGrid1_Click(1000, 1);
    analisi.MSFlexGrid1_Click(-1, 1);
    EXPECT_EQ(analisi.Giri().GiroSelezionato(), 3);
}

TEST_F(TabellaGiri, LapThatTheLogHasNoRowsOf) {
    LogProva log;
    log.Tratto(1, 5).Tratto(2, 13);
    log.Tim = TempiDi({"01:02.30", "01:01.90", "01:03.10"});
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(vista.Cella(2, 0), Testo(Voce::RigaGiro) + "2");
    EXPECT_EQ(vista.Cella(3, 0), Testo(Voce::RigaGiro) + "2")
        << "row 3 is lap 2 when the data do not tell";
    EXPECT_EQ(vista.Cella(4, 0), Testo(Voce::RigaGiro) + "3");
    EXPECT_EQ(vista.Cella(4, 1), "01:03.10");
    EXPECT_TRUE(vista.controlli);
    analisi.MSFlexGrid1_Click(4, 1);
    EXPECT_FALSE(vista.controlli);
    EXPECT_EQ(analisi.Giri().RigheGiro(), 0);
    EXPECT_EQ(vista.schede[0], Testo(Voce::Grafici) + " " + Testo(Voce::Giro) + " 3");
    analisi.MSFlexGrid1_Click(2, 1);
    EXPECT_TRUE(vista.controlli);
}

TEST_F(TabellaGiri, LogWithoutLapsShowsItsOneStretch) {
    LogProva log;
    log.Tratto(1, 10, [](int r) { return 100.0 * r; });
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(analisi.NumGiri(), 0);
    EXPECT_FALSE(vista.griglia);
    EXPECT_TRUE(vista.controlli);
    EXPECT_EQ(analisi.Giri().GiroSelezionato(), 1);
    EXPECT_EQ(analisi.Giri().RigheGiro(), 9);
    analisi.chkGrafico_Click(3, true);
    ASSERT_EQ(grafico.elementi.size(), 1u);
    EXPECT_EQ(grafico.elementi[0].Y.size(), 10u);
    EXPECT_EQ(grafico.elementi[0].Y.back(), 900.0);
    // The session dialog leaves it as it was.
    analisi.RicompilaTabella();
    EXPECT_EQ(analisi.Giri().GiroSelezionato(), 1);
    EXPECT_TRUE(vista.controlli);
    EXPECT_EQ(grafico.intervallo.XMax, 0.9);
    ASSERT_EQ(grafico.elementi.size(), 1u);
    EXPECT_EQ(grafico.elementi[0].Y.size(), 10u);
}

TEST_F(TabellaGiri, FirstLineAloneGivesNoLapNumber) {
    LogProva log = TreGiri();
    log.Tim = "1.4\r\n";
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(analisi.Giri().NumRigheTabella(), 2);
    EXPECT_EQ(analisi.NumGiri(), -1);
    EXPECT_FALSE(vista.griglia);
    EXPECT_EQ(analisi.Giri().GiroSelezionato(), 1);
}

TEST_F(TabellaGiri, HoldsNineHundredAndNinetyEightLapsAndTellsOnceOfMore) {
    for (const int giri : {997, 998, 999, 1500}) {
        SCOPED_TRACE(giri);
        LogProva log;
        log.Tim = "1.4\r\n";
        for (int giro = 1; giro <= giri + 2; ++giro) log.Tratto(giro, 2);
        for (int giro = 1; giro <= giri; ++giro) {
            log.Tim += "01:00." + TestoNumero(100 + giro % 90).substr(1) + ", " +
                       TestoNumero(giro) + "\r\n";
        }
        log.Tim += "\r\n";
        macchina.Mostrati.clear();
        macchina.Risposte = {Answer::Ok};
        ASSERT_TRUE(Apri(log));
        const int tenuti = std::min(giri, 998);
        EXPECT_EQ(analisi.NumGiri(), tenuti);
        EXPECT_EQ(analisi.Giri().NumRigheTabella(), tenuti + 3);
        EXPECT_EQ(vista.righe, tenuti + 3);
        EXPECT_EQ(vista.Cella(tenuti + 1, 0), Testo(Voce::RigaGiro) + TestoNumero(tenuti + 1));
        EXPECT_EQ(vista.Cella(tenuti + 1, 1), analisi.GetTempoGiro(tenuti + 1));
        EXPECT_EQ(analisi.GetSessioneTempo(tenuti + 1), TestoNumero(tenuti));
        EXPECT_EQ(vista.Cella(tenuti + 2, 0), "End");
        // The last lap and the stretch behind it can be chosen like any other; nothing lies past
        // it.
        for (const int riga : {tenuti + 1, tenuti + 2}) {
            analisi.MSFlexGrid1_Click(riga, 1);
            EXPECT_EQ(analisi.Giri().GiroSelezionato(), riga);
            EXPECT_EQ(analisi.Giri().RigheGiro(), 1);
            EXPECT_EQ(analisi.Giri().InizioGiro(riga), 2 * riga - 2);
        }
        analisi.MSFlexGrid1_Click(1001, 1);
        EXPECT_EQ(analisi.Giri().GiroSelezionato(), tenuti + 2);
        EXPECT_EQ(analisi.Giri().InizioGiro(1001), 0);
        ASSERT_EQ(macchina.Mostrati.size(), giri > 998 ? 1u : 0u);
        if (giri > 998) {
            EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::TroppiGiri));
        }
        macchina.Risposte.clear();
    }
}

TEST_F(TabellaGiri, FirstStretchWithRowsIsTheOneThatOpens) {
    // The last row of the stretch must lie past row 2.
    LogProva log;
    log.Tratto(1, 2).Tratto(2, 1).Tratto(3, 6);
    log.Tim = TempiDi({"01:00.00", "01:01.00"});
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(analisi.Giri().PrimoGiroValido(), 3);
    EXPECT_EQ(vista.corrente, (VistaProva::Posto{3, 1}));
    EXPECT_EQ(vista.schede[0], Testo(Voce::Grafici) + " " + Testo(Voce::Giro) + " 3");
    EXPECT_EQ(GiriLog().PrimoGiroValido(), 1000);
}
