// The download from the simulated instrument.
#include "logs/Scarico.h"

#include <chrono>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "logs/DiarioScarico.h"
#include "logs/Soccorso.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "support/SerialeProva.h"
#include "support/SpazioFinito.h"
#include "support/StrumentoProva.h"

namespace lapvane {
namespace {

using namespace std::string_literals;

class VistaProva : public VistaScarico {
 public:
    bool Visibile() const override { return Aperta; }
    void Stato(const std::string& testo) override { Stati.push_back(testo); }
    void Percento(int percento) override {
        Percentuali.push_back(percento);
        if (AlPercento) AlPercento(percento);
    }
    void AbilitaOK(bool acceso) override { OK = acceso; }
    void Scarica() override { Aperta = false; }
    void Avviso(const std::string& testo) override { Avvisi.push_back(testo); }
    void Andamento(const AndamentoScarico& andamento) override { Resti.push_back(andamento.Resta); }
    bool Aperta = true;
    bool OK = false;
    std::vector<std::string> Stati;
    std::vector<std::string> Avvisi;
    std::vector<int> Percentuali;
    std::vector<std::optional<int>> Resti;
    std::function<void(int)> AlPercento;
};

/// The box at the end of a download that lost something.
std::string Perso(const std::vector<std::string>& frasi) {
    std::string testo = Testo(Voce::ScaricoManca);
    for (const std::string& frase : frasi) testo += "\r\n\r\n" + frase;
    return testo;
}

class Scaricamento : public prova::ConStrumento<prova::PlatformProva> {
 protected:
    Scaricamento() { AzzeraBufferLog(); }
    void Pagine(int quante) {
        for (int b = 0; b < 2 * quante; ++b) {
            apparecchio.Dati.AggiungiBlocco(std::string(128, static_cast<char>(b + 1)));
        }
    }
    void Giri(int quanti) {
        for (int i = 1; i <= quanti; ++i) apparecchio.Dati.AggiungiGiro(8000 + i, i % 32 == 1);
    }
    /// A whole download over an open link; texts of the boxes.
    std::vector<std::string> Scarica(const std::vector<const char*>& guasti = {}) {
        EXPECT_TRUE(LinkPronto());
        Guasta("");
        for (const char* uno : guasti) apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto(uno));
        prima = porta.Richieste().size();
        macchina.Mostrati.clear();
        macchina.BoxLiberi = true;
        auto azione = vista.AlPercento;
        vista = {};
        vista.AlPercento = azione;
        Scarico(vista).Esegui();
        EXPECT_EQ(FaseComunicazione, 0);
        EXPECT_TRUE(vista.OK);
        EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
        return Detto();
    }
    const std::string kMuto = Testo(Voce::StrumentoNonRisponde);
    std::size_t prima = 0;
    VistaProva vista;
};

TEST_F(Scaricamento, UndisturbedItSendsEachFrameOnceAndForgetsTheLogBefore) {
    Pagine(1);
    Giri(33);
    bool fase = true;
    macchina.DuranteEventi = [&] { fase = fase && (FaseComunicazione == 38 || prima == 0); };
    std::vector<std::int64_t> mostrato;
    vista.AlPercento = [&](int) { mostrato.push_back(macchina.Dormito); };
    EXPECT_TRUE(Scarica().empty());
    EXPECT_TRUE(fase);
    EXPECT_EQ(std::vector<std::string>(porta.Richieste().begin() + static_cast<long>(prima),
                                       porta.Richieste().end()),
              (std::vector<std::string>{Frame(37), Frame(37), Frame(38, CodificaWord(0)),
                                        Frame(38, CodificaWord(128)), Frame(14, CodificaLong(0)),
                                        Frame(14, CodificaLong(128)), Frame(14, CodificaLong(256)),
                                        Frame(14, CodificaLong(384))}));
    // 1000 + 1000 + 2 x 100 + 1000 and 10 for each of the four blocks.
    EXPECT_EQ(macchina.Dormito, 3240);
    EXPECT_EQ(mostrato, (std::vector<std::int64_t>{3210, 3230, 3240}))
        << "pages are shown while the line rests";
    EXPECT_EQ(NumeroGiri, 33);
    EXPECT_EQ(TabellaGiri[0], "00:00.00");
    EXPECT_EQ(TabellaGiri[1], "01:20.01, 1");
    EXPECT_EQ(TabellaGiri[32], "01:20.32, 1");
    EXPECT_EQ(TabellaGiri[33], "01:20.33, 2");
    EXPECT_EQ(TabellaGiri[65], "00:00.00");
    EXPECT_EQ(NumBlocchi, 2);
    ASSERT_EQ(BlocchiLog.size(), 2u);
    for (int b : {0, 1}) EXPECT_EQ(BlocchiLog[std::size_t(b)], apparecchio.Dati.Blocco(b));
    EXPECT_EQ(vista.Stati, (std::vector<std::string>{Testo(Voce::ScaricamentoInCorso),
                                                     Testo(Voce::ScaricamentoInCorso),
                                                     Testo(Voce::ScaricamentoCompletato)}));
    EXPECT_EQ(vista.Percentuali, (std::vector<int>{0, 100, 100}));
    EXPECT_TRUE(finestra.Menu(Comando::SaveData));
    EXPECT_FALSE(logInMemoria().Parziale);
    EXPECT_TRUE(logInMemoria().DaSalvare);

    apparecchio.Dati.Cancella();
    EXPECT_TRUE(Scarica().empty());
    EXPECT_EQ(NumBlocchi, 0);
    EXPECT_TRUE(BlocchiLog.empty());
    EXPECT_FALSE(logInMemoria().DaSalvare);
    EXPECT_FALSE(finestra.Menu(Comando::SaveData));
    EXPECT_EQ(vista.Stati.back(), Testo(Voce::NessunDatoScaricato));
    EXPECT_TRUE(vista.Percentuali.empty());
}

TEST_F(Scaricamento, TimeLeftDoesNotCountAQuestionToThePerson) {
    Pagine(60);
    const auto resti = [&](int domanda) {
        vista.AlPercento = [&, pagine = 0](int) mutable {
            if (++pagine != 30) return;
            macchina.Orologio += domanda;
            collegamento().Sospeso += domanda;
        };
        EXPECT_TRUE(Scarica().empty());
        return vista.Resti;
    };
    const auto senza = resti(0);
    EXPECT_TRUE(senza[40].has_value());
    EXPECT_EQ(resti(60000), senza);
}

TEST_F(Scaricamento, LapsPastTheTableAreLeftOutAndToldOnce) {
    Giri(999);
    EXPECT_TRUE(Scarica().empty()) << "the places behind the last lap are none";
    EXPECT_EQ(TabellaGiri[999], "01:29.99, 32");
    apparecchio.Dati.AggiungiGiro(1, false);
    EXPECT_EQ(Scarica(), std::vector<std::string>{Testo(Voce::TabellaGiriPiena)});
}

TEST_F(Scaricamento, WhatDidNotComeIsToldOnceAtTheEnd) {
    Pagine(6);
    Giri(70);
    const auto pagine = [](int n) { return Testo(Voce::ScaricoPagine) + " " + std::to_string(n); };
    const auto fine = [](const char* n) { return Testo(Voce::ScaricoFine) + " " + n; };
    const auto zitti = [&](std::size_t n, const std::vector<std::string>& frasi) {
        std::vector<std::string> detto(n, kMuto);
        if (!frasi.empty()) detto.push_back(Perso(frasi));
        return detto;
    };
    // Three failures of each kind are made good.
    EXPECT_EQ(Scarica({"drop:37:1:3", "drop:38:1:3", "cut:60:14:1:1", "drop:14:6:2"}),
              zitti(9, {}));
    EXPECT_EQ(NumBlocchi, 12);
    EXPECT_EQ(TabellaGiri[70], "01:20.70, 3");
    EXPECT_FALSE(logInMemoria().Parziale);
    EXPECT_EQ(std::count(porta.Richieste().begin() + static_cast<long>(prima),
                         porta.Richieste().end(), Frame(1)),
              9)
        << "the link is opened anew before each";

    EXPECT_EQ(Scarica({"badsum:3"}), zitti(0, {pagine(1)}));
    EXPECT_EQ(NumBlocchi, 10);
    EXPECT_EQ(Scarica({"blank:1"}), zitti(0, {})) << "the log goes on behind one such page";
    EXPECT_EQ(NumBlocchi, 10);
    EXPECT_EQ(Scarica({"blank:1", "badsum:2", "blank:4"}),
              zitti(0, {fine("1024 / 1536"), pagine(1)}));
    EXPECT_EQ(NumBlocchi, 4);
    EXPECT_TRUE(logInMemoria().Parziale);

    // The second and the third lap block never come, and the log falls silent at its third page.
    AzzeraBufferLog();
    EXPECT_EQ(
        Scarica({"drop:38:2:8", "badsum:0", "drop:14:5:0"}),
        zitti(12, {fine("512 / 1536"), pagine(1), Testo(Voce::ScaricoGiri) + " 33-64, 65-70"}));
    EXPECT_EQ(TabellaGiri[32], "01:20.32, 1");
    EXPECT_EQ(TabellaGiri[33], "00:00.00");
    EXPECT_EQ(NumBlocchi, 2);
    EXPECT_FALSE(vista.Aperta);
    EXPECT_TRUE(finestra.Menu(Comando::SaveData)) << "what is there can be saved";
    EXPECT_EQ(Scarica({"drop:37"}),
              zitti(8, {Testo(Voce::ScaricoDimensione), Testo(Voce::ScaricoNumeroGiri)}));
    EXPECT_FALSE(finestra.Menu(Comando::SaveData));

    // The page behind the end holds anything: a size of 512 that the line has made of 4608.
    Pagine(12);
    EXPECT_EQ(Scarica({"corrupt:34:37:1", "badsum:2"}), zitti(0, {}));
    EXPECT_EQ(NumBlocchi, 4);
    apparecchio.Dati = {};
    Pagine(6);
    // A cable that is out for a page.
    vista.AlPercento = [&](int percento) {
        if (percento == 0) porta.Sparisci();
        if (percento > 0) porta.Riappari();
    };
    EXPECT_EQ(Scarica(), zitti(0, {Testo(Voce::ScaricoNonLette) + " 1"}));
    EXPECT_EQ(NumBlocchi, 10);
    EXPECT_TRUE(logInMemoria().Parziale);
    // A person who closes the window.
    vista.AlPercento = [&](int percento) { vista.Aperta = percento < 50; };
    EXPECT_EQ(Scarica(), zitti(0, {fine("1024 / 1536")}));
    EXPECT_EQ(NumBlocchi, 8);
    EXPECT_EQ(vista.Percentuali.back(), 50);
}

TEST_F(Scaricamento, MoreThanTheMemoryHoldsIsNotStored) {
    // A size that was garbled on the line, and every page of it there.
    prova::SerialeProva altra(macchina);
    finestra.Seriale = &altra;
    altra.PortOpen(true);
    std::string pagina(128, '\x02');
    altra.Risponde = [&](const std::string& frame) {
        pagina.back() = static_cast<char>(LongIn(frame, 3) % 256 == 0 ? 2 : 255 * 2);
        altra.Fra(1, "R\x0E" + pagina);
    };
    Scarico scarico(vista);
    scarico.BytesDati = 8300 * 256;
    scarico.ScaricaLog();
    EXPECT_EQ(NumBlocchi, 16384);
    EXPECT_EQ(BlocchiLog.size(), 16384u);
}

TEST_F(Scaricamento, PageChecksumCoversAllButItself) {
    const std::string mezza(128, '\x03');
    const std::string fine = std::string(127, '\x03') + "\xFD";  // 255 x 3 = 765
    EXPECT_TRUE(VerificaPagina(mezza, fine));
    for (const std::size_t i : {0u, 127u, 128u, 254u, 255u}) {
        std::string guasta = mezza + fine;
        guasta[i] = static_cast<char>(guasta[i] + 1);
        EXPECT_FALSE(VerificaPagina(guasta.substr(0, 128), guasta.substr(128))) << i;
    }
    EXPECT_FALSE(VerificaPagina("", ""));
    EXPECT_EQ(DecodificaRecordGiro("\xFF\xFF\xFF\xFF"s).Centesimi, 0xFFFFFF);
    EXPECT_EQ(DecodificaRecordGiro("\x7F\0\0\1"s).Centesimi, 0x7F000001);
    const std::string piena(127, '\xFF');  // 255 bytes of 0xFF: 65025, low byte 0x01
    EXPECT_TRUE(VerificaPagina(piena + '\xFF', piena + '\x01'));
}

namespace fs = std::filesystem;

struct Spento {};  // the machine, in the middle

/// Twelve pages, the seventh of them broken for good, and 40 laps; what comes goes to the disk.
class SuDisco : public Scaricamento {
 protected:
    SuDisco() {
        Pagine(12);
        Giri(40);
        Guasta("badsum:6");
    }
    /// A process that downloads, switched off behind so many pages (0: never); what its boxes said.
    std::size_t Conserva(std::size_t pagine = 0, std::deque<Answer> risposte = {}) {
        AzzeraBufferLog();
        EXPECT_TRUE(LinkPronto());
        prima = porta.Richieste().size();
        macchina.Mostrati.clear();
        macchina.BoxLiberi = risposte.empty();
        macchina.Risposte = std::move(risposte);
        vista = {};
        vista.AlPercento = [&](int) {
            if (vista.Percentuali.size() == pagine) throw Spento{};
        };
        try {
            DiarioScarico diario(CartellaScarichi());
            Scarico(vista, &diario).Esegui();
        } catch (const Spento&) {
        }
        ora += std::chrono::seconds(1);  // the machine's clock is too coarse
        if (!logInMemoria().File.empty()) fs::last_write_time(logInMemoria().File, ora);
        return macchina.Mostrati.size();
    }
    fs::path Tenuto(std::size_t n) const { return ScarichiTenuti(CartellaScarichi()).at(n).File; }
    std::string Tutto() const {
        const FileLog file = ComponiLog();
        return file.Csv + file.Txt + file.Tim;
    }
    fs::file_time_type ora = fs::file_time_type::clock::now() - std::chrono::hours(1);
};

TEST_F(SuDisco, BrokenOffAnywhereItGoesOnAndEndsAsAnUndisturbedOne) {
    EXPECT_TRUE(LinkPronto());
    macchina.BoxLiberi = true;
    Scarico(vista).Esegui();
    const std::string intero = Tutto();
    const std::vector<std::string> frame = porta.Richieste();
    Conserva();
    EXPECT_EQ(std::vector<std::string>(porta.Richieste().begin() + static_cast<long>(prima),
                                       porta.Richieste().end()),
              std::vector<std::string>(frame.begin() + 1, frame.end()))
        << "on the wire nothing tells that it is kept";
    for (const std::size_t pagina : {1u, 2u, 5u, 8u, 11u}) {
        for (const std::size_t taglio : {0u, 1u, 200u}) {
            fs::remove_all(CartellaScarichi());
            Conserva(pagina);
            std::string testo = prova::Leggi(Tenuto(0));
            testo.resize(testo.size() - taglio);
            if (pagina > 5) testo[testo.size() - 700] ^= 1;
            prova::Scrivi(Tenuto(0), testo);
            const bool offerto = pagina > 1 || taglio == 0;
            EXPECT_EQ(offerto ? Conserva(0, {Answer::Yes, Answer::Ok}) : Conserva(),
                      offerto ? 2u : 1u)
                << "the offer, and the broken page";
            EXPECT_EQ(Tutto(), intero) << pagina << ", " << taglio;
            const std::size_t chiesti = porta.Richieste().size() - prima;
            EXPECT_TRUE(pagina < 8 || chiesti + 1 < frame.size()) << "pages are read once";
            const auto letto = ApriScarico(logInMemoria().File);
            ASSERT_TRUE(letto && letto->Finito);
            MettiInMemoria(*letto);
            EXPECT_EQ(Tutto(), intero);
            EXPECT_TRUE(Conserva() == 1 && vista.Aperta) << "one that is whole is no offer";
        }
    }
}

TEST_F(SuDisco, AnotherRecordingBeginsAfreshAndSoDoesWhoDeclines) {
    for (const int pagina : {0, 7}) {  // the first one, the last that came
        Conserva(8);
        apparecchio.Dati = {};
        for (int b = 0; b < 24; ++b) {
            apparecchio.Dati.AggiungiBlocco(
                std::string(128, static_cast<char>(b < 2 * pagina ? b + 1 : b + 50 + pagina)));
        }
        Giri(40);
        Conserva();
        EXPECT_EQ(vista.Avvisi, std::vector<std::string>{Testo(Voce::ScaricoDaCapo)}) << pagina;
        EXPECT_EQ(BlocchiLog.at(0), apparecchio.Dati.Blocco(0));
        EXPECT_NE(Tenuto(0), Tenuto(1));
        fs::remove_all(CartellaScarichi());
        apparecchio.Dati = {};
        Pagine(12);
        Giri(40);
    }
    Conserva(5);
    Conserva(0, {Answer::Cancel});
    EXPECT_TRUE(BlocchiLog.empty() && !vista.Aperta);
    Conserva(0, {Answer::No, Answer::Ok});
    EXPECT_EQ(BlocchiLog.size(), 22u);
    Conserva(5);
    Giri(1);
    EXPECT_TRUE(Conserva() == 1 && vista.Aperta) << "it has driven on since";
}

TEST_F(SuDisco, WhatWasNeverConvertedIsOfferedOnce) {
    Conserva(8);
    ProgettoModificato = true;
    const fs::path soccorso = MettiDaParte().File;
    AzzeraBufferLog();
    macchina.Risposte = {Answer::Yes, Answer::Yes};
    macchina.Mostrati.clear();
    OffriSoccorso();
    EXPECT_EQ(macchina.Mostrati.size(), 2u) << "the project alone, and the download";
    EXPECT_EQ(BlocchiLog.size(), 14u);
    EXPECT_TRUE(finestra.Menu(Comando::SaveData) && logInMemoria().Parziale);
    ProgettoModificato = false;
    ConcludiSoccorso();
    EXPECT_FALSE(fs::exists(soccorso)) << "its project is saved, the log is not its own";
    EXPECT_EQ(MettiDaParte().File, Tenuto(0));
    Conserva(9, {Answer::Yes});
    Conserva(0, {Answer::No, Answer::Ok});
    macchina.Risposte = {Answer::Ok};
    PercorsoCsv = macchina.Cartella / "run.csv";
    ConvertiLog();
    EXPECT_EQ(Tenuto(1).extension(), kFineSalvato) << "it has nothing that was not converted";
    OffriSoccorso();
    Giri(1);
    Conserva(3);
    AzzeraBufferLog();
    macchina.BoxLiberi = false;
    macchina.Risposte = {Answer::No};
    OffriSoccorso();
    OffriSoccorso();
    EXPECT_TRUE(BlocchiLog.empty());
}

TEST_F(SuDisco, OnlyTheLastTenAreKept) {
    fs::create_directories(CartellaScarichi());
    for (int i = 0; i < 12; ++i) {
        const fs::path file = CartellaScarichi() / (std::to_string(i) + ".downloaded");
        prova::Scrivi(file, "x");
        fs::last_write_time(file, ora + std::chrono::hours(i + 1));
    }
    Conserva();
    EXPECT_EQ(ScarichiTenuti(CartellaScarichi()).size(), kScarichiTenuti);
    EXPECT_EQ(Tenuto(9), logInMemoria().File) << "the newest, whatever the clock says";
    EXPECT_EQ(Tenuto(8).filename(), "3.downloaded");
}

#ifndef _WIN32
TEST_F(SuDisco, WhereTheDiskTakesNothingItGoesOnInMemory) {
    const auto avviso = [](Voce motivo) {
        return std::vector<std::string>{Testo(Voce::ScaricoSenzaDisco) + " " + Testo(motivo)};
    };
    {
        const prova::SpazioFinito poco(1300);
        Conserva();
    }
    EXPECT_EQ(vista.Avvisi, avviso(Voce::MotivoPieno));
    EXPECT_EQ(BlocchiLog.size(), 22u);
    EXPECT_EQ(ScarichiTenuti(CartellaScarichi()).size(), 1u) << "it is tried once";
    EXPECT_EQ(ApriScarico(Tenuto(0))->Pagine.size(), 3u);
    EXPECT_EQ(ApriScarico(Tenuto(0))->Fine, fs::file_size(Tenuto(0))) << "none is cut";
    EXPECT_GT(fs::file_size(MettiDaParte().File), 22u * 128);
    macchina.BoxLiberi = false;
    macchina.Risposte = {Answer::No};  // and nothing else, for it has those three pages too
    OffriSoccorso();
    fs::remove_all(CartellaScarichi());
    prova::Scrivi(CartellaScarichi(), "no folder");
    Conserva();
    EXPECT_EQ(vista.Avvisi, avviso(Voce::MotivoSparito));
}
#endif

TEST(FileScarico, DamageCostsOnlyWhatItHits) {
    ScaricoSuDisco scarico;
    scarico.Quando = "a=b\r\n";
    scarico.Byte = 768;
    std::string testo = TestaScarico(scarico);
    std::vector<std::size_t> inizi;
    for (int p = 0; p < 3; ++p) {
        inizi.push_back(testo.size());
        testo += RecordPagina(256 * p, std::string(128, '\0'), std::string(128, '\0'));
    }
    inizi.push_back(testo.size());
    testo += RecordFine(3);
    EXPECT_EQ(testo.substr(inizi[1], 9), "LRP\0\0\1\0\1\0"s);
    EXPECT_EQ(LeggiScarico(testo)->Quando, "a=b\r\n");
    for (std::size_t i = 15; i < testo.size(); ++i) {
        std::string guasto = testo;
        guasto[i] ^= 0x40;
        const auto letto = LeggiScarico(guasto);
        ASSERT_EQ(letto->Pagine.size(), i >= inizi[0] && i < inizi[3] ? 2u : 3u) << i;
        ASSERT_EQ(letto->Finito, i < inizi[0]) << i;
        ASSERT_EQ(letto->Byte, i < inizi[0] ? 0 : 768) << i;
        const auto tagliato = LeggiScarico(testo.substr(0, i));
        ASSERT_EQ(tagliato.has_value(), i >= inizi[0]) << i;
        ASSERT_LE(tagliato ? tagliato->Fine : 0, i);
    }
    EXPECT_FALSE(LeggiScarico("Lapvane raw 2" + testo.substr(13)).has_value());
}

TEST(Andamento, TimeLeftFollowsThePaceAndForgetsAPause) {
    const prova::PlatformProva macchina;
    prova::CaricaTestiVeri(1);
    EXPECT_EQ(FraseResta({0, 1, 86, 0, 0}), "Left: about 90 s");
    EXPECT_EQ(FraseResta({0, 1, 91, 0, 0}), "Left: about 2 min");
    PassoScarico passo;
    std::int64_t ms = 0;
    for (int p = 0; p < 8; ++p) passo.Pagina(ms += 166);
    EXPECT_FALSE(passo.Secondi(2096384).has_value()) << "seven intervals";
    passo.Pagina(ms += 166);
    EXPECT_EQ(passo.Secondi(2096384), 1360);  // 8189 pages of 166 ms
    ms += 60000;
    for (int p = 0; p < 100; ++p) passo.Pagina(ms += 166);
    EXPECT_LT(passo.Secondi(2096384).value(), 1500);
}

}  // namespace
}  // namespace lapvane
