#include "device/Codec.h"

#include <gtest/gtest.h>

#include "platform/ErroreRuntime.h"

namespace lapvane {
namespace {

using namespace std::string_literals;

TEST(Codec, EncodersCutAndPad) {
    EXPECT_EQ(ByteInEsa(0x1AF), "AF");
    EXPECT_EQ(CodificaByte(std::int16_t{-1}), "\xFF");
    EXPECT_EQ(CodificaByte(300), "\x2C");
    EXPECT_EQ(CodificaByte(""), "\0"s);
    EXPECT_EQ(CodificaWord("1205.5"), "\x04\xB6");
    EXPECT_EQ(CodificaWord(70000), "\x11\x70");
    EXPECT_EQ(CodificaWord(-2), "\xFF\xFE");
    EXPECT_EQ(CodificaLong(0x1FFD00), "\x00\x1F\xFD\x00"s);
    EXPECT_EQ(CodificaLong(std::int16_t{-1}), "\x00\x00\xFF\xFF"s);  // the width of its own type
    EXPECT_EQ(CodificaLong(std::int32_t{-1}), "\xFF\xFF\xFF\xFF");
}

TEST(Codec, ChecksumIsTheLowByteOfTheSum) {
    EXPECT_EQ(CalcolaChecksum(std::string(2, '\xFF')), "FE");
    EXPECT_THROW(CalcolaChecksum(std::string(129, '\xFF')), ErroreRuntime);  // 32895
    EXPECT_EQ(Frame(14, CodificaLong(256)), "H\x0E\0\0\1\0"s + "57");
    EXPECT_EQ(Conferma(1), "R\x01"s + "53*");
    EXPECT_TRUE(BitAttivo(std::int16_t{-32768}, 15));
    EXPECT_FALSE(BitAttivo(2, 0));
}

}  // namespace
}  // namespace lapvane
