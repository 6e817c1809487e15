// The analysis over the spreadsheet-like table, and what it shares with the one over the array.
#include "analysis/AnalisiDatiFoglio.h"

#include <algorithm>

#include "analysis/AnalisiProva.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

class Foglio : public AnalisiProva {
 protected:
    Foglio() { macchina.CartellaCorrente = macchina.Cartella; }
    bool ApriCsvFoglio() { return foglio.Carica(ConFine(Stelo(), ".csv")); }
    std::vector<AnalisiDati*> Tutte() { return {&foglio, &analisi}; }

    VistaProva vistaFoglio;
    GraficoProva graficoFoglio;
    GraficoProva panoramicaFoglio;
    AnalisiDatiFoglio foglio{vistaFoglio, graficoFoglio, panoramicaFoglio};
};

}  // namespace

TEST_F(Foglio, AgreesWithTheArrayWhereItMust) {
    ASSERT_TRUE(Apri(QuattroGiri()));
    ASSERT_TRUE(ApriCsvFoglio());
    EXPECT_EQ(vistaFoglio.celle, vista.celle) << "lap texts";
    EXPECT_EQ(vistaFoglio.sfondi, vista.sfondi) << "best and worst";
    EXPECT_EQ(vistaFoglio.nomi, vista.nomi);
    EXPECT_EQ(vistaFoglio.unita_, vista.unita_);
    EXPECT_EQ(vistaFoglio.schede, vista.schede);
    EXPECT_EQ(vistaFoglio.visibili, vista.visibili);
    for (int giro = 1; giro <= 4; ++giro) {
        SCOPED_TRACE(giro);
        // The same laps in time; the heading counts as row 1 there, and the first sample as row 2.
        EXPECT_EQ(foglio.Giri().InizioGiro(giro), analisi.Giri().InizioGiro(giro) + 2);
        EXPECT_EQ(foglio.Giri().FineGiro(giro), analisi.Giri().FineGiro(giro) + 2);
        for (AnalisiDati* const a : Tutte()) {
            a->MSFlexGrid1_Click(giro, 1);
            a->chkGrafico_Click(3, true);
            a->EventoCursore(Grafico::Canali, 3);
        }
        EXPECT_EQ(vistaFoglio.valori, vista.valori) << "cursor values";
        EXPECT_EQ(graficoFoglio.elementi.at(0).Y, grafico.elementi.at(0).Y);
        EXPECT_EQ(graficoFoglio.elementi.at(0).X, grafico.elementi.at(0).X);
        EXPECT_EQ(foglio.Canali()[4].MediaCanale, analisi.Canali()[4].MediaCanale);
        EXPECT_EQ(foglio.Finestra().XMax(), analisi.Finestra().XMax());
    }
}

TEST_F(Foglio, DiffersWhereItMust) {
    QuattroGiri().Scrivi(Stelo());
    ASSERT_TRUE(ApriCsvFoglio());
    EXPECT_EQ(foglio.NumRighe(), 126) << "125 samples and the heading";
    foglio.MSFlexGrid1_Click(2, 1);
    foglio.chkGrafico_Click(3, true);
    foglio.chkDistanza_Click(true);
    EXPECT_EQ(foglio.Canali()[3].MinCanale, 2000.0) << "figures start from the first cell here";
    EXPECT_EQ(foglio.Canali()[4].MaxCanale, -5.0);
    EXPECT_EQ(graficoFoglio.elementi.at(0).X.back(), 390.0) << "the distance axis draws";
    foglio.SSTab1_Click(1);
    EXPECT_EQ(panoramicaFoglio.elementi.at(7).X.back(), 390.0);
    foglio.SSTab1_Click(0);
    for (const int passi : {1, -1}) {
        graficoFoglio.intervallo = {30.0, 50.0, 0.0, 1.0};
        foglio.cmdSposta_Click(passi);
        EXPECT_EQ(graficoFoglio.intervallo.XMin, passi > 0 ? 39.0 : -9.0)
            << "one step forward knows no mouse";
    }
}

TEST_F(Foglio, ColumnsAreThoseOfTheFile) {
    for (const int colonne : {3, 21}) {
        LogProva log = QuattroGiri();
        log.Colonne = colonne;
        log.Titoli = "Tempo [sec];Distanza [m]";
        for (int c = 3; c <= colonne; ++c) log.Titoli += ";C [u" + TestoNumero(c) + "]";
        for (RigaLog& riga : log.Righe) riga.Celle[3] = "12,5";
        log.Scrivi(Stelo());
        ASSERT_TRUE(ApriCsvFoglio());
        EXPECT_EQ(vistaFoglio.visibili[20], colonne == 21);
        EXPECT_EQ(vistaFoglio.unita_[3], "[u3]");
        EXPECT_EQ(foglio.Tabella().Valore(3, Piano::Dati, 2), 12.5);
        EXPECT_TRUE(foglio.Tabella().Colonna(21).empty());
    }
    // The side file has its columns whatever its heading names.
    const std::string intero = QuattroGiri().Laterale();
    Scrivi(ConFine(Stelo(), ".txt"), "Time" + intero.substr(intero.find('\n')));
    ASSERT_TRUE(ApriCsvFoglio());
    EXPECT_EQ(vistaFoglio.Cella(3, 0), Testo(Voce::RigaGiro) + "3");
}

TEST_F(Foglio, DoesNotNoticeAMissingSideFileUnlessNoFileIsThereAtAll) {
    QuattroGiri().Scrivi(Stelo());
    std::filesystem::remove(ConFine(Stelo(), ".txt"));
    ASSERT_TRUE(ApriCsvFoglio());
    EXPECT_EQ(foglio.Giri().PrimoGiroValido(), 1000) << "no lap has rows";
    foglio.SSTab1_Click(1);
    foglio.cmdZoom_Click(0.5);
    foglio.cmdSposta_Click(10);
    macchina.CartellaCorrente = macchina.Cartella / "vuota";
    std::filesystem::create_directory(macchina.CartellaCorrente);
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    EXPECT_FALSE(ApriCsvFoglio());
    EXPECT_EQ(macchina.Mostrati.at(1).Testo,
              Testo(Voce::IlFile) + " .alm " + Testo(Voce::NonTrovato));
    EXPECT_TRUE(vistaFoglio.scaricata);
}

TEST_F(Foglio, TellsItsProgressAndOpensEmptyLogs) {
    LogProva().Tratto(1, 300).Tratto(2, 300).Tratto(3, 1).Scrivi(Stelo());
    ASSERT_TRUE(ApriCsvFoglio());
    const std::string voce = "3:" + Testo(Voce::CaricamentoDati) + " 50 %";
    EXPECT_EQ(std::count(finestra.Storia.begin(), finestra.Storia.end(), voce), 2) << "a file each";
    for (const std::string csv : {"a;b\r\n", ""}) {
        Scrivi(ConFine(Stelo(), ".csv"), csv);
        ASSERT_TRUE(ApriCsvFoglio());
        EXPECT_EQ(foglio.NumRighe(), csv.empty() ? 0 : 1) << "the heading";
        EXPECT_EQ(foglio.NumCampi(), csv.empty() ? 0 : 2);
    }
}
