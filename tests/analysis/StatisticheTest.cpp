#include "analysis/Statistiche.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using namespace lapvane;

TEST(Statistiche, FindTheFiguresWhereverTheyStand) {
    // Lengths around those of the lanes, the extreme at every place.
    for (std::size_t righe = 1; righe <= 70; ++righe) {
        for (std::size_t dove = 0; dove < righe; ++dove) {
            std::vector<double> valori(righe, 1.0);
            valori[dove] = 7.5;
            EXPECT_EQ(MassimoColonna(valori), 7.5);
            EXPECT_EQ(MinimoColonna(valori), 0.0) << "the search starts at 0";
            valori[dove] = -3.25;
            EXPECT_EQ(MinimoColonna(valori), -3.25);
            EXPECT_EQ(MediaColonna(valori, static_cast<double>(righe)),
                      (static_cast<double>(righe) - 4.25) / static_cast<double>(righe));
        }
        const std::vector<double> negativi(righe, -2.0);
        EXPECT_EQ(MassimoColonna(negativi), 0.0);
    }
    EXPECT_EQ(MassimoColonna({}), 0.0);
    EXPECT_EQ(MediaColonna({}, 5.0), 0.0);
    EXPECT_EQ(MediaColonna(std::vector<double>{1.0, 2.0}, 0.0), 0.0);
    EXPECT_EQ(MediaColonna(std::vector<double>{1.0, 2.0}, 4.0), 0.75)
        << "divided by what was asked";
    const std::vector<double> bucato{1.0, std::nan(""), 5.0, -1.0};
    EXPECT_EQ(MassimoColonna(bucato), 5.0);
    EXPECT_EQ(MinimoColonna(bucato), -1.0);
}

TEST(Statistiche, TheMeanIsOneSumInTheOrderOfTheRows) {
    // A large value swallows the 1 that comes next; in any other order it would not.
    EXPECT_EQ(MediaColonna(std::vector<double>{1e16, 1.0, -1e16, 1.0}, 4.0), 0.25);
    EXPECT_EQ(MediaColonna(std::vector<double>{1.0, 1.0, 1e16, -1e16}, 4.0), 0.5);
    // Any number of columns at once, of whatever lengths, each as if it were alone.
    for (std::size_t numero = 0; numero <= 19; ++numero) {
        std::vector<std::vector<double>> valori(numero);
        std::vector<std::span<const double>> colonne;
        std::vector<double> attese;
        for (std::size_t c = 0; c < numero; ++c) {
            double somma = 0.0;
            for (std::size_t r = 0; r < 501 + c % 3; ++r) {
                valori[c].push_back(static_cast<double>((r * 311 + c * 7) % 1600) / 10.0 + 0.1);
                somma += valori[c].back();
            }
            colonne.emplace_back(valori[c]);
            attese.push_back(somma / 501.0);
        }
        EXPECT_EQ(MediaColonne(colonne, 501.0), attese) << numero;
        EXPECT_EQ(MediaColonne(colonne, 0.0), std::vector<double>(numero, 0.0));
    }
}
