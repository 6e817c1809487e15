#include "analysis/Statistiche.h"

#include <gtest/gtest.h>

#include <vector>

using namespace lapvane;

TEST(Statistiche, FindTheFiguresWhereverTheyStand) {
    for (std::size_t dove = 0; dove < 40; ++dove) {
        std::vector<double> valori(40, 1.0);
        valori[dove] = 7.5;
        EXPECT_EQ(MassimoColonna(valori), 7.5);
        EXPECT_EQ(MinimoColonna(valori), 0.0) << "the search starts at 0";
        EXPECT_EQ(MinimoCelle(valori), 1.0) << "at the first cell";
        valori[dove] = -3.25;
        EXPECT_EQ(MinimoColonna(valori), -3.25);
    }
    EXPECT_EQ(MassimoColonna(std::vector<double>(5, -2.0)), 0.0);
    EXPECT_EQ(MassimoCelle(std::vector<double>(5, -2.0)), -2.0);
    EXPECT_EQ(MassimoCelle({}), 0.0);
}

TEST(Statistiche, TheMeanIsOneSumInTheOrderOfTheRows) {
    // A large value swallows the 1 that comes next; in any other order it would not.
    EXPECT_EQ(MediaColonna(std::vector<double>{1e16, 1.0, -1e16, 1.0}, 4.0), 0.25);
    EXPECT_EQ(MediaColonna(std::vector<double>{1.0, 2.0}, 4.0), 0.75) << "by what was asked";
    // Any number of columns at once, of whatever lengths, each as if it were alone.
    for (std::size_t numero = 0; numero <= 19; ++numero) {
        std::vector<std::vector<double>> valori(numero);
        std::vector<std::span<const double>> colonne;
        std::vector<double> attese;
        for (std::size_t c = 0; c < numero; ++c) {
            double somma = 0.0;
            for (std::size_t r = 0; r < 101 + c % 3; ++r) {
                valori[c].push_back(static_cast<double>((r * 311 + c * 7) % 1600) / 10.0 + 0.1);
                somma += valori[c].back();
            }
            colonne.emplace_back(valori[c]);
            attese.push_back(somma / 101.0);
        }
        EXPECT_EQ(MediaColonne(colonne, 101.0), attese) << numero;
        EXPECT_EQ(MediaColonne(colonne, 0.0), std::vector<double>(numero, 0.0));
    }
}
