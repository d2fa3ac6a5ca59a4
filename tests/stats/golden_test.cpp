#include "stats/golden_functions.h"

#include <gtest/gtest.h>

namespace {

using veltrane::tests::DistributionTables;
using veltrane::tests::GoldenFunction;
using veltrane::tests::GoldenFunctions;

/// All regions of one function.
class GoldenTable : public testing::TestWithParam<GoldenFunction> {};

TEST_P(GoldenTable, StaysWithinTheToleranceOfEachRegion) {
    DistributionTables().ExpectWithinTolerances(GetParam().name, GetParam().name, GetParam().evaluate);
}

TEST_P(GoldenTable, HasTwoHundredPointsAndATolerancesForEachRegion) {
    DistributionTables().ExpectComplete(GetParam().name, GetParam().name);
}

TEST(GoldenPage, ListsEveryRegionWithItsTolerance) {
    DistributionTables().ExpectOnPage();
}

INSTANTIATE_TEST_SUITE_P(Functions, GoldenTable, testing::ValuesIn(GoldenFunctions()),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
