#include "analysis/AnalisiProva.h"

using namespace lapvane;
using namespace lapvane::prova;

/// Start (5 rows), a lap of 11 rows (rows 5 to 15, 0 to 1 s), a lap of 21 rows, End; the first one
/// is chosen.
class DisegnoCanali : public AnalisiProva {
 protected:
    DisegnoCanali() {
        LogProva log;
        log.Tratto(1, 5)
            .Tratto(2, 11, [](int r) { return 100.0 * r; })
            .Tratto(3, 21, [](int r) { return 10.0 * r; })
            .Tratto(4, 3);
        for (std::size_t r = 5; r <= 36; ++r) {
            log.Righe[r].Celle[4] = "-5";
            log.Righe[r].Celle[5] = "2";
        }
        log.Tim = "1.4\r\n01:02.30, 1\r\n01:01.90, 1\r\n\r\n";
        log.Scrivi(Stelo());
        Scrivi(ConFine(Stelo(), ".ses"), Sessione("", "x;3;255;2;0;0", "x;1;65280;1;0;0"));
        EXPECT_TRUE(ApriCsv());
        Giro(2);
    }
    void Giro(int indice) { analisi.MSFlexGrid1_Click(indice, 1); }
    void Spunta(const std::vector<int>& canali, bool spuntati = true) {
        for (const int c : canali) analisi.chkGrafico_Click(c, spuntati);
    }
};

TEST_F(DisegnoCanali, ScalesStretchEveryChannelToTheHighestMaximum) {
    struct Attese {
        double Minimo, Massimo, Media, Fattore;
    };
    // Only negative values: the maximum is 0, and 0 is replaced. Only positive ones: the minimum is
    // 0.
    const Attese attese[] = {{0, 1000, 500, 1}, {-5, 0.01, -5, 100000}, {0, 2, 2, 500}};
    int c = 3;
    for (const Attese& atteso : attese) {
        const Canale& canale = analisi.Canali()[c++];
        EXPECT_EQ(canale.MinCanale, atteso.Minimo) << c;
        EXPECT_EQ(canale.MaxCanale, atteso.Massimo) << c;
        EXPECT_EQ(canale.MediaCanale, atteso.Media) << c;
        EXPECT_DOUBLE_EQ(canale.FattoreScala, atteso.Fattore) << c;
    }
    EXPECT_EQ(analisi.GetMediaVal(4), "-5");
    // Highest 1000 and a tenth; lowest -500000, whose margin goes towards 0.
    EXPECT_DOUBLE_EQ(grafico.intervallo.YMax, 1100.0);
    EXPECT_DOUBLE_EQ(grafico.intervallo.YMin, -400000.0);
    analisi.chkDistanza_Click(true);
    EXPECT_EQ(grafico.intervallo.XMax, 100.0) << "10 m a row";
    EXPECT_EQ(grafico.etichettaX, Testo(Voce::CanaleDistanza) + " [m]");
    EXPECT_DOUBLE_EQ(analisi.Finestra().PassoSposta(), 10.0);
    EXPECT_EQ(vista.assi, (std::pair{false, true}));
    analisi.chkTempo_Click(false);
    EXPECT_TRUE(analisi.Finestra().AsseDistanza()) << "clearing a box chooses no axis";
    analisi.chkTempo_Click(true);
    EXPECT_EQ(grafico.intervallo.XMax, 1.0);
    analisi.chkDistanza_Click(false);
    EXPECT_FALSE(analisi.Finestra().AsseDistanza());
    EXPECT_EQ(grafico.etichettaX, Testo(Voce::CanaleTempo) + " [sec]");
}

TEST(FinestraX, DecimationHoldsADrawingToFiveHundredPoints) {
    const std::pair<double, int> casi[] = {{1.0, 1},   {25.0, 1},      {75.0, 2}, {125.0, 2},
                                           {175.0, 4}, {16377.9, 328}, {-5.0, 1}, {1e12, 32767}};
    for (const auto& [ampiezza, attesa] : casi) {
        FinestraX finestra;
        finestra.Leggi({0.0, ampiezza, 0.0, 1.0});
        finestra.CalcolaPassoSposta();
        EXPECT_EQ(finestra.Decimazione(), attesa) << ampiezza;
    }
}

TEST_F(DisegnoCanali, DrawsTheTickedChannelsOfTheLapOverlaid) {
    Spunta({5, 3, 3});
    EXPECT_EQ(analisi.Canali().NumCanaliAttivi(), 2);
    ASSERT_EQ(grafico.elementi.size(), 2u);
    const ElementoProva& giri = grafico.elementi[0];
    EXPECT_EQ(giri.Nome, Testo(Voce::CanaleGiriMotore));
    EXPECT_EQ(giri.Tinta, 255u);
    EXPECT_EQ(giri.Spessore, 2);
    EXPECT_EQ(giri.Scala, 1.0);
    EXPECT_EQ(giri.Passo, 3);
    EXPECT_EQ(giri.X, (std::vector<double>{0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 1}));
    EXPECT_EQ(giri.Y.back(), 1000.0);
    const ElementoProva& benzina = grafico.elementi[1];
    EXPECT_EQ(benzina.Scala, 500.0);
    EXPECT_EQ(benzina.Passo, 1);
    EXPECT_EQ(benzina.Tinta, 12u);
    EXPECT_EQ(analisi.Canali().UltimoCanale(), 5);
    EXPECT_EQ(grafico.NumeroCursori(), 1);
    EXPECT_EQ(grafico.coloreCursore, Rgb(0, 0, 255));
    EXPECT_TRUE(grafico.aggancio);
    for (int c = 3; c <= 20; ++c) EXPECT_EQ(vista.segnati[c], c == 3 || c == 5) << c;
    Spunta({3, 5}, false);
    EXPECT_TRUE(grafico.elementi.empty());
    EXPECT_EQ(analisi.Canali().UltimoCanale(), 0);
    EXPECT_EQ(analisi.Canali().NumCanaliAttivi(), 0);
}

TEST_F(DisegnoCanali, ScaleOptionLabelsTheAxisAndFollowsTheTicks) {
    Spunta({5});
    EXPECT_EQ(grafico.scalaY, 500.0);
    EXPECT_EQ(grafico.etichettaY, Testo(Voce::CanalePressioneBenzina) + " [bar]");
    EXPECT_EQ(grafico.coloreAsse, 12u);
    Spunta({3});
    EXPECT_EQ(vista.scala, 3);
    EXPECT_EQ(grafico.scalaY, 1.0);
    analisi.optScala_Click(5);
    EXPECT_EQ(grafico.scalaY, 500.0);
    Giro(3);
    EXPECT_EQ(grafico.scalaY, 100.0) << "the highest maximum of this lap is 200, that of 5 is 2";
    // Unticking moves the choice to the first channel that is still ticked ...
    Spunta({5}, false);
    EXPECT_EQ(grafico.scalaY, 1.0);
    // ... and with none left it stays.
    Spunta({3}, false);
    EXPECT_EQ(analisi.Canali().CanaleScala(), 3);
    const int prima = grafico.pulizie;
    Spunta({3});
    EXPECT_EQ(grafico.pulizie, prima + 1) << "the option that is on is not clicked again";
    Spunta({4, 5, 6, 9});
    Spunta({3, 9}, false);
    EXPECT_EQ(vista.scala, 4);
}

TEST_F(DisegnoCanali, DrawsTheRowsThatTheWindowShows) {
    Spunta({3});
    const auto righe = [&](double da, double a) {
        grafico.intervallo = {da, a, 0.0, 1.0};
        analisi.EventoZoom();
        return std::pair{analisi.Finestra().RigaDa(), analisi.Finestra().RigaA()};
    };
    EXPECT_EQ(righe(-3.0, 9.0), (std::pair{5, 15}));
    // The last row counts from the first row shown, as far as the lap goes.
    EXPECT_EQ(righe(0.3, 0.6), (std::pair{8, 14}));
    EXPECT_EQ(grafico.elementi[0].X.front(), 0.3);
    EXPECT_EQ(panoramica.intervallo.XMax, 0.6) << "the alarms follow";
    EXPECT_EQ(righe(0.5, 0.9), (std::pair{10, 15}));
    EXPECT_EQ(righe(0.0, 0.6), (std::pair{5, 11}));
    for (const auto& [da, a] : {std::pair{5.0, 6.0}, {1e300, 2e300}, {0.0, -1e300}}) {
        righe(da, a);
        EXPECT_TRUE(grafico.elementi.empty()) << "the window has left the lap";
        EXPECT_TRUE(vista.segnati[3]);
    }
}

TEST_F(DisegnoCanali, SeparatePanesTakeTheirOwnScaleAndAreThreeAtMost) {
    Spunta({3, 4, 5});
    analisi.Separati_Click();
    Giro(2);  // drawn again the panes are counted again
    ASSERT_EQ(grafico.elementi.size(), 3u);
    for (const int i : {0, 1, 2}) {
        EXPECT_EQ(grafico.elementi[static_cast<std::size_t>(i)].Riquadro, i + 1);
        EXPECT_EQ(grafico.elementi[static_cast<std::size_t>(i)].Scala, 1.0);
    }
    EXPECT_EQ(grafico.scalaY, 1.0);
    EXPECT_EQ(grafico.intervallo.YMax, 2.2);
    macchina.Risposte = {Answer::Ok};
    const int prima = grafico.pulizie;
    Spunta({6});
    EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(Voce::TreCanaliAlMassimo));
    EXPECT_EQ(grafico.pulizie, prima) << "the graph keeps its last picture";
}
