#include "logs/Conversione.h"

#include <sstream>

#include "device/Codec.h"
#include "logs/BufferLog.h"
#include "support/PlatformProva.h"
#include "support/SpazioFinito.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::PlatformProva;
using prova::PrincipaleProva;

/// A log record, all zero until a test fills it.
struct Blocco {
    std::string Byte = std::string(128, '\0');

    Blocco& B(std::size_t posizione, int valore) {
        Byte[posizione - 1] = static_cast<char>(valore);
        return *this;
    }
    Blocco& W(std::size_t posizione, int valore) {
        return B(posizione, (valore >> 8) & 0xFF).B(posizione + 1, valore & 0xFF);
    }
    Blocco& Giro(int numero, bool marca) { return W(120, numero).W(124, marca ? 2 : 0); }
    Blocco& Distanze(int da, int passo) {
        for (int i = 0; i < 10; ++i) W(11 * static_cast<std::size_t>(i) + 3, da + passo * i);
        return *this;
    }
};

/// Rows of both files, each cut into its columns.
using Righe = std::vector<std::vector<std::string>>;
Righe Dividi(const std::string& testo) {
    Righe righe;
    std::istringstream flusso(testo);
    for (std::string riga; std::getline(flusso, riga);) {
        std::vector<std::string>& colonne = righe.emplace_back();
        std::istringstream campi(riga);
        for (std::string campo; std::getline(campi, campo, ';');) colonne.push_back(campo);
    }
    return righe;
}
std::pair<Righe, Righe> Converti(const std::vector<Blocco>& blocchi) {
    std::vector<std::string> byte;
    for (const Blocco& b : blocchi) byte.push_back(b.Byte);
    std::string csv, txt;
    ConvertiBlocchi(byte, byte.size(), '.', csv, txt);
    return {Dividi(csv), Dividi(txt)};
}

TEST(Conversione, ChannelsSitAtTheirPlacesAndScales) {
    Blocco b;
    // Sample 3 begins behind byte 33; the slow channels climb from the reading before.
    b.W(34, 11500).W(36, 654).B(38, 4).B(39, -7).B(40, 88).B(41, -12);
    b.W(111, 900).W(113, -55).B(115, 45).B(116, 30).B(117, 60).B(118, 138).B(119, 147).W(122, 200);
    b.W(124, 0x8100);  // the first and the last alarm
    std::string csv, txt;
    ConvertiBlocchi({b.Byte, b.Byte}, 2, ',', csv, txt);
    const auto riga = [](const std::string& testo, int numero) {
        std::size_t inizio = 0;
        while (numero-- > 0) inizio = testo.find("\r\n", inizio) + 2;
        return testo.substr(inizio, testo.find("\r\n", inizio) - inizio);
    };
    EXPECT_EQ(riga(csv, 0), "0,0;0,0;0;0,0;0,0;0,0;0,0;0,0;0,0;0,0;0,0;;0,0;0,0;0,0;0,0");
    EXPECT_EQ(riga(csv, 3),
              "0,3;654,0;11500;60,0;0,9;1,35;88,0;-1,65;-1,2;27,0;4,14;4;18,0;-0,7;4,41;0,3");
    EXPECT_EQ(riga(csv, 5), "0,5;0,0;0;100,0;1,5;2,25;0,0;-2,75;0,0;45,0;6,9;;30,0;0,0;7,35;0,5");
    EXPECT_EQ(riga(csv, 19), "1,9;0,0;0;200,0;3,0;4,5;0,0;-5,5;0,0;90,0;13,8;;60,0;0,0;14,7;1,0");
    EXPECT_EQ(riga(txt, 3), "0,3;654,0;2;3;5;7;9;11;13;16;1");
    EXPECT_EQ(TitoliCsv(0, "Km/h", "\xB0 C")
                  .find("Tempo [sec];Distanza [m];Motore [RPM];Velocit\xE0 "
                        "[Km/h];Press. carbur. [bar];"),
              0u);
    EXPECT_NE(TitoliCsv(1, "mph", "\xB0 F").find("[bar];Throttle [%];Water Temp [\xB0 F];G Sensor"),
              std::string::npos);
    EXPECT_EQ(TitoliTxt(1),
              "Time [sec];Distance [m];Oil Pump;Alternator;Oil Temperature;Water Temperature;"
              "Battery;Fuel Pressure;Oil Pressure;Fuel Level;");
}

TEST(Conversione, LapMarkRestartsTimeAndTheBuffer) {
    Blocco prima, giro1, dentro, giro2;
    prima.Giro(0, false).Distanze(2000, 5);
    giro1.Giro(1, true).Distanze(28, 1);    // 28, 29, 30, 31 ...: over 30 metres is what is left of
    dentro.Giro(1, false).Distanze(56, 3);  // the lap before
    giro2.Giro(2, true).Distanze(0, 3);
    const auto [csv, txt] = Converti({prima, giro1, dentro, giro2});
    ASSERT_EQ(csv.size(), 40u);
    EXPECT_EQ(txt[9].back(), "1\r");  // rows before the first mark carry the new lap's number
    EXPECT_EQ(txt[29].back(), "2\r");
    EXPECT_EQ(txt[39].back(), "3\r");  // the last rows: last lap number plus 1
    EXPECT_EQ(csv[9][0], "0.9");
    EXPECT_EQ(csv[10][0], "0.0");  // the first sample behind the mark
    EXPECT_EQ(csv[29][0], "1.9");
    EXPECT_EQ(csv[30][0], "0.0");
    EXPECT_EQ(csv[0][1], "2000.0");
    EXPECT_EQ(csv[12][1], "30.0");
    EXPECT_EQ(csv[13][1] + txt[13][1], "00");  // literally
    EXPECT_EQ(csv[20][1], "56.0");             // only the block of the mark
}

TEST(Conversione, JumpOrRepeatedLapNumberGoesOnCounting) {
    Blocco a, salto, stesso, nuovo, indietro;
    salto.Giro(3, true);   // from 0: a jump of more than one
    stesso.Giro(3, true);  // the same number again
    nuovo.Giro(4, true);
    indietro.Giro(1, true);  // a number that falls back counts as a new lap too
    const auto [csv, txt] = Converti({a, salto, stesso, nuovo, indietro});
    ASSERT_EQ(csv.size(), 50u);
    EXPECT_EQ(txt[0].back(), "0\r");    // P was 0
    EXPECT_EQ(txt[10].back(), "-1\r");  // P was 3
    EXPECT_EQ(csv[10][0], "1.0");       // time = row / 10, the buffer was not started over
    EXPECT_EQ(txt[20].back(), "4\r");   // the new lap's flush counts from its first row
    EXPECT_EQ(csv[20][0], "0.0");
    EXPECT_EQ(csv[30][0], "0.0");
    EXPECT_EQ(txt[30].back(), "1\r");
    std::string righe, altre;
    const std::vector<std::string> troppi(16385, std::string(128, '\0'));
    EXPECT_THROW(ConvertiBlocchi(troppi, troppi.size(), '.', righe, altre), ErroreRuntime);
}

class SalvaDati : public ::testing::Test {
 protected:
    SalvaDati() {
        prova::CaricaTestiVeri(0);
        AzzeraBufferLog();
    }
    PlatformProva macchina;
    PrincipaleProva finestra;
};

TEST_F(SalvaDati, WritesThreeFilesNamedAfterTheFirst) {
    BlocchiLog = {Blocco{}.Byte, Blocco{}.Byte};
    NumBlocchi = 2;
    NumeroGiri = 2;
    TabellaGiri[1] = "01:20.00, 1";
    TabellaGiri[2] = "01:19.50, 1";
    TabellaGiri[3] = "99:99.99, 1";  // what the memory held behind the laps
    DatiProgetto.UMVel = 1;
    const fs::path csv = macchina.Cartella / "Gara & prova" / "run \u00E0.csv";
    fs::create_directory(csv.parent_path());
    macchina.FileScelti.push_back(csv);
    macchina.Risposte = {Answer::Ok};
    mnuSaveData_Click();
    EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(Voce::ConversioneCompletata));
    EXPECT_EQ(macchina.Puntatori, (std::vector<Pointer>{Pointer::Busy, Pointer::Normal}));
    const std::string dati = prova::Leggi(csv);
    EXPECT_EQ(dati.find(TitoliCsv(0, "mph", "\xB0 C") + "\r\n0.0;"), 0u);
    EXPECT_EQ(std::count(dati.begin(), dati.end(), '\n'), 21);
    const auto accanto = [&](const char* fine) {
        return prova::Leggi(prova::ConFine(csv.parent_path() / "run \u00E0", fine));
    };
    EXPECT_EQ(accanto(".txt").find(TitoliTxt(0) + "\r\n0.0;"), 0u);
    EXPECT_EQ(accanto(".tim"), "1.4\r\n01:20.00, 1\r\n01:19.50, 1\r\n\r\n");
    // The blocks stay: the command can be given again.
    macchina.FileScelti.push_back(macchina.Cartella / "altro.csv");
    macchina.Risposte = {Answer::Ok};
    mnuSaveData_Click();
    EXPECT_EQ(prova::Leggi(macchina.Cartella / "altro.csv"), dati);
}

TEST_F(SalvaDati, TheSuggestedNameIsNewAndAnOldOneIsAskedAbout) {
    const auto proposto = [&] {
        macchina.FileScelti.push_back(std::nullopt);
        mnuSaveData_Click();
        return macchina.RichiesteFile.back().Name.string();
    };
    EXPECT_EQ(proposto(), "Lapvane 2026-11-24 10-20-30.csv");
    // Any of the three is enough to make a name somebody's.
    prova::Scrivi(macchina.Cartella / "lapvane 2026-11-24 10-20-30.TIM", "x");
    EXPECT_EQ(proposto(), "Lapvane 2026-11-24 10-20-30 2.csv");
    logInMemoria().Parziale = true;
    EXPECT_EQ(proposto(), "Lapvane 2026-11-24 10-20-30 parziale.csv");
    prova::Scrivi(macchina.Cartella / "run.csv", "vecchio");
    macchina.FileScelti.push_back(macchina.Cartella / "RUN.csv");
    macchina.Risposte = {Answer::Cancel};
    mnuSaveData_Click();
    EXPECT_FALSE(fs::exists(macchina.Cartella / "RUN.txt"));
}

TEST_F(SalvaDati, WhatCantBeWrittenIsToldAndStaysInMemory) {
    BlocchiLog.assign(120, std::string(128, '\1'));
    NumBlocchi = 120;
    logInMemoria().DaSalvare = true;
    const fs::path csv = macchina.Cartella / "run.csv";
    const auto salva = [&](const fs::path& dove) {
        macchina.FileScelti.push_back(dove);
        macchina.Risposte.push_back(Answer::Ok);
        mnuSaveData_Click();
        return macchina.Mostrati.back().Testo;
    };
    for (const char* nome : {"run.txt", "run.tim"})
        prova::Scrivi(macchina.Cartella / nome, "vecchio");
    const auto atteso = [&](const fs::path& file, Voce motivo) {
        return Testo(Voce::NonScritto) + "\r\n" + file.string() + "\r\n" + Testo(motivo) +
               "\r\n\r\n" + Testo(Voce::LogNonSalvato);
    };
#ifndef _WIN32
    {
        const prova::SpazioFinito poco(60000);  // the data file is the longest
        EXPECT_EQ(salva(csv), atteso(csv, Voce::MotivoPieno));
    }
    EXPECT_EQ(prova::Leggi(macchina.Cartella / "run.txt"), "vecchio");
    EXPECT_EQ(prova::Leggi(macchina.Cartella / "run.tim"), "vecchio");
    EXPECT_FALSE(fs::exists(csv));
#endif
    EXPECT_EQ(salva(macchina.Cartella / "manca" / "x.csv"),
              atteso(macchina.Cartella / "manca" / "x.txt", Voce::MotivoSparito));
    // An error that names no file itself.
    NumBlocchi = 16385;
    BlocchiLog.resize(16385, BlocchiLog[0]);
    EXPECT_NE(salva(csv).find(csv.string()), std::string::npos);
    EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
    EXPECT_TRUE(logInMemoria().DaSalvare);
    NumBlocchi = 120;
    EXPECT_EQ(salva(csv), Testo(Voce::ConversioneCompletata));
    EXPECT_FALSE(logInMemoria().DaSalvare);
}

TEST_F(SalvaDati, NameOfASideFileIsRefusedBeforeAnythingIsWritten) {
    for (const char* nome : {"note.txt", "note.tim"}) {
        PercorsoCsv = macchina.Cartella / nome;
        prova::Scrivi(PercorsoCsv, "vecchio");
        EXPECT_THROW(ConvertiLog(), ErroreRuntime);
        EXPECT_EQ(prova::Leggi(PercorsoCsv), "vecchio");
    }
    // A unit that its list does not have leaves the brackets empty.
    DatiProgetto.UMVel = 7;
    EXPECT_NE(ComponiLog().Csv.find("Velocit\xE0 [];"), std::string::npos);
}

}  // namespace
}  // namespace lapvane
