#include "instrument/Sessione.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>

#include "device/Codec.h"
#include "instrument/Traiettoria.h"
#include "instrument/Vettura.h"
#include "support/PlatformProva.h"

namespace lapvane::strumento {
namespace {

namespace fs = std::filesystem;

constexpr double kLunghezza = 3000.0;
constexpr std::size_t kPunti = 200;

/// A long straight, a hairpin and a few bends, in whole numbers as the delivered circuits have.
Circuito CircuitoDiProva(double lunghezza = kLunghezza) {
    std::vector<Punto> punti;
    for (std::size_t i = 0; i < kPunti; ++i) {
        const double giro = 2.0 * std::numbers::pi * static_cast<double>(i) / kPunti;
        const double raggio = 1.0 + 0.25 * std::cos(3.0 * giro + 0.8);
        punti.push_back({std::round(50.0 + 38.0 * raggio * std::cos(giro)),
                         std::round(50.0 + 22.0 * raggio * std::sin(giro))});
    }
    return Circuito(punti, lunghezza);
}

Memoria Registra(const ParametriSessione& parametri = {}, double lunghezza = kLunghezza) {
    Memoria memoria;
    RegistraSessione(CircuitoDiProva(lunghezza), parametri, memoria);
    return memoria;
}

std::int32_t TempoGiro(const Memoria& memoria, int giro) {
    const std::string blocco = memoria.LeggiGiri(static_cast<std::uint32_t>(giro / 32) * 128u);
    return LongIn(blocco, static_cast<std::size_t>(giro % 32) * 4 + 1) & 0xFFFFFF;
}

int Segnali(const Memoria& memoria, std::int32_t b) {
    return WordIn(memoria.Blocco(b), 124);
}

std::vector<std::int32_t> BlocchiConGiro(const Memoria& memoria) {
    std::vector<std::int32_t> blocchi;
    for (std::int32_t b = 0; b < memoria.Blocchi(); ++b) {
        if ((Segnali(memoria, b) & 2) != 0) blocchi.push_back(b);
    }
    return blocchi;
}

int Distanza(const Memoria& memoria, std::int32_t decimo) {
    return WordIn(memoria.Blocco(decimo / 10), static_cast<std::size_t>(decimo % 10) * 11 + 3);
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
}

TEST(Circuito, TheSharpestCornerIsFoundAndStraightsAreStraight) {
    // A long loop of two straights and two half circles of 10 points: straight 90, bend 10.
    std::vector<Punto> anello;
    for (int i = 0; i < 90; ++i) anello.push_back({static_cast<double>(i), 0.0});
    for (int i = 0; i < 10; ++i) {
        const double a = std::numbers::pi * (i + 0.5) / 10.0;
        anello.push_back({90.0 + 3.2 * std::sin(a), 3.2 - 3.2 * std::cos(a)});
    }
    for (int i = 0; i < 90; ++i) anello.push_back({90.0 - i, 6.4});
    for (int i = 0; i < 10; ++i) {
        const double a = std::numbers::pi * (i + 0.5) / 10.0;
        anello.push_back({-3.2 * std::sin(a), 3.2 + 3.2 * std::cos(a)});
    }
    const Circuito circuito(anello, 4000.0);
    const double stretta = circuito.CurvaStretta();
    EXPECT_TRUE(std::abs(stretta - 1900.0) < 120.0 || std::abs(stretta - 3900.0) < 120.0)
        << stretta;
    EXPECT_LT(circuito.Curvatura(900.0), 1e-4);
    EXPECT_GT(circuito.Curvatura(stretta), 1.0 / 120.0);
}

TEST(Circuito, FilesAreReadAndUnusableOnesRefused) {
    const prova::PlatformProva macchina;
    const fs::path cartella = macchina.Cartella;
    const auto scrivi = [&](const char* file, const std::string& testo) {
        std::ofstream(cartella / file, std::ios::binary) << testo;
    };
    std::string quadrato;
    for (int i = 0; i < 10; ++i) quadrato += "\"" + std::to_string(10 * i) + ",0\"\r\n";
    for (int i = 0; i < 10; ++i) quadrato += "100," + std::to_string(10 * i) + "\r\n";
    for (int i = 0; i < 10; ++i) quadrato += std::to_string(100 - 10 * i) + ",100\r\n";
    for (int i = 0; i < 10; ++i) quadrato += "0," + std::to_string(100 - 10 * i) + "\r\n";
    scrivi("B.trk", quadrato);
    scrivi("B.sec", "1234\r\n600\r\n634\r\n");
    scrivi("A.trk", quadrato);  // no .sec: not offered
    scrivi("C.trk", "1,1\r\n2,2\r\n");
    scrivi("C.sec", "2000\r\n");
    scrivi("D.trk", quadrato);
    scrivi("D.sec", "0\r\n");
    scrivi("E.trk", "5,5\n5,5\n5,5\n5,5\n5,5\n5,5\n5,5\n5,5\n5,5\n");
    scrivi("E.sec", "2000");

    EXPECT_EQ(Circuito::Leggi(cartella / "B.trk").Lunghezza(), 1234.0);
    EXPECT_EQ(ElencaCircuiti(cartella),
              (std::vector<fs::path>{cartella / "B.trk", cartella / "C.trk", cartella / "D.trk",
                                     cartella / "E.trk"}));
    EXPECT_TRUE(ElencaCircuiti(cartella / "none").empty());
    for (const auto& [file, ragione] :
         std::vector<std::pair<const char*, const char*>>{{"A.trk", "A.sec"},
                                                          {"C.trk", "too few"},
                                                          {"D.trk", "length"},
                                                          {"E.trk", "extent"},
                                                          {"F.trk", "F.trk"}}) {
        try {
            Circuito::Leggi(cartella / file);
            ADD_FAILURE() << file;
        } catch (const ErroreCircuito& errore) {
            EXPECT_NE(std::string(errore.what()).find(ragione), std::string::npos) << errore.what();
        }
    }
}

TEST(Traiettoria, TheCarKeepsToGripPowerAndBrakes) {
    const Circuito circuito = CircuitoDiProva();
    const Traiettoria traiettoria(circuito, 6);
    double massima = 0.0;
    double prima = traiettoria.Al(0.0).Posizione;
    for (int passo = 0; passo * 0.05 < traiettoria.Durata(); ++passo) {
        const double t = passo * 0.05;
        const Moto moto = traiettoria.Al(t);
        ASSERT_GE(moto.Posizione, prima - 1e-9) << t;
        // A step of 0.05 s at the speed of the moment, give or take an acceleration of 2 g.
        ASSERT_NEAR(moto.Posizione - prima, moto.Velocita * (t > 0.0 ? 0.05 : 0.0), 0.06) << t;
        prima = moto.Posizione;
        const double laterale = moto.Velocita * moto.Velocita * circuito.Curvatura(moto.Posizione);
        ASSERT_LT(laterale, 1.75 * 9.81) << t;
        ASSERT_LT(moto.Accelerazione, 1.0 * 9.81) << t;
        ASSERT_GT(moto.Accelerazione, -1.5 * 9.81) << t;
        massima = std::max(massima, moto.Velocita);
    }
    EXPECT_GT(massima, 45.0);
    EXPECT_LT(massima, 80.0);
    EXPECT_NEAR(traiettoria.Al(traiettoria.Passaggio(2)).Posizione, 2.0 * kLunghezza, 1e-6);
    EXPECT_EQ(traiettoria.Al(traiettoria.Durata() + 100.0).Velocita, 0.0);
    EXPECT_EQ(traiettoria.Al(1.0).Velocita, 0.0);
}

TEST(Sessione, LapMemoryAndLapMarksTellTheSameLaps) {
    const Memoria memoria = Registra();
    ASSERT_EQ(memoria.Giri(), 14);
    const std::string giri = memoria.LeggiGiri(0);
    EXPECT_EQ(ByteIn(giri, 1), 0x80);
    for (std::size_t giro = 1; giro < 14; ++giro) EXPECT_EQ(ByteIn(giri, 4 * giro + 1), 0);
    EXPECT_EQ(giri.substr(56), std::string(128 - 56, '\xFF'));

    const std::vector<std::int32_t> marche = BlocchiConGiro(memoria);
    ASSERT_EQ(marche.size(), 15u);
    EXPECT_GT(marche.front(), 10);
    EXPECT_LT(marche.back(), memoria.Blocchi() - 5);
    for (std::size_t k = 0; k + 1 < marche.size(); ++k) {
        const int durata = (marche[k + 1] - marche[k]) * 100;
        EXPECT_LT(std::abs(TempoGiro(memoria, static_cast<int>(k)) - durata), 100) << k;
    }
    // The sum over the session is as exact as one lap.
    int somma = 0;
    for (int giro = 0; giro < 14; ++giro) somma += TempoGiro(memoria, giro);
    EXPECT_LT(std::abs(somma - (marche.back() - marche.front()) * 100), 100);

    int numero = 0;
    for (std::int32_t b = 0; b < memoria.Blocchi(); ++b) {
        if ((Segnali(memoria, b) & 2) != 0) ++numero;
        ASSERT_EQ(Int16In(memoria.Blocco(b), 120), numero) << b;
    }
}

TEST(Sessione, DistanceCountsFromTheLine) {
    // The full log has crossings in every tenth of a second.
    const Memoria memoria = Registra({ModoSessione::Piena});
    const std::vector<std::int32_t> marche = BlocchiConGiro(memoria);
    EXPECT_EQ(Distanza(memoria, 0), 0);
    std::vector<std::int32_t> cadute;
    for (std::int32_t d = 1; d < memoria.Blocchi() * 10; ++d) {
        const int ora = Distanza(memoria, d);
        const int prima = Distanza(memoria, d - 1);
        if (ora >= prima) {
            ASSERT_LE(ora - prima, 9) << d;  // 90 m/s at most
            continue;
        }
        cadute.push_back(d);
        EXPECT_LE(ora, 8) << d;
        if (cadute.size() > 1) {
            EXPECT_NEAR(prima, kLunghezza, 9) << d;
        }
    }
    ASSERT_EQ(cadute.size(), marche.size());
    int dopo = 0;
    for (std::size_t k = 0; k < cadute.size(); ++k) {
        // The first sample behind the line follows a sample of the marked second.
        const std::int32_t decimi = cadute[k] - marche[k] * 10;
        EXPECT_GE(decimi, 1) << k;
        EXPECT_LE(decimi, 10) << k;
        if (decimi == 10) ++dopo;
    }
    EXPECT_GT(dopo, 0);
}

TEST(Sessione, AlarmLinesComeAndGo) {
    const Memoria memoria = Registra();
    const std::vector<std::int32_t> marche = BlocchiConGiro(memoria);
    const auto accesi = [&](int bit) {
        std::vector<std::int32_t> blocchi;
        for (std::int32_t b = 0; b < memoria.Blocchi(); ++b) {
            if ((Segnali(memoria, b) >> bit & 1) != 0) blocchi.push_back(b);
        }
        return blocchi;
    };
    // Oil pump and alternator: while the car stands cold at the start; the latter at the end again.
    const auto pompa = accesi(8);
    ASSERT_FALSE(pompa.empty());
    EXPECT_EQ(pompa.front(), 0);
    EXPECT_LT(pompa.back(), marche.front());
    const auto alternatore = accesi(9);
    EXPECT_EQ(alternatore.front(), 0);
    EXPECT_EQ(alternatore.back(), memoria.Blocchi() - 1);
    EXPECT_LT(alternatore.size(), 20u);
    // Hot water for a good while of the slow lap and a little longer, not at the end.
    const auto acqua = accesi(11);
    ASSERT_GE(acqua.size(), 20u);
    EXPECT_GT(acqua.front(), marche[4]);
    EXPECT_LT(acqua.back(), marche[8]);
    // Oil pressure: in one place of one lap, and low there in the slow readings as well.
    const auto olio = accesi(14);
    ASSERT_FALSE(olio.empty());
    EXPECT_LT(olio.size(), 12u);
    EXPECT_EQ(olio.back() - olio.front() + 1, static_cast<std::int32_t>(olio.size()));
    const auto minimo = std::min_element(olio.begin(), olio.end(), [&](auto a, auto b) {
        return ByteIn(memoria.Blocco(a), 115) < ByteIn(memoria.Blocco(b), 115);
    });
    EXPECT_LE(ByteIn(memoria.Blocco(*minimo), 115), 12);
    EXPECT_GE(ByteIn(memoria.Blocco(olio.front() - 3), 115), 30);
    // Fuel level: near the end.
    const auto livello = accesi(15);
    ASSERT_FALSE(livello.empty());
    EXPECT_GT(livello.front(), marche[9]);
    EXPECT_GT(livello.back(), marche[13]);
}

TEST(Sessione, TheSameParametersGiveTheSameBytes) {
    const Memoria una = Registra();
    const Memoria altra = Registra();
    ASSERT_EQ(una.ByteLog(), altra.ByteLog());
    for (std::int32_t b = 0; b < una.Blocchi(); ++b) ASSERT_EQ(una.Blocco(b), altra.Blocco(b)) << b;
    EXPECT_EQ(una.LeggiGiri(0), altra.LeggiGiri(0));
}

TEST(Sessione, MoreLapsThanTheLogHoldsAreInTheLapMemory) {
    const Memoria memoria = Registra({ModoSessione::Normale, 1100}, 600.0);
    EXPECT_EQ(memoria.Giri(), 1100);
    EXPECT_EQ(memoria.ByteLog(), 2096384);
    EXPECT_LT(BlocchiConGiro(memoria).size(), 1101u);
    EXPECT_GT(TempoGiro(memoria, 1099), 1000);
}

}  // namespace
}  // namespace lapvane::strumento
