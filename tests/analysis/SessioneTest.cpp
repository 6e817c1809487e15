#include "analysis/AnalisiProva.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "support/SpazioFinito.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

LogProva Log() {
    LogProva log;
    log.Tratto(1, 3).Tratto(2, 11, [](int r) { return 2.5 * r; }).Tratto(3, 3);
    log.Tim = "1.4\r\n01:02.30, 1\r\n\r\n";
    return log;
}

}  // namespace

class SessioneAnalisi : public AnalisiProva {
 protected:
    std::filesystem::path File() const { return ConFine(Stelo(), ".ses"); }
    void AttesoMessaggio(Voce motivo) {
        ASSERT_EQ(macchina.Mostrati.size(), 1u);
        EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::NonScritto) + "\r\n" +
                                                  TestoDaPercorso(File()) + "\r\n" + Testo(motivo) +
                                                  "\r\n\r\n" + Testo(Voce::SessioneNonSalvata));
        EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::Critical);
        EXPECT_EQ(macchina.Mostrati[0].Titolo, "lapvane");
    }
};

TEST_F(SessioneAnalisi, AreReadByPosition) {
    DatiProgetto.Veicolo = "prima";
    Scrivi(File(), Sessione("Motore; 2 ;16711680; 4;-1,5; 12.5", "Velocit\xE0;0;boh;7;;"));
    ASSERT_TRUE(Apri(Log()));
    EXPECT_EQ(DatiSessione.Sessione, "Prove libere");
    EXPECT_EQ(DatiSessione.OraSessione, "10=30") << "everything after the first equals sign";
    EXPECT_EQ(DatiSessione.Circuito, "");
    EXPECT_EQ(DatiSessione.LunghTracciato, "5793");
    EXPECT_EQ(DatiProgetto.Veicolo, "Alfa 8") << "the project's vehicle is overwritten";
    EXPECT_EQ(DatiSessione.VeicoloSessione, "");
    EXPECT_EQ(DatiSessione.NoteSessione, "a;b");
    EXPECT_EQ(analisi.Canali()[3].FiltroCanale, 2);
    EXPECT_EQ(analisi.Canali()[3].ColoreCanale, 16711680u);
    EXPECT_EQ(vista.colori[3], 16711680u);
    EXPECT_EQ(analisi.Canali()[3].SpessoreCanale, 4);
    EXPECT_EQ(vista.nomi[3], Testo(Voce::CanaleGiriMotore)) << "the caption of the file is dropped";
    EXPECT_EQ(analisi.Canali()[4].FiltroCanale, 1) << "a step of 0 rows cannot be drawn";
    EXPECT_EQ(analisi.Canali()[4].ColoreCanale, Rgb(255, 0, 0))
        << "what is no number changes nothing";
    EXPECT_EQ(analisi.Canali()[4].SpessoreCanale, 1);
    EXPECT_EQ(analisi.Canali()[20].ColoreCanale, 12u);
    ElencoCanali canali;
    SessioneLog().LeggiDatiSessione(ConFine(Stelo(), ".csv"), canali);
    EXPECT_EQ(canali[3].MinCanale, -1.5) << "the lap's own figures take their place";
    EXPECT_EQ(canali[3].MaxCanale, 12.5);
}

TEST_F(SessioneAnalisi, MissingFileEmptiesTheSession) {
    DatiSessione.Sessione = "di un altro log";
    DatiProgetto.Veicolo = "di un altro log";
    ASSERT_TRUE(Apri(Log()));
    EXPECT_EQ(DatiSessione.Sessione, "");
    EXPECT_EQ(DatiProgetto.Veicolo, "");
    EXPECT_TRUE(macchina.Mostrati.empty());
}

TEST_F(SessioneAnalisi, IsWrittenOverTheBeginningOfTheOldFile) {
    ASSERT_TRUE(Apri(Log()));
    DatiSessione.Sessione = "Gara";
    DatiProgetto.Veicolo = "Alfa 8";
    const auto canale3 = [](ImpostazioniCanale& v) {
        v.FiltroDialogo = 2;
        v.ColoreCanale = Rgb(1, 0, 0);
        v.MinDialogo = -0.5;
        v.MaxDialogo = 25;
    };
    analisi.cmdSetGraph_Click(3, canale3);
    analisi.cmdSetGraph_Click(20, [](ImpostazioniCanale& v) { v.SpessoreDialogo = 6; });
    macchina.Separatore = ',';
    Scrivi(File(), std::string(3000, '*'));
    analisi.SalvaDatiSessione();
    const std::string scritto = Leggi(File());
    EXPECT_EQ(scritto.size(), 3000u) << "the end of the longer old file stays";
    const std::string testa =
        "Sessione=Gara\r\nDataSessione= \r\nOraSessione= \r\nCircuito= \r\nLunghTracciato= \r\n"
        "VeicoloSessione= \r\nPiloti= \r\nNoteSessione= \r\n" +
        Testo(Voce::CanaleGiriMotore) + ";2;1;1;-0.5;25\r\n";
    EXPECT_EQ(scritto.substr(0, testa.size()), testa);
    EXPECT_EQ(std::count(scritto.begin(), scritto.end(), '\n'), 26);

    ElencoCanali canali;
    SessioneLog().LeggiDatiSessione(ConFine(Stelo(), ".csv"), canali);
    EXPECT_EQ(DatiSessione.Sessione, "Gara");
    EXPECT_EQ(DatiProgetto.Veicolo, "") << "no session file holds the vehicle";
    EXPECT_EQ(canali[20].SpessoreCanale, 6);
    EXPECT_EQ(canali[3].MinCanale, -0.5);
}

TEST_F(SessioneAnalisi, MediumThatCannotBeWrittenIsReportedAndNothingElse) {
    ASSERT_TRUE(Apri(Log()));
    std::filesystem::create_directory(File());
    macchina.Risposte = {Answer::Ok};
    analisi.SalvaDatiSessione();
    AttesoMessaggio(Voce::MotivoNegato);
}

#ifndef _WIN32  // no limit on file sizes there
TEST_F(SessioneAnalisi, FullMediumLeavesTheOldFileWhole) {
    ASSERT_TRUE(Apri(Log()));
    DatiSessione.Sessione = "vecchia";
    analisi.SalvaDatiSessione();
    DatiSessione.Sessione = "Gara";
    DatiSessione.NoteSessione = std::string(300, 'n');
    macchina.Risposte = {Answer::Ok};
    {
        const SpazioFinito poco(430);
        analisi.SalvaDatiSessione();
    }
    AttesoMessaggio(Voce::MotivoPieno);
    EXPECT_TRUE(ApriCsv());
    EXPECT_EQ(DatiSessione.Sessione, "vecchia") << "the old file is whole";
    EXPECT_EQ(DatiSessione.NoteSessione, "");
}
#endif
