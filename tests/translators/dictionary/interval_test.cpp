#include "support/dom.h"
#include "support/faults/failure.h"
#include "support/numbers.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using namespace veltrane::tests;

struct Bounds {
    double min, max;
    bool lowEnd, highEnd;

    bool operator==(const Bounds&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Bounds& bounds) {
    return out << (bounds.lowEnd ? '[' : '(') << bounds.min << ", " << bounds.max << (bounds.highEnd ? ']' : ')');
}

std::vector<Bounds> Read(const MissingValueSet& missing) {
    std::vector<Bounds> bounds;
    for (const auto* range : missing.GetMissingValues()) {
        bounds.push_back(
            {range->GetMin()->GetDouble(), range->GetMax()->GetDouble(), range->GetLowEnd(), range->GetHighEnd()});
    }
    return bounds;
}

std::vector<Bounds> Complement(const std::string& attributes) {
    const ParsedXml document = ParseXml("<Interval " + attributes + "/>");
    MissingValueSet missing;
    PMMLTranslator::handleInterval(nullptr, document.Root(), &missing, 0);
    return Read(missing);
}

std::vector<Bounds> Itself(const std::string& attributes) {
    const ParsedXml document = ParseXml("<Interval " + attributes + "/>");
    MissingValueSet missing;
    PMMLTranslator::handleTreeInterval(document.Root(), &missing);
    return Read(missing);
}

using Ranges = std::vector<Bounds>;

constexpr const char* kBoth = " leftMargin='1' rightMargin='3'";
const double kBelowOne = 1.0 - 1e-15;
const double kAboveThree = 3.0 + 3.0 * 1e-15;

TEST(IntervalComplement, ClosedBoundsMoveOut) {
    EXPECT_LT(kBelowOne, 1.0);
    EXPECT_GT(kAboveThree, 3.0);
    EXPECT_EQ(Complement(std::string("closure='closedClosed'") + kBoth),
              (Ranges{{-kInfinity, kBelowOne, true, false}, {kAboveThree, kInfinity, false, true}}));
}

TEST(IntervalComplement, ClosedOpen) {
    EXPECT_EQ(Complement(std::string("closure='closedOpen'") + kBoth),
              (Ranges{{-kInfinity, kBelowOne, true, false}, {3, kInfinity, true, true}}));
}

TEST(IntervalComplement, OpenClosed) {
    EXPECT_EQ(Complement(std::string("closure='openClosed'") + kBoth),
              (Ranges{{-kInfinity, 1, true, true}, {kAboveThree, kInfinity, false, true}}));
}

TEST(IntervalComplement, AnyOtherClosureIsOpenOpen) {
    const Ranges expected = {{-kInfinity, 1, true, true}, {3, kInfinity, true, true}};
    EXPECT_EQ(Complement(std::string("closure='openOpen'") + kBoth), expected);
    EXPECT_EQ(Complement(std::string("closure='any'") + kBoth), expected);
    EXPECT_EQ(Complement(kBoth), expected);
}

TEST(IntervalComplement, AClosedMarginOfZeroStays) {
    const Ranges ranges = Complement("closure='closedClosed' leftMargin='0' rightMargin='1'");
    ASSERT_EQ(ranges.size(), 2u);
    EXPECT_EQ(ranges[0], (Bounds{-kInfinity, 0, true, false}));
}

TEST(IntervalComplement, NegativeClosedBoundsMoveOutToo) {
    EXPECT_EQ(Complement("closure='closedClosed' leftMargin='-3' rightMargin='-1'"),
              (Ranges{{-kInfinity, -kAboveThree, true, false}, {-kBelowOne, kInfinity, false, true}}));
}

TEST(IntervalComplement, AnInfiniteMarginStays) {
    EXPECT_EQ(Complement("closure='closedClosed' leftMargin='1e999'"), (Ranges{{-kInfinity, kInfinity, false, true}}));
    EXPECT_EQ(Complement("closure='closedOpen' leftMargin='1e999'"), (Ranges{{-kInfinity, kInfinity, true, true}}));
    EXPECT_EQ(Complement("closure='closedClosed' leftMargin='1e999' rightMargin='3'"),
              (Ranges{{-kInfinity, kInfinity, true, false}, {kAboveThree, kInfinity, false, true}}));
    EXPECT_EQ(Complement("closure='closedClosed' rightMargin='1e999'"), (Ranges{{kInfinity, kInfinity, false, true}}));
}

TEST(IntervalComplement, ALeftMarginOfInfinityMakesEveryNumberMissing) {
    const ParsedXml document = ParseXml("<Interval closure='closedClosed' leftMargin='1e999'/>");
    MissingValueSet missing;
    PMMLTranslator::handleInterval(nullptr, document.Root(), &missing, 0);
    ASSERT_EQ(missing.Size(), 1);
    for (const double number : {-1e308, -1.0, 0.0, 5e-324, 1e308}) {
        EXPECT_TRUE(missing.GetMissingValues()[0]->IsInRange(number)) << number;
    }
}

TEST(IntervalComplement, WithoutALeftMargin) {
    EXPECT_EQ(Complement("closure='openOpen' rightMargin='3'"), (Ranges{{3, kInfinity, true, true}}));
    EXPECT_EQ(Complement("closure='closedClosed' leftMargin='' rightMargin='3'"),
              (Ranges{{kAboveThree, kInfinity, false, true}}));
}

TEST(IntervalComplement, WithoutAMarginIsARangeThatHoldsNoNumber) {
    EXPECT_EQ(Complement("closure='openOpen'"), (Ranges{{kInfinity, kInfinity, true, true}}));
}

TEST(KeptIntervalComplement, WithoutARightMarginTheRightEndsFlagIsUsed) {
    EXPECT_EQ(Complement("closure='openOpen' leftMargin='1'"), (Ranges{{-kInfinity, 1, true, true}}));
    EXPECT_EQ(Complement("closure='openClosed' leftMargin='1'"), (Ranges{{-kInfinity, 1, false, true}}));
    EXPECT_EQ(Complement("closure='closedOpen' leftMargin='1'"), (Ranges{{-kInfinity, kBelowOne, true, true}}));
    EXPECT_EQ(Complement("closure='closedClosed' leftMargin='1'"), (Ranges{{-kInfinity, kBelowOne, false, true}}));
}

TEST(IntervalComplement, AMarginThatIsNoNumberLeavesTheSetAsItWas) {
    const ParsedXml document = ParseXml("<Interval leftMargin='1' rightMargin='x'/>");
    MissingValueSet missing;
    ExpectFailure([&] { PMMLTranslator::handleInterval(nullptr, document.Root(), &missing, 0); },
                  {INVALID_VALUE_OF_TYPE, "x", "double"});
    EXPECT_EQ(missing.Size(), 0);
}

TEST(IntervalItself, IsNotAddedToASetThatHasIt) {
    const ParsedXml document = ParseXml("<Interval leftMargin='1' rightMargin='3'/>");
    MissingValueSet missing;
    PMMLTranslator::handleTreeInterval(document.Root(), &missing);
    PMMLTranslator::handleTreeInterval(document.Root(), &missing);
    EXPECT_EQ(missing.Size(), 1);
}

TEST(IntervalItself, KeepsItsMarginsAndClosure) {
    EXPECT_EQ(Itself(std::string("closure='closedClosed'") + kBoth), (Ranges{{1, 3, true, true}}));
    EXPECT_EQ(Itself(std::string("closure='closedOpen'") + kBoth), (Ranges{{1, 3, true, false}}));
    EXPECT_EQ(Itself(std::string("closure='openClosed'") + kBoth), (Ranges{{1, 3, false, true}}));
    EXPECT_EQ(Itself(std::string("closure='openOpen'") + kBoth), (Ranges{{1, 3, false, false}}));
    EXPECT_EQ(Itself(kBoth), (Ranges{{1, 3, false, false}}));
}

TEST(IntervalItself, IsInfiniteWithoutMargins) {
    EXPECT_EQ(Itself("leftMargin='1'"), (Ranges{{1, kInfinity, false, false}}));
    EXPECT_EQ(Itself("rightMargin='1'"), (Ranges{{-kInfinity, 1, false, false}}));
    ExpectFailure([] { Itself("leftMargin='x'"); }, {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST(MissingBounds, MakeOneClosedRange) {
    TestTranslator translator;
    for (int count : {1, 10, 11}) {
        MissingValueSet missing;
        EXPECT_TRUE(translator.HandleKORDMissingInterval(&missing, count, -1, 2));
        EXPECT_EQ(Read(missing), (Ranges{{-1, 2, true, true}}));
    }
}

TEST(MissingBounds, AreNoneWithoutACount) {
    TestTranslator translator;
    MissingValueSet missing;
    EXPECT_FALSE(translator.HandleKORDMissingInterval(&missing, 0, -1, 2));
    EXPECT_EQ(missing.Size(), 0);
}

TEST(MissingBounds, GivenTwiceAreRefused) {
    TestTranslator translator;
    for (int count : {2, 9, 12, 20, 21, -1}) {
        MissingValueSet missing;
        ExpectFailure([&] { translator.HandleKORDMissingInterval(&missing, count, -1, 2); },
                      {MORE_THAN_ONE, "invalidRangeLower, invalidRangeUpper", "Value"});
    }
}

} // namespace
