#include "shell/NumeroTesto.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "platform/ErroreRuntime.h"
#include "shell/CampoInParola.h"
#include "shell/TabellaDecimali.h"
#include "shell/Utility.h"

namespace lapvane {
namespace {

TEST(NumeroTesto, PlainTextIsTheShortestWithFifteenDigitsAtMost) {
    EXPECT_EQ(TestoNumero(0.1 + 0.2), "0.3");
    EXPECT_EQ(TestoNumero(-0.0), "0");
    EXPECT_EQ(TestoNumero(-12.5, ','), "-12,5");
    EXPECT_EQ(TestoNumero(123456789012345.0), "123456789012345");
    EXPECT_EQ(TestoNumero(1e20), "1E+20");
    EXPECT_EQ(TestoNumero(-2.5e-9), "-0.0000000025");
    EXPECT_EQ(TestoNumero(1e-16), "1E-16");
    EXPECT_EQ(TestoNumero(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(TestoNumeroConSpazio(0.5), " .5");
    EXPECT_EQ(TestoNumeroConSpazio(-0.5), "-.5");
    EXPECT_EQ(TestoNumeroConSpazio(12), " 12");
    EXPECT_THROW(TestoNumero(std::numeric_limits<double>::infinity()), ErroreRuntime);
}

TEST(NumeroTesto, PicturesRoundHalfAwayFromZeroOnFifteenDigits) {
    struct Caso {
        double Valore;
        const char* Figura;
        const char* Atteso;
    };
    const Caso casi[] = {
        {0, "0.0#", "0.0"},
        {1.005, "0.0#", "1.01"},  // stored below the half; fifteen digits see the half
        {-1.005, "0.0#", "-1.01"},
        {-0.004, "0.0#", "0.0"},
        {-0.005, "0.0#", "-0.01"},
        {9.999, "0.0#", "10.0"},
        {0.995, "0.0#", "1.0"},
        {12345.678, "0", "12346"},
        {2.5, "0", "3"},
        {0, "#", ""},
        {5, "0#", "05"},
        {-5, "0#", "-05"},
        {0.5, "#.0##", ".5"},
        {187.3456, "#.0##", "187.346"},
        {0, "#.0##", ".0"},
        {1.5, "#0.##", "1.5"},
        {120.45, "##0.0", "120.5"},
        {1.4999, "##0.000", "1.500"},
    };
    for (const Caso& caso : casi) {
        EXPECT_EQ(Formatta(caso.Valore, caso.Figura), caso.Atteso)
            << caso.Valore << " " << caso.Figura;
    }
    EXPECT_EQ(Formatta(1234.5, "0.0#", ','), "1234,5");
}

TEST(NumeroTesto, FastWritersAgreeWithThePictureEverywhere) {
    char spazio[400];
    const TabellaDecimali tabella('.');
    const auto veloce = [&](double v) {
        const std::string scritto(spazio, ScriviDecimali(spazio, v, '.'));
        EXPECT_EQ(std::string(spazio, tabella.Campo(spazio, v)), scritto + ";");
        return scritto;
    };
    std::mt19937_64 caso(20261124);
    std::uniform_real_distribution<double> valori(-2000, 2000);
    for (int i = 0; i < 20000; ++i) {
        const double v = valori(caso);
        ASSERT_EQ(veloce(v), Formatta(v, "0.0#")) << v;
        const double mezzo = std::round(v * 100) / 100 + 0.005;
        ASSERT_EQ(veloce(mezzo), Formatta(mezzo, "0.0#")) << mezzo;
    }
    for (const double v : {0.0, -0.0, 0.004, -0.004, 0.005, -0.005, 99.995, 1e7, 9999999.99,
                           1e9 + 0.5, 1e15, 1e300, -1e300}) {
        EXPECT_EQ(veloce(v), Formatta(v, "0.0#")) << v;
    }
    for (const std::uint32_t n : {0u, 9u, 1000u, 1007u, 65535u, 163840u}) {
        EXPECT_EQ(std::string(spazio, tabella.Intero(spazio, n)), std::to_string(n));
        EXPECT_EQ(std::string(spazio, tabella.Tempo(spazio, n)), veloce(n / 10.0) + ";");
    }
    EXPECT_EQ(std::string(spazio, ScriviIntero(spazio, std::numeric_limits<std::int64_t>::min())),
              "-9223372036854775808");
}

TEST(NumeroTesto, FieldsTakeAPointOrACommaAndAgreeWithTheLibrary) {
    const auto campo = [](const std::string& t) {
        return CampoNumerico(t.data(), t.data() + t.size());
    };
    EXPECT_EQ(campo("12,5"), 12.5);
    EXPECT_EQ(campo("-0.7"), -0.7);
    EXPECT_EQ(campo(" 3"), 3.0);
    EXPECT_EQ(campo(""), 0.0);
    EXPECT_EQ(campo("1,2,3"), 1.2);
    EXPECT_EQ(campo("1e999"), 0.0);
    EXPECT_EQ(campo("0,1234567890123456789"), 0.1234567890123456789);
    std::mt19937_64 caso(7);
    std::uniform_int_distribution<std::int64_t> mantisse(-99999999999999, 99999999999999);
    for (int i = 0; i < 5000; ++i) {
        const std::int64_t intero = mantisse(caso) >> (i % 40);
        const std::string t = std::to_string(intero) + "." + std::to_string(i % 1000);
        ASSERT_EQ(campo(t), std::strtod(t.c_str(), nullptr)) << t;
    }
}

TEST(NumeroTesto, AFieldInAWordIsTheFieldOrNone) {
    std::mt19937 caso(11);
    int presi = 0;
    for (int i = 0; i < 200000; ++i) {
        std::string t = "        ";  // what stands before it
        const std::size_t lungo = 1 + caso() % 9;
        const char* const quali = i % 2 == 0 ? "0123456789.," : "12345678.,-+ e:;*($/\r";
        const std::size_t quanti = std::strlen(quali);
        for (std::size_t k = 0; k < lungo; ++k) t += quali[caso() % quanti];
        const char* const fine = t.data() + t.size();
        double valore = -7.0;
        if (!CampoInParola(fine - lungo, fine, valore)) continue;
        ++presi;
        ASSERT_EQ(valore, CampoNumerico(fine - lungo, fine)) << t;
    }
    EXPECT_GT(presi, 50000);
}

TEST(NumeroTesto, ConversionsRoundTiesToEvenAndRefuseWhatDoesNotFit) {
    EXPECT_EQ(ConvertiInt16(2.5), 2);
    EXPECT_EQ(ConvertiInt16(-2.5), -2);
    EXPECT_THROW(ConvertiInt16(32767.5), ErroreRuntime);
    EXPECT_EQ(ConvertiInt32(-2147483648.0), -2147483647 - 1);
    EXPECT_THROW(ConvertiInt32(std::nan("")), ErroreRuntime);

    EXPECT_EQ(LeggiInt16("12,5"), 12);
    EXPECT_EQ(LeggiInt16("-32768"), -32768);
    EXPECT_FALSE(LeggiInt16("32768"));
    EXPECT_FALSE(LeggiInt16("7x"));
    EXPECT_EQ(LeggiIntero("+15 "), 15);
    EXPECT_FALSE(LeggiIntero("1.5"));
    EXPECT_FALSE(LeggiIntero("2147483648"));
    EXPECT_FALSE(LeggiIntero(" "));
    EXPECT_EQ(DueCifre(-5), "-05");
}

std::string Somma(std::string a, std::string b) {
    return SommaTempi(a, b);
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

}  // namespace
}  // namespace lapvane
