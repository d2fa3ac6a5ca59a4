// Places that the ladder finds are those of the search by halves.
#include "forest/cut_ladder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

using veltrane_forest::CutLadder;

constexpr double kInfinite = std::numeric_limits<double>::infinity();

void ExpectPlacesOf(std::vector<double> cuts, const std::vector<double>& others) {
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    const CutLadder ladder(cuts);
    const auto expectPlace = [&](double number) {
        const auto place = std::lower_bound(cuts.begin(), cuts.end(), number) - cuts.begin();
        ASSERT_EQ(ladder.PlaceOf(cuts, number), place) << number << " among " << cuts.size();
    };
    for (const double cut : cuts) {
        expectPlace(cut);
        expectPlace(std::nextafter(cut, -kInfinite));
        expectPlace(std::nextafter(cut, kInfinite));
    }
    for (const double number : others) {
        expectPlace(number);
    }
}

const std::vector<double> kHostile = {-kInfinite, -std::numeric_limits<double>::max(),       -1.0, -0.0,
                                      0.0,        std::numeric_limits<double>::denorm_min(), 0.5,  1e300,
                                      kInfinite};

TEST(CutLadder, FindsThePlacesAmongAnyNumberOfCuts) {
    std::mt19937_64 random(15);
    std::normal_distribution<double> near(0.0, 1.0);
    for (const std::size_t count :
         {0, 1, 2, 15, 16, 17, 31, 32, 33, 255, 256, 257, 271, 272, 273, 4095, 4096, 4097, 9999}) {
        std::vector<double> cuts;
        for (std::size_t i = 0; i < count; ++i) {
            cuts.push_back(near(random));
        }
        ExpectPlacesOf(cuts, kHostile);
    }
}

TEST(CutLadder, FindsThePlacesAmongUnevenAndInfiniteCuts) {
    std::mt19937_64 random(16);
    std::uniform_real_distribution<double> exponent(-300.0, 300.0);
    std::vector<double> cuts = kHostile;
    for (int i = 0; i < 3000; ++i) {
        cuts.push_back(std::pow(10.0, exponent(random)) * (i % 2 == 0 ? 1.0 : -1.0));
    }
    ExpectPlacesOf(cuts, kHostile);
}

} // namespace
