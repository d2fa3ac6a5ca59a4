#include "stats/golden_functions.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace veltrane::tests;

std::vector<double> Evaluate(const GoldenFunction& function, const std::vector<GoldenPoint>& points) {
    std::vector<double> results;
    for (const GoldenPoint& point : points) {
        results.push_back(function.evaluate(point.arguments));
    }
    return results;
}

TEST(DistributionFunctionsThreads, GiveTheSameResultsSideBySide) {
    for (const GoldenFunction& function : GoldenFunctions()) {
        const std::vector<GoldenPoint> points = DistributionTables().Points(function.name);
        const std::vector<double> alone = Evaluate(function, points);
        std::vector<std::vector<double>> together(4);
        std::vector<std::thread> threads;
        for (std::vector<double>& results : together) {
            threads.emplace_back([&] { results = Evaluate(function, points); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        for (const std::vector<double>& results : together) {
            EXPECT_EQ(results, alone) << function.name;
        }
    }
}

} // namespace
