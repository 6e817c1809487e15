#include "device/SerialComm.h"

#include "device/Codec.h"
#include "shell/Editor.h"
#include "support/SerialeProva.h"

namespace lapvane {
namespace {

using prova::PlatformProva;
using prova::PrincipaleProva;
using prova::SerialeProva;

const std::string kIdentita = "R\x02LVX-4 1.08\x7F";

class Collegamento : public ::testing::Test {
 protected:
    Collegamento() { finestra.Seriale = &porta; }

    /// An instrument on one port that answers handshake and identity query after `ms`.
    void Strumento(int numero, std::int64_t ms = 20) {
        porta.Porte = {{numero, true}};
        porta.Risponde = [this, numero, ms](const std::string& frame) {
            if (porta.CommPort() != numero) return;
            if (frame == Frame(1)) porta.Fra(ms, Conferma(1));
            if (frame == Frame(2)) porta.Fra(ms, kIdentita);
        };
    }
    void Aperta() {
        Strumento(1);
        ASSERT_TRUE(LinkPronto());
    }
    std::int64_t Durata(const std::function<void()>& azione) {
        const std::int64_t inizio = macchina.Orologio;
        azione();
        return macchina.Orologio - inizio;
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
    SerialeProva porta{macchina};
};

TEST_F(Collegamento, ScanFindsTheInstrumentAndAppliesTheSettingsInOrder) {
    Strumento(3);
    EXPECT_TRUE(LinkPronto());
    EXPECT_EQ(finestra.Storia,
              (std::vector<std::string>{"4:Connecting COM1...", "4:Connecting COM2...",
                                        "4:Connecting COM3...", "4:COM 3"}));
    EXPECT_EQ(finestra.Immagine(Pannello::Collegamento), 1);
    std::string diario;
    for (const std::string& riga : porta.Diario) diario += riga + " ";
    EXPECT_EQ(diario.find("Settings=19200,N,8,1 Handshaking=0 OutBufferCount=0 InBufferCount=0 "
                          "InBufferSize=300 OutBufferSize=300 InputLen=0 DTR=0 RTS=1 "
                          "OutBufferCount=0 InBufferCount=0 CommPort=1 "),
              0u);
    EXPECT_EQ(macchina.Puntatori, std::vector<Pointer>{Pointer::Normal});
    porta.Scritti.clear();
    EXPECT_TRUE(LinkPronto());
    EXPECT_TRUE(porta.Scritti.empty()) << "an open port is not scanned again";
}

TEST_F(Collegamento, ScanStopsAtTwentyAndLeavesThePortClosed) {
    Strumento(21);
    EXPECT_FALSE(LinkPronto());
    EXPECT_FALSE(porta.PortOpen());
    EXPECT_EQ(porta.CommPort(), 20);
    porta.Porte = {{5, true}};
    porta.Risponde = nullptr;
    EXPECT_EQ(Durata([] { EXPECT_FALSE(LinkPronto()); }), 2000);
    FaseComunicazione = 38;
    EXPECT_EQ(Durata([] { EXPECT_FALSE(LinkPronto()); }), 10000);
    EXPECT_FALSE(porta.PortOpen());
    porta.GuastoScrittura = true;  // errors of the control are ignored: no box
    EXPECT_FALSE(LinkPronto());
    // Where the poll rests nothing else would say it.
    EXPECT_EQ(finestra.Testo(Pannello::Collegamento), "NO COMMUNICATION");
    EXPECT_EQ(finestra.Immagine(Pannello::Collegamento), 2);
    EXPECT_FALSE(finestra.Acceso(Pannello::Identita));
}

TEST_F(Collegamento, HandshakeMustBeExact) {
    porta.Risponde = [this](const std::string&) { porta.Fra(10, Conferma(1) + "x"); };
    EXPECT_FALSE(LinkPronto());
}

TEST_F(Collegamento, ReplyWithinFiveSecondsCountsAndOneShortDoesNot) {
    Aperta();
    porta.Fra(100, "abc");
    porta.Fra(4900, "defgh");
    EXPECT_EQ(RiceviRisposta(8), "abcdefgh");
    porta.Fra(100, "abcdefg");
    const std::int64_t durata = Durata([] { EXPECT_EQ(RiceviRisposta(8), ""); });
    EXPECT_GE(durata, 5000);
    EXPECT_LT(durata, 5050);
    porta.Fra(10, "0123456789");
    EXPECT_EQ(RiceviRisposta(8), "01234567");
    EXPECT_EQ(porta.InBufferCount(), 2u);
    ScriviFrame(Frame(2));
    EXPECT_EQ(RiceviRisposta(13), kIdentita) << "the tail of an earlier reply was not discarded";
}

TEST_F(Collegamento, SlowWriteWaitsTenSecondsWithoutEvents) {
    Aperta();
    porta.Risponde = [this](const std::string&) { porta.Fra(9900, Conferma(20)); };
    const int prima = macchina.ChiamateEventi;
    EXPECT_TRUE(ScriviFrameLento(Frame(20), Conferma(20)));
    EXPECT_EQ(macchina.ChiamateEventi, prima);
    EXPECT_GT(porta.AtteseMute, 100);
    porta.Risponde = nullptr;
    EXPECT_EQ(Durata([] { EXPECT_FALSE(ScriviFrameLento(Frame(20), Conferma(20))); }), 10000);
    // The wait that lets events run is shorter, but not inside a transfer.
    EXPECT_EQ(Durata([] { EXPECT_FALSE(ScriviFrame(Frame(20), Conferma(20))); }), 2000);
    FaseComunicazione = 18;
    EXPECT_EQ(Durata([] { EXPECT_FALSE(ScriviFrame(Frame(20), Conferma(20))); }), 10000);
    porta.UscitaFerma = true;
    EXPECT_EQ(Durata([] { EXPECT_FALSE(ScriviFrame(Frame(20))); }), 3000);
}

TEST_F(Collegamento, FailuresAreToldAndSetTheFlag) {
    prova::CaricaTestiVeri(1);
    Aperta();
    porta.Risponde = nullptr;
    macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok};
    EXPECT_EQ(ChiediStrumento(Frame(37), 36), "");
    EXPECT_TRUE(ErroreComunicazione);
    EXPECT_EQ(macchina.Mostrati[0].Testo, Testo(Voce::StrumentoNonRisponde));
    EXPECT_EQ(macchina.Mostrati[0].Icona, Icon::None);
    EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
    porta.GuastoScrittura = true;
    EXPECT_FALSE(ScriviFrame(Frame(2)));
    porta.GuastoLettura = true;
    EXPECT_EQ(RiceviRisposta(5), "");
    EXPECT_EQ(macchina.Mostrati[1].Testo, Testo(Voce::ErroreScritturaDati));
    EXPECT_EQ(macchina.Mostrati[2].Testo, Testo(Voce::ErroreLetturaDati));
}

class EditorFinto : public Editor {
 public:
    std::string_view Nome() const override { return "frmSensori"; }
    void AbilitaStrumento(bool presente) override { Chiamate += presente ? '+' : '-'; }
    std::string Chiamate;
};

TEST_F(Collegamento, PollFollowsTheInstrumentAndTheEditorOnlyChanges) {
    EditorFinto editor;
    ImpostaFormAttiva(&editor);
    const auto sorveglia = [&](bool atteso, const std::string& chiamate) {
        ErroreComunicazione = true;
        tmrComm_Timer();
        EXPECT_FALSE(ErroreComunicazione) << "neither answer nor silence is a failed transfer";
        EXPECT_EQ(StrumentoPresente, atteso);
        EXPECT_EQ(finestra.Acceso(Pannello::Identita), atteso);
        EXPECT_EQ(finestra.Immagine(Pannello::Collegamento), atteso ? 1 : 2);
        EXPECT_EQ(finestra.Testo(Pannello::Collegamento), atteso ? "COM 2" : "NO COMMUNICATION");
        EXPECT_EQ(finestra.Menu(Comando::DownData), atteso);
        EXPECT_EQ(finestra.Pulsante(Comando::DownData), atteso);
        EXPECT_EQ(editor.Chiamate, chiamate);
    };
    Strumento(2);
    sorveglia(true, "+");
    EXPECT_EQ(finestra.Testo(Pannello::Identita), "LVX-4 1.08");
    EXPECT_EQ(collegamento().TempoMassimo[1], 10000);
    sorveglia(true, "+");
    porta.Risponde = nullptr;  // unplugged, the port still open
    sorveglia(false, "+-");
    Strumento(2);
    sorveglia(true, "+-+");
    porta.PortOpen(false);  // the port itself is gone
    porta.Porte.clear();
    tmrComm_Timer();
    EXPECT_FALSE(StrumentoPresente);
    EXPECT_EQ(editor.Chiamate, "+-+-");
    EXPECT_EQ(collegamento().TempoMassimo[1], 3000);
}

TEST_F(Collegamento, PollKeepsOffThePortDuringTransferAndAnalysis) {
    Strumento(1);
    finestra.Abilita(Comando::DownData, true);
    AnalisiInCorso = true;
    tmrComm_Timer();
    AnalisiInCorso = false;
    FaseComunicazione = 38;
    tmrComm_Timer();
    FaseComunicazione = 0;
    collegamento().Abbandonato = true;  // its window has closed, its wait has not returned yet
    tmrComm_Timer();
    EXPECT_TRUE(porta.Scritti.empty());
    EXPECT_TRUE(finestra.Menu(Comando::DownData));
}

TEST_F(Collegamento, SomebodyWithoutTimeForTheReplyKnowsNothingOfTheInstrument) {
    Strumento(1);
    tmrComm_Timer();
    porta.Risponde = nullptr;
    // Nothing but the patience ends the wait.
    macchina.Passo = 1000;
    std::int64_t da = macchina.Orologio;
    finestra.Rinuncia = [&](int pazienza) { return macchina.Orologio - da >= pazienza; };
    EXPECT_LT(Durata([] { tmrComm_Timer(); }), 400);
    EXPECT_TRUE(StrumentoPresente);
    EXPECT_EQ(finestra.Testo(Pannello::Collegamento), "COM 1");
    // Long silence is an answer, whoever waits; so is a port that has gone.
    da = macchina.Orologio + 1500;
    tmrComm_Timer();
    EXPECT_FALSE(StrumentoPresente);
    StrumentoPresente = true;
    porta.Risponde = [this](const std::string&) { porta.PortOpen(false); };
    tmrComm_Timer();
    EXPECT_FALSE(StrumentoPresente);
}

TEST_F(Collegamento, NobodyThereEndsAScanAndEveryWait) {
    for (int numero = 1; numero <= 20; ++numero) porta.Porte[numero] = true;
    std::int64_t inizio = macchina.Orologio;
    finestra.Rinuncia = [&](int) { return macchina.Orologio - inizio > 300; };
    EXPECT_LT(Durata([] { tmrComm_Timer(); }), 400);
    EXPECT_FALSE(porta.PortOpen());
    EXPECT_EQ(porta.CommPort(), 1) << "the next ones are not tried";
    finestra.Rinuncia = nullptr;
    // The same for a transfer whose window has closed; and what fails is told to nobody.
    FaseComunicazione = 38;
    inizio = macchina.Orologio;
    macchina.DuranteEventi = [&] {
        if (macchina.Orologio - inizio >= 100) collegamento().Abbandonato = true;
    };
    EXPECT_LT(Durata([] { EXPECT_FALSE(LinkPronto()); }), 150);
    porta.CommPort(1);
    porta.PortOpen(true);
    EXPECT_LT(Durata([] { EXPECT_EQ(ChiediStrumento(Frame(37), 36), ""); }), 50);
    EXPECT_TRUE(ErroreComunicazione);
    EXPECT_TRUE(macchina.Mostrati.empty());
}

}  // namespace
}  // namespace lapvane
