#include "runs/ElencoUscite.h"

#include <gtest/gtest.h>

#include "runs/CsvArchivio.h"
#include "runs/ScelteArchivio.h"
#include "support/PlatformProva.h"

namespace lapvane::prova {
namespace {

TEST(Uscita, DatesAndTimesThatPeopleType) {
    const struct {
        const char* Testo;
        std::int32_t Giorno;
    } giorni[] = {{"17/05/2026", 20260517},
                  {"5/17/26", 20260517},
                  {"2026-05-17", 20260517},
                  {"dom 17 Maggio 2026", 20260517},
                  {"May 17th, 2026", 20260517},
                  {"17.5", 0},
                  {"32/1/2026", 0},
                  {"1/2/3/2026", 0},
                  {"yesterday", 0},
                  {"170526", 0}};
    for (const auto& caso : giorni) EXPECT_EQ(LeggiGiorno(caso.Testo), caso.Giorno) << caso.Testo;
    const struct {
        const char* Testo;
        std::int32_t Minuto;
    } ore[] = {{"16:18", 978}, {"16.18", 978}, {"4:18 pm", 978}, {"12:05 AM", 5},
               {"9", -1},      {"24:00", -1},  {"16:60", -1},    {"afternoon", -1}};
    for (const auto& caso : ore) EXPECT_EQ(LeggiMinuto(caso.Testo), caso.Minuto) << caso.Testo;
}

TEST(Uscita, LapsAreThoseOfTheLapTable) {
    Uscita u;
    // The empty line at the end is no lap, one without a valid time is a lap that counts for
    // nothing else. 60.00, 60.01, 60.02, 60.03 and 61.02: mean 60.216.
    PrendiTempi(u,
                "1.4\r\n01:00.01, 1\r\n00:00.00, 1\r\n01:00.00, 1\r\n01:00.02, 2\r\n"
                "01:09.00, 2\r\n01:00.03, 2\r\n01:01.02\r\n\r\n");
    EXPECT_EQ(u.Giri(), 7);
    EXPECT_EQ(u.Migliore, 6000);
    EXPECT_EQ(u.QualeMigliore(), 2);
    EXPECT_EQ(u.MediaCinque, 6022);
    PrendiTempi(u, "1.4\r\n01:00.01\r\n01:00.00\r\n01:00.00\r\n01:00.00\r\n01:00.00\r\n");
    EXPECT_EQ(u.Giri(), 4) << "without the empty line the last one is taken for it";
    EXPECT_EQ(u.MediaCinque, 0) << "fewer than five";
}

class ElencoProva : public ::testing::Test {
 protected:
    ElencoProva() {
        CaricaTestiVeri(1);
        Aggiungi("a.csv", 20260517, "Imola", "Free test", "Rossi", 7000);
        Aggiungi("b.csv", 20260516, "IMOLA", "Race", "P\xE9rez", 6900);
        Aggiungi("c.csv", 20260515, "imola", "Free practice", "rossi", 6900);
        Aggiungi("d.csv", 20260517, "", "Free practice", "Bianchi", 6000);
        Aggiungi("e.csv", 20260401, "Adria", "Free test", "Rossi", 0);
        elenco.Prendi(uscite);
    }
    void Aggiungi(const char* file, std::int32_t giorno, const char* circuito, const char* sessione,
                  const char* piloti, std::int32_t migliore) {
        Uscita u;
        u.Csv = file;
        u.Giorno = giorno;
        u.Minuto = 600;
        u.Circuito = circuito;
        u.Sessione = sessione;
        u.Piloti = piloti;
        u.Migliore = migliore;
        uscite.push_back(u);
    }
    /// The lines: letters of the files, "/" before a group.
    std::string Righe() const {
        std::string righe;
        for (const RigaElenco& riga : elenco.Righe()) {
            righe += riga.Uscita < 0
                         ? "/" + elenco.Gruppi()[static_cast<std::size_t>(riga.Gruppo)].Nome
                         : std::string(1, static_cast<char>('a' + riga.Uscita));
        }
        return righe;
    }

    PlatformProva macchina;
    std::vector<Uscita> uscite;
    ElencoUscite elenco;
};

TEST_F(ElencoProva, WordsFilterWithoutCaseAndAccents) {
    const struct {
        const char* Testo;
        const char* Righe;
    } casi[] = {{"", "adbce"},    {"ROSSI free", "ace"},     {"  per\xC9z ", "b"},
                {"17 may", "ad"}, {"17/05/2026 imola", "a"}, {"rossi x", ""},
                {"e.csv", "e"},   {"rossifree", ""}};
    for (const auto& caso : casi) {
        elenco.Cerca(caso.Testo);
        EXPECT_EQ(Righe(), caso.Righe) << caso.Testo;
    }
}

TEST_F(ElencoProva, EmptyValuesAreLastInBothDirections) {
    const struct {
        ColonnaUscite Colonna;
        bool Discendente;
        const char* Righe;
    } casi[] = {{ColonnaUscite::Migliore, false, "dbcae"},
                {ColonnaUscite::Migliore, true, "abcde"},
                {ColonnaUscite::Circuito, false, "eabcd"},
                {ColonnaUscite::Circuito, true, "abced"},
                {ColonnaUscite::Data, false, "ecbad"}};
    for (const auto& caso : casi) {
        elenco.Ordina(caso.Colonna, caso.Discendente);
        EXPECT_EQ(Righe(), caso.Righe) << static_cast<int>(caso.Colonna) << caso.Discendente;
    }
}

TEST_F(ElencoProva, GroupsAndTheBestOfACircuit) {
    elenco.Ordina(ColonnaUscite::Migliore, false);
    elenco.Raggruppa(GruppoPer::Circuito);
    EXPECT_EQ(Righe(), "/Adriae/IMOLAbca/No circuitd");
    EXPECT_EQ(elenco.Gruppi()[1].Quante, 3);
    EXPECT_EQ(elenco.Gruppi()[1].Migliore, 6900);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(elenco.MiglioreDelCircuito(i), i == 2) << i;
    elenco.Raggruppa(GruppoPer::Giorno);
    EXPECT_EQ(Righe(), "/17 May 2026da/16 May 2026b/15 May 2026c/1 Apr 2026e");
    elenco.Ordina(ColonnaUscite::Data, false);
    elenco.Cerca("rossi");
    EXPECT_EQ(Righe(), "/1 Apr 2026e/15 May 2026c/17 May 2026a");
}

TEST_F(ElencoProva, SavedListHasWhatIsShown) {
    uscite[1].Note = "wet; \"slow\"";
    uscite[1].Durata = 36615;
    uscite[1].MediaCinque = 12345;
    elenco.Prendi(uscite);
    elenco.Raggruppa(GruppoPer::Circuito);
    elenco.Cerca("race");
    EXPECT_EQ(CsvArchivio(uscite, elenco, ',', ';'),
              "Date;Time;Circuit;Session;Driver;Vehicle;Laps;Best;Mean of 5;Ideal;Length;Notes;"
              "Attention;File\r\n"
              "2026-05-16;10:00;IMOLA;Race;P\xE9rez;;0;01:09,00;02:03,45;;1:01:01;"
              "\"wet; \"\"slow\"\"\";;b.csv\r\n");
}

TEST(ScelteArchivio, ComeBackAndTakeNothingForeign) {
    ScelteArchivio scelte;
    scelte.Cartella = std::filesystem::path(u8"/runs/\u017E%\n");
    scelte.Ordine = ColonnaUscite::Durata;
    scelte.Discendente = false;
    scelte.Gruppo = GruppoPer::Giorno;
    scelte.Decimale = ',';
    scelte.Campi = '\t';
    scelte.Contro = "/runs/one.csv";
    const ScelteArchivio lette = LeggiScelteArchivio(ScriviScelteArchivio(scelte));
    EXPECT_EQ(lette.Cartella, scelte.Cartella);
    EXPECT_EQ(lette.Ordine, scelte.Ordine);
    EXPECT_EQ(lette.Discendente, scelte.Discendente);
    EXPECT_EQ(lette.Gruppo, scelte.Gruppo);
    EXPECT_EQ(lette.Campi, scelte.Campi);
    EXPECT_EQ(lette.Contro, scelte.Contro);
    const ScelteArchivio strane =
        LeggiScelteArchivio("lapvane-runs 1\norder=price\ngroup=9\nfields=comma\ndecimal=comma\n");
    EXPECT_EQ(strane.Ordine, ColonnaUscite::Data);
    EXPECT_EQ(strane.Gruppo, GruppoPer::Circuito);
    EXPECT_EQ(strane.Campi, 0) << "a comma can't part numbers and fields at once";
    EXPECT_TRUE(LeggiScelteArchivio("lapvane-runs 2\nfolder=/x\n").Cartella.empty());
}

}  // namespace
}  // namespace lapvane::prova
