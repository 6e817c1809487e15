#include "instrument/Sessione.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "device/Codec.h"
#include "instrument/Traiettoria.h"
#include "instrument/Vettura.h"

namespace lapvane::strumento {
namespace {

constexpr double kLunghezza = 3000.0;
constexpr std::size_t kPunti = 200;

/// A long straight, a hairpin and a few bends, in whole numbers as the delivered circuits have.
Circuito CircuitoDiProva() {
    std::vector<Punto> punti;
    for (std::size_t i = 0; i < kPunti; ++i) {
        const double giro = 2.0 * std::numbers::pi * static_cast<double>(i) / kPunti;
        const double raggio = 1.0 + 0.25 * std::cos(3.0 * giro + 0.8);
        punti.push_back({std::round(50.0 + 38.0 * raggio * std::cos(giro)),
                         std::round(50.0 + 22.0 * raggio * std::sin(giro))});
    }
    return Circuito(punti, kLunghezza);
}

Memoria Registra(const ParametriSessione& parametri = {}) {
    Memoria memoria;
    memoria.AggiungiBlocco(std::string(128, '\7'));  // of a session before
    RegistraSessione(CircuitoDiProva(), parametri, memoria);
    return memoria;
}

std::int32_t TempoGiro(const Memoria& memoria, int giro) {
    const std::string blocco = memoria.LeggiGiri(static_cast<std::uint32_t>(giro / 32) * 128u);
    return LongIn(blocco, static_cast<std::size_t>(giro % 32) * 4 + 1) & 0xFFFFFF;
}

/// The seconds in which a bit of the flag word is on.
std::vector<std::int32_t> Accesi(const Memoria& memoria, int bit) {
    std::vector<std::int32_t> blocchi;
    for (std::int32_t b = 0; b < memoria.Blocchi(); ++b) {
        if (BitAttivo(WordIn(memoria.Blocco(b), 124), bit)) blocchi.push_back(b);
    }
    return blocchi;
}

TEST(Circuito, CurvatureOfACircleIsItsRadiusAndTheScaleIsTheLength) {
    std::vector<Punto> cerchio;
    for (std::size_t i = 0; i < kPunti; ++i) {
        const double giro = 2.0 * std::numbers::pi * static_cast<double>(i) / kPunti;
        cerchio.push_back({7.0 * std::cos(giro), 7.0 * std::sin(giro)});
    }
    cerchio.push_back(cerchio.front());  // closed by a point of its own
    const Circuito circuito(cerchio, 2.0 * std::numbers::pi * 125.0);
    for (const double distanza : {0.0, 100.0, 784.9, 785.5, -3.0}) {
        EXPECT_NEAR(circuito.Curvatura(distanza), 1.0 / 125.0, 1e-5) << distanza;
    }
    EXPECT_THROW(Circuito(cerchio, 0.0), ErroreCircuito);
    EXPECT_THROW(Circuito(std::vector<Punto>(9), 1000.0), ErroreCircuito) << "no extent";
    EXPECT_THROW(Circuito({{1, 1}, {2, 2}}, 1000.0), ErroreCircuito) << "too few points";
}

TEST(Sessione, LapMemoryAndLapMarksTellTheSameLaps) {
    const Memoria memoria = Registra();
    ASSERT_EQ(memoria.Giri(), 14);
    EXPECT_EQ(memoria.LeggiGiri(0).substr(56), std::string(128 - 56, '\xFF'));
    const std::vector<std::int32_t> marche = Accesi(memoria, 1);
    ASSERT_EQ(marche.size(), 15u);
    std::vector<int> tempi;
    for (std::size_t k = 0; k < 14; ++k) {
        EXPECT_EQ(ByteIn(memoria.LeggiGiri(0), 4 * k + 1), k == 0 ? 0x80 : 0);
        tempi.push_back(TempoGiro(memoria, static_cast<int>(k)));
        EXPECT_LT(std::abs(tempi[k] - (marche[k + 1] - marche[k]) * 100), 100) << k;
    }
    const Traiettoria traiettoria(CircuitoDiProva(), 14);
    EXPECT_EQ(
        std::accumulate(tempi.begin(), tempi.end(), 0),
        std::floor(traiettoria.Passaggio(14) * 100) - std::floor(traiettoria.Passaggio(0) * 100));
    EXPECT_EQ(std::max_element(tempi.begin(), tempi.end()) - tempi.begin(), 5) << "traffic";
    EXPECT_EQ(std::min_element(tempi.begin(), tempi.end()) - tempi.begin(), 10) << "the best";
    int numero = 0;
    for (std::int32_t b = 0; b < memoria.Blocchi(); ++b) {
        numero += static_cast<int>(std::count(marche.begin(), marche.end(), b));
        ASSERT_EQ(Int16In(memoria.Blocco(b), 120), numero) << b;
    }
}

TEST(Sessione, DistanceCountsFromTheLine) {
    // The full log has crossings in every tenth of a second.
    const Memoria memoria = Registra({ModoSessione::Piena});
    const std::vector<std::int32_t> marche = Accesi(memoria, 1);
    std::size_t linea = 0;
    int dopo = 0;
    int prima = 0;
    int livello = 100;
    int soste = 0;
    for (std::int32_t d = 0; d < memoria.Blocchi() * 10; ++d) {
        const auto base = static_cast<std::size_t>(d % 10) * 11;
        const int ora = WordIn(memoria.Blocco(d / 10), base + 3);
        if (ora >= prima) {
            ASSERT_LE(ora - prima, 9) << d;  // 90 m/s at most
        } else {
            ASSERT_LE(ora, 8) << d;
            // The first sample behind the line follows a sample of the marked second.
            const std::int32_t decimi = d - marche.at(linea++) * 10;
            ASSERT_TRUE(decimi >= 1 && decimi <= 10) << d;
            dopo += decimi == 10 ? 1 : 0;
        }
        prima = ora;
        const int litri = ByteIn(memoria.Blocco(d / 10), 117);
        soste += litri > livello + 1 ? 1 : 0;
        livello = litri;
    }
    EXPECT_EQ(linea, marche.size());
    EXPECT_GT(dopo, 0);
    EXPECT_GT(soste, 3) << "it stops for fuel";
    EXPECT_EQ(Registra({ModoSessione::Vuota}).ByteLog(), 0);
}

TEST(Sessione, TheCarIsOneThatAnEngineerBelieves) {
    const Memoria memoria = Registra();
    const std::vector<std::int32_t> marche = Accesi(memoria, 1);
    int massimi[4] = {};
    int scalate = 0, prima = 0;
    for (std::int32_t d = 0; d < memoria.Blocchi() * 10; ++d) {
        const std::string_view blocco = memoria.Blocco(d / 10);
        const auto base = static_cast<std::size_t>(d % 10) * 11;
        const int marcia = ByteIn(blocco, base + 5), farfalla = ByteIn(blocco, base + 7);
        const int frenata = -SByteIn(blocco, base + 8), turbo = -SByteIn(blocco, base + 6);
        ASSERT_LT(WordIn(blocco, base + 1), 11700) << d;
        if (frenata > 5) {
            ASSERT_EQ(farfalla, 0) << d;
        }
        if (d < 20) {
            ASSERT_EQ(marcia, 0) << "it stands";
        }
        for (const auto& [k, valore] : {std::pair{0, marcia}, {1, frenata}, {2, turbo}}) {
            massimi[k] = std::max(massimi[k], valore);
        }
        massimi[3] = std::max(massimi[3], WordIn(blocco, 122));
        scalate += marcia != 0 && marcia < prima ? 1 : 0;
        prima = marcia;
    }
    EXPECT_GE(massimi[0], 5);
    EXPECT_GT(scalate, 30);
    EXPECT_EQ(prima, 0) << "it stands at the end";
    EXPECT_TRUE(massimi[1] >= 8 && massimi[1] <= 17) << massimi[1];  // tenths of g
    EXPECT_EQ(massimi[2], 6);                                        // -0.6 bar
    EXPECT_TRUE(massimi[3] > 160 && massimi[3] < 290) << massimi[3];
    EXPECT_LT(ByteIn(memoria.Blocco(memoria.Blocchi() - 1), 117), ByteIn(memoria.Blocco(0), 117));

    const std::int32_t fine = memoria.Blocchi() - 1;
    // A bit, the earliest and the latest second of its first and its last time, how often.
    using Allarme = std::tuple<int, int, int, int, int, std::size_t, std::size_t>;
    for (const auto& [bit, da, finoA, ancora, ultimo, almeno, alPiu] : {
             // Oil pump and alternator while the car stands cold; the latter at the end again.
             Allarme{8, 0, 0, 0, marche[0], 5, 60},
             {9, 0, 0, fine, fine, 4, 20},
             // Hot water for a good while of the slow lap and a little longer, not at the end.
             {11, marche[4], marche[6], marche[5], marche[8], 20, 200},
             // The tank is empty near the end: level, and pressure in the corners.
             {13, marche[9], fine, marche[11], fine, 1, 100},
             {15, marche[9], fine, marche[13], fine, 5, 600},
             // The oil surges in one corner of one lap.
             {14, marche[0], fine, marche[0], fine, 1, 12},
         }) {
        const auto accesi = Accesi(memoria, bit);
        ASSERT_TRUE(accesi.size() >= almeno && accesi.size() <= alPiu) << bit;
        EXPECT_TRUE(accesi.front() >= da && accesi.front() <= finoA) << bit;
        EXPECT_TRUE(accesi.back() >= ancora && accesi.back() <= ultimo) << bit;
    }
    EXPECT_NEAR(WordIn(memoria.Blocco(Accesi(memoria, 8).back()), 111), 650, 10);
    const std::int32_t olio = Accesi(memoria, 14).front();
    EXPECT_LE(ByteIn(memoria.Blocco(olio + 1), 115), 20) << "low in the slow readings as well";
}

}  // namespace
}  // namespace lapvane::strumento
