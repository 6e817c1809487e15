#include "instrument/Protocollo.h"

#include <gtest/gtest.h>

#include "instrument/Strumento.h"

namespace lapvane::strumento {
namespace {

using namespace std::string_literals;

/// What the instrument sends for some bytes that arrive at once, all replies in a row.
std::string Chiedi(Strumento& strumento, const std::string& byte, std::int64_t ms = 0) {
    std::string testo;
    for (const Risposta& risposta : strumento.Ricevi(byte, ms)) testo += risposta.Byte;
    return testo;
}

const std::string kSaluto = "H\x01"s + "49";
const std::string kRispostaSaluto = "R\x01"s + "53*";

TEST(Protocollo, HandshakeAndIdentityAreAnsweredByteForByte) {
    Strumento strumento;
    EXPECT_EQ(Chiedi(strumento, kSaluto), kRispostaSaluto);
    EXPECT_EQ(Chiedi(strumento, "H\x02"s + "4A"), "R\x02LVX-4 1.08\0"s);
    Strumento corto("AB");
    EXPECT_EQ(Chiedi(corto, "H\x02"s + "4A"), "R\x02"s + "AB        \0"s);
    Strumento lungo("0123456789ABC");
    EXPECT_EQ(Chiedi(lungo, "H\x02"s + "4A"), "R\x02"s + "0123456789\0"s);
}

TEST(Protocollo, WrongFramesMeetSilence) {
    Strumento strumento;
    const std::string setup1 = Chiedi(strumento, "H\x13"s + "5B");
    // Wrong digit, lower case, two digits of another frame, "R" in place of "H", no such command.
    for (const std::string& frame :
         {"H\x01"s + "48", "H\x02"s + "4a", "H\x01"s + "4A", "R\x01"s + "53", "H\x03"s + "4B"}) {
        EXPECT_EQ(Chiedi(strumento, frame), "") << frame;
    }
    // A write with a wrong checksum (FB, not CB) leaves the record alone.
    const std::string scrittura =
        "H\x12\x01\x01\x00\x01\x00\xFF\x01\x1E\x00\x50"s + std::string(16, '\0');
    EXPECT_EQ(Chiedi(strumento, scrittura + "FB"), "");
    EXPECT_EQ(strumento.Lettore().Errati(), 4);
    EXPECT_EQ(Chiedi(strumento, "H\x13"s + "5B"), setup1);
    // A curve channel that the instrument does not have, read and written.
    EXPECT_EQ(Chiedi(strumento, "H\x19\x09"s + "6A"), "");
    EXPECT_EQ(Chiedi(strumento, "H\x18\x09"s + std::string(96, '\0') + "69"), "");
    EXPECT_EQ(Chiedi(strumento, kSaluto), kRispostaSaluto);
}

TEST(Protocollo, FramesAreFoundInRubbishInPiecesAndInARow) {
    Strumento strumento;
    EXPECT_EQ(Chiedi(strumento, "\xFFxyH\x47HHH"s + kSaluto + "\0\0"s), kRispostaSaluto);
    EXPECT_EQ(Chiedi(strumento, kSaluto + "??" + kSaluto), kRispostaSaluto + kRispostaSaluto);
    std::string ultimo;
    for (std::size_t i = 0; i < kSaluto.size(); ++i) {
        EXPECT_EQ(ultimo, "");
        ultimo = Chiedi(strumento, kSaluto.substr(i, 1), 10 + 100 * static_cast<std::int64_t>(i));
    }
    EXPECT_EQ(ultimo, kRispostaSaluto);
    // A wrong checksum hides no frame that begins inside the wrong one.
    EXPECT_EQ(Chiedi(strumento, "H\x0E\0\0"s + kSaluto), kRispostaSaluto);
}

TEST(Protocollo, AnIncompleteFrameIsGivenUpWhenTheLineIsQuiet) {
    Strumento strumento;
    const std::string mozzo = "H\x12\x01\x01\x00"s;  // five characters of a write of thirty
    EXPECT_EQ(Chiedi(strumento, mozzo, 1000), "");
    EXPECT_TRUE(strumento.Lettore().InAttesa());
    EXPECT_EQ(Chiedi(strumento, kSaluto, 1000 + LettoreFrame::kQuiete), kRispostaSaluto);
    // Without a pause the handshake counts as part of the write, until the line is quiet.
    EXPECT_EQ(Chiedi(strumento, mozzo, 5000), "");
    EXPECT_EQ(Chiedi(strumento, kSaluto, 5010), "");
    EXPECT_EQ(Chiedi(strumento, "", 5010 + LettoreFrame::kQuiete - 1), "");
    EXPECT_EQ(Chiedi(strumento, "", 5010 + LettoreFrame::kQuiete), kRispostaSaluto);
    EXPECT_FALSE(strumento.Lettore().InAttesa());
    // A lone "H" as well.
    EXPECT_EQ(Chiedi(strumento, "H", 9000), "");
    EXPECT_EQ(Chiedi(strumento, "", 9500), "");
    EXPECT_FALSE(strumento.Lettore().InAttesa());
}

/// A record's payload, the digits of its write and of its read, and how much of it comes back.
struct CasoRecord {
    const char* Nome;
    char Scrivi;
    char Leggi;
    std::string Dati;
    const char* ChecksumScrivi;
    const char* Conferma;
    const char* ChecksumLeggi;
    std::size_t Tornano;   // payload bytes in the reply
    std::size_t Riempiti;  // zeros behind them
};

TEST(Protocollo, EveryRecordComesBackAtItsPositions) {
    const std::vector<CasoRecord> casi = {
        {"setup 1", 0x12, 0x13, "\x01\x01\x00\x01\x00\xFF\x01\x1E\x00\x50"s + std::string(16, '\0'),
         "CB", "64*", "5B", 26, 2},
        {"setup 2", 0x1C, 0x1D,
         "\x05\x0A\x03\xE8\x03\x84\x03\x20\x00\x00\x7D\x00"s + std::string(10, '\0'), "85", "6E*",
         "65", 14, 0},
        {"sensors", 0x16, 0x17,
         "\x02\x04\x02\x4E\x01\x02\x01\x00\x01\x00\x01\x00\x01\x01\x01\x02\x02\x01\x01"s +
             std::string(15, '\0'),
         "C3", "68*", "5F", 19, 0},
        {"alarms", 0x14, 0x15,
         "\x04\xE2\x04\xB0\x09\xC4\x03\xFC\x00\x32\x00\x78\x25\x1C\x27\x10\x29\x04\x2A\xF8\x2C\xEC"
         "\x01\x00\x00\x03\x00\x00"s +
             std::string(20, '\0'),
         "4F", "66*", "5D", 29, 0},
    };
    Strumento strumento;
    for (const CasoRecord& caso : casi) {
        SCOPED_TRACE(caso.Nome);
        EXPECT_EQ(Chiedi(strumento, "H"s + caso.Scrivi + caso.Dati + caso.ChecksumScrivi),
                  "R"s + caso.Scrivi + caso.Conferma);
    }
    // Read only when all are written: no record lies over another.
    for (const CasoRecord& caso : casi) {
        SCOPED_TRACE(caso.Nome);
        EXPECT_EQ(Chiedi(strumento, "H"s + caso.Leggi + caso.ChecksumLeggi),
                  "R"s + caso.Leggi + caso.Dati.substr(0, caso.Tornano) +
                      std::string(caso.Riempiti, '\0'));
    }
}

TEST(Protocollo, ACurveComesBackOnePlaceEarlier) {
    Strumento strumento;
    const std::string curva3 = Chiedi(strumento, "H\x19\x03"s + "64");
    std::string dati = "\x00\x14\x00\x01\x00\x00\x00\x00\x00\x00\x00\x28\x00\x02"s;
    for (char i = 0; i < 20; ++i) dati += "\0"s + i;
    dati += "\0\0"s;
    for (int i = 0; i < 20; ++i) dati += "\x9C\x40"s;
    const std::string frame = "H\x18\x04"s + dati + "91";
    ASSERT_EQ(frame.size(), 101u);
    EXPECT_EQ(Chiedi(strumento, frame), "R\x18"s + "6A*");

    const std::string risposta = Chiedi(strumento, "H\x19\x04"s + "65");
    ASSERT_EQ(risposta.size(), 99u);
    EXPECT_EQ(risposta.substr(0, 2), "R\x19"s);
    EXPECT_EQ(risposta.substr(2, 2), "\x00\x14"s);              // points, position 3
    EXPECT_EQ(risposta.substr(16, 6), "\0\0\0\1\0\2"s);         // X from position 17
    EXPECT_EQ(risposta.substr(54, 4), "\x00\x13\x00\x00"s);     // last X, unused word
    EXPECT_EQ(risposta.substr(58, 4), "\x9C\x40\x9C\x40"s);     // Y from position 59
    EXPECT_EQ(risposta.substr(94), "\x9C\x40\x9C\x40\x00"s);    // to position 98, then filled
    EXPECT_EQ(Chiedi(strumento, "H\x19\x03"s + "64"), curva3);  // the neighbour is untouched
}

TEST(Protocollo, MemoriesAreReadInBlocksByAddress) {
    Strumento strumento;
    const std::string uno(128, '\x01');
    const std::string due(128, '\x02');
    ASSERT_TRUE(strumento.Dati.AggiungiBlocco(uno));
    ASSERT_TRUE(strumento.Dati.AggiungiBlocco(due));
    ASSERT_TRUE(strumento.Dati.AggiungiBlocco(due));
    strumento.Dati.AggiungiGiro(8000, true);
    strumento.Dati.AggiungiGiro(7990, false);
    strumento.Dati.AggiungiGiro(70000, false);
    const std::string vuoto(128, '\xFF');

    EXPECT_EQ(Chiedi(strumento, "H\x0E\0\0\0\0"s + "56"), "R\x0E"s + uno);
    // 128 times 1 and 127 times 2 add up to 382: the page ends with 0x7E.
    EXPECT_EQ(Chiedi(strumento, "H\x0E\0\0\0\x80"s + "D6"),
              "R\x0E"s + std::string(127, '\x02') + "\x7E");
    EXPECT_EQ(Chiedi(strumento, "H\x0E\0\0\x01\0"s + "57"), "R\x0E"s + due);
    EXPECT_EQ(Chiedi(strumento, "H\x0E\0\0\x01\x80"s + "D7"), "R\x0E"s + vuoto);
    EXPECT_EQ(Chiedi(strumento, "H\x0E\0\x1F\xFD\0"s + "72"), "R\x0E"s + vuoto);
    EXPECT_EQ(Chiedi(strumento, "H\x0E\xFF\xFF\xFF\xFF"s + "52"), "R\x0E"s + vuoto);

    EXPECT_EQ(Chiedi(strumento, "H\x26\0\0"s + "6E"),
              "R\x26\x80\x00\x1F\x40\x00\x00\x1F\x36\x00\x01\x11\x70"s + vuoto.substr(12));
    EXPECT_EQ(Chiedi(strumento, "H\x26\0\x80"s + "EE"), "R\x26"s + vuoto);
    EXPECT_EQ(Chiedi(strumento, "H\x26\xFF\x80"s + "ED"), "R\x26"s + vuoto);
}

TEST(Protocollo, LiveFrameHoldsSizesAndMovingValues) {
    Strumento strumento;
    std::string blocco(128, '\0');
    Metti(blocco, 1, "\x2A\xF8\x01\xF4\x03\xFA\x64\xF6"s);   // 11000 RPM 500 m gear 3 -0.6 100 -1.0
    Metti(blocco, 12, "\x2E\xE0\x02\x08\x04\x05\x32\x07"s);  // the second tenth
    Metti(blocco, 111, "\x03\xE8\x03\x84\x32\x23\x14\x8A\x93\x00\x07\x00\x64\x82\x02"s);
    strumento.Dati.AggiungiBlocco(blocco);
    Metti(blocco, 111, "\x03\xF2\x03\x70\x3C\x23\x12\x8A\x7E\x00\x07\x00\xC8\x00\x00"s);
    strumento.Dati.AggiungiBlocco(blocco);
    strumento.Dati.AggiungiGiro(8000, true);

    EXPECT_EQ(Chiedi(strumento, "H\x25"s + "6D", 5000),
              "R\x25"
              "\x82\x00\x2A\xF8\x01\xF4\x00\x64"  // alarms without the lap mark, RPM, metres, speed
              "\x03\xE8\x03\x84\x13\x88\x0D\xAC\x00\x8A\x00\x00"  // temperatures, bar, volts
              "\x00\x01\xC8\x03\xFA\x64\xF6\x05\xBE"  // laps, 20.0 l, gear, turbo, throttle, G, A/F
              "\x00\x00\x01\x00\x00"s);               // bytes recorded
    // Half a second into the second record the slow values lie half way; 1.6 s after the start.
    const std::string dopo = Chiedi(strumento, "H\x25"s + "6D", 6500);
    EXPECT_EQ(dopo.substr(2, 2), "\x00\x00"s);
    EXPECT_EQ(dopo.substr(8, 2), "\x00\x96"s);   // 150
    EXPECT_EQ(dopo.substr(10, 2), "\x03\xED"s);  // 100.5 degrees
    EXPECT_EQ(dopo.substr(14, 2), "\x15\x7C"s);  // 5.500 bar
    EXPECT_EQ(Chiedi(strumento, "H\x25"s + "6D", 6100).substr(4, 4), "\x2E\xE0\x02\x08"s);
    // Two seconds later the session begins again.
    EXPECT_EQ(Chiedi(strumento, "H\x25"s + "6D", 7000).substr(2, 2), "\x82\x00"s);

    strumento.Dati.Cancella();
    const std::string vuota = Chiedi(strumento, "H\x25"s + "6D", 9000);
    EXPECT_EQ(vuota.substr(22, 2), "\0\0"s);
    EXPECT_EQ(vuota.substr(31, 5), "\0\0\0\0\0"s);
}

TEST(Protocollo, AnalogueInputsAreEightWords) {
    Strumento strumento;
    strumento.AnalogiciFissi = {1, 2, 3, 1023, 512, 6, -1, 256};
    EXPECT_EQ(Chiedi(strumento, "H\x09"s + "51"),
              "R\x09\0\1\0\2\0\3\x03\xFF\x02\0\0\6\xFF\xFF\x01\0\0"s);
    strumento.AnalogiciFissi.reset();
    EXPECT_EQ(Chiedi(strumento, "H\x09"s + "51").size(), 19u);
}

TEST(Protocollo, TheFuelInputFollowsTheTank) {
    Strumento strumento;
    const auto livello = [&] { return Chiedi(strumento, "H\x09"s + "51").substr(10, 2); };
    strumento.Benzina = LeggiSerbatoio("0");
    EXPECT_EQ(livello(), "\0\x28"s);  // 40
    strumento.Benzina->Litri = 60;
    EXPECT_EQ(livello(), "\x03\xE8"s);  // 1000
    strumento.Benzina = LeggiSerbatoio("12,5:falling");
    EXPECT_EQ(livello(), "\x03\x0F"s);  // 1023 - 240
    EXPECT_EQ(Chiedi(strumento, "H\x25"s + "6D")[24], 125) << "tenths of a litre in the live frame";
    for (const char* testo : {"", "-1", "61", "10:rising", "10:", "nan", "full"}) {
        EXPECT_THROW(LeggiSerbatoio(testo), std::invalid_argument) << testo;
    }
}

TEST(Memoria, TheLogEndsAtItsCapacity) {
    Memoria memoria;
    const std::string blocco(128, '\x05');
    for (std::int32_t b = 0; b < 16378; ++b) ASSERT_TRUE(memoria.AggiungiBlocco(blocco));
    EXPECT_FALSE(memoria.AggiungiBlocco(blocco));
    EXPECT_EQ(memoria.ByteLog(), 2096384);
    EXPECT_EQ(memoria.LeggiLog(2096384), std::string(128, '\xFF'));
    EXPECT_EQ(memoria.LeggiLog(2096384 - 256), blocco);
}

}  // namespace
}  // namespace lapvane::strumento
