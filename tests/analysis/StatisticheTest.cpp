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

TEST(Statistiche, TheMeanOfALongLapIsThatOfOneSumAfterTheOther) {
    std::vector<double> valori;
    double uno = 0.0;
    for (int r = 0; r < 163780; ++r) {
        valori.push_back(static_cast<double>((r * 311) % 1600) / 10.0 + 0.1);
        uno += valori.back();
    }
    const double righe = static_cast<double>(valori.size());
    EXPECT_NEAR(MediaColonna(valori, righe) / (uno / righe), 1.0, 1e-12);
}
