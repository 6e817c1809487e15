#include "analysis/AnalisiProva.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

constexpr Colore kVerde = Rgb(0, 255, 0);
constexpr Colore kRosso = Rgb(255, 0, 0);
constexpr Colore kBlu = Rgb(0, 0, 255);
constexpr Colore kBianco = Rgb(255, 255, 255);

std::string TempiDi(const std::vector<std::string>& tempi) {
    std::string tim = "1.4\r\n";
    for (const std::string& tempo : tempi) tim += tempo + ", 1\r\n";
    return tim + "\r\n";
}

/// Start (5 rows), laps of 13, 9 and 2 rows, End (4 rows); 10 m a row.
LogProva TreGiri(const std::vector<std::string>& tempi = {"01:02.30", "01:01.90", "01:03.10"}) {
    LogProva log;
    log.Tratto(1, 5).Tratto(2, 13).Tratto(3, 9).Tratto(4, 2).Tratto(5, 4);
    log.Tim = TempiDi(tempi);
    return log;
}

class TabellaGiri : public AnalisiProva {
 protected:
    /// The texts of a row from its label on, up to `colonna`.
    std::string Riga(int riga, int colonna) {
        std::string testi = vista.celle[{riga, 0}];
        for (int c = 1; c <= colonna; ++c) testi += "|" + vista.celle[{riga, c}];
        return testi;
    }
    std::filesystem::path Settori() const { return macchina.Cartella / "tracks" / "Prova.sec"; }
    void Ricompila(const std::string& circuito) {
        DatiSessione.Circuito = circuito;
        analisi.RicompilaTabella();
    }
};

}  // namespace

TEST_F(TabellaGiri, ListsLapsBetweenStartAndEndAndMarksBestAndWorst) {
    struct Caso {
        std::vector<std::string> Tempi;
        int Migliore;  // table rows
        int Peggiore;
    };
    const Caso casi[] = {
        {{"01:02.30", "01:01.90", "01:03.10"}, 3, 4},
        {{"01:02.00", "01:01.00", "01:02.00", "01:01.00"}, 3, 2},
        {{"10:00.00", "09:59.99"}, 3, 2},
    };
    for (const Caso& caso : casi) {
        SCOPED_TRACE(caso.Tempi[0]);
        vista.sfondi.clear();
        ASSERT_TRUE(Apri(TreGiri(caso.Tempi)));
        const auto giri = static_cast<int>(caso.Tempi.size());
        EXPECT_EQ(analisi.NumGiri(), giri);
        EXPECT_EQ(Riga(0, 2), "|" + Testo(Voce::ColonnaTempoGiro) + "|") << "no sector";
        EXPECT_EQ(Riga(1, 1), "Start|");
        for (int r = 2; r <= giri + 1; ++r) {
            EXPECT_EQ(Riga(r, 1), Testo(Voce::RigaGiro) + TestoNumero(r) + "|" +
                                      caso.Tempi[static_cast<std::size_t>(r - 2)])
                << "the lap number of the data";
            const Colore atteso = r == caso.Migliore ? kVerde : r == caso.Peggiore ? kRosso : 0;
            EXPECT_EQ((vista.sfondi[{r, 1}]), atteso) << r;
        }
        EXPECT_EQ(Riga(giri + 2, 1), "End|");
        EXPECT_EQ(analisi.Giri().GiroMigliore(), caso.Migliore - 1);
        EXPECT_EQ(analisi.Giri().GiroPeggiore(), caso.Peggiore - 1);
        vista.celle.clear();
    }
}

TEST_F(TabellaGiri, CutsLapsAtTheSectorsOfTheTrack) {
    Scrivi(Settori(), "100\r\n30\r\n30\r\n40\r\n");
    Scrivi(ConFine(Stelo(), ".ses"), Sessione("Prova"));
    ASSERT_TRUE(Apri(TreGiri()));
    const std::string titolo = Testo(Voce::ColonnaSettore);
    EXPECT_EQ(Riga(0, 5), "|" + Testo(Voce::ColonnaTempoGiro) + "|" + titolo + "1|" + titolo +
                              "2|" + titolo + "3|");
    // 13 rows, 0 to 120 m: 30 m at row 3, 60 m at row 6, 100 m at row 10.
    const std::string giro = Testo(Voce::RigaGiro);
    EXPECT_EQ(Riga(2, 5), giro + "2|01:02.30|00:00.30|00:00.30|00:00.40|");
    // 9 rows, 0 to 80 m: what is left of the lap goes to the third sector, 9 rows in all.
    EXPECT_EQ(Riga(3, 5), giro + "3|01:01.90|00:00.30|00:00.30|00:00.30|");
    // 2 rows: the lap ends within the first sector.
    EXPECT_EQ(Riga(4, 5), giro + "4|01:03.10|00:00.20|||");
    EXPECT_EQ((vista.sfondi[{4, 2}]), kVerde) << "lowest first sector";
    EXPECT_EQ((vista.sfondi[{2, 2}]), kRosso) << "equal to lap 3, and first";

    // Another division leaves nothing of the old one behind.
    Scrivi(Settori(), "100\r\n200\r\n");
    analisi.RicompilaTabella();
    EXPECT_EQ(analisi.Giri().TempoGiro(2, 2), "00:01.30");
    EXPECT_EQ(analisi.Giri().TempoGiro(2, 3), "");
    // A length with decimals, and one of 0: boundaries at 30.5, 60, 60 and 72 m.
    Scrivi(Settori(), "1000\r\n30,5\r\n29.5\r\n0\r\n12\r\n");
    analisi.RicompilaTabella();
    EXPECT_EQ(Riga(2, 5), giro + "2|01:02.30|00:00.40|00:00.20|00:00.10|00:00.10");
    std::string molti = "1000\r\n";
    for (int i = 0; i < 30; ++i) molti += "5\r\n";
    Scrivi(Settori(), molti);
    analisi.RicompilaTabella();
    EXPECT_EQ(vista.Cella(0, 20), titolo + "19");
    EXPECT_FALSE(vista.celle.contains({0, 21})) << "no more columns than there are channels";
    std::filesystem::remove(ConFine(Stelo(), ".ses"));
    ASSERT_TRUE(ApriCsv());
    EXPECT_EQ(analisi.Giri().NumSettori(), 1) << "a log without a circuit";
}

TEST_F(TabellaGiri, AnotherCircuitCutsTheLapsAnewAndKeepsTheChosenOne) {
    Scrivi(Settori(), "100\r\n30\r\n30\r\n40\r\n");
    for (const std::string nome : {"Prova", "Altro"}) {
        Scrivi(macchina.Cartella / "tracks" / (nome + ".trk"), "0,0\r\n10,10\r\n");
    }
    ASSERT_TRUE(Apri(TreGiri()));
    analisi.MSFlexGrid1_Click(2, 1);
    vista.sfondi.clear();
    Ricompila("Prova");
    EXPECT_EQ((vista.sfondi[{2, 5}]), kBlu) << "the lap that is drawn stays the chosen one";
    EXPECT_EQ((vista.sfondi[{2, 2}]), kRosso) << "marks stand over the choice";
    analisi.Circuito_Click();
    EXPECT_TRUE(vista.mappa);
    EXPECT_EQ(vista.marcatore, 0);
    DatiSessione.Piloti = "Rossi";
    Ricompila("Altro");  // which has no division
    EXPECT_EQ(vista.testiMappa, "Altro/Rossi");
    EXPECT_EQ(Riga(2, 4), Testo(Voce::RigaGiro) + "2|01:02.30|||");
    EXPECT_EQ(analisi.Giri().NumSettori(), 1);
    Ricompila("");
    EXPECT_FALSE(vista.mappa);
    EXPECT_FALSE(analisi.TracciatoVisibile());
}

TEST_F(TabellaGiri, ClickOnALapTimeSelectsAndDrawsTheLap) {
    ASSERT_TRUE(Apri(TreGiri()));
    analisi.MSFlexGrid1_Click(3, 1);
    EXPECT_EQ(analisi.Giri().RigheGiro(), 8);
    EXPECT_EQ(vista.schede, Schede("3"));
    EXPECT_EQ((vista.caratteri[{3, 2}]), kBianco);
    EXPECT_EQ((vista.sfondi[{1, 2}]), kBianco) << "the stretch that was selected before";
    EXPECT_EQ((vista.sfondi[{3, 1}]), kVerde) << "the mark of the best lap stays";
    EXPECT_EQ(grafico.intervallo.XMax, 0.8);
    vista.sfondi.clear();
    analisi.MSFlexGrid1_Click(4, 2);
    EXPECT_EQ(analisi.Giri().GiroSelezionato(), 3) << "only the column of lap times selects";
    EXPECT_EQ(vista.sfondi.size(), 2u) << "the marks are set all the same";
    for (const int riga : {0, 1000, -1}) analisi.MSFlexGrid1_Click(riga, 1);
    EXPECT_EQ(analisi.Giri().GiroSelezionato(), 3);
    EXPECT_EQ(analisi.NomeGiro(), Testo(Voce::Giro) + " 3 - 01:01.90");
    analisi.MSFlexGrid1_Click(1, 1);
    EXPECT_EQ(analisi.NomeGiro(), Testo(Voce::Giro) + " 1") << "no complete lap";
    analisi.MSFlexGrid1_Click(5, 1);
    EXPECT_EQ(analisi.NomeGiro(), Testo(Voce::Giro) + " 5");
}

TEST_F(TabellaGiri, HoldsNineHundredAndNinetyEightLapsAndTellsOnceOfMore) {
    for (const int giri : {997, 998, 999}) {
        SCOPED_TRACE(giri);
        LogProva log;
        log.Tim = "1.4\r\n";
        for (int giro = 1; giro <= giri + 2; ++giro) {
            log.Tratto(giro, 2);
            if (giro <= giri) log.Tim += "01:00.00, " + TestoNumero(giro) + "\r\n";
        }
        log.Tim += "\r\n";
        if (giri > 998) macchina.Risposte = {Answer::Ok};
        ASSERT_TRUE(Apri(log));
        const int tenuti = std::min(giri, 998);
        EXPECT_EQ(Riga(tenuti + 1, 1),
                  Testo(Voce::RigaGiro) + TestoNumero(tenuti + 1) + "|01:00.00");
        EXPECT_EQ(analisi.GetSessioneTempo(tenuti + 1), TestoNumero(tenuti));
        EXPECT_EQ(vista.Cella(tenuti + 2, 0), "End");
        // The last lap and the stretch behind it can be chosen like any other, and no other.
        for (const int riga : {tenuti + 1, tenuti + 2, 1001}) {
            analisi.MSFlexGrid1_Click(riga, 1);
            EXPECT_EQ(analisi.Giri().GiroSelezionato(), std::min(riga, tenuti + 2));
        }
        EXPECT_EQ(analisi.Giri().InizioGiro(1001), 0);
        EXPECT_EQ(macchina.Mostrati.size(), giri > 998 ? 1u : 0u);
    }
    EXPECT_EQ(macchina.Mostrati.at(0).Testo, Testo(Voce::TroppiGiri));
}

TEST_F(TabellaGiri, FirstStretchWithRowsIsTheOneThatOpens) {
    // The last row of the stretch must lie past row 2.
    LogProva log;
    log.Tratto(1, 2).Tratto(2, 1).Tratto(3, 6);
    log.Tim = TempiDi({"01:00.00", "01:01.00"});
    ASSERT_TRUE(Apri(log));
    EXPECT_EQ(vista.corrente, (VistaProva::Posto{3, 1}));
}
