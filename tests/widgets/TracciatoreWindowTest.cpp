#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "widgets/Tracciatore.h"

using namespace lapvane;

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
