#include "analysis/compare/Allineamento.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "analysis/Giri.h"
#include "analysis/LettoreDati.h"
#include "analysis/TabellaArray.h"
#include "analysis/compare/ConfrontoGiri.h"
#include "device/Codec.h"
#include "instrument/Circuito.h"
#include "instrument/Memoria.h"
#include "instrument/Sessione.h"
#include "instrument/Traiettoria.h"
#include "logs/Conversione.h"
#include "support/Cartelle.h"

namespace lapvane::prova {
namespace {

/// A log made by formula: the car's place is known at every moment. Lap `k` (from 0) ends at
/// crossing `k + 1`; before crossing 0 the car is on its way to the line.
struct Corsa {
    std::vector<double> Distanza, Velocita;
    std::vector<GiroDelLog> Giri;
    std::vector<double> Passaggi;
    std::function<double(double)> Posto;  // m since crossing 0, by s of the log's clock

    CorsaLog Log() const { return {Distanza, Velocita, Giri}; }
};

constexpr double kLunghezza = 2000.0;

Corsa Formula(double scala, double istante, int giri = 6) {
    Corsa corsa;
    // 45 m/s and two waves, which do not end with a lap: no lap is like another.
    const auto via = [](double t) {
        return 45.0 * t + 60.0 * std::sin(t / 4.0) + 25.0 * std::sin(t / 1.9 + 1.0) - 345.6;
    };
    const auto velocita = [](double t) {
        return 45.0 + 15.0 * std::cos(t / 4.0) + 25.0 / 1.9 * std::cos(t / 1.9 + 1.0);
    };
    corsa.Posto = via;
    for (int k = 0; k <= giri; ++k) {
        double da = 0.0, a = 1000.0;
        for (int i = 0; i < 60; ++i) {
            const double t = (da + a) / 2.0;
            (via(t) < k * kLunghezza ? da : a) = t;
        }
        corsa.Passaggi.push_back(da);
    }
    const int record = static_cast<int>(corsa.Passaggi.back()) + 4;
    int passati = 0;
    for (int b = 0; b < record; ++b) {
        const int prima = passati;
        for (int i = 0; i < 10; ++i) {
            const double t = b + i / 10.0;
            while (passati <= giri && corsa.Passaggi[static_cast<std::size_t>(passati)] <= t)
                ++passati;
            corsa.Distanza.push_back(
                std::floor(passati == 0 ? via(t) + 345.6 : via(t) - (passati - 1) * kLunghezza));
            // A record's line begins with the reading of the one before.
            const double ora = std::round(velocita(b - 1 + istante) / scala);
            const double poi = std::round(velocita(b + istante) / scala);
            corsa.Velocita.push_back(ora + (poi - ora) * i / 10.0);
        }
        while (passati <= giri && corsa.Passaggi[static_cast<std::size_t>(passati)] < b + 1.0)
            ++passati;
        if (passati == prima) continue;
        for (int i = 0; i < 10; ++i) {
            double& d = corsa.Distanza[static_cast<std::size_t>(10 * b + i)];
            if (d > 30.0) d = 0.0;  // what the conversion makes of the rest of the lap before
        }
        if (!corsa.Giri.empty()) corsa.Giri.back().UltimaRiga = 10 * b - 1;
        if (passati > giri) continue;
        const auto k = static_cast<std::size_t>(passati - 1);
        const auto centesimi = [&](std::size_t n) {
            return static_cast<std::int32_t>(std::floor(corsa.Passaggi[n] * 100.0));
        };
        corsa.Giri.push_back({passati + 1, 10 * b, 0, centesimi(k + 1) - centesimi(k)});
    }
    return corsa;
}

struct Errore {
    double Medio = 0.0;  // root mean square, s
    double Massimo = 0.0;
};

/// Of the gained or lost time of two laps, against moments that `vero` gives for metres of a lap.
Errore ErroreDi(const GiroAllineato& giro, const GiroAllineato& riferimento, double lunghezza,
                const std::function<double(double)>& veroGiro,
                const std::function<double(double)>& veroRiferimento) {
    Errore errore;
    int numero = 0;
    for (double metri = 5.0; metri < lunghezza - 1.0; metri += 5.0, ++numero) {
        const double detto = Distacco(giro, riferimento, metri / lunghezza * riferimento.Lunghezza);
        const double scarto = detto - (veroGiro(metri) - veroRiferimento(metri));
        errore.Medio += scarto * scarto;
        errore.Massimo = std::max(errore.Massimo, std::fabs(scarto));
    }
    errore.Medio = std::sqrt(errore.Medio / numero);
    return errore;
}

/// Seconds between two moments at which a place that grows is reached.
double Quando(const std::function<double(double)>& posto, double metri, double da, double a) {
    for (int i = 0; i < 50; ++i) {
        const double t = (da + a) / 2.0;
        (posto(t) > metri ? a : da) = t;
    }
    return da;
}

TEST(Allineamento, GainedTimeOfAFormulaIsKnownToHundredths) {
    struct Caso {
        const char* Nome;
        double Scala;    // m/s of one unit of the speed; 0: none is logged
        double Istante;  // s, of the reading
        double Medio, Massimo;
    };
    const Caso casi[] = {{"km/h at the end", 1.0 / 3.6, 0.9, 0.015, 0.05},
                         {"mph at the start", 0.44704, 0.2, 0.015, 0.05},
                         {"distance alone", 0.0, 0.0, 0.02, 0.06}};
    for (const Caso& caso : casi) {
        Corsa corsa = Formula(caso.Scala > 0.0 ? caso.Scala : 1.0, caso.Istante);
        if (caso.Scala <= 0.0) corsa.Velocita.clear();
        const Allineamento allineati(corsa.Log());
        EXPECT_NEAR(allineati.Lunghezza(), kLunghezza, 1.0) << caso.Nome;
        EXPECT_NEAR(allineati.ScalaVelocita(), caso.Scala, 0.001) << caso.Nome;
        EXPECT_NEAR(allineati.IstanteVelocita(), caso.Istante, 0.04) << caso.Nome;
        std::vector<GiroAllineato> giri;
        for (int i = 0; i < allineati.NumGiri(); ++i) giri.push_back(allineati.Allinea(i).value());
        ASSERT_EQ(giri.size(), 6u);
        for (std::size_t i = 0; i < giri.size(); ++i) {
            EXPECT_NEAR(giri[i].Inizio, corsa.Passaggi[i], 0.012) << caso.Nome << i;
            const auto vero = [&](std::size_t k) {
                return [&corsa, k](double metri) {
                    return Quando(corsa.Posto, static_cast<double>(k) * kLunghezza + metri,
                                  corsa.Passaggi[k], corsa.Passaggi[k + 1]) -
                           corsa.Passaggi[k];
                };
            };
            const Errore errore = ErroreDi(giri[i], giri[2], kLunghezza, vero(i), vero(2));
            EXPECT_LE(errore.Medio, caso.Medio) << caso.Nome << i;
            EXPECT_LE(errore.Massimo, caso.Massimo) << caso.Nome << i;
            // At its end it is the official difference, at its start nothing.
            EXPECT_NEAR(Distacco(giri[i], giri[2], giri[2].Lunghezza),
                        (corsa.Giri[i].Centesimi - corsa.Giri[2].Centesimi) / 100.0, 1e-9);
            EXPECT_EQ(Distacco(giri[i], giri[2], 0.0), 0.0);
        }
    }
}

TEST(Allineamento, GainedTimeOfTheSimulatedCarIsKnownToHundredths) {
    using namespace strumento;
    constexpr int kGiri = 14;
    for (const char* nome : {"Valdoro", "Fontebruna", "Rocca Serena"}) {
        const Circuito circuito =
            Circuito::Leggi(CartellaDati() / "tracks" / (std::string(nome) + ".trk"));
        const Traiettoria vera(circuito, kGiri);
        Memoria memoria;
        RegistraSessione(circuito, {ModoSessione::Normale, kGiri}, memoria);
        std::vector<std::string> blocchi;
        for (std::int32_t b = 0; b < memoria.Blocchi(); ++b)
            blocchi.emplace_back(memoria.Blocco(b));
        std::string csv = "titles\r\n", txt = "titles\r\n";
        ConvertiBlocchi(blocchi, blocchi.size(), '.', csv, txt);
        LettoreDati dati(csv), laterali(txt);
        TabellaArray tabella;
        tabella.Alloca(16, kColonnaGiro, dati.NumeroRecord());
        const std::int32_t tutte = dati.NumeroRecord();
        tabella.Leggi(dati, Piano::Dati, 0, tutte);
        tabella.Leggi(laterali, Piano::Laterale, 0, tutte);
        const RigheGiri righe = CercaGiri(tabella);
        CorsaLog corsa{tabella.Colonna(2), tabella.Colonna(4), {}};
        for (int k = 0; k < kGiri; ++k) {
            const std::string record = memoria.LeggiGiri(static_cast<std::uint32_t>(4 * k));
            corsa.Giri.push_back(
                {k + 2, righe.Inizio[k + 2], righe.Fine[k + 2], LongIn(record, 1) & 0xFFFFFF});
        }
        const Allineamento allineati(corsa);
        EXPECT_NEAR(allineati.IstanteVelocita(), 0.9, 0.02) << nome;
        const int meglio = vera.GiroMigliore();
        const GiroAllineato riferimento = allineati.Allinea(meglio).value();
        const auto vero = [&](int k) {
            return [&vera, k](double metri) {
                return Quando([&](double t) { return vera.Al(t).Posizione; },
                              k * vera.Lunghezza() + metri, vera.Passaggio(k),
                              vera.Passaggio(k + 1)) -
                       vera.Passaggio(k);
            };
        };
        for (int k = 0; k < kGiri; ++k) {
            const GiroAllineato giro = allineati.Allinea(k).value();
            const Errore errore =
                ErroreDi(giro, riferimento, vera.Lunghezza(), vero(k), vero(meglio));
            EXPECT_LE(errore.Medio, 0.015) << nome << k;
            EXPECT_LE(errore.Massimo, 0.05) << nome << k;
        }
    }
}

TEST(Allineamento, WhatCantBeAlignedSaysWhyAndTheOthersStay) {
    Corsa corsa = Formula(1.0 / 3.6, 0.9);
    const Allineamento senzaGuasti(corsa.Log());
    corsa.Giri[0].Centesimi = 0;
    corsa.Giri[1].PrimaRiga = 0;
    corsa.Giri[1].UltimaRiga = -1;
    corsa.Giri[2].Centesimi += 250;  // as if a page were lost
    for (std::int32_t r = corsa.Giri[3].PrimaRiga; r <= corsa.Giri[3].UltimaRiga; ++r) {
        corsa.Distanza[static_cast<std::size_t>(r)] = 0.0;
    }
    const Allineamento allineati(corsa.Log());
    EXPECT_EQ(allineati.Esito(0), PercheNo::SenzaTempo);
    EXPECT_EQ(allineati.Esito(1), PercheNo::SenzaRighe);
    EXPECT_EQ(allineati.Esito(2), PercheNo::Interrotto);
    EXPECT_EQ(allineati.Esito(3), PercheNo::SenzaDistanza);
    for (int i = 0; i < 4; ++i) EXPECT_FALSE(allineati.Allinea(i)) << i;
    for (int i = 4; i < 6; ++i) {
        EXPECT_NEAR(allineati.Allinea(i).value().Inizio, senzaGuasti.Allinea(i).value().Inizio,
                    0.01)
            << i;
    }
    const Allineamento nulla(CorsaLog{});
    EXPECT_EQ(nulla.NumGiri(), 0);
    EXPECT_EQ(nulla.Lunghezza(), 0.0);
}

TEST(ConfrontoGiri, PartsAddUpToTheOfficialTimeAndTheBestOfThemMakeTheIdealLap) {
    const Corsa corsa = Formula(1.0 / 3.6, 0.9);
    const Allineamento allineati(corsa.Log());
    const double lunghezza = allineati.Lunghezza();
    EXPECT_EQ(ConfiniSettori({700.0, 600.0, 700.0}, 2000.0), (std::vector<double>{700.0, 1300.0}));
    EXPECT_EQ(ConfiniSettori({1500.0, 600.0, 700.0}, 2000.0), (std::vector<double>{1500.0}));
    EXPECT_EQ(ConfiniUguali(4, 2000.0), (std::vector<double>{500.0, 1000.0, 1500.0}));
    EXPECT_EQ(Griglia(2.5, 1.0), (std::vector<double>{0.0, 1.0, 2.0, 2.5}));
    EXPECT_EQ(Griglia(2.0, 1.0), (std::vector<double>{0.0, 1.0, 2.0}));
    for (int i = 0; i < allineati.NumGiri(); ++i) {
        const auto giro = allineati.Allinea(i).value();
        const auto tempi = TempiSettori(giro, ConfiniUguali(7, lunghezza), lunghezza);
        ASSERT_EQ(tempi.size(), 7u);
        std::int32_t somma = 0;
        for (const std::int32_t tempo : tempi) somma += tempo;
        EXPECT_EQ(somma, allineati.Giro(i).Centesimi);
    }
    const GiroIdeale ideale = Ideale({{100, 210, 300}, {110, 200, 300}, {100, 220, 290}});
    EXPECT_EQ(ideale.Settori, (std::vector<std::int32_t>{100, 200, 290}));
    EXPECT_EQ(ideale.Di, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(ideale.Centesimi, 590);
    EXPECT_EQ(Ideale({}).Centesimi, 0);
}

}  // namespace
}  // namespace lapvane::prova
