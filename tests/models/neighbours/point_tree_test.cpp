// The search in boxes against a scan of all points, bit for bit.
#include "neighbours/point_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

using veltrane_clustering::ComparedField;
using veltrane_clustering::CompareFunction;
using veltrane_clustering::Comparison;
using veltrane_clustering::Measure;
using veltrane_neighbours::NearestPoints;
using veltrane_neighbours::Neighbour;
using veltrane_neighbours::PointTree;

namespace {

Comparison ComparisonOf(Measure measure, std::size_t fields, double power = 2.0) {
    Comparison comparison;
    comparison.measure = measure;
    comparison.power = power;
    const double weights[] = {1.0, 0.3, 2.5, 0.0, 7.0};
    for (std::size_t i = 0; i < fields; ++i) {
        ComparedField field;
        field.weight = weights[i % 5];
        comparison.fields.push_back(field);
    }
    comparison.Settle();
    return comparison;
}

/// All points by their affinities and, where these are equal, in the order in which they stand.
std::vector<Neighbour> Scanned(const Comparison& comparison, const std::vector<double>& points, const double* x,
                               std::size_t count) {
    std::vector<Neighbour> all;
    for (std::size_t i = 0; i < points.size() / comparison.Size(); ++i) {
        const double affinity = comparison.Between(x, points.data() + i * comparison.Size());
        if (std::isfinite(affinity)) {
            all.push_back({static_cast<std::uint32_t>(i), affinity});
        }
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Neighbour& a, const Neighbour& b) { return a.affinity < b.affinity; });
    all.resize(std::min(all.size(), count));
    return all;
}

std::string Bits(const std::vector<Neighbour>& neighbours) {
    std::string text;
    for (const Neighbour& neighbour : neighbours) {
        text += std::to_string(neighbour.point) + " " +
                std::to_string(std::bit_cast<std::uint64_t>(neighbour.affinity)) + "\n";
    }
    return text;
}

/// Numbers of one manner.
using Draw = double (*)(std::mt19937_64&);

double Even(std::mt19937_64& random) {
    return std::uniform_real_distribution<>(-3.0, 3.0)(random);
}
/// Few, so that many points are as near as others, and the same.
double Tied(std::mt19937_64& random) {
    return static_cast<double>(random() % 4);
}
/// Of every size, whose differences and squares overflow and vanish.
double Hostile(std::mt19937_64& random) {
    const double sizes[] = {0.0, 5e-324, 1e-310, 1e-160, 1e-20, 1.0, 1e17, 1e154, 1.7e308};
    return sizes[random() % 9] * (random() % 2 == 0 ? 1.0 : -1.0);
}
double Tiny(std::mt19937_64& random) {
    return std::ldexp(static_cast<double>(random() % 64), -540);
}

struct Manner {
    const char* name;
    Draw draw;
};
constexpr Manner kManners[] = {{"even", Even}, {"tied", Tied}, {"hostile", Hostile}, {"tiny", Tiny}};

void ExpectScanned(const Comparison& comparison, const Manner& manner, std::size_t count, std::mt19937_64& random) {
    std::vector<double> points(count * comparison.Size());
    std::generate(points.begin(), points.end(), [&] { return manner.draw(random); });
    const PointTree tree(comparison, points);
    PointTree::Room room;
    NearestPoints nearest;
    std::vector<double> x(comparison.Size());
    for (std::size_t i = 0; i < 12; ++i) {
        std::generate(x.begin(), x.end(), [&] { return manner.draw(random); });
        for (const std::size_t wanted : {std::size_t{1}, std::size_t{7}, count}) {
            nearest.Start(wanted, true);
            tree.Search(x.data(), nearest, room);
            ASSERT_EQ(Bits(nearest.Sort()), Bits(Scanned(comparison, points, x.data(), wanted)))
                << manner.name << " " << static_cast<int>(comparison.measure) << " " << comparison.power << " of "
                << count << " in " << comparison.Size() << ", wanted " << wanted;
        }
    }
}

TEST(PointTree, FindsWhatAScanFinds) {
    std::mt19937_64 random(4);
    for (const Manner& manner : kManners) {
        for (const Measure measure :
             {Measure::EUCLIDEAN, Measure::SQUARED_EUCLIDEAN, Measure::CHEBYCHEV, Measure::CITY_BLOCK}) {
            for (const std::size_t fields : {1, 2, 5}) {
                for (const std::size_t count : {1, 32, 33, 500}) {
                    ExpectScanned(ComparisonOf(measure, fields), manner, count, random);
                }
            }
        }
        for (const double power : {0.001, 0.1, 0.5, 1.0, 3.0, 17.5, 64.0}) {
            ExpectScanned(ComparisonOf(Measure::MINKOWSKI, 3, power), manner, 300, random);
        }
    }
}

/// No times, but what is compared: of 100,000 points in three fields not a hundredth.
TEST(PointTree, ComparesFewOfManyPoints) {
    std::mt19937_64 random(8);
    const Comparison comparison = ComparisonOf(Measure::EUCLIDEAN, 3);
    std::vector<double> points(std::size_t{100000} * comparison.Size());
    std::generate(points.begin(), points.end(), [&] { return Even(random); });
    const PointTree tree(comparison, points);
    PointTree::Room room;
    NearestPoints nearest;
    std::vector<double> x(comparison.Size());
    for (int i = 0; i < 200; ++i) {
        std::generate(x.begin(), x.end(), [&] { return Even(random); });
        nearest.Start(3, true);
        tree.Search(x.data(), nearest, room);
    }
    EXPECT_LT(room.leaves, std::size_t{200} * 100000 / 32 / 100);
}

/// As many equal points as there may be don't end the halving, nor does the search take the wrong ones.
TEST(PointTree, TakesTheFirstOfManyEqualPoints) {
    const Comparison comparison = ComparisonOf(Measure::CITY_BLOCK, 2);
    const std::vector<double> points(std::size_t{20000} * 2, 1.5);
    const PointTree tree(comparison, points);
    PointTree::Room room;
    NearestPoints nearest;
    nearest.Start(3, true);
    const double x[] = {1.0, 2.0};
    tree.Search(x, nearest, room);
    EXPECT_EQ(Bits(nearest.Sort()), Bits(Scanned(comparison, points, x, 3)));
}

TEST(PointTree, SuitsDistancesOfNumbersAlone) {
    Comparison comparison = ComparisonOf(Measure::EUCLIDEAN, 2);
    EXPECT_TRUE(PointTree::Suits(comparison));
    comparison.isDistance = false;
    EXPECT_FALSE(PointTree::Suits(comparison)) << "the farthest are the nearest of a similarity";
    comparison.isDistance = true;
    comparison.fields[1].function = CompareFunction::DELTA;
    EXPECT_FALSE(PointTree::Suits(comparison));
    EXPECT_FALSE(PointTree::Suits(ComparisonOf(Measure::MINKOWSKI, 2, 65.0)));
    EXPECT_FALSE(PointTree::Suits(ComparisonOf(Measure::JACCARD, 2)));
}

} // namespace
