// The analysis over the spreadsheet-like table, and what it shares with the one over the array.
#include "analysis/AnalisiDatiFoglio.h"

#ifndef _WIN32
#include <sys/resource.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "analysis/AnalisiProva.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

/// Start (5 rows), laps of 40, 30 and 50 rows, a lap without rows, End. Channel 3 goes up from
/// 1000, channel 4 is negative throughout, 5 positive.
LogProva QuattroGiri() {
    LogProva log;
    log.Tratto(1, 5);
    for (const auto& [giro, righe] : {std::pair{2, 40}, {3, 30}, {4, 50}}) {
        log.Tratto(giro, righe, [g = giro](int r) { return 1000.0 * g + r; });
    }
    for (std::size_t r = 0; r < log.Righe.size(); ++r) {
        log.Righe[r].Celle[4] = TestoNumero(-5.0 - static_cast<double>(r % 7));
        log.Righe[r].Celle[5] = TestoNumero(2.0 + static_cast<double>(r % 3) / 2.0);
    }
    log.Tim = "1.4\r\n01:02.30, 1\r\n01:01.90, 1\r\n01:03.10, 2\r\n01:02.00, 2\r\n\r\n";
    return log;
}

#ifndef _WIN32
/// So many bytes more than the program has now, as long as it lives.
class MemoriaFinita {
 public:
    explicit MemoriaFinita(rlim_t byte) {
        std::ifstream usate("/proc/self/statm");
        rlim_t pagine = 0;
        usate >> pagine;
        ::getrlimit(RLIMIT_AS, &limite_);
        const rlimit stretto{pagine * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + byte,
                             limite_.rlim_max};
        ::setrlimit(RLIMIT_AS, &stretto);
    }
    ~MemoriaFinita() { ::setrlimit(RLIMIT_AS, &limite_); }
    MemoriaFinita(const MemoriaFinita&) = delete;
    MemoriaFinita& operator=(const MemoriaFinita&) = delete;

 private:
    rlimit limite_{};
};
#endif

class Foglio : public AnalisiProva {
 protected:
    bool ApriFoglio(const LogProva& log) {
        log.Scrivi(Stelo());
        return ApriFoglioCsv();
    }
    bool ApriFoglioCsv() { return foglio.Carica(ConFine(Stelo(), ".csv")); }

    VistaProva vistaFoglio;
    GraficoProva graficoFoglio;
    GraficoProva panoramicaFoglio;
    AnalisiDatiFoglio foglio{vistaFoglio, graficoFoglio, panoramicaFoglio};
};

}  // namespace

TEST_F(Foglio, AgreesWithTheArrayWhereItMust) {
    const LogProva log = QuattroGiri();
    ASSERT_TRUE(Apri(log));
    ASSERT_TRUE(ApriFoglio(log));
    EXPECT_EQ(vistaFoglio.celle, vista.celle) << "lap texts";
    EXPECT_EQ(vistaFoglio.sfondi, vista.sfondi) << "best and worst";
    EXPECT_EQ(vistaFoglio.nomi, vista.nomi);
    EXPECT_EQ(vistaFoglio.unita_, vista.unita_);
    EXPECT_EQ(vistaFoglio.schede, vista.schede);
    EXPECT_EQ(vistaFoglio.visibili, vista.visibili);
    EXPECT_EQ(foglio.NumCampi(), analisi.NumCampi());
    EXPECT_EQ(foglio.NumGiri(), 4);
    const auto tempo = [](const AnalisiDati& a, std::int32_t riga) {
        return a.Tabella().Valore(kColonnaTempo, Piano::Dati, riga);
    };
    for (int giro = 1; giro <= 4; ++giro) {
        SCOPED_TRACE(giro);
        // The same laps in time; the heading counts as row 1 there, and the first sample as row 2.
        EXPECT_EQ(foglio.Giri().InizioGiro(giro), analisi.Giri().InizioGiro(giro) + 2);
        EXPECT_EQ(foglio.Giri().FineGiro(giro), analisi.Giri().FineGiro(giro) + 2);
        EXPECT_EQ(tempo(foglio, foglio.Giri().FineGiro(giro)),
                  tempo(analisi, analisi.Giri().FineGiro(giro)));
        for (AnalisiDati* const a :
             {static_cast<AnalisiDati*>(&foglio), static_cast<AnalisiDati*>(&analisi)}) {
            a->MSFlexGrid1_Click(giro, 1);
            if (!a->Canali()[3].chkGrafico) a->chkGrafico_Click(3, true);
            a->EventoCursore(Grafico::Canali, 3);
        }
        EXPECT_EQ(vistaFoglio.valori, vista.valori) << "cursor values";
        EXPECT_EQ(graficoFoglio.elementi.at(0).Y, grafico.elementi.at(0).Y);
        EXPECT_EQ(graficoFoglio.elementi.at(0).X, grafico.elementi.at(0).X);
        EXPECT_EQ(foglio.Canali()[3].MaxCanale, analisi.Canali()[3].MaxCanale);
        EXPECT_EQ(foglio.Canali()[4].MediaCanale, analisi.Canali()[4].MediaCanale);
        EXPECT_EQ(foglio.Canali()[4].MinCanale, analisi.Canali()[4].MinCanale);
        EXPECT_EQ(foglio.Finestra().XMax(), analisi.Finestra().XMax());
    }
}

TEST_F(Foglio, DiffersWhereItMust) {
    const LogProva log = QuattroGiri();
    ASSERT_TRUE(Apri(log));
    ASSERT_TRUE(ApriFoglio(log));
    EXPECT_EQ(foglio.NumRighe(), 126) << "125 samples and the heading";
    EXPECT_EQ(analisi.NumRighe(), 125);
    foglio.MSFlexGrid1_Click(2, 1);
    analisi.MSFlexGrid1_Click(2, 1);
    // Figures start from the first cell here, from 0 there.
    EXPECT_EQ(foglio.Canali()[3].MinCanale, 2000.0);
    EXPECT_EQ(analisi.Canali()[3].MinCanale, 0.0);
    EXPECT_EQ(foglio.Canali()[4].MaxCanale, -5.0);
    EXPECT_EQ(analisi.Canali()[4].MaxCanale, 0.01);
    EXPECT_EQ(foglio.Canali()[6].MaxCanale, 0.01) << "an all-zero lap";
    EXPECT_EQ(foglio.Canali()[5].MinCanale, 2.0);
    // The distance axis draws here.
    for (AnalisiDati* const a :
         {static_cast<AnalisiDati*>(&foglio), static_cast<AnalisiDati*>(&analisi)}) {
        a->chkGrafico_Click(3, true);
        a->chkDistanza_Click(true);
    }
    EXPECT_TRUE(grafico.elementi.empty());
    ASSERT_EQ(graficoFoglio.elementi.size(), 1u);
    EXPECT_EQ(graficoFoglio.elementi[0].X.back(), 390.0);
    EXPECT_EQ(graficoFoglio.intervallo.XMax, 390.0);
    EXPECT_EQ(vistaFoglio.assi, (std::pair{false, true}));
    foglio.SSTab1_Click(1);
    ASSERT_EQ(panoramicaFoglio.elementi.size(), 8u);
    EXPECT_EQ(panoramicaFoglio.elementi[0].X.back(), 390.0);
    // Clearing the box of an axis changes nothing.
    foglio.chkDistanza_Click(false);
    EXPECT_TRUE(foglio.Finestra().AsseDistanza());
    foglio.chkTempo_Click(true);
    EXPECT_FALSE(foglio.Finestra().AsseDistanza());
}

TEST_F(Foglio, ColumnsAreThoseOfTheFile) {
    for (const int colonne : {3, 15, 20, 21}) {
        SCOPED_TRACE(colonne);
        LogProva log = QuattroGiri();
        log.Colonne = colonne;
        log.Titoli = "Tempo [sec];Distanza [m]";
        for (int c = 3; c <= colonne; ++c)
            log.Titoli += ";C" + TestoNumero(c) + " [u" + TestoNumero(c) + "]";
        for (RigaLog& riga : log.Righe) {
            riga.Celle[colonne] = "12,5";  // a machine with decimal commas wrote it
        }
        ASSERT_TRUE(ApriFoglio(log));
        EXPECT_EQ(foglio.NumCampi(), colonne);
        const int ultima = std::min(colonne, 20);
        EXPECT_TRUE(vistaFoglio.visibili[ultima]);
        EXPECT_EQ(vistaFoglio.visibili[20], colonne >= 20);
        EXPECT_EQ(vistaFoglio.unita_[ultima], "[u" + TestoNumero(ultima) + "]");
        const double atteso = colonne == 21 ? 0.0 : 12.5;
        EXPECT_EQ(foglio.Tabella().Valore(ultima, Piano::Dati, 2), atteso);
        EXPECT_TRUE(foglio.Tabella().Colonna(21, Piano::Dati).empty());
    }
}

TEST_F(Foglio, SideFileHasItsColumnsWhateverItsHeadingNames) {
    QuattroGiri().Scrivi(Stelo());
    const std::string intero = QuattroGiri().Laterale();
    const std::string righe = intero.substr(intero.find('\n'));
    for (const char* titolo : {"Time [sec];Distance [m];a;b;c;d;e;f;g;h", "Time;Distance", ""}) {
        SCOPED_TRACE(titolo);
        Scrivi(ConFine(Stelo(), ".txt"), titolo + righe);
        ASSERT_TRUE(ApriFoglioCsv());
        EXPECT_EQ(vistaFoglio.Cella(3, 0), Testo(Voce::RigaGiro) + "3");
        EXPECT_EQ(foglio.Giri().FineGiro(2), 46);
        foglio.SSTab1_Click(1);
        EXPECT_EQ(panoramicaFoglio.elementi.at(7).Y.at(0), 15.0);
        foglio.SSTab1_Click(0);
    }
}

TEST_F(Foglio, DoesNotNoticeAMissingSideFile) {
    QuattroGiri().Scrivi(Stelo());
    std::filesystem::remove(ConFine(Stelo(), ".txt"));
    macchina.CartellaCorrente = macchina.Cartella;
    ASSERT_TRUE(ApriFoglioCsv());
    EXPECT_TRUE(macchina.Mostrati.empty());
    EXPECT_EQ(foglio.Giri().PrimoGiroValido(), 1000) << "no lap has rows";
    foglio.SSTab1_Click(1);
    for (const ElementoProva& elemento : panoramicaFoglio.elementi) EXPECT_TRUE(elemento.Y.empty());
    foglio.chkGrafico_Click(3, true);
    foglio.cmdZoom_Click(0.5);
    foglio.cmdSposta_Click(10);
    foglio.EventoCursore(Grafico::Canali, 3);

    // Only a current folder without any entry is noticed.
    const auto vuota = macchina.Cartella / "vuota";
    std::filesystem::create_directory(vuota);
    macchina.CartellaCorrente = vuota;
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    VistaProva altra;
    AnalisiDatiFoglio chiusa(altra, graficoFoglio, panoramicaFoglio);
    EXPECT_FALSE(chiusa.Carica(ConFine(Stelo(), ".csv")));
    ASSERT_EQ(macchina.Mostrati.size(), 2u);
    EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::IlFile) + "  " + Testo(Voce::NonTrovato));
    EXPECT_EQ(macchina.Mostrati[1].Testo, Testo(Voce::IlFile) + " .alm " + Testo(Voce::NonTrovato));
    EXPECT_TRUE(altra.scaricata);
}

TEST_F(Foglio, LogsOfFewRowsAndOfMany) {
    const auto apri = [&](const LogProva& log) {
        log.Scrivi(Stelo());
        return ApriFoglioCsv();
    };
    LogProva vuoto;
    ASSERT_TRUE(apri(vuoto));
    EXPECT_EQ(foglio.NumRighe(), 1) << "the heading alone";
    EXPECT_EQ(foglio.Giri().PrimoGiroValido(), 1000);
    Scrivi(ConFine(Stelo(), ".csv"), "");
    ASSERT_TRUE(ApriFoglioCsv());
    EXPECT_EQ(foglio.NumRighe(), 0);
    EXPECT_EQ(foglio.NumCampi(), 0);

    LogProva uno;
    uno.Tratto(1, 1);
    ASSERT_TRUE(apri(uno));
    EXPECT_EQ(foglio.Giri().FineGiro(1), 2);
    EXPECT_FALSE(vistaFoglio.griglia);

    LogProva molti;
    molti.Tim = "1.4\r\n";
    for (int giro = 1; giro <= 1001; ++giro) {
        molti.Tratto(giro, 3);
        if (giro > 1 && giro < 1001) molti.Tim += "01:0" + TestoNumero(giro % 10) + ".00, 1\r\n";
    }
    molti.Tim += "\r\n";
    macchina.BoxLiberi = true;
    ASSERT_TRUE(apri(molti));
    EXPECT_EQ(foglio.Giri().FineGiro(999), 2 + 999 * 3 - 1);
    EXPECT_EQ(vistaFoglio.Cella(998, 0), Testo(Voce::RigaGiro) + "998");
    foglio.MSFlexGrid1_Click(999, 1);
    EXPECT_EQ(foglio.Giri().GiroSelezionato(), 999);
}

TEST_F(Foglio, TellsItsProgressWithABlankBeforeTheNumber) {
    LogProva log;
    log.Tratto(1, 300).Tratto(2, 300).Tratto(3, 1);
    log.Tim = "1.4\r\n01:00.00, 1\r\n\r\n";
    ASSERT_TRUE(ApriFoglio(log));
    const auto& storia = finestra.Storia;
    EXPECT_NE(
        std::find(storia.begin(), storia.end(), "3:" + Testo(Voce::CaricamentoDati) + " 50 %"),
        storia.end());
}

#if !defined(_WIN32) && !defined(__SANITIZE_ADDRESS__)  // which take their memory elsewhere
TEST_F(Foglio, LogThatMemoryDoesNotHoldOpensWithoutCurves) {
    LogProva log = QuattroGiri();
    log.Colonne = 20;
    log.Scrivi(Stelo());
    // Lines of one character: twenty cells of eight bytes each, 480 MB.
    Scrivi(ConFine(Stelo(), ".csv"),
           "a" + std::string(19, ';') + std::string(3'000'000, '\n') + "1");
    {
        const MemoriaFinita poca(200'000'000);
        EXPECT_TRUE(ApriFoglioCsv());
    }
    EXPECT_EQ(foglio.NumRighe(), 0);
    EXPECT_EQ(foglio.NumCampi(), 0);
    EXPECT_TRUE(foglio.Tabella().Colonna(1, Piano::Dati).empty()) << "nothing is left half read";
    EXPECT_EQ(vistaFoglio.Cella(3, 1), "01:01.90") << "the lap times are there";
    EXPECT_TRUE(ApriFoglio(log)) << "and with memory again the log";
    EXPECT_EQ(foglio.NumRighe(), 126);
}
#endif
