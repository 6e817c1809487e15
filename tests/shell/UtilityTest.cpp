#include "shell/Utility.h"

#include <gtest/gtest.h>

#include "platform/ErroreRuntime.h"

namespace lapvane {
namespace {

std::string Decimali(std::string testo, int fattore) {
    return FormattaDecimali(testo, fattore);
}

std::string Somma(std::string a, std::string b) {
    return SommaTempi(a, b);
}

TEST(Utility, DecimalsArePaddedNeverCut) {
    EXPECT_EQ(Decimali("2", 1000), "2.000");
    EXPECT_EQ(Decimali("2.", 1000), "2.000");
    EXPECT_EQ(Decimali("2.5", 1000), "2.500");
    EXPECT_EQ(Decimali(".5", 1000), "0.500");
    EXPECT_EQ(Decimali("", 1000), "0.000");
    EXPECT_EQ(Decimali("1.23456", 1000), "1.23456");
    EXPECT_EQ(Decimali("-.5", 1000), "-.500");
    EXPECT_EQ(Decimali("", 1), "0");
    EXPECT_EQ(Decimali(".5", 1), "0.5");
    EXPECT_EQ(Decimali(".5", 100), "0.50");
    EXPECT_EQ(Decimali("12", 10), "12.0");
    EXPECT_EQ(Decimali("1.23456", 100), "1.23456");
    EXPECT_EQ(Decimali("7", 5), "7");
    EXPECT_EQ(VirgolaInPunto("1,5,2"), "1.5.2");
}

TEST(Utility, SumOfTimesCarriesAndWraps) {
    EXPECT_EQ(Somma("00:00:59.60", "00:00:00.50"), "00:01:00.10");
    EXPECT_EQ(Somma("23:59:59.99", "00:00:00.01"), "00:00:00.00");
    EXPECT_EQ(Somma("00:01:23.45", "01:00:00.00"), "01:01:23.45");
    // One digit of hundredths is lengthened by a zero: .5 is .50.
    EXPECT_EQ(Somma("00:00:01.5", "00:00:00.00"), "00:00:01.50");
    EXPECT_THROW(Somma("00:00:0a.00", "00:00:00.00"), ErroreRuntime);
    for (const char* tempo : {"", "24:00:00.00", "00:60:00.00", "00:00:60.00", "00.00:00.00"}) {
        EXPECT_THROW(Somma(tempo, "00:00:00.00"), ErroreRuntime) << tempo;
    }
}

TEST(Utility, DivisionTruncatesAtEveryStepAndHidesTheHours) {
    EXPECT_EQ(DividiTempo("00:01:00.00", 7), "00:08.57");
    EXPECT_EQ(DividiTempo("00:20:30.40", 14), "01:27.88");
    EXPECT_EQ(DividiTempo("03:00:00.00", 2), "30:00.00");
    // The hundredths are read before the text is lengthened: ".5" gives 5 hundredths here.
    EXPECT_EQ(DividiTempo("00:00:01.5", 1), "00:01.05");
    EXPECT_THROW(DividiTempo("00:01:00.00", 0), ErroreRuntime);
}

TEST(Utility, HundredthsAsLapTime) {
    EXPECT_EQ(CentesimiInTempo(0), "00:00.00");
    EXPECT_EQ(CentesimiInTempo(8000), "01:20.00");
    EXPECT_EQ(CentesimiInTempo(8345), "01:23.45");
    EXPECT_EQ(CentesimiInTempo(600000), "100:00.00");
}

}  // namespace
}  // namespace lapvane
