#include "instrument/SerialeStrumento.h"

#include <gtest/gtest.h>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "platform/ErroreRuntime.h"
#include "support/PlatformProva.h"

namespace lapvane::strumento {
namespace {

class Seriale : public ::testing::Test {
 protected:
    Strumento strumento;
    std::int64_t ora = 0;
    SerialeStrumento porta{strumento, [this] { return ora; }, [this](int ms) { ora += ms; }};
};

TEST_F(Seriale, InputTakesAtMostInputLenAndCountsTellWhatWaits) {
    porta.PortOpen(true);
    EXPECT_EQ(porta.Input(), "");
    porta.Output(Frame(1));
    EXPECT_EQ(porta.OutBufferCount(), 0u);
    EXPECT_EQ(porta.InBufferCount(), 5u);
    porta.InputLen(2);
    EXPECT_EQ(porta.Input(), Conferma(1).substr(0, 2));
    EXPECT_EQ(porta.InBufferCount(), 3u);
    porta.InputLen(0);
    EXPECT_EQ(porta.Input(), Conferma(1).substr(2));
    EXPECT_EQ(porta.InBufferCount(), 0u);
    // A frame may come in two writes.
    porta.Output(Frame(2).substr(0, 3));
    EXPECT_EQ(porta.InBufferCount(), 0u);
    porta.Output(Frame(2).substr(3));
    EXPECT_EQ(porta.InBufferCount(), 13u);
    EXPECT_EQ(porta.RichiesteDi(1), 1u);
    EXPECT_EQ(porta.Richieste().front(), Frame(1));
    EXPECT_EQ(porta.ByteRicevuti(), 18u);
}

TEST_F(Seriale, ClearingDropsWhatHasArrivedAndNotWhatIsComing) {
    porta.Ritardo = 100;
    porta.PortOpen(true);
    porta.Output(Frame(1));
    ora = 50;
    porta.Output(Frame(2));
    ora = 100;
    EXPECT_EQ(porta.InBufferCount(), 5u);
    porta.ClearInBuffer();
    EXPECT_EQ(porta.InBufferCount(), 0u);
    ora = 149;
    EXPECT_EQ(porta.InBufferCount(), 0u);
    ora = 150;
    EXPECT_EQ(porta.InBufferCount(), 13u);
    // What has arrived unseen is cleared as well, and a closed port keeps nothing.
    porta.Output(Frame(1));
    ora = 400;
    porta.ClearInBuffer();
    EXPECT_EQ(porta.InBufferCount(), 0u);
    porta.Output(Frame(1));
    porta.PortOpen(false);
    ora = 600;
    porta.PortOpen(true);
    EXPECT_EQ(porta.InBufferCount(), 0u);
}

TEST_F(Seriale, WaitingEndsWithTheArrivalOrTheTime) {
    porta.Ritardo = 30;
    porta.PortOpen(true);
    porta.Output(Frame(1));
    porta.WaitForInput(500);
    EXPECT_EQ(ora, 30);
    EXPECT_EQ(porta.InBufferCount(), 5u);
    // What waits already does not end the wait: a loop that needs more would spin.
    porta.WaitForInput(20);
    EXPECT_EQ(ora, 50);
    porta.PortOpen(false);
    porta.WaitForInput(20);
    EXPECT_EQ(ora, 50);
}

TEST_F(Seriale, ThePortVanishesAtTheChosenFrame) {
    porta.SparisciAlFrame = 3;
    porta.PortOpen(true);
    porta.Output(Frame(1));
    porta.Output(Frame(1));
    EXPECT_EQ(porta.InBufferCount(), 10u);
    porta.Output(Frame(2));
    EXPECT_FALSE(porta.PortOpen());
    EXPECT_EQ(porta.InBufferCount(), 0u);
    EXPECT_EQ(porta.Input(), "");
    EXPECT_THROW(porta.PortOpen(true), ErroreControllo);
    porta.Riappari();
    porta.PortOpen(true);
    EXPECT_EQ(porta.InBufferCount(), 0u);
    porta.Output(Frame(1));
    EXPECT_EQ(porta.Input(), Conferma(1));
    EXPECT_EQ(porta.Richieste().size(), 4u);
}

TEST(SerialeConIlProgramma, TheLinkFindsTheInstrumentAndOutlivesItsFaults) {
    prova::PlatformProva macchina;
    prova::PrincipaleProva finestra;
    Strumento strumento("PROVA 2.0");
    SerialeStrumento porta(
        strumento, [&] { return macchina.Orologio; }, [&](int ms) { macchina.Orologio += ms; });
    porta.Porta = 3;
    porta.Ritardo = 12;
    finestra.Seriale = &porta;

    ASSERT_TRUE(LinkPronto());
    EXPECT_EQ(porta.CommPort(), 3);
    VerificaComunicazione();
    EXPECT_EQ(finestra.Testo(Pannello::Identita), "PROVA 2.0 ");
    // An acknowledgement that comes short is waited for in vain, for its ten seconds.
    const std::string setup(26, '\0');
    strumento.Difetti.Aggiungi(LeggiGuasto("cut:3:18:1"));
    const std::int64_t inizio = macchina.Orologio;
    EXPECT_FALSE(ScriviFrameLento(Frame(18, setup), Conferma(18)));
    EXPECT_NEAR(static_cast<double>(macchina.Orologio - inizio), 10000.0, 10.0);
    EXPECT_TRUE(ScriviFrameLento(Frame(18, setup), Conferma(18)));
    // Characters too many at the handshake: the port is not the instrument's.
    ChiudiPorta();
    strumento.Difetti.Aggiungi(LeggiGuasto("extra:1"));
    EXPECT_FALSE(LinkPronto());
}

}  // namespace
}  // namespace lapvane::strumento
