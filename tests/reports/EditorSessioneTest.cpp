#include "reports/EditorSessione.h"

#include <limits>

#include "platform/Testo1252.h"
#include "reports/DatiSessione.h"
#include "reports/FileSessione.h"
#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

class EditorDellaSessione : public ::testing::Test {
 protected:
    using Esito = EditorSessione::Esito;

    EditorDellaSessione() {
        CaricaTestiVeri(1);
        Scrivi(tracks / "Prova.trk", "0,0\r\n10,0\r\n10,10\r\n");
        Scrivi(tracks / "Prova.sec", "3480\r\n905\r\n842\r\n1016\r\n717\r\n");
        Scrivi(tracks / "Altro.trk", "0,0\r\n");
    }
    std::string File(const char* nome) const { return Leggi(tracks / nome); }
    Esito OK(const EditorSessione& editor) const {
        EditorSessione::Campi campi = EditorSessione::Leggi();
        campi.Sessione = " Gara";
        campi.Veicolo = "Alfa";
        campi.LunghTracciato = DatiSessione.LunghTracciato;
        return editor.Conferma(campi);
    }

    PlatformProva macchina;
    std::filesystem::path tracks = macchina.Cartella / "tracks";
};

TEST_F(EditorDellaSessione, OpensWithWhatIsThere) {
    DatiSessione.Circuito = " Prova ";
    DatiSessione.DataSessione = "12/5";
    for (int volta = 0; volta < 2; ++volta) const EditorSessione editor;
    EXPECT_EQ(ListaCircuiti, (std::vector<std::string>{"Altro", "Prova"}));
    EXPECT_EQ(EditorSessione::Leggi().Circuito, "Prova");
    EXPECT_EQ(EditorSessione::Leggi().DataSessione, "12/5");
    EXPECT_EQ(EditorSessione::Titolo("Prova"), "Prova") << "no length, no dash";
}

TEST_F(EditorDellaSessione, LengthStaysAsTypedAndHasToBeTheSumOfTheSectors) {
    EditorSessione editor;
    ASSERT_TRUE(editor.ScegliCircuito("Prova"));
    EXPECT_EQ(DatiSessione.LunghTracciato, "3480");
    const std::string prima = File("Prova.sec");
    const std::pair<const char*, Esito> casi[] = {
        {"3480.5", Esito::SommaDiversa},  // no whole metres, and the sectors are
        {"3481", Esito::SommaDiversa},
        {"", Esito::LunghezzaErrata},
        {"abc", Esito::LunghezzaErrata}};
    for (const auto& [lunghezza, esito] : casi) {
        EditorSessione::LunghTracciato(lunghezza);
        EXPECT_EQ(OK(editor), esito) << lunghezza;
        EXPECT_EQ(DatiSessione.Sessione, "");
        EXPECT_EQ(File("Prova.sec"), prima);
    }
    EditorSessione::LunghTracciato("3480");
    editor.CambiaSettore(0, "3000");
    EXPECT_EQ(OK(editor), Esito::SettoreNegativo);
    // A unit behind the number is no matter.
    EditorSessione::LunghTracciato(" 3000 m");
    editor.Dividi(4);
    editor.CambiaSettore(0, "700");
    editor.CambiaSettore(1, "x");
    EXPECT_EQ(OK(editor), Esito::Fatto);
    EXPECT_EQ(File("Prova.sec"), " 3000 m\r\n700\r\n800\r\n750\r\n750\r\n");
    EXPECT_EQ(DatiSessione.Sessione, " Gara") << "untrimmed";
    EXPECT_EQ(DatiProgetto.Veicolo, "Alfa");
    EXPECT_EQ(DatiSessione.VeicoloSessione, "");
}

TEST_F(EditorDellaSessione, ACircuitLeavesNothingOfTheOneBefore) {
    EditorSessione editor;
    // A first line that begins with no number is a length of 0, and not that of another circuit.
    for (const auto& [riga, letta] : {std::pair{"3200 m", "3200"}, {"abc", "0"}}) {
        Scrivi(tracks / "Altro.sec", std::string(riga) + "\r\n3200\r\n");
        editor.ScegliCircuito("Prova");
        EXPECT_TRUE(editor.ScegliCircuito("Altro"));
        EXPECT_EQ(DatiSessione.LunghTracciato, letta);
    }
    editor.ScegliCircuito("Prova");
    EXPECT_FALSE(editor.ScegliCircuito("../tracks/Prova")) << "not out of the folder and back";
    EXPECT_TRUE(editor.Punti().empty());
    EXPECT_EQ(editor.Divisione().NumSettori, 0);
    const std::string prima = File("Prova.sec");
    editor.Dividi(2);
    EXPECT_EQ(OK(editor), Esito::Fatto);
    EXPECT_EQ(File("Prova.sec"), prima);
    EXPECT_EQ(File("Altro.sec"), "abc\r\n3200\r\n");
}

TEST_F(EditorDellaSessione, TracksThatCannotBeHadOrWritten) {
    EditorSessione editor;
    editor.ScegliCircuito("Altro");
    EditorSessione::LunghTracciato("100");
    editor.Dividi(1);
    std::filesystem::create_directory(tracks / "Altro.sec");  // not writable, whoever asks
    macchina.Risposte = {Answer::Ok};
    EXPECT_EQ(OK(editor), Esito::Fatto) << "the session is saved all the same";
    EXPECT_EQ(macchina.Mostrati.back().Testo,
              Testo(Voce::NonScritto) + "\r\n" + TestoDaPercorso(tracks / "Altro.sec") + "\r\n" +
                  Testo(Voce::MotivoNegato) + "\r\n\r\n" + Testo(Voce::SettoriNonSalvati));
#ifndef _WIN32
    // A program folder that forbids is no matter while nothing changes there.
    editor.ScegliCircuito("Prova");
    std::filesystem::permissions(macchina.Cartella, std::filesystem::perms{0777});
    std::filesystem::permissions(tracks / "Prova.sec", std::filesystem::perms{0444});
    std::filesystem::permissions(tracks, std::filesystem::perms{0555});
    {
        const SenzaPrivilegi nessuno;
        EXPECT_EQ(OK(editor), Esito::Fatto);
    }
    std::filesystem::permissions(tracks, std::filesystem::perms{0777});
#endif
}

}  // namespace

namespace {

RecordSessione Prova() {
    RecordSessione s;
    s.Sessione = "Prove libere";
    s.OraSessione = "10=30";
    s.Circuito = "Citt\xE0 di Bra";
    s.LunghTracciato = "3480";
    s.Piloti = "Rossi\r\nBianchi\nVerdi";
    s.NoteSessione = " ";
    return s;
}

std::vector<double> Campi(const CanaleSessione& c) {
    return {1.0 * c.Filtro, 1.0 * c.Tinta, 1.0 * c.Spessore, c.Minimo, c.Massimo};
}

std::string RigheVuote(int da) {
    std::string testo;
    for (int c = da; c <= 20; ++c) testo += ";1;0;1;0;0\r\n";
    return testo;
}

}  // namespace

TEST(FileSessione, IsWrittenByteForByte) {
    CanaliSessione canali;
    canali[0] = {"Giri\r\nmotore", 2, 16711680, 4, -1.5, 12000};
    canali[1] = {"a;b", 1, 255, 6, 0.0000123456789012345678, 1e20};
    canali[2] = {"",
                 32767,
                 0xFFFFFF,
                 1,
                 std::numeric_limits<double>::quiet_NaN(),
                 std::numeric_limits<double>::infinity()};
    EXPECT_EQ(ScriviSessione(Prova(), canali),
              "Sessione=Prove libere\r\nDataSessione= \r\nOraSessione=10=30\r\n"
              "Circuito=Citt\xE0 di Bra\r\nLunghTracciato=3480\r\nVeicoloSessione= \r\n"
              "Piloti=Rossi Bianchi Verdi\r\nNoteSessione= \r\n"
              "Giri motore;2;16711680;4;-1.5;12000\r\n"
              "a;b;1;255;6;0.0000123456789012346;100000000000000000000\r\n"
              ";32767;16777215;1;0;0\r\n" +
                  RigheVuote(6));
}

TEST(FileSessione, LosesTheVehicleAndGivesTheProjectsBack) {
    RecordSessione letta;
    letta.VeicoloSessione = "prima";
    std::string veicolo = "Alfa";
    CanaliSessione canali;
    LeggiSessione(ScriviSessione(Prova(), {}), letta, veicolo, canali);
    EXPECT_EQ(veicolo, "");
    EXPECT_EQ(letta.VeicoloSessione, "");
    EXPECT_EQ(letta.Piloti, "Rossi Bianchi Verdi");
    EXPECT_EQ(letta.OraSessione, "10=30");
    canali[0].Filtro = 7;
    LeggiSessione("a\r\nb\r\nc\r\nd\r\ne\r\nx= Alfa 8 \r\n", letta, veicolo, canali);
    EXPECT_EQ(veicolo, "Alfa 8");
    EXPECT_EQ(letta.Sessione, "a") << "a line without an equals sign is all value";
    EXPECT_EQ(letta.Piloti, "");
    EXPECT_EQ(canali[0].Filtro, 7) << "the text ends before it";
}

TEST(FileSessione, WhatIsNoNumberOrCannotBeDrawnLeavesTheChannelAsItWas) {
    struct Caso {
        const char* Riga;
        CanaleSessione Atteso;
    };
    const CanaleSessione prima{"", 7, 99, 5, -3, 8};
    const Caso casi[] = {
        {"x; 2 ; 255 ; 6 ;-1,5; 12.5", {"", 2, 255, 6, -1.5, 12.5}},
        {"x;0;255;0;1;2", {"", 7, 255, 5, 1, 2}},
        {"x;-4;255;7;1;2", {"", 7, 255, 5, 1, 2}},
        {"x;40000;-1;70000;1e999;nan", {"", 7, 0xFFFFFF, 5, -3, 8}},
        {"x;boh;;1a;;", {"", 7, 99, 5, -3, 8}},
        {"x;3", {"", 3, 99, 5, -3, 8}},
        {"a;b;1;255;6;0;1", {"", 7, 1, 5, 6, 8}},  // the caption's ";" shifts the fields
        {"", prima},
    };
    for (const Caso& caso : casi) {
        CanaliSessione canali;
        canali[0] = prima;
        RecordSessione sessione;
        std::string veicolo;
        LeggiSessione("\n\n\n\n\n\n\n\n" + std::string(caso.Riga), sessione, veicolo, canali);
        EXPECT_EQ(Campi(canali[0]), Campi(caso.Atteso)) << caso.Riga;
    }
}
