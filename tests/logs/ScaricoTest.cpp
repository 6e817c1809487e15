// The download from the simulated instrument.
#include "logs/Scarico.h"

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "instrument/Circuito.h"
#include "instrument/Sessione.h"
#include "logs/BufferLog.h"
#include "support/SerialeProva.h"
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
    bool Aperta = true;
    bool OK = false;
    std::vector<std::string> Stati;
    std::vector<int> Percentuali;
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

TEST_F(Scaricamento, AWholeDriveArrivesAsItWasRecorded) {
    RegistraSessione(
        strumento::Circuito::Leggi(prova::CartellaDati() / "tracks" / "Fontebruna.trk"),
        {strumento::ModoSessione::Piena, 3}, apparecchio.Dati);
    EXPECT_TRUE(Scarica().empty());
    EXPECT_EQ(NumBlocchi, apparecchio.Dati.Blocchi());
    EXPECT_EQ(NumeroGiri, apparecchio.Dati.Giri());
    for (int b = 0; b < NumBlocchi; ++b) {
        ASSERT_EQ(BlocchiLog[static_cast<std::size_t>(b)], apparecchio.Dati.Blocco(b)) << b;
    }
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

}  // namespace
}  // namespace lapvane
