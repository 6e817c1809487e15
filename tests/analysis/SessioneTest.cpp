#include "analysis/AnalisiProva.h"
#include "platform/Testo1252.h"
#include "support/SpazioFinito.h"

using namespace lapvane;
using namespace lapvane::prova;

class SessioneAnalisi : public AnalisiProva {
 protected:
    SessioneAnalisi() { QuattroGiri().Scrivi(Stelo()); }
    std::filesystem::path File() const { return ConFine(Stelo(), ".ses"); }
    ElencoCanali Letti() const {
        ElencoCanali canali;
        SessioneLog().LeggiDatiSessione(ConFine(Stelo(), ".csv"), canali);
        return canali;
    }
};

TEST_F(SessioneAnalisi, FileFillsSessionProjectAndChannels) {
    Scrivi(File(), Sessione(" ", "Motore; 2 ;16711680; 4;-1,5; 12.5", "Velocit\xE0;0;boh;7;;"));
    ASSERT_TRUE(ApriCsv());
    EXPECT_EQ(DatiSessione.Sessione, "Prove libere");
    EXPECT_EQ(DatiProgetto.Veicolo, "Alfa 8") << "the project's vehicle is overwritten";
    EXPECT_EQ(analisi.Canali()[3].FiltroCanale, 2);
    EXPECT_EQ(vista.colori[3], 16711680u);
    EXPECT_EQ(analisi.Canali()[3].SpessoreCanale, 4);
    EXPECT_EQ(vista.nomi[3], Testo(Voce::CanaleGiriMotore)) << "the caption of the file is dropped";
    EXPECT_EQ(analisi.Canali()[4].FiltroCanale, 1) << "what can't be drawn changes nothing";
    EXPECT_EQ(vista.colori[4], Rgb(255, 0, 0));
    EXPECT_EQ(vista.colori[20], 12u);
    EXPECT_EQ(Letti()[3].MinCanale, -1.5) << "the lap's own figures take their place";
    EXPECT_EQ(Letti()[3].MaxCanale, 12.5);
    // Another log has no session, and filter and width as they are at first.
    std::filesystem::remove(File());
    ASSERT_TRUE(ApriCsv());
    EXPECT_EQ(DatiSessione.Sessione, "");
    EXPECT_EQ(DatiProgetto.Veicolo, "");
    EXPECT_EQ(analisi.Canali()[3].FiltroCanale, 1);
    EXPECT_EQ(analisi.Canali()[3].SpessoreCanale, 1);
}

TEST_F(SessioneAnalisi, IsWrittenOverTheBeginningOfTheOldFile) {
    ASSERT_TRUE(ApriCsv());
    DatiSessione.Sessione = "Gara";
    analisi.cmdSetGraph_Click(3, [](ImpostazioniCanale& v) {
        v = {3, v.NomeCampo, "", Rgb(1, 0, 0), 2, 5, -0.5, 25, false};
    });
    analisi.cmdSetGraph_Click(20, [](ImpostazioniCanale& v) { v.SpessoreDialogo = 6; });
    macchina.Separatore = ',';
    Scrivi(File(), std::string(3000, '*'));
    analisi.SalvaDatiSessione();
    const std::string scritto = Leggi(File());
    EXPECT_EQ(scritto.size(), 3000u) << "the end of the longer old file stays";
    EXPECT_EQ(scritto.substr(0, 15), "Sessione=Gara\r\n");
    EXPECT_NE(scritto.find("\r\n" + Testo(Voce::CanaleGiriMotore) + ";2;1;5;-0.5;25\r\n"),
              std::string::npos);
    EXPECT_EQ(Letti()[20].SpessoreCanale, 6);
}

TEST_F(SessioneAnalisi, MediumThatCannotBeWrittenIsReportedAndNothingElse) {
    ASSERT_TRUE(ApriCsv());
    const auto salva = [&](Voce motivo) {
        macchina.Risposte = {Answer::Ok};
        analisi.SalvaDatiSessione();
        EXPECT_EQ(macchina.Mostrati.back().Testo,
                  Testo(Voce::NonScritto) + "\r\n" + TestoDaPercorso(File()) + "\r\n" +
                      Testo(motivo) + "\r\n\r\n" + Testo(Voce::SessioneNonSalvata));
    };
#ifndef _WIN32
    Scrivi(File(), "old");
    {
        const SpazioFinito poco(100);
        salva(Voce::MotivoPieno);
    }
    EXPECT_EQ(Leggi(File()), "old");
    std::filesystem::remove(File());
#endif
    std::filesystem::create_directory(File());
    salva(Voce::MotivoNegato);
}
