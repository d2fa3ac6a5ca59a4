#include "apply_golden.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace veltrane::tests;

namespace {

/// One built-in function against its table, from the document to the value.
class BuiltInGoldenTable : public testing::TestWithParam<BuiltIn> {
protected:
    std::vector<GoldenPoint> Points() const { return BuiltInTables().Points(GetParam().table); }

    AppliedToFields applied{GetParam()};
};

bool IsSame(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

TEST_P(BuiltInGoldenTable, StaysWithinTheToleranceOfEachRegion) {
    BuiltInTables().ExpectWithinTolerances(
        GetParam().literal, GetParam().table,
        [this](const std::vector<double>& arguments) { return applied.Value(arguments); });
}

TEST_P(BuiltInGoldenTable, HasTwoHundredPointsAndAToleranceForEachRegion) {
    BuiltInTables().ExpectComplete(GetParam().literal, GetParam().table);
}

TEST_P(BuiltInGoldenTable, FirstCaseAndLaterOnesAgree) {
    for (const GoldenPoint& point : Points()) {
        const double first = applied.FirstValue(point.arguments);
        const double later = applied.Value(point.arguments);
        EXPECT_TRUE(IsSame(first, later)) << "line " << point.line << ": " << first << " and " << later;
    }
}

/// Those that a plug-in can call too.
class PublicBuiltIn : public testing::TestWithParam<BuiltIn> {};

TEST_P(PublicBuiltIn, AgreesWithItsApply) {
    AppliedToFields applied(GetParam());
    for (const GoldenPoint& point : BuiltInTables().Points(GetParam().table)) {
        const double direct = GetParam().direct(point.arguments);
        const double value = applied.Value(point.arguments);
        EXPECT_TRUE(IsSame(direct, value)) << "line " << point.line << ": " << direct << " and " << value;
    }
}

std::vector<BuiltIn> PublicBuiltIns() {
    std::vector<BuiltIn> functions;
    for (const BuiltIn& function : NumericBuiltIns()) {
        if (function.direct != nullptr) {
            functions.push_back(function);
        }
    }
    return functions;
}

std::string NameOf(const testing::TestParamInfo<BuiltIn>& info) {
    return info.param.table;
}

TEST(BuiltInGoldenPage, ListsEveryRegionWithItsTolerance) {
    BuiltInTables().ExpectOnPage();
}

TEST(BuiltInGoldenRegions, WiderTolerancesHaveTheirReasons) {
    constexpr double kWidest = 2e-15;
    for (const GoldenRegion& region : BuiltInTables().Regions()) {
        const bool isWider =
            region.tolerance > kWidest || (region.measure != GoldenRegion::RELATIVE && region.tolerance > 0);
        EXPECT_TRUE(!isWider || !region.reason.empty()) << region.function << ", " << region.region;
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, BuiltInGoldenTable, testing::ValuesIn(NumericBuiltIns()), NameOf);
INSTANTIATE_TEST_SUITE_P(Functions, PublicBuiltIn, testing::ValuesIn(PublicBuiltIns()), NameOf);

} // namespace
