#include "runs/Archivio.h"

#include <gtest/gtest.h>

#include "analysis/compare/Confronto.h"
#include "analysis/compare/UsciteProva.h"
#include "logs/Impostazioni.h"
#include "platform/FileTesto.h"
#include "runs/IndiceArchivio.h"
#include "runs/NoteUscita.h"

namespace lapvane::prova {
namespace {

namespace fs = std::filesystem;

class ArchivioProva : public ::testing::Test {
 protected:
    ArchivioProva() {
        CaricaTestiVeri(1);
        fs::create_directories(radice / "may");
        Metti("may/one");
    }
    /// The sample run under another name.
    void Metti(const std::string& nome, const char* fine = ".csv") const {
        for (const char* da : {".csv", ".txt", ".tim"}) {
            const bool dati = std::string_view(da) == ".csv";
            fs::copy_file(CartellaBin() / "sample" / (std::string("Esempio") + da),
                          radice / (nome + (dati ? fine : da)));
        }
    }
    void FinoInFondo(Archivio& archivio) const {
        archivio.Apri(radice);
        while (archivio.Passo(0)) {
        }
    }
    const Uscita& Di(const Archivio& archivio, const char* nome) const {
        static const Uscita nessuna;
        const int i = archivio.Trova((radice / nome).make_preferred());
        EXPECT_GE(i, 0) << nome;
        return i < 0 ? nessuna : archivio.Uscite()[static_cast<std::size_t>(i)];
    }

    PlatformProva macchina;
    const fs::path unita = macchina.Cartella / "drive";
    const fs::path radice = unita / "runs";
};

TEST_F(ArchivioProva, FindsTheRunsAndSaysWhatIsWrong) {
    Metti("two", ".CSV");
    Metti("no times");
    fs::remove(radice / "no times.tim");
    Scrivi(radice / "no times.ses", "\r\nDataSessione=Sunday\r\n");
    Metti("other");
    Scrivi(radice / "other.csv", "distance,delta 3\r\n");
    Scrivi(radice / "list.csv", "Name;Price\r\n");
    Scrivi(radice / "alone.csv", "Tempo [sec];Distanza [m];Motore [RPM]\r\n");
    fs::create_directories(radice / ".trash");
    Metti(".trash/gone");
#ifndef _WIN32
    fs::create_directory_symlink(radice, radice / "may" / "again");
#endif
    Scrivi(radice / "two.ses", "Sessione=Free practice 2\r\nDataSessione=17/5/26\r\n");
    RecordProgetto progetto;
    progetto.Veicolo = "Formula 4";
    Scrivi(radice / "two.set", TestoImpostazioni(progetto));

    Archivio archivio;
    FinoInFondo(archivio);
    EXPECT_EQ(archivio.Uscite().size(), 5u);
    const Uscita& due = Di(archivio, "two.CSV");
    EXPECT_EQ(due.Veicolo, "Formula 4");
    EXPECT_EQ(due.Giorno, 20260517);
    EXPECT_EQ(due.Minuto, -1);
    EXPECT_EQ(due.Migliore, 7848) << "as the lap table of the sample has it";
    EXPECT_EQ(FraseProblema(due), "");
    for (const char* nome : {"may/one.csv", "no times.csv"}) {
        EXPECT_TRUE(Di(archivio, nome).QuandoDelFile);
        EXPECT_GT(Di(archivio, nome).Giorno, 20200000);
    }
    EXPECT_EQ(TestoData(Di(archivio, "no times.csv")), "Sunday");
    EXPECT_EQ(FraseProblema(Di(archivio, "no times.csv")),
              "the file is damaged: 2 of 3 parts are there (no .tim)");
    EXPECT_EQ(FraseProblema(Di(archivio, "alone.csv")),
              "the file is damaged: 1 of 3 parts are there (no .txt, .tim)");
    EXPECT_EQ(FraseProblema(Di(archivio, "other.csv")), "the .csv file is no log");
}

TEST_F(ArchivioProva, LogTellsIdealLapAndGaps) {
    fs::copy(CartellaDati() / "tracks", macchina.Cartella / "tracks");
    Scrivi(radice / "may/one.ses", "Sessione=\r\n\r\n\r\nCircuito=Valdoro\r\n");
    // 40 rows of lap 12, the best one, are cut out: the ideal lap is made without it.
    const std::string laterale = Leggi(radice / "may/one.txt");
    const auto prima = laterale.begin() + static_cast<std::ptrdiff_t>(laterale.find(";12\r\n"));
    const auto riga = std::count(laterale.begin(), prima, '\n') + 100;
    for (const char* fine : {".csv", ".txt"}) {
        const std::string intero = Leggi(radice / ("may/one" + std::string(fine)));
        LettoreRighe righe(intero);
        std::string bucato;
        for (std::ptrdiff_t n = 0; !righe.Fine(); ++n) {
            const std::string_view una = righe.Prossima();
            if (n < riga || n >= riga + 40) bucato.append(una).append("\r\n");
        }
        Scrivi(radice / ("may/one" + std::string(fine)), bucato);
    }
    Archivio archivio;
    FinoInFondo(archivio);
    int pezzi = 1;
    while (!archivio.LeggiLogDi(0, 0)) ++pezzi;
    EXPECT_GT(pezzi, 13) << "a lap a piece, where there is no time";
    Confronto confronto;
    confronto.Apri(radice / "may/one.csv");
    while (confronto.AllineaUnAltro()) {
    }
    const Uscita& una = Di(archivio, "may/one.csv");
    EXPECT_EQ(una.Ideale, confronto.IdealeDiTutti());
    EXPECT_GT(una.Ideale, una.Migliore);
    EXPECT_EQ(una.Durata + 1, confronto.Log(0).Tabella().NumeroRighe());
    EXPECT_EQ(una.NumeroGiro(una.QualeMigliore()), 12);
    EXPECT_EQ(FraseProblema(una), "lap 12 has a gap of 4 s in the log; 13 of 14 laps are used");

    archivio.Salva();
    Archivio poi;
    poi.Apri(radice);
    ASSERT_EQ(poi.Uscite().size(), 1u);
    EXPECT_EQ(poi.Uscite()[0].Ideale, una.Ideale);
    EXPECT_EQ(FraseProblema(poi.Uscite()[0]), FraseProblema(una)) << "the index keeps it";
    // Other sectors, another ideal lap: not the old one.
    Scrivi(macchina.Cartella / "tracks/Valdoro.sec", "3480\r\n1000\r\n2480\r\n");
    FinoInFondo(poi);
    EXPECT_EQ(poi.Uscite()[0].Ideale, 0);
    EXPECT_FALSE(poi.Uscite()[0].LogLetto);
}

TEST_F(ArchivioProva, IndexShowsAtOnceAndIsBroughtUpToDate) {
    Metti("changed");
    Metti("deleted");
    Scrivi(radice / "changed.ses", "Sessione=old\r\n");
    const fs::path tempi = radice / "may/one.tim";
    // The library of Windows sets whole seconds.
    const auto scritto = std::chrono::floor<std::chrono::seconds>(fs::last_write_time(tempi));
    fs::last_write_time(tempi, scritto);
    {
        Archivio archivio;
        FinoInFondo(archivio);
    }
    Scrivi(tempi, std::string(fs::file_size(tempi), 'x'));
    fs::last_write_time(tempi, scritto);
    Scrivi(radice / "changed.ses", "Sessione=newer\r\n");
    for (const char* fine : {".csv", ".txt", ".tim"}) {
        fs::remove(radice / (std::string("deleted") + fine));
    }
    Metti("added");

    Archivio archivio;
    archivio.Apri(radice);
    EXPECT_EQ(archivio.Uscite().size(), 3u) << "before anything is looked at";
    while (archivio.Passo(0)) {
    }
    EXPECT_EQ(archivio.Uscite().size(), 3u);
    EXPECT_EQ(archivio.DaLeggere(), 2);
    EXPECT_EQ(Di(archivio, "may/one.csv").Migliore, 7848) << "what tells no change is not opened";
    EXPECT_EQ(Di(archivio, "changed.csv").Sessione, "newer");
    EXPECT_EQ(Di(archivio, "added.csv").Giri(), 14);
    EXPECT_EQ(archivio.Trova(radice / "deleted.csv"), -1);
}

#ifndef _WIN32  // links, and folders that go while they are listed
TEST_F(ArchivioProva, RunsOfADriveThatIsAwayStay) {
    fs::create_directory(macchina.Cartella / "stick");
    fs::create_directory_symlink(macchina.Cartella / "stick", radice / "usb");
    Metti("usb/two");
    Archivio archivio;
    FinoInFondo(archivio);
    fs::rename(macchina.Cartella / "stick", macchina.Cartella / "pulled");
    FinoInFondo(archivio);
    EXPECT_EQ(Di(archivio, "usb/two.csv").Sparito, radice / "usb");
    EXPECT_FALSE(Di(archivio, "may/one.csv").ChiedeAttenzione());

    // The drive goes, before a log is read or in the middle of a walk, and comes back.
    const int una = archivio.Trova(radice / "may/one.csv");
    fs::rename(unita, macchina.Cartella / "away");
    EXPECT_TRUE(archivio.LeggiLogDi(una, 0));
    EXPECT_EQ(Di(archivio, "may/one.csv").Sparito, unita);
    fs::rename(macchina.Cartella / "away", unita);
    archivio.Apri(radice);
    archivio.Passo(0);
    fs::rename(unita, macchina.Cartella / "away");
    while (archivio.Passo(0)) {
    }
    EXPECT_EQ(archivio.Uscite().size(), 2u);
    EXPECT_EQ(archivio.Mancante(), unita);
    EXPECT_EQ(FraseProblema(Di(archivio, "may/one.csv")),
              "the folder " + unita.string() + " can't be reached; values are of the last reading");
    fs::rename(macchina.Cartella / "away", unita);
    FinoInFondo(archivio);
    EXPECT_FALSE(Di(archivio, "may/one.csv").ChiedeAttenzione());
}
#endif

TEST_F(ArchivioProva, StopKeepsWhatWasRead) {
    for (const char* nome : {"a", "b", "c"}) Metti(nome);
    Archivio archivio;
    archivio.Apri(radice);
    while (archivio.Passo(0) && archivio.Lette() < 2) {
    }
    EXPECT_EQ(archivio.DaLeggere(), 4);
    archivio.Ferma();
    EXPECT_FALSE(archivio.Passo(1000));
    Archivio poi;
    poi.Apri(radice);
    EXPECT_EQ(poi.Uscite().size(), 2u);
}

TEST_F(ArchivioProva, AnIndexThatIsNotWholeIsNone) {
    Uscita una;
    una.Csv = fs::path(u8"/runs/\u017Eeny 100%\n.csv");
    una.File.Csv = {123456789012, 1779000000123};
    una.Note = "a\r\nb%0D";
    una.Tempi = {0, 7848};
    una.Numeri = {2, -3};
    una.Divisione = 0xFFFFFFFF;
    una.Problema = {Guasto::GiroBuco, "x", 9, 4, 9, 10};
    Uscita vuota;
    vuota.Csv = "/runs/two.csv";
    const std::string testo = ScriviIndice({&una, &vuota});
    const auto letto = LeggiIndice(testo);
    ASSERT_TRUE(letto && letto->size() == 2);
    EXPECT_EQ((*letto)[0].Csv, una.Csv);
    EXPECT_EQ((*letto)[0].File, una.File);
    EXPECT_EQ((*letto)[0].Note, una.Note);
    EXPECT_EQ((*letto)[0].Tempi, una.Tempi);
    EXPECT_EQ((*letto)[0].Numeri, una.Numeri);
    EXPECT_EQ((*letto)[0].Divisione, una.Divisione);
    EXPECT_EQ((*letto)[0].Problema, una.Problema);
    EXPECT_EQ(ScriviIndice({&(*letto)[0], &(*letto)[1]}), testo);
    for (std::size_t i = 0; i < testo.size(); ++i) {
        EXPECT_FALSE(LeggiIndice(testo.substr(0, i))) << i;
        std::string altro = testo;
        altro[i] = static_cast<char>(altro[i] ^ 1);
        EXPECT_FALSE(LeggiIndice(altro)) << i;
    }
    EXPECT_FALSE(LeggiIndice(ChiudiIndice("Lapvane runs 2\n", 0)));
    EXPECT_FALSE(LeggiIndice(ScriviIndice({&vuota, &vuota}))) << "a path twice";
}

TEST_F(ArchivioProva, NotesChangeTheirLineAlone) {
    const std::string prima = "A=1\r\nB=2\r\nC=3\r\nD=4\r\nE=5\r\nF= \r\nG=7\r\n";
    const struct {
        std::string Prima, Dopo;
    } casi[] = {
        {prima + "NoteSessione=old=er\r\nRPM;1;2\r\nrest",
         prima + "NoteSessione=n w\r\nRPM;1;2\r\nrest"},
        {"1\n2\n3\n4\n5\n6\n7\nold\nx", "1\n2\n3\n4\n5\n6\n7\nNoteSessione=n w\nx"},
        {"1\r2\r3\r4\r5\r6\r7\rK=\r", "1\r2\r3\r4\r5\r6\r7\rK=n w\r"},
        {prima + "NoteSessio", prima + "NoteSessione=n w"},
        {prima, prima + "NoteSessione=n w\r\n"},
        {"A=1\nB=2\nC=3\nD=4\nE=5\nF", "A=1\nB=2\nC=3\nD=4\nE=5\nF\nPiloti= \nNoteSessione=n w\n"},
        {"",
         "Sessione= \r\nDataSessione= \r\nOraSessione= \r\nCircuito= \r\nLunghTracciato= \r\n"
         "VeicoloSessione= \r\nPiloti= \r\nNoteSessione=n w\r\n"},
    };
    for (const auto& caso : casi) EXPECT_EQ(ConNote(caso.Prima, "n\r\nw"), caso.Dopo);
    EXPECT_EQ(ConNote(prima + "N=x\r\n", ""), prima + "N= \r\n");
}

TEST_F(ArchivioProva, NotesGoOntoWhatIsThereNow) {
    Archivio archivio;
    FinoInFondo(archivio);
    while (!archivio.LeggiLogDi(0, 1000)) {
    }
    const fs::path ses = radice / "may/one.ses";
    SalvaNote(radice / "may/one.csv", "wing\none hole");
    const std::string nuovo = Leggi(ses);
    EXPECT_NE(nuovo.find("NoteSessione=wing one hole\r\nEngine speed;1;192;1;0;0\r\n"), nuovo.npos)
        << nuovo;
    EXPECT_EQ(std::count(nuovo.begin(), nuovo.end(), '\n'), 26);
    archivio.Rileggi(0);
    EXPECT_EQ(archivio.Uscite()[0].Note, "wing one hole");
    EXPECT_GT(archivio.Uscite()[0].Ideale, 0) << "the log is the same";
    // Another program was here.
    Scrivi(ses, "Sessione=race\r\n");
    SalvaNote(radice / "may/one.csv", "dry");
    EXPECT_EQ(Leggi(ses).substr(0, 15), "Sessione=race\r\n");
    fs::remove_all(radice);
    EXPECT_THROW(SalvaNote(radice / "may/one.csv", "lost"), ErroreRuntime);
}

}  // namespace
}  // namespace lapvane::prova
