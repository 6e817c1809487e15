// The simulated instrument on its link: bytes in, bytes out, and what it gets wrong.
#include "instrument/Strumento.h"

#include "device/Codec.h"
#include "instrument/Sensori.h"
#include "instrument/SerialeStrumento.h"
#include "support/PlatformProva.h"

namespace lapvane::strumento {
namespace {

using namespace std::string_literals;

const std::string kSaluto = "H\x01"s + "49";
const std::string kRispostaSaluto = "R\x01"s + "53*";

class Apparecchio : public ::testing::Test {
 protected:
    /// What the instrument sends for some bytes that arrive at once, all replies in a row.
    std::string Chiedi(const std::string& byte, std::int64_t ms = 0) {
        std::string testo;
        for (const Risposta& risposta : strumento.Ricevi(byte, ms)) testo += risposta.Byte;
        return testo;
    }
    std::string Blocco(std::int32_t b) { return Chiedi(Frame(14, CodificaLong(b * 128))); }
    /// The faults in force; no others.
    void Guasta(const std::vector<const char*>& guasti) {
        strumento.Difetti.Togli();
        for (const char* guasto : guasti) strumento.Difetti.Aggiungi(LeggiGuasto(guasto));
    }
    Strumento strumento;
};

TEST_F(Apparecchio, FramesAreFoundInRubbishInPiecesAndInARow) {
    EXPECT_EQ(Chiedi("\xFFxyH\x47HHH"s + kSaluto + "??" + kSaluto),
              kRispostaSaluto + kRispostaSaluto);
    // Wrong digit, lower case, "R" in place of "H", no such command, no such curve.
    for (const std::string& frame :
         {"H\x01"s + "48", "H\x02"s + "4a", "R\x01"s + "53", "H\x03"s + "4B", Frame(25, "\x09"),
          Frame(24, "\x09" + std::string(96, '\0'))}) {
        EXPECT_EQ(Chiedi(frame), "") << frame;
    }
    // Five characters of a write of thirty hide what follows until the line is quiet.
    const std::string mozzo = "H\x12\x01\x01\x00"s;
    EXPECT_EQ(Chiedi(mozzo, 1000), "");
    EXPECT_EQ(Chiedi(kSaluto, 1000 + LettoreFrame::kQuiete), kRispostaSaluto);
    EXPECT_EQ(Chiedi(mozzo, 5000), "");
    EXPECT_EQ(Chiedi(kSaluto, 5010), "");
    EXPECT_EQ(Chiedi("", 5010 + LettoreFrame::kQuiete - 1), "");
    EXPECT_EQ(Chiedi("", 5010 + LettoreFrame::kQuiete), kRispostaSaluto);
    EXPECT_FALSE(strumento.Lettore().InAttesa());
    EXPECT_EQ(Chiedi("H\x02"s + "4A"), "R\x02LVX-4 1.08\0"s);
    strumento = Strumento("AB");
    EXPECT_EQ(Chiedi("H\x02"s + "4A"), "R\x02"s + "AB        \0"s);
}

TEST_F(Apparecchio, MemoriesComeBackFromTheirAddresses) {
    // The reply of a curve has no channel byte; the factory's is straight to 150.0 degrees.
    const std::string curva = Chiedi(Frame(25, "\x03"));
    EXPECT_EQ(curva.substr(2, 22),
              "\x00\x14\x00\x01\x00\x00\x00\x00\x00\x00\x00\x28\x00\x02\0\0\0\x35\0\x6B\0\xA1"s);
    EXPECT_EQ(curva.substr(94, 5), "\x05\x8D\x05\xDC\0"s);
    const std::string uno(128, '\x01'), vuoto(128, '\xFF');
    strumento.Dati.AggiungiBlocco(uno);
    strumento.Dati.AggiungiBlocco(std::string(128, '\x02'));
    // 128 times 1 and 127 times 2 add up to 382: the page ends with 0x7E.
    EXPECT_EQ(Blocco(1), "R\x0E" + std::string(127, '\x02') + "\x7E");
    for (const int b : {2, 512, -1}) EXPECT_EQ(Blocco(b), "R\x0E" + vuoto) << b;
    strumento.Dati.AggiungiGiro(8000, true);
    strumento.Dati.AggiungiGiro(70000, false);
    EXPECT_EQ(Chiedi("H\x26\0\0"s + "6E"),
              "R\x26\x80\x00\x1F\x40\x00\x01\x11\x70"s + vuoto.substr(8));
    while (strumento.Dati.AggiungiBlocco(uno)) ASSERT_LE(strumento.Dati.ByteLog(), 2096384);
    EXPECT_EQ(strumento.Dati.ByteLog(), 2096384);
    EXPECT_EQ(Blocco(512), "R\x0E" + uno) << "an address over 64 kB";
}

TEST_F(Apparecchio, LiveFrameHoldsSizesAndMovingValues) {
    std::string blocco(128, '\0');
    Metti(blocco, 1, "\x2A\xF8\x01\xF4\x03\xFA\x64\xF6"s);   // 11000 RPM 500 m gear 3 -0.6 100 -1.0
    Metti(blocco, 12, "\x2E\xE0\x02\x08\x04\x05\x32\x07"s);  // the second tenth
    Metti(blocco, 111, "\x03\xE8\x03\x84\x32\x23\x14\x8A\x93\x00\x07\x00\x64\x82\x02"s);
    strumento.Dati.AggiungiBlocco(blocco);
    Metti(blocco, 111, "\x03\xF2\x03\x70\x3C\x23\x12\x8A\x7E\x00\x07\x00\xC8\x00\x00"s);
    strumento.Dati.AggiungiBlocco(blocco);
    strumento.Dati.AggiungiGiro(8000, true);
    const auto vivi = [this](std::int64_t ms) { return Chiedi("H\x25"s + "6D", ms); };
    EXPECT_EQ(vivi(5000),
              "R\x25"
              "\x82\x00\x2A\xF8\x01\xF4\x00\x64"  // alarms without the lap mark, RPM, metres, speed
              "\x03\xE8\x03\x84\x13\x88\x0D\xAC\x00\x8A\x00\x00"  // temperatures, bar, volts
              "\x00\x01\xC8\x03\xFA\x64\xF6\x05\xBE"  // laps, 20.0 l, gear, turbo, throttle, G, A/F
              "\x00\x00\x01\x00\x00"s);               // bytes recorded
    // Half a second into the second record the slow values lie half way.
    const std::string dopo = vivi(6500);
    EXPECT_EQ(dopo.substr(8, 4), "\x00\x96\x03\xED"s);  // 150 km/h, 100.5 degrees
    EXPECT_EQ(dopo.substr(14, 2), "\x15\x7C"s);         // 5.500 bar
    EXPECT_EQ(vivi(6100).substr(4, 4), "\x2E\xE0\x02\x08"s);
    EXPECT_EQ(vivi(7000).substr(2, 2), "\x82\x00"s) << "the session begins again";
    // The fuel follows the tank, in the live frame and in its analogue input.
    const auto ingresso = [this] { return Chiedi("H\x09"s + "51").substr(10, 2); };
    strumento.Benzina = LeggiSerbatoio("60");
    EXPECT_EQ(ingresso(), "\x03\xE8"s);  // 40 + 16 a litre
    strumento.Benzina = LeggiSerbatoio("12,5:falling");
    EXPECT_EQ(ingresso(), "\x03\x0F"s);  // 1023 - 240
    EXPECT_EQ(vivi(0)[24], 125);
    strumento.AnalogiciFissi = {1, 2, 3, 1023, 512, 6, -1, 256};
    EXPECT_EQ(Chiedi("H\x09"s + "51"), "R\x09\0\1\0\2\0\3\x03\xFF\x02\0\0\6\xFF\xFF\x01\0\0"s);
    strumento.Dati.Cancella();
    EXPECT_EQ(vivi(9000).substr(31, 5), "\0\0\0\0\0"s);
}

TEST_F(Apparecchio, MisbehavesAsItIsTold) {
    struct Caso {
        std::vector<const char*> Guasti;
        std::string Risposta;
    };
    for (const Caso& caso : {Caso{{"cut:3:1"}, kRispostaSaluto.substr(0, 3)},
                             {{"corrupt:3:1"}, "R\x01" + "%3*"s},
                             {{"corrupt:9:1"}, kRispostaSaluto},
                             {{"extra:2"}, kRispostaSaluto + "??"},
                             {{"noise:2:1"}, "\xFF\x03" + kRispostaSaluto},
                             {{"twice:1"}, kRispostaSaluto + kRispostaSaluto},
                             {{"order:1"}, "R\x02" + "53*"s},
                             {{"extra:2", "cut:6:1"}, kRispostaSaluto + "?"}}) {
        Guasta(caso.Guasti);
        EXPECT_EQ(Chiedi(kSaluto), caso.Risposta) << caso.Guasti[0];
        EXPECT_EQ(Chiedi(Frame(2)).size(), 13u) << "another command";
    }
    Guasta({"drop:1:2", "drop:1:4:2"});
    std::string risposto;
    for (int i = 0; i < 6; ++i) risposto += Chiedi(kSaluto).empty() ? '-' : '+';
    EXPECT_EQ(risposto, "+-+--+");
    Guasta({"silent:2:1"});
    EXPECT_EQ(Chiedi(Frame(2)), "");
    EXPECT_EQ(Chiedi(kSaluto), "") << "for good";
    Guasta({"delay:6000:37:1"});
    std::vector<std::int64_t> quando;
    for (const auto& [frame, ms] : {std::pair{Frame(37), 1000}, {Frame(1), 6000}, {Frame(1), 8000}})
        quando.push_back(strumento.Ricevi(frame, ms).at(0).Quando);
    EXPECT_EQ(quando, (std::vector<std::int64_t>{7000, 7000, 8000})) << "it holds up the next one";

    for (int b = 0; b < 6; ++b) strumento.Dati.AggiungiBlocco(std::string(128, '\1'));
    Guasta({});
    const std::string sano = Blocco(3);
    Guasta({"badsum:1", "blank:2"});
    for (const int b : {0, 1, 2}) EXPECT_EQ(Blocco(b).back(), b == 1 ? sano.back() : '\1') << b;
    EXPECT_EQ(Blocco(3).substr(0, 129), sano.substr(0, 129));
    EXPECT_NE(Blocco(3).back(), sano.back());
    for (const int b : {4, 5}) EXPECT_EQ(Blocco(b), "R\x0E" + std::string(128, '\xFF')) << b;
}

TEST_F(Apparecchio, WrongWordsAreRefused) {
    for (const char* guasto : {"explode", "cut", "corrupt:0", "noise:10001", "drop:3", "drop:14:0",
                               "drop:14:1:-1", "drop:14:1:1:1"}) {
        EXPECT_THROW(LeggiGuasto(guasto), std::invalid_argument) << guasto;
    }
    for (const char* litri : {"", "-1", "61", "10:rising", "10:", "nan", "full"}) {
        EXPECT_THROW(LeggiSerbatoio(litri), std::invalid_argument) << litri;
    }
}

TEST_F(Apparecchio, TheControlHoldsBackWhatIsStillOnItsWay) {
    std::int64_t ora = 0;
    SerialeStrumento porta{strumento, [&] { return ora; }, [&](int ms) { ora += ms; }};
    porta.Ritardo = 100;
    EXPECT_THROW(porta.Output(Frame(1)), ErroreControllo);
    porta.PortOpen(true);
    porta.Output(Frame(1).substr(0, 3));  // a frame may come in two writes
    porta.Output(Frame(1).substr(3));
    ora = 50;
    porta.Output(Frame(2));
    ora = 100;
    EXPECT_EQ(porta.InBufferCount(), 5u);
    porta.InputLen(2);
    EXPECT_EQ(porta.Input(), kRispostaSaluto.substr(0, 2));
    porta.ClearInBuffer();
    EXPECT_EQ(porta.InBufferCount(), 0u);
    porta.WaitForInput(500);
    EXPECT_EQ(ora, 150);
    EXPECT_EQ(porta.InBufferCount(), 13u);
    porta.WaitForInput(20);  // what waits already does not end the wait
    EXPECT_EQ(ora, 170);
    porta.Output(Frame(1));
    porta.PortOpen(false);
    ora = 600;
    porta.PortOpen(true);
    EXPECT_EQ(porta.InBufferCount(), 0u) << "what comes while it is closed is lost";
    porta.SparisciAlFrame = porta.Richieste().size() + 1;
    porta.Output(Frame(2));
    EXPECT_FALSE(porta.PortOpen());
    EXPECT_THROW(porta.PortOpen(true), ErroreControllo);
    porta.Riappari();
    porta.CommPort(2);
    EXPECT_THROW(porta.PortOpen(true), ErroreControllo);
}

TEST_F(Apparecchio, SensorsOfTheLibraryAreMounted) {
    const prova::PlatformProva macchina;
    const auto cartella = macchina.Cartella / "sensors";
    std::filesystem::copy(prova::CartellaDati() / "sensors", cartella);
    EXPECT_EQ(MontaSensori(cartella, strumento.Dati), 9);
    // "NTC olio M10": 48 Bit at 171.0 C; "Lambda 0-5 V" in hundredths.
    EXPECT_EQ(Int16In(strumento.Dati.Curva(0), 15), 48);
    EXPECT_EQ(Int16In(strumento.Dati.Curva(0), 57), 1710);
    EXPECT_GT(Int16In(strumento.Dati.Curva(6), 95), 1000);
    std::filesystem::remove(cartella / "NTC olio M10.sns");
    const std::string prima = strumento.Dati.Curva(1);
    std::string corto = "ZEVSensor\r\nPressione\r\nPressione 0-10 bar\r\n20\r\n";
    for (int i = 0; i < 39; ++i) corto += "1\r\n";
    prova::Scrivi(cartella / "Pressione 0-10 bar.sns", corto);
    EXPECT_EQ(MontaSensori(cartella, strumento.Dati), 7);
    EXPECT_EQ(strumento.Dati.Curva(1), prima);
}

}  // namespace
}  // namespace lapvane::strumento
