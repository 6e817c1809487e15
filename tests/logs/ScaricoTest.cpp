#include "logs/Scarico.h"

#include <gtest/gtest.h>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "logs/BufferLog.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "support/PlatformProva.h"
#include "support/SerialeProva.h"

namespace lapvane {
namespace {

using namespace std::string_literals;
using prova::PlatformProva;
using prova::PrincipaleProva;
using prova::SerialeProva;

class VistaProva : public VistaScarico {
 public:
    bool Visibile() const override { return Aperta; }
    void Stato(const std::string& testo) override { Stati.push_back(testo); }
    void Percento(int percento) override {
        Percentuali.push_back(percento);
        if (ChiudiA >= 0 && percento >= ChiudiA) Aperta = false;
    }
    void AbilitaOK(bool acceso) override { OK = acceso; }
    void Scarica() override {
        Aperta = false;
        ++Scaricata;
    }
    bool Aperta = true;
    bool OK = false;
    int Scaricata = 0;
    int ChiudiA = -1;
    std::vector<std::string> Stati;
    std::vector<int> Percentuali;
};

/// A page of the log memory whose first record begins with `segno`.
std::string Pagina(char segno) {
    std::string pagina(256, '\0');
    pagina[0] = segno;
    pagina[200] = 3;
    pagina[255] = static_cast<char>((segno + 3) & 0xFF);
    return pagina;
}
const std::string kVuota(256, '\xFF');

/// The box at the end of a download that lost something.
std::string Perso(const std::vector<std::string>& frasi) {
    std::string testo = Testo(Voce::ScaricoManca);
    for (const std::string& frase : frasi) testo += "\r\n\r\n" + frase;
    return testo;
}

class Scaricamento : public ::testing::Test {
 protected:
    Scaricamento() {
        prova::CaricaTestiVeri(1);
        AzzeraBufferLog();
        finestra.Seriale = &porta;
        porta.Risponde = [this](const std::string& frame) { Rispondi(frame); };
        EXPECT_TRUE(LinkPronto());
    }

    void Rispondi(const std::string& frame) {
        const int comando = ByteIn(frame, 2);
        if (Muto && Muto(comando, frame)) return;
        if (comando == 1) porta.Fra(1, Conferma(1));
        if (comando == 37) {
            std::string valori(36, '\0');
            valori.replace(22, 2, CodificaWord(Giri));
            valori.replace(31, 4, CodificaLong(Byte));
            porta.Fra(1, valori);
        }
        if (comando == 14) {
            const auto indirizzo = static_cast<std::size_t>(LongIn(frame, 3));
            Letti.push_back(static_cast<int>(indirizzo));
            std::string blocco = Log.substr(std::min(indirizzo, Log.size()), 128);
            blocco.resize(128, '\xFF');
            porta.Fra(1, "R\x0E" + blocco);
        }
        if (comando == 38) {
            const auto indirizzo = static_cast<std::size_t>(WordIn(frame, 3));
            std::string blocco = MemoriaGiri.substr(std::min(indirizzo, MemoriaGiri.size()), 128);
            blocco.resize(128, '\xFF');
            porta.Fra(1, "R\x26" + blocco);
        }
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
    SerialeProva porta{macchina};
    VistaProva vista;
    std::int32_t Byte = 0;
    int Giri = 0;
    std::string Log;
    std::string MemoriaGiri;
    std::vector<int> Letti;
    std::function<bool(int, const std::string&)> Muto;
};

TEST_F(Scaricamento, LapRecordsKnowTheirSession) {
    EXPECT_EQ(DecodificaRecordGiro("\x80\x00\x1F\x40"s).Centesimi, 8000);
    EXPECT_TRUE(DecodificaRecordGiro("\x80\x00\x1F\x40"s).NuovaSessione);
    EXPECT_EQ(DecodificaRecordGiro("\x00\x00\x20\x99"s).Centesimi, 8345);
    EXPECT_FALSE(DecodificaRecordGiro("\x7F\xFF\xFF\xFF"s).NuovaSessione);
    EXPECT_EQ(DecodificaRecordGiro("\xFF\xFF\xFF\xFF"s).Centesimi, 0xFFFFFF);
}

TEST_F(Scaricamento, ThirtyThreeLapsTakeTwoBlocks) {
    Giri = 33;
    NumeroGiri = 33;
    MemoriaGiri = "\x80\x00\x1F\x40"s;
    for (int i = 2; i <= 32; ++i) MemoriaGiri += CodificaLong(8000 + i);
    MemoriaGiri += "\x80\x00\x20\x99"s;  // first record of the second block: a new session
    Scarico scarico(vista);
    scarico.ScaricaGiri();
    EXPECT_EQ(TabellaGiri[1], "01:20.00, 1");
    EXPECT_EQ(TabellaGiri[32], "01:20.32, 1");
    EXPECT_EQ(TabellaGiri[33], "01:23.45, 2");
    EXPECT_EQ(TabellaGiri[0], "00:00.00");
    EXPECT_EQ(TabellaGiri[65], "00:00.00");
    NumeroGiri = 0;
    porta.Scritti.clear();
    scarico.ScaricaGiri();
    EXPECT_TRUE(porta.Scritti.empty());
}

TEST_F(Scaricamento, LapsPastTheTableAreLeftOutAndToldOnce) {
    Giri = 1100;
    for (int i = 1; i <= 1100; ++i) MemoriaGiri += CodificaLong(i);
    macchina.Risposte = {Answer::Ok};
    Scarico(vista).Esegui();
    EXPECT_EQ(TabellaGiri[999], "00:09.99, 0");
    ASSERT_EQ(macchina.Mostrati.size(), 1u);
    EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::TabellaGiriPiena));
    EXPECT_TRUE(vista.OK);
    Giri = 999;  // fills it
    Scarico(vista).Esegui();
    Giri = 1000;  // one lap past it
    macchina.Risposte = {Answer::Ok};
    Scarico(vista).Esegui();
    EXPECT_EQ(macchina.Mostrati.size(), 2u);
}

TEST_F(Scaricamento, WholeRunStoresGoodPagesUpToTheSecondEmptyOne) {
    Giri = 1;
    MemoriaGiri = "\x80\x00\x1F\x40"s;
    std::string guasta = Pagina(3);
    guasta[255] = static_cast<char>(guasta[255] + 1);
    Log = Pagina(1) + kVuota + Pagina(2) + guasta + kVuota + Pagina(4);
    Byte = static_cast<std::int32_t>(Log.size());
    FaseComunicazione = 0;
    macchina.Risposte = {Answer::Ok};
    Scarico(vista).Esegui();
    EXPECT_EQ(macchina.Mostrati[0].Testo, Perso({Testo(Voce::ScaricoFine) + " 1024 / 1536",
                                                 Testo(Voce::ScaricoPagine) + " 1"}));
    EXPECT_EQ(NumBlocchi, 4);
    ASSERT_EQ(BlocchiLog.size(), 4u);
    EXPECT_EQ(BlocchiLog[0][0], 1);
    EXPECT_EQ(BlocchiLog[2][0], 2);
    EXPECT_EQ(Letti.back(), 4 * 256 + 128) << "the log ends at the second never-written page";
    EXPECT_EQ(vista.Stati, (std::vector<std::string>{Testo(Voce::ScaricamentoInCorso),
                                                     Testo(Voce::ScaricamentoInCorso),
                                                     Testo(Voce::ScaricamentoCompletato)}));
    EXPECT_TRUE(vista.OK);
    EXPECT_TRUE(finestra.Menu(Comando::SaveData));
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_EQ(NumeroGiri, 1);
    EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
    // 1000 + 1000 + 100 + 1000 and 10 for each of the ten blocks.
    EXPECT_EQ(macchina.Dormito, 3200);
}

TEST_F(Scaricamento, LoopReadsAsManyPagesAsItsConditionSays) {
    struct Caso {
        std::int32_t Byte;
        std::size_t Blocchi;
    };
    // A page is read while the second address of the one before is below the size: 256 bytes
    // therefore read the page behind them too.
    for (const Caso caso :
         {Caso{0, 0}, Caso{128, 2}, Caso{129, 4}, Caso{256, 4}, Caso{512, 6}, Caso{-5, 0}}) {
        Letti.clear();
        Scarico scarico(vista);
        scarico.BytesDati = caso.Byte;
        Log = Pagina(1) + Pagina(2) + Pagina(3) + Pagina(4);
        scarico.ScaricaLog();
        EXPECT_EQ(Letti.size(), caso.Blocchi) << caso.Byte;
        EXPECT_EQ(vista.Stati.back(), Testo(caso.Blocchi == 0 ? Voce::NessunDatoScaricato
                                                              : Voce::ScaricamentoCompletato));
        EXPECT_EQ(finestra.Menu(Comando::SaveData), caso.Blocchi != 0);
    }
}

TEST_F(Scaricamento, ThreeFailuresAreRetriedOverTheWholeDownload) {
    Log = Pagina(1) + Pagina(2) + Pagina(3);
    int guasti = 3;
    Muto = [&guasti](int comando, const std::string& frame) {
        return comando == 14 && LongIn(frame, 3) % 256 == 0 && guasti-- > 0;
    };
    macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok};
    Scarico scarico(vista);
    scarico.BytesDati = 640;
    scarico.ScaricaLog();
    EXPECT_EQ(NumBlocchi, 6);
    EXPECT_EQ(vista.Scaricata, 0);
    for (const auto& box : macchina.Mostrati)
        EXPECT_EQ(box.Testo, Testo(Voce::StrumentoNonRisponde));
}

TEST_F(Scaricamento, FourthFailureGivesUpAndKeepsWhatIsThere) {
    Log = Pagina(1) + Pagina(2) + Pagina(3);
    Muto = [](int comando, const std::string& frame) {
        return comando == 14 && LongIn(frame, 3) >= 256;
    };
    macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok, Answer::Ok};
    Scarico scarico(vista);
    scarico.BytesDati = 768;
    scarico.ScaricaLog();
    EXPECT_EQ(vista.Scaricata, 1);
    EXPECT_EQ(NumBlocchi, 2);
    EXPECT_TRUE(finestra.Menu(Comando::SaveData));
    EXPECT_EQ(macchina.Mostrati.size(), 4u);
}

TEST_F(Scaricamento, ClosingTheWindowStopsTheFetching) {
    for (int i = 0; i < 100; ++i) Log += Pagina(1);
    vista.ChiudiA = 50;
    Scarico scarico(vista);
    scarico.BytesDati = 25600;
    scarico.ScaricaLog();
    EXPECT_EQ(NumBlocchi, 102);
    EXPECT_EQ(vista.Percentuali.back(), 50);
    EXPECT_TRUE(finestra.Menu(Comando::SaveData));
}

TEST_F(Scaricamento, PortThatVanishesInTheMiddleEndsInAMessage) {
    for (int i = 0; i < 10; ++i) Log += Pagina(1);
    int dopo = 9;
    Muto = [&](int comando, const std::string&) {
        if (comando != 14 || --dopo > 0) return false;
        porta.PortOpen(false);
        porta.Porte.clear();
        return true;
    };
    macchina.BoxLiberi = true;
    Scarico scarico(vista);
    scarico.BytesDati = 2560;
    scarico.ScaricaLog();
    EXPECT_EQ(NumBlocchi, 8);
    EXPECT_EQ(macchina.Mostrati.front().Testo, Testo(Voce::StrumentoNonRisponde));
    EXPECT_LE(macchina.Mostrati.size(), 4u);
    EXPECT_TRUE(vista.OK);
}

TEST_F(Scaricamento, SilentSizesDownloadNothing) {
    Muto = [](int comando, const std::string&) { return comando == 37; };
    macchina.Risposte.assign(9, Answer::Ok);
    Scarico(vista).Esegui();
    ASSERT_EQ(macchina.Mostrati.size(), 9u);
    EXPECT_EQ(macchina.Mostrati[7].Testo, Testo(Voce::StrumentoNonRisponde))
        << "each of the two was asked four times";
    EXPECT_EQ(macchina.Mostrati[8].Testo,
              Perso({Testo(Voce::ScaricoDimensione), Testo(Voce::ScaricoNumeroGiri)}));
    EXPECT_EQ(NumBlocchi, 0);
    EXPECT_EQ(vista.Stati.back(), Testo(Voce::NessunDatoScaricato));
    EXPECT_FALSE(finestra.Menu(Comando::SaveData));
    EXPECT_EQ(FaseComunicazione, 0);
}

TEST_F(Scaricamento, UndisturbedItSendsEachFrameOnce) {
    Giri = 33;
    MemoriaGiri.assign(256, '\x01');
    Log = Pagina(1) + kVuota;
    Byte = 256;
    porta.Scritti.clear();
    Scarico(vista).Esegui();
    EXPECT_EQ(porta.Scritti,
              (std::vector<std::string>{Frame(37), Frame(37), Frame(38, CodificaWord(0)),
                                        Frame(38, CodificaWord(128)), Frame(14, CodificaLong(0)),
                                        Frame(14, CodificaLong(128)), Frame(14, CodificaLong(256)),
                                        Frame(14, CodificaLong(384))}));
    EXPECT_TRUE(macchina.Mostrati.empty());
    EXPECT_FALSE(logInMemoria().Parziale);
    EXPECT_TRUE(logInMemoria().DaSalvare);
}

TEST_F(Scaricamento, SizesAndLapBlocksAreAskedThreeTimesMoreBesideTheLogsOwnCount) {
    Giri = 40;
    for (int i = 1; i <= 64; ++i) MemoriaGiri += CodificaLong(8000 + i);
    Log = Pagina(1) + Pagina(2);
    Byte = 512;
    // Each of the first frames stays unanswered three times: three sizes, laps, laps, log.
    std::string ultimo;
    int zitti = 0, chieste37 = 0;
    Muto = [&](int comando, const std::string& frame) {
        if (comando == 1) return false;
        const std::string quale = comando == 37 ? frame + std::to_string(chieste37 / 4) : frame;
        if (comando == 37) ++chieste37;
        if (quale != ultimo) zitti = 0;
        ultimo = quale;
        return comando == 14 ? LongIn(frame, 3) == 0 && zitti++ < 3 : zitti++ < 3;
    };
    macchina.Risposte.assign(15, Answer::Ok);
    Scarico(vista).Esegui();
    for (const auto& box : macchina.Mostrati)
        EXPECT_EQ(box.Testo, Testo(Voce::StrumentoNonRisponde));
    EXPECT_EQ(NumeroGiri, 40);
    EXPECT_EQ(TabellaGiri[40], "01:20.40, 0");
    EXPECT_EQ(NumBlocchi, 4);
    EXPECT_TRUE(vista.Aperta);
    EXPECT_EQ(std::count(porta.Scritti.begin(), porta.Scritti.end(), Frame(1)), 1 + 15)
        << "the link is opened anew before each";
}

TEST_F(Scaricamento, WhatDidNotComeIsToldOnceAtTheEnd) {
    Giri = 70;
    for (int i = 1; i <= 96; ++i) MemoriaGiri += CodificaLong(8000 + i);
    for (int i = 0; i < 4; ++i) Log += Pagina(1);
    Log[255] = 0;
    Byte = 1024;
    // The second and the third lap block never come, and the log falls silent at its third page.
    Muto = [](int comando, const std::string& frame) {
        return (comando == 38 && WordIn(frame, 3) >= 128) ||
               (comando == 14 && LongIn(frame, 3) >= 512);
    };
    macchina.Risposte.assign(4 + 4 + 4 + 1, Answer::Ok);
    Scarico(vista).Esegui();
    EXPECT_EQ(TabellaGiri[32], "01:20.32, 0");
    EXPECT_EQ(TabellaGiri[33], "00:00.00");
    EXPECT_EQ(NumBlocchi, 2);
    EXPECT_EQ(macchina.Mostrati.back().Testo,
              Perso({Testo(Voce::ScaricoFine) + " 512 / 1024", Testo(Voce::ScaricoPagine) + " 1",
                     Testo(Voce::ScaricoGiri) + " 33-64, 65-70"}));
    EXPECT_TRUE(logInMemoria().Parziale);
    EXPECT_EQ(FaseComunicazione, 0);
}

TEST_F(Scaricamento, MoreThanTheMemoryHoldsIsNotStored) {
    // A size that was garbled on the line, and every page of it there.
    for (int i = 0; i < 8300; ++i) Log += Pagina(static_cast<char>(i % 100));
    Byte = static_cast<std::int32_t>(Log.size());
    macchina.Risposte = {Answer::Ok};
    Scarico(vista).Esegui();
    EXPECT_EQ(NumBlocchi, 16384);
    EXPECT_EQ(BlocchiLog.size(), 16384u);
    EXPECT_EQ(macchina.Mostrati[0].Testo, Perso({Testo(Voce::ScaricoFine) + " 2097152 / 2124800"}));
}

TEST_F(Scaricamento, PageChecksumCoversAllButItself) {
    const std::string buona = Pagina(9);
    EXPECT_TRUE(VerificaPagina(buona.substr(0, 128), buona.substr(128)));
    for (const std::size_t i :
         {std::size_t{0}, std::size_t{127}, std::size_t{128}, std::size_t{254}, std::size_t{255}}) {
        std::string guasta = buona;
        guasta[i] = static_cast<char>(guasta[i] + 1);
        EXPECT_FALSE(VerificaPagina(guasta.substr(0, 128), guasta.substr(128))) << i;
    }
    EXPECT_FALSE(VerificaPagina("", ""));
    const std::string piena(127, '\xFF');  // 255 bytes of 0xFF: 65025, low byte 0x01
    EXPECT_TRUE(VerificaPagina(piena + '\xFF', piena + '\x01'));
}

}  // namespace
}  // namespace lapvane
