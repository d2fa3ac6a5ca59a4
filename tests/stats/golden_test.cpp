#include "stats/golden_tables.h"

#include <MCCommon_900/MCMV.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>
#include <sstream>

namespace {

using MCCommon_900::MCMV;
using veltrane::tests::GoldenFunction;
using veltrane::tests::GoldenFunctions;
using veltrane::tests::GoldenPoint;
using veltrane::tests::GoldenRegion;
using veltrane::tests::GoldenRegions;
using veltrane::tests::ReadGoldenTable;

double ErrorOf(double result, const GoldenPoint& point, bool absolute) {
    constexpr double kWrong = std::numeric_limits<double>::infinity();
    if (point.missing || MCMV::IsMissing(result))
        return point.missing == MCMV::IsMissing(result) ? 0 : kWrong;
    const long double error = std::fabs(static_cast<long double>(result) - point.expected);
    if (error == 0 || std::isnan(error))
        return error == 0 ? 0 : kWrong;
    return static_cast<double>(absolute ? error : error / std::fabs(point.expected));
}

std::string Describe(const GoldenPoint& point, double result) {
    std::ostringstream out;
    out.precision(17);
    out << "line " << point.line << ", at";
    for (const double argument : point.arguments)
        out << " " << argument;
    out << ": " << result << " instead of " << point.expected;
    return out.str();
}

/// All regions of one function.
class GoldenTable : public testing::TestWithParam<GoldenFunction> {
protected:
    std::vector<GoldenRegion> Regions() const {
        std::vector<GoldenRegion> own;
        for (const GoldenRegion& region : GoldenRegions())
            if (region.function == GetParam().name)
                own.push_back(region);
        return own;
    }
};

TEST_P(GoldenTable, StaysWithinTheToleranceOfEachRegion) {
    const std::vector<GoldenPoint> points = ReadGoldenTable(GetParam().name);
    for (const GoldenRegion& region : Regions()) {
        double largest = 0;
        int count = 0;
        std::string worst;
        for (const GoldenPoint& point : points) {
            if (point.region != region.region)
                continue;
            ++count;
            const double result = GetParam().evaluate(point.arguments);
            const double error = ErrorOf(result, point, region.absolute);
            if (error > largest) {
                largest = error;
                worst = Describe(point, result);
            }
        }
        EXPECT_LE(largest, region.tolerance) << region.region << ", " << worst;
        EXPECT_GT(count, 0) << region.region;
        std::ostringstream measured;
        measured << count << " " << largest;
        RecordProperty(region.function + "|" + region.region, measured.str());
    }
}

TEST_P(GoldenTable, HasTwoHundredPointsAndATolerancesForEachRegion) {
    const std::vector<GoldenPoint> points = ReadGoldenTable(GetParam().name);
    EXPECT_GE(points.size(), 200u);
    std::set<std::string> inTable, listed;
    for (const GoldenPoint& point : points)
        inTable.insert(point.region);
    for (const GoldenRegion& region : Regions())
        listed.insert(region.region);
    EXPECT_EQ(inTable, listed);
}

TEST(GoldenPage, ListsEveryRegionWithItsTolerance) {
    std::ifstream in(VELTRANE_SAMPLES "/../../docs/accuracy.md");
    const std::string page((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    for (const GoldenRegion& region : GoldenRegions()) {
        const std::size_t at = page.find("| `" + region.function + "` | " + region.region + " |");
        ASSERT_NE(at, std::string::npos) << region.function << ", " << region.region;
        const std::string line = page.substr(at, page.find('\n', at) - at);
        std::ostringstream tolerance;
        tolerance << "| " << region.tolerance << " | " << region.reason;
        EXPECT_NE(line.find(tolerance.str()), std::string::npos) << line;
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, GoldenTable, testing::ValuesIn(GoldenFunctions()),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
