#include "analysis/AnalisiProva.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

/// Start (5 rows), a lap of 10 s (rows 5 to 105), one of 20 s (rows 106 to 306), End. Channel 3
/// counts the rows of its lap; alarm 2 is on from 1 s to 2 s.
LogProva LogLungo() {
    LogProva log;
    const auto riga = [](int r) { return 1.0 * r; };
    log.Tratto(1, 5).Tratto(2, 101, riga).Tratto(3, 201, riga).Tratto(4, 3);
    for (std::size_t r = 15; r <= 25; ++r) log.Righe[r].Allarme2 = true;
    log.Tim = "1.4\r\n00:10.10, 1\r\n00:20.10, 1\r\n\r\n";
    return log;
}

}  // namespace

class Navigazione : public AnalisiProva {
 protected:
    void Apri10() {
        ASSERT_TRUE(Apri(LogLungo()));
        analisi.MSFlexGrid1_Click(2, 1);
        analisi.chkGrafico_Click(3, true);
    }
    std::pair<double, double> Finestra() const {
        return {grafico.intervallo.XMin, grafico.intervallo.XMax};
    }
    using Coppia = std::pair<double, double>;
};

TEST_F(Navigazione, ZoomMovesTheRightEdgeOnly) {
    Apri10();
    analisi.cmdZoom_Click(0.5, true);
    EXPECT_EQ(Finestra(), (Coppia{0.0, 20.0})) << "the window may exceed the lap";
    EXPECT_EQ(panoramica.intervallo.XMax, 20.0);
    // What the mouse has zoomed comes back with the next button, y and all.
    grafico.intervallo = {4.0, 8.0, -1.0, 3.0};
    analisi.cmdZoom_Click(0.5);
    EXPECT_EQ(Finestra(), (Coppia{4.0, 6.0}));
    EXPECT_EQ(grafico.intervallo.YMax, 3.0);
    EXPECT_EQ(grafico.CursoreX(), 4.0);
    EXPECT_EQ(panoramica.CursoreX(), 4.0);
    EXPECT_EQ(analisi.Finestra().RigaDa(), 45);
    // The right edge decides about further zooming in.
    grafico.intervallo = {0.0, 1.2, 0.0, 1.0};
    for (const bool mouse : {false, true, false}) {
        if ((grafico.modoMouse == ModoMouse::Zoom) != mouse) analisi.SetZoom_Click();
        EXPECT_EQ(grafico.modoMouse, mouse ? ModoMouse::Zoom : ModoMouse::Cursore);
        analisi.cmdZoom_Click(0.5);
        EXPECT_FALSE(vista.zoomIn);
        analisi.cmdZoom_Click(0.5, true);
        EXPECT_EQ(vista.zoomIn, !mouse);
    }
    // Divided, not multiplied by the reciprocal: the last bit is another.
    grafico.intervallo = {0.0, 6.1, 0.0, 1.0};
    analisi.cmdZoom_Click(0.9, true);
    EXPECT_EQ(Finestra(), (Coppia{0.0, 6.1 / 0.9}));
    analisi.DimOriginali_Click();
    EXPECT_EQ(Finestra(), (Coppia{0.0, 10.0}));
    EXPECT_EQ(panoramica.intervallo.XMax, 10.0);
}

TEST_F(Navigazione, ShiftGoesAnywhereAndReadsAtTheLeftEdge) {
    Apri10();
    analisi.cmdSposta_Click(10);
    EXPECT_EQ(Finestra(), (Coppia{1.0, 11.0})) << "ten steps of a hundredth of the window";
    EXPECT_EQ(grafico.CursoreX(), 1.0);
    EXPECT_EQ(panoramica.intervallo.XMin, 1.0);
    EXPECT_EQ(analisi.Finestra().RigaDa(), 15);
    EXPECT_EQ(vista.valori[2], "100") << "the cursor stands at the left edge";
    EXPECT_TRUE(vista.lampade[1]) << "and reads the alarms there";
    EXPECT_FALSE(vista.lampade[0]);
    analisi.cmdSposta_Click(-10);
    analisi.cmdSposta_Click(-1);
    EXPECT_DOUBLE_EQ(grafico.intervallo.XMin, -0.1);
    grafico.intervallo = {3.0, 5.0, 0.0, 1.0};
    analisi.cmdSposta_Click(1);
    EXPECT_DOUBLE_EQ(grafico.intervallo.XMin, 3.1) << "the step is that of the window before";
    EXPECT_EQ(grafico.elementi.at(0).X.front(), 3.1) << "and drawn";
}

TEST_F(Navigazione, MarkerSpreadsTheLapOverTheLinesOfTheOutline) {
    Apri10();  // a lap of 100 rows and one
    const auto percorri = [&](int righe) {
        std::string outline;
        for (int i = 0; i < righe; ++i) outline += TestoNumero(i) + ",1\r\n";
        Scrivi(macchina.Cartella / "tracks" / "Prova.trk", outline);
        DatiSessione.Circuito = "Prova";
        analisi.Circuito_Click();
        std::vector<int> punti = {vista.marcatore};
        for (const int i : {10, 33, 66, 67, 100}) {
            analisi.EventoCursore(Grafico::Canali, i);
            punti.push_back(vista.marcatore);
        }
        return punti;
    };
    EXPECT_EQ(percorri(201), (std::vector{0, 20, 66, 132, 134, 200}));
    grafico.intervallo = {5.0, 105.0, 0.0, 1.0};  // from row 50 on, one row in two
    analisi.EventoZoom();
    analisi.EventoCursore(Grafico::Canali, 10);
    EXPECT_EQ(vista.marcatore, 140);
    analisi.Circuito_Click();
    EXPECT_FALSE(vista.mappa);
    analisi.DimOriginali_Click();
    EXPECT_EQ(percorri(301), (std::vector{0, 30, 99, 198, 200, 200}))
        << "all 301 lines count, and the marker stops at the last point";
    ASSERT_TRUE(ApriCsv());
    EXPECT_FALSE(analisi.TracciatoVisibile()) << "another log begins without a map";
}

TEST_F(Navigazione, ScrollRunsToTheEndOfTheLap) {
    Apri10();
    const auto scorri = [&](Verso verso, double da) {
        grafico.intervallo = {da, da + 5.0, 0.0, 1.0};
        analisi.cmdZoom_Click(1.0);
        const bool destra = verso == Verso::DX;
        int giri = 0;
        const std::int64_t inizio = macchina.Orologio;
        macchina.DuranteEventi = [&] {
            ASSERT_LT(++giri, 2000);
            if (giri != 1) return;
            EXPECT_TRUE(vista.scorriDX.Verde == destra && vista.scorriSX.Verde != destra);
            EXPECT_TRUE(vista.scorriDX.Acceso == destra && vista.scorriSX.Acceso != destra);
            EXPECT_FALSE(grafico.CursoreAttivo());
            EXPECT_EQ(grafico.CursoreX(), grafico.intervallo.XMin);
            EXPECT_EQ(vista.valori[3], TestoNumero(analisi.Finestra().RigaDa() - 5));
        };
        analisi.cmdScorri_Click(verso);
        macchina.DuranteEventi = {};
        EXPECT_TRUE(vista.scorriSX.Acceso && vista.scorriDX.Acceso);
        EXPECT_FALSE(vista.scorriSX.Verde || vista.scorriDX.Verde);
        EXPECT_TRUE(grafico.CursoreAttivo());
        return macchina.Orologio - inizio;
    };
    // 98 steps of a twentieth of a second, each as long as a screen shows one.
    EXPECT_EQ(scorri(Verso::DX, 0.0), 99 * 16);
    EXPECT_GT(grafico.intervallo.XMax, 9.9) << "past the row before the lap's last";
    EXPECT_LT(grafico.intervallo.XMax, 10.0);
    scorri(Verso::SX, 1.0);
    EXPECT_LT(grafico.intervallo.XMin, 0.0);
    EXPECT_GT(grafico.intervallo.XMin, -0.1);
    // Metres against seconds, on purpose: 1000 m are more than 9.9 s.
    analisi.chkDistanza_Click(true);
    analisi.cmdScorri_Click(Verso::DX);
    EXPECT_EQ(grafico.intervallo.XMax, 1000.0);
}

TEST_F(Navigazione, EventsInsideTheScroll) {
    Apri10();
    int giri = 0;
    // Scrolls from 0 to the right and runs `evento` in each round.
    const auto scorri = [&](const std::function<void(int)>& evento) {
        grafico.intervallo = panoramica.intervallo = {0.0, 2.0, 0.0, 18.0};
        giri = 0;
        macchina.DuranteEventi = [&] {
            evento(++giri);
            ASSERT_LT(giri, 500);
        };
        analisi.cmdScorri_Click(Verso::DX);
        EXPECT_FALSE(analisi.ScorrimentoAttivo());
    };
    const auto ferma = [&](int giro) {
        if (giro == 40) analisi.cmdScorri_Click(Verso::DX);
    };
    scorri(ferma);
    EXPECT_EQ(giri, 40) << "a second click stops it at once";
    EXPECT_GT(grafico.intervallo.XMin, 0.0);
    // Another lap goes on from its own window; a lap without rows stops it.
    scorri([&](int giro) {
        if (giro == 10) analisi.MSFlexGrid1_Click(3, 1);
        if (giro == 20) analisi.MSFlexGrid1_Click(4, 1);
    });
    // Another tab: the graph that scrolled gets its cursor back.
    analisi.MSFlexGrid1_Click(3, 1);
    scorri([&](int giro) {
        if (giro == 5) analisi.SSTab1_Click(1);
        if (giro == 9) analisi.cmdScorri_Click(Verso::DX);
    });
    EXPECT_TRUE(grafico.CursoreAttivo());
    // The overview scrolls by itself, and the channels are not drawn behind it.
    const int prima = grafico.pulizie;
    scorri(ferma);
    EXPECT_EQ(giri, 40);
    EXPECT_GT(panoramica.intervallo.XMin, 0.0);
    EXPECT_EQ(panoramica.CursoreX(), panoramica.intervallo.XMin);
    EXPECT_EQ(grafico.pulizie, prima);
    // The window closes: nothing is touched any more.
    scorri([&](int giro) {
        if (giro == 5) analisi.Form_Unload();
    });
    EXPECT_EQ(giri, 5);
    EXPECT_TRUE(panoramica.elementi.empty());
}

TEST_F(Navigazione, OverviewShowsTheSameWindow) {
    Apri10();
    grafico.intervallo = {1.0, 3.0, -7.0, 7.0};
    analisi.SSTab1_Click(1);
    EXPECT_EQ(panoramica.intervallo.XMin, 1.0);
    EXPECT_EQ(panoramica.intervallo.XMax, 3.0);
    EXPECT_EQ(panoramica.intervallo.YMax, 18.0);
    ASSERT_EQ(panoramica.elementi.size(), 8u);
    EXPECT_EQ(panoramica.elementi[7].Tinta, Rgb(0, 0, 128));
    EXPECT_EQ(panoramica.elementi[1].Y.front(), 4.0) << "alarm 2 is on";
    EXPECT_EQ(panoramica.elementi[1].Y[11], 3.0) << "and off after 2 s";
    for (const int indice : {10, 11}) {
        analisi.EventoCursore(Grafico::Allarmi, indice);
        EXPECT_EQ(vista.lampade[1], indice == 10);
    }
    EXPECT_EQ(analisi.Canali().UltimoCanale(), 10)
        << "the cursor reads with the filter of the last alarm";
    // Back on the graph the boxes show what is under its own cursor again.
    grafico.indice = 4;
    analisi.SSTab1_Click(0);
    EXPECT_EQ(vista.valori[1], "1.4");
    EXPECT_EQ(vista.valori[3], "14");
    analisi.chkDistanza_Click(true);
    analisi.SSTab1_Click(1);
    EXPECT_TRUE(panoramica.elementi.empty()) << "no alarms over the distance in this window";
}

TEST_F(Navigazione, ViewsOfTheToolBar) {
    Apri10();
    // Keys pressed: overlaid, separate, zoom. Keys alive: separate, zoom.
    const auto barra = [&] {
        const StatoBarra& b = vista.barra;
        return std::array{b.SovrappostiPremuto, b.SeparatiPremuto, b.ZoomPremuto, b.SeparatiAcceso,
                          b.ZoomAcceso};
    };
    using Stato = std::array<bool, 5>;
    for (const int c : {4, 5, 6}) analisi.chkGrafico_Click(c, true);
    EXPECT_EQ(barra(), (Stato{true, false, false, false, true})) << "four channels";
    analisi.chkGrafico_Click(6, false);
    analisi.SetZoom_Click();
    EXPECT_EQ(barra(), (Stato{true, false, true, true, true}));
    analisi.Separati_Click();
    EXPECT_EQ(barra(), (Stato{false, true, false, true, false}));
    EXPECT_TRUE(vista.zoomIn);
    EXPECT_EQ(grafico.modoMouse, ModoMouse::Cursore);
    EXPECT_EQ(grafico.scalaY, 1.0);
    // Four panes there can't be: the message, once also for the scroll that they end, and the axis
    // stays whose it was.
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    grafico.intervallo = {0.0, 2.0, 0.0, 1.0};
    int giri = 0;
    macchina.DuranteEventi = [&] {
        if (++giri == 5) analisi.chkGrafico_Click(6, true);
        ASSERT_LT(giri, 20);
    };
    analisi.cmdScorri_Click(Verso::DX);
    macchina.DuranteEventi = {};
    EXPECT_EQ(macchina.Mostrati.size(), 1u);
    EXPECT_TRUE(vista.barra.SeparatiPremuto) << "until the user chooses again";
    grafico.scalaY = 7.0;
    analisi.Separati_Click();
    EXPECT_EQ(grafico.scalaY, 7.0);
    analisi.Sovrapposti_Click();
    EXPECT_EQ(barra(), (Stato{true, false, false, false, true}));
    EXPECT_EQ(grafico.elementi.size(), 4u);
    EXPECT_EQ(grafico.scalaY, analisi.Canali()[6].FattoreScala)
        << "the axis labels are channel 6's again";
    analisi.chkGrafico_Click(6, false);
    EXPECT_TRUE(vista.barra.SeparatiAcceso) << "three fit";
}

TEST_F(Navigazione, SettingsOfAChannelGoThroughTheExchangeFields) {
    Apri10();
    analisi.cmdSetGraph_Click(3, [&](ImpostazioniCanale& valori) {
        EXPECT_EQ(valori.NumeroCanale, 3);
        EXPECT_EQ(valori.MaxDialogo, 100.0);
        EXPECT_FALSE(valori.Separati);
        valori = {3, "Motore", "[g/m]", Rgb(1, 2, 3), 4, 3, -50.0, 250.0, true};
    });
    EXPECT_EQ(vista.nomi[3], "Motore");
    EXPECT_EQ(vista.unita_[3], "[g/m]");
    EXPECT_EQ(vista.colori[3], Rgb(1, 2, 3));
    ASSERT_EQ(grafico.elementi.size(), 1u);
    EXPECT_EQ(grafico.elementi[0].Passo, 4);
    EXPECT_EQ(grafico.elementi[0].Spessore, 3);
    EXPECT_EQ(grafico.elementi[0].Tinta, Rgb(1, 2, 3));
    EXPECT_EQ(grafico.etichettaY, "Motore [g/m]");
    analisi.Separati_Click();
    EXPECT_EQ(grafico.intervallo.YMax, 275.0) << "the pane takes the new scale";
    EXPECT_EQ(grafico.intervallo.YMin, -45.0);
    analisi.cmdSetGraph_Click(3, [&](const ImpostazioniCanale& valori) {
        EXPECT_EQ(valori.FiltroDialogo, 4);
        EXPECT_EQ(valori.SpessoreDialogo, 3);
        EXPECT_EQ(valori.MinDialogo, -50.0);
        EXPECT_TRUE(valori.Separati);
    });
    analisi.MSFlexGrid1_Click(3, 1);
    EXPECT_EQ(analisi.Canali()[3].MaxCanale, 200.0) << "another lap has its own scale";
    analisi.SetMinVal(3, -7.0);
    EXPECT_EQ(analisi.GetMinVal(3), "-7");
    analisi.SetMaxVal(3, 7.0);
    EXPECT_EQ(analisi.GetMinVal(3), "7") << "the minimum takes it";
    EXPECT_EQ(analisi.GetMaxVal(3), "200");
    EXPECT_THROW(static_cast<void>(analisi.GetTempoGiro(1000)), ErroreRuntime);
}

TEST(CalcoloFigure, TimesAndSpeedsOfTheSession) {
    PlatformProva macchina;
    DatiSessione.LunghTracciato = "1000 m";
    const std::string lunghi = "61:00.00\r\n61:00.00\r\n61:00.00\r\n61:00.00\r\n61:00.00\r\n";
    struct Caso {
        std::string Tempi, Totale, Medio, Velocita;
        int Esclusi;
    };
    const Caso casi[] = {
        // 3000 m in 18050 hundredths.
        {"01:00.00\r\n00:50.00\r\nboh\r\n01:10.50\r\n", "00:03:00.50", "01:00.16", "59.834", 1},
        // No clock has 61 minutes or 75 seconds, a lap may: 366000 + 12000 + 7500.
        {"61:00.00\r\n02:00.00\r\n00:75.00\r\n", "01:04:15.00", "21:25.00", "2.802", 0},
        {"01:02:03.04\r\n01:02:03.05\r\n", "02:04:06.09", "62:03.04", ".967", 0},
        {"01:00.5\r\n 01:00.00 \r\n", "00:02:00.50", "01:00.25", "59.751", 0},
        {"0:59.00\r\n01:0x.00\r\n01:00\r\n-1:00.00\r\n01:00.000\r\n", "00:00:00.00", "", "", 5},
        {lunghi + lunghi + lunghi + lunghi + lunghi, "01:25:00.00", "61:00.00", ".984", 0},
    };
    const auto giri = [](const std::string& tempi) {
        GiriLog letti;
        letti.Prendi(LeggiFileTim("1.4\r\n" + tempi + "\r\n"));
        return letti;
    };
    for (const Caso& caso : casi) {
        SCOPED_TRACE(caso.Tempi);
        const FigureSessione figure = CalcolaStatistiche(giri(caso.Tempi));
        EXPECT_EQ(figure.TempoTotale, caso.Totale);
        EXPECT_EQ(figure.TempoMedio, caso.Medio);
        EXPECT_EQ(figure.VelocitaMedia, caso.Velocita);
        EXPECT_EQ(figure.GiriEsclusi, caso.Esclusi);
    }
    const FigureSessione figure = CalcolaStatistiche(giri("01:00.00\r\n00:50.00\r\n00:55.00\r\n"));
    EXPECT_EQ(figure.GiroMigliore, 2);
    EXPECT_EQ(figure.TempoMigliore, "00:50.00");
    EXPECT_EQ(figure.VelocitaMigliore, "72.0") << "1000 m in 5000 hundredths, times 360";
    EXPECT_EQ(figure.GiroPeggiore, 1);
    EXPECT_EQ(figure.TempoPeggiore, "01:00.00");
    EXPECT_EQ(figure.VelocitaPeggiore, "60.0");
}
