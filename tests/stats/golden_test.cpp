#include "stats/golden_functions.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace veltrane::tests;

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

/// The tolerance that a function meets unless something stands in its way.
double UsualTolerance(const std::string& function) {
    if (function.find("Norm") != std::string::npos) {
        return 1e-14;
    }
    const bool isFound = function.rfind("Idf", 0) == 0 || function.rfind("FindNCParam", 0) == 0;
    return isFound ? 1e-10 : 1e-12;
}

TEST(GoldenRegions, WiderTolerancesHaveTheirReasons) {
    for (const GoldenRegion& region : DistributionTables().Regions()) {
        const bool isWider =
            region.measure != GoldenRegion::RELATIVE || region.tolerance > UsualTolerance(region.function);
        const bool isExact = region.tolerance == 0;
        EXPECT_TRUE(!isWider || isExact || !region.reason.empty()) << region.function << ", " << region.region;
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, GoldenTable, testing::ValuesIn(GoldenFunctions()), veltrane::tests::NameOfRow());

} // namespace
