#include "logs/Conversione.h"

#include <gtest/gtest.h>

#include <sstream>

#include "device/Codec.h"
#include "logs/BufferLog.h"
#include "platform/ErroreRuntime.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
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

std::vector<std::string> Righe(const std::string& testo) {
    EXPECT_TRUE(testo.empty() || testo.ends_with("\r\n"));
    std::vector<std::string> righe;
    std::istringstream flusso(testo);
    for (std::string riga; std::getline(flusso, riga);) {
        EXPECT_TRUE(riga.ends_with('\r'));
        riga.pop_back();
        righe.push_back(riga);
    }
    return righe;
}

struct Convertito {
    std::vector<std::string> Csv;
    std::vector<std::string> Txt;
};

Convertito Converti(const std::vector<Blocco>& blocchi, char separatore = '.') {
    std::vector<std::string> byte;
    for (const Blocco& b : blocchi) byte.push_back(b.Byte);
    std::string csv, txt;
    ConvertiBlocchi(byte, byte.size(), separatore, csv, txt);
    return {Righe(csv), Righe(txt)};
}

std::string Colonna(const std::string& riga, int colonna) {
    std::istringstream flusso(riga);
    std::string campo;
    for (int i = 0; i < colonna; ++i) std::getline(flusso, campo, ';');
    return campo;
}

TEST(Conversione, TitlesToTheByteInBothLanguages) {
    EXPECT_EQ(TitoliCsv(0, "Km/h", "\xB0 C"),
              "Tempo [sec];Distanza [m];Motore [RPM];Velocit\xE0 [Km/h];Press. carbur. [bar];"
              "Press. olio [bar];Farfalla [%];Temp. acqua [\xB0 C];Sensore G [G];"
              "Temp. olio [\xB0 C];Tensione Batteria [V];Marcia [];Livello Carbur. [];"
              "Pressione Turbo [bar];Sonda Lambda [A/F];Sonda Lambda [Lambda]");
    EXPECT_EQ(TitoliCsv(1, "mph", "\xB0 F"),
              "Time [sec];Distance [m];Engine [RPM];Speed [mph];Fuel Press. [bar];"
              "Oil Press. [bar];Throttle [%];Water Temp [\xB0 F];G Sensor [G];Oil Temp. [\xB0 F];"
              "Battery [V];Gear [];Fuel Level [];Turbo Press. [bar];Lambda sensor [A/F];"
              "Lambda sensor[Lambda]");
    EXPECT_EQ(TitoliTxt(0),
              "Tempo [sec];Distanza [m];Pompa Olio;Alternatore;Temperatura Olio;Temperatura Acqua;"
              "Batteria;Pressione carburante;Pressione Olio;Livello carburante;");
    EXPECT_EQ(TitoliTxt(1),
              "Time [sec];Distance [m];Oil Pump;Alternator;Oil Temperature;Water Temperature;"
              "Battery;Fuel Pressure;Oil Pressure;Fuel Level;");
}

TEST(Conversione, FastChannelsSitAtTheirPlacesAndScales) {
    Blocco b;
    // Sample 3 begins behind byte 33.
    b.W(34, 11500).W(36, 654).B(38, 4).B(39, -7).B(40, 88).B(41, -12);
    const auto [csv, txt] = Converti({b});
    ASSERT_EQ(csv.size(), 10u);
    EXPECT_EQ(csv[3], "0.3;654.0;11500;0.0;0.0;0.0;88.0;0.0;-1.2;0.0;0.0;4;0.0;-0.7;0.0;0.0");
    EXPECT_EQ(csv[2], "0.2;0.0;0;0.0;0.0;0.0;0.0;0.0;0.0;0.0;0.0;;0.0;0.0;0.0;0.0");
    EXPECT_EQ(txt[3], "0.3;654.0;1;3;5;7;9;11;13;15;1");
}

TEST(Conversione, SlowChannelsClimbFromThePreviousReading) {
    Blocco b;
    b.W(111, 900).W(113, -55).B(115, 45).B(116, 30).B(117, 60).B(118, 138).B(119, 147).W(122, 200);
    const auto [csv, txt] = Converti({b, b});
    // Row 0 holds the reading of the block before (0), row i adds i tenths of the step.
    EXPECT_EQ(csv[0], "0.0;0.0;0;0.0;0.0;0.0;0.0;0.0;0.0;0.0;0.0;;0.0;0.0;0.0;0.0");
    EXPECT_EQ(csv[5], "0.5;0.0;0;100.0;1.5;2.25;0.0;-2.75;0.0;45.0;6.9;;30.0;0.0;7.35;0.5");
    EXPECT_EQ(csv[9], "0.9;0.0;0;180.0;2.7;4.05;0.0;-4.95;0.0;81.0;12.42;;54.0;0.0;13.23;0.9");
    EXPECT_EQ(csv[10], "1.0;0.0;0;200.0;3.0;4.5;0.0;-5.5;0.0;90.0;13.8;;60.0;0.0;14.7;1.0");
    EXPECT_EQ(csv[19], "1.9;0.0;0;200.0;3.0;4.5;0.0;-5.5;0.0;90.0;13.8;;60.0;0.0;14.7;1.0");
}

TEST(Conversione, AlarmBitsGiveEveryLineItsBand) {
    Blocco b;
    b.W(124, 0x8100);  // bits 8 and 15
    EXPECT_EQ(Converti({b}).Txt[0], "0.0;0.0;2;3;5;7;9;11;13;16;1");
    b.W(124, 0xFF00);
    EXPECT_EQ(Converti({b}).Txt[0], "0.0;0.0;2;4;6;8;10;12;14;16;1");
}

TEST(Conversione, LogWithoutMarksIsWrittenByTheFinalFlush) {
    const auto [csv, txt] = Converti({Blocco{}, Blocco{}});
    ASSERT_EQ(csv.size(), 20u);
    EXPECT_EQ(Colonna(csv[19], 1), "1.9");
    EXPECT_EQ(Colonna(txt[0], 11), "1");
    EXPECT_EQ(Colonna(txt[19], 11), "1");
    EXPECT_TRUE(Converti({}).Csv.empty());
}

TEST(Conversione, LapMarkRestartsTimeAndTheBuffer) {
    Blocco prima, giro1, dentro, giro2;
    prima.Giro(0, false).Distanze(2000, 5);
    giro1.Giro(1, true).Distanze(28, 1);    // 28, 29, 30, 31 ...: over 30 metres is what is left of
    dentro.Giro(1, false).Distanze(56, 3);  // the lap before
    giro2.Giro(2, true).Distanze(0, 3);
    const auto [csv, txt] = Converti({prima, giro1, dentro, giro2});
    ASSERT_EQ(csv.size(), 40u);
    EXPECT_EQ(Colonna(txt[9], 11), "1");  // rows before the first mark carry the new lap's number
    EXPECT_EQ(Colonna(csv[9], 1), "0.9");
    EXPECT_EQ(Colonna(csv[10], 1), "0.0");  // the first sample behind the mark
    EXPECT_EQ(Colonna(csv[29], 1), "1.9");
    EXPECT_EQ(Colonna(txt[29], 11), "2");
    EXPECT_EQ(Colonna(csv[30], 1), "0.0");
    EXPECT_EQ(Colonna(txt[39], 11), "3");  // the last rows: last lap number plus 1
    EXPECT_EQ(Colonna(csv[0], 2), "2000.0");
    EXPECT_EQ(Colonna(csv[10], 2), "28.0");
    EXPECT_EQ(Colonna(csv[12], 2), "30.0");
    EXPECT_EQ(Colonna(csv[13], 2), "0");  // literally
    EXPECT_EQ(Colonna(txt[13], 2), "0");
    EXPECT_EQ(Colonna(csv[20], 2), "56.0");  // only the block of the mark
}

TEST(Conversione, JumpOrRepeatedLapNumberGoesOnCounting) {
    Blocco a, salto, stesso, nuovo;
    salto.Giro(3, true);   // from 0: a jump of more than one
    stesso.Giro(3, true);  // the same number again
    nuovo.Giro(4, true);
    const auto [csv, txt] = Converti({a, salto, stesso, nuovo});
    ASSERT_EQ(csv.size(), 40u);
    EXPECT_EQ(Colonna(txt[0], 11), "0");    // P was 0
    EXPECT_EQ(Colonna(txt[10], 11), "-1");  // P was 3
    EXPECT_EQ(Colonna(csv[10], 1), "1.0");  // time = row / 10, the buffer was not started over
    EXPECT_EQ(Colonna(csv[19], 1), "1.9");
    EXPECT_EQ(Colonna(txt[20], 11), "4");  // the new lap's flush counts from its first row
    EXPECT_EQ(Colonna(csv[20], 1), "0.0");
    EXPECT_EQ(Colonna(csv[29], 1), "0.9");
    EXPECT_EQ(Colonna(csv[30], 1), "0.0");
    EXPECT_EQ(Colonna(txt[30], 11), "5");
    // A number that falls back counts as a new lap too.
    Blocco indietro;
    indietro.Giro(1, true);
    EXPECT_EQ(Colonna(Converti({salto, indietro}).Txt[0], 11), "1");
}

TEST(Conversione, MarkInTheFirstBlockFlushesNothing) {
    Blocco primo;
    primo.Giro(1, true).Distanze(100, 1);
    const auto [csv, txt] = Converti({primo});
    ASSERT_EQ(csv.size(), 10u);
    EXPECT_EQ(Colonna(csv[0], 2), "0");
    EXPECT_EQ(Colonna(txt[9], 11), "2");
}

TEST(Conversione, DecimalSeparatorIsTheMachinesOwn) {
    Blocco b;
    b.B(8, 15);
    EXPECT_EQ(Converti({b}, ',').Csv[0],
              "0,0;0,0;0;0,0;0,0;0,0;0,0;0,0;1,5;0,0;0,0;;0,0;0,0;0,0;0,0");
}

TEST(Conversione, MoreRowsThanTheTableHoldsAreRefused) {
    std::string csv, txt;
    const std::vector<std::string> troppi(16385, std::string(128, '\0'));
    EXPECT_THROW(ConvertiBlocchi(troppi, troppi.size(), '.', csv, txt), ErroreRuntime);
    csv.clear();
    txt.clear();
    EXPECT_NO_THROW(ConvertiBlocchi(troppi, 16378, '.', csv, txt));
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
    EXPECT_EQ(dati.substr(0, dati.find("\r\n")), TitoliCsv(0, "mph", "\xB0 C"));
    EXPECT_EQ(std::count(dati.begin(), dati.end(), '\n'), 21);
    const std::string laterale = prova::Leggi(csv.parent_path() / "run \u00E0.txt");
    EXPECT_EQ(laterale.substr(0, laterale.find("\r\n")), TitoliTxt(0));
    EXPECT_EQ(prova::Leggi(csv.parent_path() / "run \u00E0.tim"),
              "1.4\r\n01:20.00, 1\r\n01:19.50, 1\r\n\r\n");
    // The blocks stay: the command can be given again.
    macchina.FileScelti.push_back(macchina.Cartella / "altro.csv");
    macchina.Risposte = {Answer::Ok};
    mnuSaveData_Click();
    EXPECT_EQ(prova::Leggi(macchina.Cartella / "altro.csv"), dati);
}

TEST_F(SalvaDati, AsksBeforeReplacingAndCancelWritesNothing) {
    macchina.FileScelti.push_back(std::nullopt);
    mnuSaveData_Click();
    const fs::path csv = macchina.Cartella / "run.csv";
    prova::Scrivi(csv, "vecchio");
    macchina.FileScelti.push_back(macchina.Cartella / "RUN.csv");
    macchina.Risposte = {Answer::Cancel};
    mnuSaveData_Click();
    EXPECT_EQ(prova::Leggi(csv), "vecchio");
    EXPECT_FALSE(fs::exists(macchina.Cartella / "RUN.txt"));
}

TEST_F(SalvaDati, TheSuggestedNameIsNewAndTellsThatADownloadWasStopped) {
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
    IndiceLingua = 1;
    EXPECT_EQ(proposto(), "Lapvane 2026-11-24 10-20-30 partial.csv");
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
    EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
    EXPECT_TRUE(logInMemoria().DaSalvare);
    EXPECT_EQ(NumBlocchi, 120);
    EXPECT_EQ(salva(csv), Testo(Voce::ConversioneCompletata));
    EXPECT_FALSE(logInMemoria().DaSalvare);
}

TEST_F(SalvaDati, NameOfASideFileIsRefusedBeforeAnythingIsWritten) {
    for (const char* nome : {"note.txt", "note.tim"}) {
        const fs::path file = macchina.Cartella / nome;
        prova::Scrivi(file, "vecchio");
        PercorsoCsv = file;
        try {
            ConvertiLog();
            FAIL();
        } catch (const ErroreRuntime& errore) {
            EXPECT_EQ(errore.Numero(), NumeroErrore::FileAlreadyOpen);
        }
        EXPECT_EQ(prova::Leggi(file), "vecchio");
        EXPECT_FALSE(fs::exists(macchina.Cartella / "note.csv"));
    }
    // A unit that its list does not have leaves the brackets empty.
    DatiProgetto.UMVel = 7;
    EXPECT_NE(ComponiLog().Csv.find("Velocit\xE0 [];"), std::string::npos);
}

}  // namespace
}  // namespace lapvane
