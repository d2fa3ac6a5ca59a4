#include "support/faults/failure.h"
#include "support/numbers.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/ScoreValueRange.h>

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

std::unique_ptr<ScoreValueRange> ReadInterval(const std::string& attributes, int binIndex = 0) {
    const ParsedXml document = ParseXml("<Interval " + attributes + "/>");
    PMMLTranslator translator;
    return std::unique_ptr<ScoreValueRange>(translator.HandleDiscretizeBinInterVal(document.Root(), binIndex));
}

struct ClosureRow {
    const char* closure;
    bool low;
    bool high;
};
class BinIntervalClosure : public testing::TestWithParam<ClosureRow> {};

TEST_P(BinIntervalClosure, SaysWhichEndsAreIncluded) {
    const auto range = ReadInterval(std::string("leftMargin='1' rightMargin='2' closure='") + GetParam().closure + "'");
    EXPECT_EQ(range->GetLowEnd(), GetParam().low);
    EXPECT_EQ(range->GetHighEnd(), GetParam().high);
    EXPECT_EQ(range->GetMin()->GetDouble(), 1.0);
    EXPECT_EQ(range->GetMax()->GetDouble(), 2.0);
}

INSTANTIATE_TEST_SUITE_P(Words, BinIntervalClosure,
                         testing::Values(ClosureRow{"closedClosed", true, true}, ClosureRow{"closedOpen", true, false},
                                         ClosureRow{"openClosed", false, true}, ClosureRow{"openOpen", false, false}),
                         [](const auto& row) { return row.param.closure; });

TEST(BinInterval, AnAbsentClosureIsRefused) {
    ExpectFailure([] { ReadInterval("leftMargin='x'"); }, {MISSING_ATTRIBUTE_OF, "closure", "Interval"});
}

TEST(BinInterval, AnUnknownClosureIsRefused) {
    ExpectFailure([] { ReadInterval("closure='closed' leftMargin='x'"); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "closed", "closure", "Interval"});
    ExpectFailure([] { ReadInterval("closure=''"); }, {INVALID_ATTRIBUTE_VALUE_IN, "", "closure", "Interval"});
}

TEST(BinInterval, AnAbsentMarginIsInfinite) {
    const auto above = ReadInterval("closure='closedOpen' leftMargin='1'", 5);
    EXPECT_EQ(above->GetMin()->GetDouble(), 1.0);
    EXPECT_EQ(above->GetMax()->GetDouble(), kInfinity);
    const auto below = ReadInterval("closure='closedOpen' rightMargin='1' leftMargin=''", 5);
    EXPECT_EQ(below->GetMin()->GetDouble(), -kInfinity);
    EXPECT_EQ(below->GetMax()->GetDouble(), 1.0);
}

TEST(BinInterval, AMarginMustBeANumber) {
    ExpectFailure([] { ReadInterval("closure='openOpen' leftMargin='l' rightMargin='r'"); },
                  {INVALID_VALUE_OF_TYPE, "l", "double"});
    ExpectFailure([] { ReadInterval("closure='openOpen' rightMargin='r'", 2); },
                  {INVALID_VALUE_OF_TYPE, "r", "double"});
}

TEST(KeptBinInterval, TheFirstTwoBinsMayBeUnbounded) {
    EXPECT_EQ(ReadInterval("closure='openOpen'", 0)->GetMin()->GetDouble(), -kInfinity);
    EXPECT_EQ(ReadInterval("closure='openOpen'", 1)->GetMax()->GetDouble(), kInfinity);
    ExpectFailure([] { ReadInterval("closure='openOpen'", 2); }, {REQUIRES_ONE_OF, "rightMargin", "leftMargin"});
    ExpectFailure([] { ReadInterval("closure='openOpen' leftMargin='' rightMargin=''", 3); },
                  {REQUIRES_ONE_OF, "rightMargin", "leftMargin"});
}

} // namespace
} // namespace veltrane::tests
