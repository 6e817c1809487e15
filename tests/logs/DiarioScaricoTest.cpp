// Downloads on the disk: broken off and gone on with, offered at the start, kept.
#include "logs/DiarioScarico.h"

#include <chrono>

#include "device/SerialComm.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "logs/Scarico.h"
#include "logs/Soccorso.h"
#include "platform/FileTesto.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "support/SpazioFinito.h"
#include "support/StrumentoProva.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;

struct Spento {};  // the machine, in the middle

class Vista : public VistaScarico {
 public:
    bool Visibile() const override { return Aperta; }
    void Stato(const std::string&) override {}
    void Percento(int) override {
        if (++Passi == SpegniAl) throw Spento{};
    }
    void AbilitaOK(bool) override {}
    void Scarica() override { Aperta = false; }
    void Avviso(const std::string& testo) override { Avvisi.push_back(testo); }
    bool Aperta = true;
    int Passi = 0;
    int SpegniAl = 0;
    std::vector<std::string> Avvisi;
};

class SuDisco : public prova::ConStrumento<prova::PlatformProva> {
 protected:
    SuDisco() { Registra(1); }
    /// Twelve pages, the seventh broken for good, and 40 laps.
    void Registra(int seme) {
        apparecchio.Dati = {};
        for (int b = 0; b < 24; ++b) {
            std::string blocco(128, static_cast<char>(seme + b));
            if (b == 13) blocco[0] = '\xFF';
            apparecchio.Dati.AggiungiBlocco(blocco);
        }
        for (int i = 1; i <= 40; ++i) apparecchio.Dati.AggiungiGiro(8000 + i, i % 9 == 1);
        Guasta("badsum:6");
    }
    /// A process that starts and downloads, switched off behind so many pages (0: never); what
    /// its boxes said.
    std::vector<std::string> Scarica(int spegniAl = 0, std::deque<Answer> risposte = {}) {
        AzzeraBufferLog();
        FaseComunicazione = 0;
        EXPECT_TRUE(LinkPronto());
        macchina.Mostrati.clear();
        macchina.Risposte = std::move(risposte);
        macchina.BoxLiberi = macchina.Risposte.empty();
        vista = {};
        vista.SpegniAl = spegniAl;
        richieste = porta.Richieste().size();
        try {
            DiarioScarico diario(CartellaScarichi());
            Scarico(vista, &diario).Esegui();
        } catch (const Spento&) {
        }
        ora += std::chrono::seconds(1);  // the machine's clock is too coarse for these tests
        if (!logInMemoria().File.empty()) fs::last_write_time(logInMemoria().File, ora);
        return Detto();
    }
    std::vector<std::string> Frame() const {
        return {porta.Richieste().begin() + static_cast<long>(richieste), porta.Richieste().end()};
    }
    std::vector<fs::path> Tenuti() const {
        std::vector<fs::path> file;
        for (const auto& tenuto : ScarichiTenuti(CartellaScarichi())) file.push_back(tenuto.File);
        return file;
    }
    static std::string Tutto() {
        const FileLog file = ComponiLog();
        return file.Csv + file.Txt + file.Tim;
    }

    Vista vista;
    std::size_t richieste = 0;
    fs::file_time_type ora = fs::file_time_type::clock::now() - std::chrono::hours(1);
};

TEST_F(SuDisco, BrokenOffAnywhereItGoesOnAndEndsAsAnUndisturbedOne) {
    AzzeraBufferLog();
    ASSERT_TRUE(LinkPronto());
    macchina.BoxLiberi = true;
    richieste = porta.Richieste().size();
    Scarico(vista).Esegui();
    const std::string intero = Tutto();
    const auto frame = Frame();
    Scarica();
    EXPECT_EQ(Frame(), frame) << "on the wire nothing tells that it is kept";
    EXPECT_EQ(Tutto(), intero);
    EXPECT_EQ(Tenuti().size(), 1u);
    const std::size_t byte = fs::file_size(Tenuti()[0]);
    for (const int pagina : {1, 2, 5, 8, 11}) {
        for (const std::size_t taglio : {0u, 1u, 200u}) {
            fs::remove_all(CartellaScarichi());
            Scarica(pagina);
            ASSERT_EQ(Tenuti().size(), 1u);
            const fs::path file = Tenuti()[0];
            std::string testo = prova::Leggi(file);
            ASSERT_LT(testo.size(), byte);
            testo.resize(testo.size() - taglio);  // a plug that was pulled
            if (pagina > 5) testo[testo.size() - 700] ^= 1;
            prova::Scrivi(file, testo);
            const bool qualcosa = ApriScarico(file).has_value();
            const auto detto = qualcosa ? Scarica(0, {Answer::Yes, Answer::Ok}) : Scarica();
            EXPECT_EQ(detto.size(), qualcosa ? 2u : 1u) << "the offer, and the broken page";
            EXPECT_EQ(Tutto(), intero) << pagina << ", " << taglio;
            const auto sulDisco = ApriScarico(logInMemoria().File);
            ASSERT_TRUE(sulDisco && sulDisco->Finito);
            EXPECT_TRUE(pagina <= 5 || Frame().size() < frame.size()) << "pages are read once";
            MettiInMemoria(*sulDisco);
            EXPECT_EQ(Tutto(), intero);
            EXPECT_TRUE(Scarica().size() == 1 && vista.Aperta) << "one that is whole is no offer";
        }
    }
}

TEST_F(SuDisco, RecordedAnewItBeginsAfreshAndBothStay) {
    Scarica(8);
    const std::string primo = prova::Leggi(Tenuti()[0]);
    Registra(3);
    for (const bool tutto : {true, false}) {
        const auto detto = Scarica(tutto ? 8 : 0);
        EXPECT_EQ(vista.Avvisi, std::vector<std::string>{Testo(Voce::ScaricoDaCapo)});
        EXPECT_EQ(BlocchiLog[0], apparecchio.Dati.Blocco(0));
        // From the second run on all but the last page that came is the same.
        apparecchio.Dati = {};
        for (int b = 0; b < 24; ++b) {
            apparecchio.Dati.AggiungiBlocco(
                std::string(128, static_cast<char>(b < 8 ? 3 + b : 90 + b)));
        }
        for (int i = 1; i <= 40; ++i) apparecchio.Dati.AggiungiGiro(8000 + i, i % 9 == 1);
    }
    EXPECT_EQ(Tenuti().size(), 3u);
    EXPECT_EQ(prova::Leggi(Tenuti().back()), primo);
    // Declined: from the start, or not at all.
    fs::remove_all(CartellaScarichi());
    Scarica(5);
    Scarica(0, {Answer::Cancel});
    EXPECT_TRUE(BlocchiLog.empty() && !vista.Aperta);
    Scarica(0, {Answer::No, Answer::Ok});
    EXPECT_EQ(BlocchiLog.size(), 22u);
    EXPECT_EQ(Tenuti().size(), 2u);
    Scarica(5);
    apparecchio.Dati.AggiungiGiro(9000, false);
    EXPECT_TRUE(Scarica().size() == 1 && vista.Aperta) << "it has driven on since";
    EXPECT_TRUE(vista.Avvisi.empty());
}

TEST_F(SuDisco, WhatWasNeverConvertedIsOfferedOnce) {
    Scarica(8);
    const std::size_t blocchi = BlocchiLog.size();
    ProgettoModificato = true;
    const fs::path soccorso = MettiDaParte().File;
    EXPECT_LT(fs::file_size(soccorso), 128 * blocchi + 2000) << "the project alone";
    AzzeraBufferLog();
    macchina.Risposte = {Answer::Yes, Answer::Yes};
    macchina.Mostrati.clear();
    OffriSoccorso();
    EXPECT_EQ(macchina.Mostrati.size(), 2u);
    EXPECT_EQ(BlocchiLog.size(), blocchi);
    EXPECT_TRUE(finestra.Menu(Comando::SaveData) && logInMemoria().Parziale);
    ProgettoModificato = false;
    ConcludiSoccorso();
    EXPECT_FALSE(fs::exists(soccorso)) << "its project is saved, the log is not its own";
    EXPECT_EQ(MettiDaParte().File, Tenuti()[0]);
    macchina.BoxLiberi = true;
    PercorsoCsv = macchina.Cartella / "run.csv";
    ConvertiLog();
    EXPECT_EQ(Tenuti()[0].extension(), kFineSalvato);
    macchina.Mostrati.clear();
    OffriSoccorso();
    EXPECT_TRUE(macchina.Mostrati.empty());
    Scarica(9, {Answer::Yes});
    EXPECT_EQ(Tenuti()[0].extension(), kFineScarico) << "what came since is not converted";
    Scarica(0, {Answer::No, Answer::Ok});
    Registra(3);
    Scarica(4);
    MettiInMemoria(*ApriScarico(Tenuti()[1]));
    logInMemoria().File = Tenuti()[1];
    ConvertiLog();
    EXPECT_EQ(Tenuti()[2].extension(), kFineSalvato) << "nothing in it that was not converted";
    AzzeraBufferLog();
    macchina.Risposte = {Answer::No};
    OffriSoccorso();
    EXPECT_EQ(Tenuti()[0].extension(), kFineSalvato);
    EXPECT_TRUE(BlocchiLog.empty());
}

TEST_F(SuDisco, OnlyTheLastTenAreKept) {
    fs::create_directories(CartellaScarichi());
    for (int i = 0; i < 12; ++i) {
        const fs::path file = CartellaScarichi() / (std::to_string(i) + ".downloaded");
        prova::Scrivi(file, "x");
        fs::last_write_time(file, fs::file_time_type::clock::now() + std::chrono::hours(i));
    }
    Scarica();
    const auto tenuti = Tenuti();
    EXPECT_EQ(tenuti.size(), kScarichiTenuti);
    EXPECT_EQ(tenuti.back(), logInMemoria().File) << "the newest, whatever the clock says";
    EXPECT_EQ(tenuti[8].filename(), "3.downloaded");
}

#ifndef _WIN32
TEST_F(SuDisco, WhereTheDiskTakesNothingItGoesOnInMemory) {
    const auto resta = [&](const std::string& motivo) {
        EXPECT_EQ(vista.Avvisi,
                  std::vector<std::string>{Testo(Voce::ScaricoSenzaDisco) + " " + motivo});
        EXPECT_EQ(BlocchiLog.size(), 22u);
        EXPECT_FALSE(logInMemoria().TuttoSuDisco);
    };
    {
        const prova::SpazioFinito poco(1300);
        Scarica();
        resta(Testo(Voce::MotivoPieno));
    }
    EXPECT_EQ(ApriScarico(Tenuti()[0])->Pagine.size(), 3u);
    EXPECT_EQ(fs::file_size(Tenuti()[0]), ApriScarico(Tenuti()[0])->Fine) << "none is cut";
    EXPECT_TRUE(fs::exists(MettiDaParte().File));
    macchina.Risposte = {Answer::No};
    macchina.Mostrati.clear();
    OffriSoccorso();
    EXPECT_EQ(macchina.Mostrati.size(), 1u) << "what was put aside has these pages too";
    fs::remove_all(CartellaScarichi());
    prova::Scrivi(CartellaScarichi(), "no folder");
    Scarica();
    resta(Testo(Voce::MotivoSparito));
}
#endif

TEST(FileScarico, DamageCostsOnlyWhatItHits) {
    ScaricoSuDisco scarico;
    scarico.Quando = "a=b\r\n";
    scarico.Byte = 768;
    scarico.Giri = 3;
    std::string testo = TestaScarico(scarico);
    std::vector<std::size_t> inizi = {testo.size()};
    testo += RecordGiri(128, std::string(128, '\1'));
    for (int p = 0; p < 3; ++p) {
        inizi.push_back(testo.size());
        testo += RecordPagina(256 * p, std::string(128, '\0'), std::string(128, '\0'));
    }
    inizi.push_back(testo.size());
    testo += RecordFine(3);
    EXPECT_EQ(testo.substr(inizi[0], 9), std::string("LRG\0\0\0\x80\0\x80", 9));
    EXPECT_EQ(LeggiScarico(testo)->Quando, "a=b\r\n");
    for (std::size_t i = 15; i < testo.size(); ++i) {
        std::string guasto = testo;
        guasto[i] ^= 0x40;
        const auto letto = LeggiScarico(guasto);
        ASSERT_TRUE(letto.has_value()) << i;
        const bool pagina = i >= inizi[1] && i < inizi[4];
        ASSERT_EQ(letto->Pagine.size(), pagina ? 2u : 3u) << i;
        ASSERT_EQ(letto->Finito, i < inizi[1]) << i;
        ASSERT_EQ(letto->Byte, i < inizi[0] ? 0 : 768) << i;
        const auto tagliato = LeggiScarico(testo.substr(0, i));
        ASSERT_EQ(tagliato.has_value(), i >= inizi[0]) << i;
        ASSERT_LE(tagliato ? tagliato->Fine : 0, i);
    }
    EXPECT_FALSE(LeggiScarico("Lapvane raw 2" + testo.substr(13)).has_value());
}

TEST(Andamento, TimeLeftFollowsThePaceAndForgetsAPause) {
    prova::PlatformProva macchina;
    prova::CaricaTestiVeri(1);
    const auto frase = [](int secondi) { return FraseResta({0, 1, secondi, 0, 0}); };
    EXPECT_EQ(frase(0), "Left: about 5 s");
    EXPECT_EQ(frase(86), "Left: about 90 s");
    EXPECT_EQ(frase(91), "Left: about 2 min");
    EXPECT_EQ(frase(1361), "Left: about 23 min");  // 8189 pages of 166 ms: 1360 s
    PassoScarico passo;
    std::int64_t ms = 0;
    for (int p = 0; p < 8; ++p) passo.Pagina(ms += 166);
    EXPECT_FALSE(passo.Secondi(2096384).has_value()) << "seven intervals";
    passo.Pagina(ms += 166);
    EXPECT_EQ(passo.Secondi(2096384), 1360);
    ms += 60000;
    for (int p = 0; p < 100; ++p) passo.Pagina(ms += 166);
    EXPECT_LT(passo.Secondi(2096384).value(), 1500);
    passo.Interrompi();
    passo.Pagina(ms += 60000);
    EXPECT_LT(passo.Secondi(2096384).value(), 1500);
}

}  // namespace
}  // namespace lapvane
