#include "instrument/Guasti.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "device/Codec.h"
#include "instrument/Strumento.h"

namespace lapvane::strumento {
namespace {

using namespace std::string_literals;

const std::string kSaluto = Frame(1);
const std::string kRispostaSaluto = Conferma(1);

class Difetti : public ::testing::Test {
 protected:
    Difetti() {
        for (int b = 0; b < 6; ++b) {
            strumento.Dati.AggiungiBlocco(std::string(128, static_cast<char>(b + 1)));
        }
    }
    /// The one entry for a request.
    Risposta Chiedi(const std::string& frame, std::int64_t ms = 0) {
        const auto risposte = strumento.Ricevi(frame, ms);
        EXPECT_EQ(risposte.size(), 1u);
        return risposte.empty() ? Risposta{} : risposte.front();
    }
    std::string Byte(const std::string& frame) { return Chiedi(frame).Byte; }
    std::string Blocco(std::int32_t b) { return Byte(Frame(14, CodificaLong(b * 128))); }
    void Aggiungi(const char* testo) { strumento.Difetti.Aggiungi(LeggiGuasto(testo)); }

    Strumento strumento;
};

TEST_F(Difetti, DropHitsTheNthFrameOfItsCommandAndNoOther) {
    Aggiungi("drop:14:3:2");
    const std::string intero = Byte(Frame(37));
    std::vector<bool> risposto;
    for (int i = 0; i < 6; ++i) {
        risposto.push_back(!Blocco(0).empty());
        EXPECT_EQ(Byte(kSaluto), kRispostaSaluto);  // does not count, is not hit
    }
    EXPECT_EQ(risposto, (std::vector<bool>{true, true, false, false, true, true}));
    EXPECT_EQ(Byte(Frame(37)).size(), intero.size());
}

TEST_F(Difetti, RepliesAreCutCorruptedAndLengthened) {
    Aggiungi("cut:3:1");
    EXPECT_EQ(Byte(kSaluto), kRispostaSaluto.substr(0, 3));
    EXPECT_EQ(Blocco(0).size(), 130u);
    strumento.Difetti.Togli();
    Aggiungi("cut:0:1");
    EXPECT_EQ(Byte(kSaluto), "");
    strumento.Difetti.Togli();
    Aggiungi("corrupt:3:14");
    EXPECT_EQ(Blocco(0), "R\x0E\x11"s + std::string(127, '\x01'));
    strumento.Difetti.Togli();
    Aggiungi("corrupt:200:14");  // behind the end: nothing to turn over
    EXPECT_EQ(Blocco(0), "R\x0E"s + std::string(128, '\x01'));
    strumento.Difetti.Togli();
    Aggiungi("extra:2");
    EXPECT_EQ(Byte(kSaluto), kRispostaSaluto + "??");
    EXPECT_EQ(Byte(Frame(2)).size(), 13u);
    strumento.Difetti.Togli();
    Aggiungi("noise:2:1");
    EXPECT_EQ(Byte(kSaluto), "\xFF\x03" + kRispostaSaluto);
    strumento.Difetti.Togli();
    Aggiungi("twice:1");
    EXPECT_EQ(Byte(kSaluto), kRispostaSaluto + kRispostaSaluto);
    strumento.Difetti.Togli();
    Aggiungi("order:1");
    EXPECT_EQ(Byte(kSaluto), "R\x02" + kRispostaSaluto.substr(2));
    strumento.Difetti.Togli();
    Aggiungi("extra:2");
    // Two faults on one reply, in their order.
    Aggiungi("cut:6:1");
    EXPECT_EQ(Byte(kSaluto), kRispostaSaluto + "?");
}

TEST_F(Difetti, ALateReplyHoldsUpTheNextOne) {
    Aggiungi("delay:6000:37:1");
    EXPECT_EQ(Chiedi(Frame(37), 1000).Quando, 7000);
    EXPECT_EQ(Chiedi(kSaluto, 6000).Quando, 7000);
    EXPECT_EQ(Chiedi(kSaluto, 8000).Quando, 8000);
    EXPECT_EQ(Chiedi(Frame(37), 9000).Quando, 9000);
}

TEST_F(Difetti, SilenceIsForGood) {
    Aggiungi("silent:14:2");
    EXPECT_EQ(Blocco(0).size(), 130u);
    EXPECT_EQ(Byte(kSaluto), kRispostaSaluto);
    EXPECT_EQ(Blocco(0), "");
    EXPECT_EQ(Byte(kSaluto), "");
    EXPECT_EQ(Byte(Frame(2)), "");
    strumento.Difetti.Togli();
    EXPECT_EQ(Byte(kSaluto), kRispostaSaluto);
}

TEST_F(Difetti, PagesAreSpoiledOneByOne) {
    std::vector<std::string> sani;
    for (int b = 0; b < 6; ++b) sani.push_back(Blocco(b));
    Aggiungi("badsum:1");
    Aggiungi("blank:2");
    for (int volta = 0; volta < 2; ++volta) {
        EXPECT_EQ(Blocco(0), sani[0]);
        EXPECT_EQ(Blocco(1), sani[1]);
        EXPECT_EQ(Blocco(2), sani[2]);
        const std::string spoiled = Blocco(3);
        EXPECT_EQ(spoiled.substr(0, 129), sani[3].substr(0, 129));
        EXPECT_NE(spoiled.back(), sani[3].back());
        EXPECT_EQ(Blocco(4), "R\x0E"s + std::string(128, '\xFF'));
        EXPECT_EQ(Blocco(5), "R\x0E"s + std::string(128, '\xFF'));
    }
    // Bad once, good when it is read again.
    strumento.Difetti.Togli();
    Aggiungi("badsum:0:14:1");
    EXPECT_NE(Blocco(1), sani[1]);
    EXPECT_EQ(Blocco(1), sani[1]);
    EXPECT_EQ(Byte(kSaluto), kRispostaSaluto);
}

TEST(LeggiGuasto, WrongTextsAreRefusedWithAReason) {
    for (const auto& [testo, ragione] :
         std::vector<std::pair<const char*, const char*>>{{"", "no such kind"},
                                                          {"explode", "no such kind"},
                                                          {"cut", "value is missing"},
                                                          {"cut:x", "the value"},
                                                          {"corrupt:0", "the value"},
                                                          {"delay:-5", "the value"},
                                                          {"noise:10001", "10000 at most"},
                                                          {"extra:2000000000", "10000 at most"},
                                                          {"drop:3", "no such command"},
                                                          {"drop:14:0", "the first frame"},
                                                          {"drop:14:1:-1", "the count"},
                                                          {"drop:14:1:1:1", "too many"}}) {
        try {
            LeggiGuasto(testo);
            ADD_FAILURE() << testo;
        } catch (const std::invalid_argument& errore) {
            EXPECT_NE(std::string(errore.what()).find(ragione), std::string::npos) << errore.what();
        }
    }
}

}  // namespace
}  // namespace lapvane::strumento
