#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "widgets/AsseGrafico.h"
#include "widgets/Contrasto.h"
#include "widgets/Tracciatore.h"

using namespace lapvane;

namespace {

constexpr double kNessuno = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinito = std::numeric_limits<double>::infinity();

std::string Testi(const Tacche& tacche, char separatore = '.') {
    std::string testo;
    for (const double valore : tacche.Valori) testo += TestoTacca(valore, tacche, separatore) + " ";
    return testo;
}

}  // namespace

TEST(Tacche, AreRoundNumbersInsideTheRange) {
    struct Caso {
        double Da, A;
        int Massime;
        const char* Attese;
    };
    const Caso casi[] = {
        {0, 10, 6, "0 2 4 6 8 10 "},
        {0, 10, 5, "0 5 10 "},
        {0, 1, 6, "0 0.2 0.4 0.6 0.8 1.0 "},
        {-400000, 1100, 6, "-400000 -300000 -200000 -100000 0 "},
        {0, 9460, 6, "0 2000 4000 6000 8000 "},
        {0, 86.9, 11, "0 10 20 30 40 50 60 70 80 "},
        {0.3, 0.6, 5, "0.3 0.4 0.5 0.6 "},
        {12.34, 12.37, 4, "12.34 12.35 12.36 12.37 "},
        {-0.05, 0.05, 3, "-0.05 0 0.05 "},
        {0, 3e8, 4, "0 1E8 2E8 3E8 "},
        {0, 3e-9, 4, "0 1E-9 2E-9 3E-9 "},
    };
    for (const Caso& caso : casi) {
        const Tacche tacche = CalcolaTacche(caso.Da, caso.A, caso.Massime);
        EXPECT_EQ(Testi(tacche), caso.Attese) << caso.Da << " " << caso.A;
        EXPECT_LE(tacche.Valori.size(), static_cast<std::size_t>(caso.Massime));
    }
    EXPECT_EQ(Testi(CalcolaTacche(0, 1, 3), ','), "0 0,5 1,0 ");
}

TEST(Tacche, DoNotExistWhereThereIsNoRange) {
    for (const auto& [da, a] : {std::pair{1.0, 1.0},
                                {2, 1},
                                {0, kNessuno},
                                {0, kInfinito},
                                {-1e308, 1.7e308},
                                {1e9, 1e9 + 1e-3},
                                {0, 1e-310}}) {
        EXPECT_TRUE(CalcolaTacche(da, a, 10).Valori.empty()) << da << " " << a;
        const bool finito = a > da && std::isfinite(a - da);
        EXPECT_EQ((ScalaPixel{da, a, 0, 10}).Valida(), finito);
    }
    EXPECT_TRUE(CalcolaTacche(0, 1, 0).Valori.empty());
    EXPECT_LE(CalcolaTacche(0, 1e300, 1000000).Valori.size(), 100u);
    const ScalaPixel y{-100, 300, 500, 100};  // downwards
    EXPECT_EQ(y.Pixel(0), 400);
    EXPECT_EQ(y.Valore(400), 0);
}

TEST(TagliaLinea, KeepsWhatLiesInsideAsConnectedStretches) {
    const Rettangolo area{0, 0, 100, 100};
    const Tratto dentro = {{10, 10}, {50, 90}, {90, 10}};
    EXPECT_EQ(TagliaLinea(dentro, area), std::vector<Tratto>{dentro});
    // Out through the top between two points and back in.
    const Tratto fuori = {{10, 50}, {30, -50}, {50, 50}};
    EXPECT_EQ(TagliaLinea(fuori, area),
              (std::vector<Tratto>{{{10, 50}, {20, 0}}, {{40, 0}, {50, 50}}}));
    // Both ends outside, the middle inside; and never inside at all.
    EXPECT_EQ(TagliaLinea(Tratto{{-50, 50}, {150, 50}}, area),
              (std::vector<Tratto>{{{0, 50}, {100, 50}}}));
    EXPECT_TRUE(TagliaLinea(Tratto{{-50, 50}, {50, 250}}, area).empty());
    EXPECT_TRUE(TagliaLinea(Tratto{{-5, 10}, {-5, 90}}, area).empty());
    EXPECT_TRUE(TagliaLinea(Tratto{{50, 50}}, area).empty());
    const Tratto buco = {{10, 10}, {20, 20}, {30, kNessuno}, {40, 40}, {50, 50}, {60, kInfinito}};
    EXPECT_EQ(TagliaLinea(buco, area),
              (std::vector<Tratto>{{{10, 10}, {20, 20}}, {{40, 40}, {50, 50}}}));
    const auto enorme = TagliaLinea(Tratto{{50, 50}, {50, 1e300}, {60, 50}}, area);
    ASSERT_EQ(enorme.size(), 2u);
    EXPECT_EQ(enorme[0], (Tratto{{50, 50}, {50, 100}}));
}

TEST(Assottiglia, KeepsFirstLowestHighestAndLastOfAPixelColumn) {
    Tratto punti;
    for (int i = 0; i < 1000; ++i) punti.push_back({i / 100.0, 50.0 + i % 3});
    punti[250].Y = -7;
    punti[260].Y = 99;
    const Tratto pochi = Assottiglia(punti, 10);
    EXPECT_LE(pochi.size(), 40u);
    EXPECT_EQ(pochi.front(), punti.front());
    EXPECT_EQ(pochi.back(), punti.back());
    EXPECT_NE(std::find(pochi.begin(), pochi.end(), punti[250]), pochi.end());
    EXPECT_NE(std::find(pochi.begin(), pochi.end(), punti[260]), pochi.end());
    EXPECT_TRUE(std::is_sorted(pochi.begin(), pochi.end(),
                               [](const auto& a, const auto& b) { return a.X < b.X; }));
    const Tratto corta(punti.begin(), punti.begin() + 40);
    EXPECT_EQ(Assottiglia(corta, 10), corta) << "few points stay as they are";
}

TEST(Contrasto, MakesColoursReadableOnAnyGround) {
    constexpr Colore kBianco = Rgb(255, 255, 255);
    constexpr Colore kNero = Rgb(0, 0, 0);
    EXPECT_NEAR(Contrasto(kNero, kBianco), 21.0, 0.01);
    EXPECT_NEAR(Contrasto(kBianco, kBianco), 1.0, 0.01);
    EXPECT_EQ(ColoreLeggibile(Rgb(192, 0, 0), kBianco, 2.2), Rgb(192, 0, 0));
    for (const Colore sfondo : {kBianco, kNero, Rgb(30, 30, 30), Rgb(128, 128, 128)}) {
        for (const Colore linea : {Rgb(255, 192, 255), Rgb(0, 0, 192), Rgb(192, 192, 0), sfondo}) {
            EXPECT_GE(Contrasto(ColoreLeggibile(linea, sfondo, 2.2), sfondo), 2.2) << linea;
        }
    }
    // The letters of a selected lap are white; on the green of a best sector they turn black.
    EXPECT_EQ(CaratteriLeggibili(kBianco, Rgb(0, 255, 0)), kNero);
    EXPECT_EQ(CaratteriLeggibili(kBianco, Rgb(0, 0, 255)), kBianco);
    EXPECT_EQ(CaratteriLeggibili(kNero, Rgb(255, 0, 0)), kNero);
}

namespace {

constexpr int kLato = 160;
constexpr std::uint32_t kNero = 0xFF000000U;
constexpr std::uint32_t kBianco = 0xFFFFFFFFU;

struct Foglio {
    Foglio() : Pixel(std::size_t{kLato} * kLato, kNero) {}
    Tracciatore::Tela Tela() { return {Pixel.data(), kLato}; }
    int Luce(int x, int y) const { return static_cast<int>(Colore(x, y) & 0xFFU); }
    std::uint32_t Colore(int x, int y) const {
        return Pixel[static_cast<std::size_t>(y) * kLato + static_cast<std::size_t>(x)];
    }
    std::vector<std::uint32_t> Pixel;
};

double Distanza(const PuntoGrafico& p, const PuntoGrafico& a, const PuntoGrafico& b) {
    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    const double l2 = dx * dx + dy * dy;
    const double t =
        l2 > 0.0 ? std::clamp(((p.X - a.X) * dx + (p.Y - a.Y) * dy) / l2, 0.0, 1.0) : 0.0;
    return std::hypot(p.X - a.X - t * dx, p.Y - a.Y - t * dy);
}

/// What a pixel should hold by its distance from the line, reckoned the long way.
int Atteso(int x, int y, const Tratto& punti, double larghezza) {
    double minima = 1e9;
    for (std::size_t i = 1; i < punti.size(); ++i) {
        minima = std::min(minima, Distanza({x + 0.5, y + 0.5}, punti[i - 1], punti[i]));
    }
    return static_cast<int>(
        std::lround(255.0 * std::clamp(larghezza / 2.0 + 0.5 - minima, 0.0, 1.0)));
}

}  // namespace

TEST(Tracciatore, CoversPixelsByTheirDistanceWhateverTheLine) {
    std::mt19937 caso(7);
    Tracciatore tracciatore;  // one for all: no line may leave anything behind for the next
    for (const double larghezza : {1.0, 1.4, 2.8, 4.2, 8.4, 24.0}) {
        for (int giro = 0; giro < 12; ++giro) {
            // Up and down, back and forth, in and out of a field with odd borders.
            std::uniform_real_distribution<double> posto(-20.0, kLato + 20.0);
            Tratto punti;
            for (int i = 0; i < 12; ++i) {
                punti.push_back({giro % 2 == 0 ? 14.0 * i + 0.3 : posto(caso), posto(caso)});
                if (i == 6) punti.push_back(punti.back());  // a point that is there twice
            }
            const Tracciatore::Campo campo{giro, 3, kLato - 3 * giro - 1, kLato - giro};
            Foglio foglio;
            tracciatore.Inizia(foglio.Tela(), campo);
            tracciatore.Linea(punti, larghezza, kBianco);
            tracciatore.Traccia();
            int peggio = 0;
            long somma = 0;
            for (int y = 0; y < kLato; ++y) {
                for (int x = 0; x < kLato; ++x) {
                    const bool dentro = x >= campo.Sinistra && x < campo.Destra &&
                                        y >= campo.Alto && y < campo.Basso;
                    const int atteso = dentro ? Atteso(x, y, punti, larghezza) : 0;
                    const int scarto = std::abs(foglio.Luce(x, y) - atteso);
                    ASSERT_TRUE(dentro || scarto == 0) << "outside of the field " << x << " " << y;
                    peggio = std::max(peggio, scarto);
                    somma += scarto;
                }
            }
            // At a slight corner a third of a pixel may be missing; on the whole nothing is.
            EXPECT_LE(peggio, 80) << larghezza << " " << giro;
            EXPECT_LE(somma, kLato * kLato / 2) << larghezza << " " << giro;
        }
    }
}

TEST(Tracciatore, APointIsADisc) {
    Foglio foglio;
    Tracciatore tracciatore;
    tracciatore.Inizia(foglio.Tela(), {0, 0, kLato, kLato});
    tracciatore.Linea(Tratto{{80.0, 80.0}, {80.0, 80.0}}, 20.0, kBianco);
    tracciatore.Linea(Tratto{}, 20.0, kBianco);
    tracciatore.Traccia();
    double area = 0.0;
    for (const std::uint32_t pixel : foglio.Pixel) area += (pixel & 0xFFU) / 255.0;
    EXPECT_NEAR(area, std::numbers::pi * 100.0, 2.0);
    tracciatore.Inizia(foglio.Tela(), {50, 50, 50, 40});
    tracciatore.Linea(Tratto{{0.0, 0.0}, {90.0, 90.0}}, 2.0, kBianco);
    tracciatore.Traccia();
    EXPECT_EQ(foglio.Luce(45, 45), 0) << "a field of nothing";
}

TEST(Tracciatore, DrawsTheSamePixelsInWhateverThreads) {
    const auto disegna = [](int thread) {
        std::mt19937 caso(11);
        std::uniform_real_distribution<double> posto(-20.0, kLato + 20.0);
        Foglio foglio;
        Tracciatore tracciatore;
        tracciatore.Inizia(foglio.Tela(), {3, 0, kLato - 5, kLato});
        for (std::uint32_t n = 0; n < 40; ++n) {
            Tratto punti;
            for (int i = 0; i < 60; ++i) punti.push_back({posto(caso), posto(caso)});
            tracciatore.Linea(punti, n % 2 == 0 ? 1.4 : 8.4, 0x00112233U * (n % 7 + 1));
        }
        tracciatore.Traccia(thread);
        return foglio;
    };
    const Foglio uno = disegna(1);
    for (int giro = 0; giro < 5; ++giro) EXPECT_EQ(disegna(4).Pixel, uno.Pixel);
}
