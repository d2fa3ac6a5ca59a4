#include "support/faults/failure.h"
#include "support/numbers.h"
#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <random>

namespace veltrane::tests {
namespace {

struct Interval {
    double low;
    double high;
    bool lowIncluded;
    bool highIncluded;
};

/// A margin's attribute; none for an end that is open without one.
std::string Margin(const std::string& name, double value) {
    const bool absent = value == (name == "leftMargin" ? -kInfinity : kInfinity);
    const std::string text = value == kInfinity ? "1e999" : std::to_string(value);
    return absent ? "" : " " + name + "='" + text + "'";
}

std::string BinOf(const Interval& interval) {
    const std::string closure =
        std::string(interval.lowIncluded ? "closed" : "open") + (interval.highIncluded ? "Closed" : "Open");
    return "<DiscretizeBin binValue='1'><Interval closure='" + closure + "'" + Margin("leftMargin", interval.low) +
           Margin("rightMargin", interval.high) + "/></DiscretizeBin>";
}

std::string DiscretizeOf(const std::vector<Interval>& intervals) {
    std::string bins;
    for (const Interval& interval : intervals) {
        bins += BinOf(interval);
    }
    return "<Discretize field='x'>" + bins + "</Discretize>";
}

/// The rule for a range and a later one, condition by condition.
bool PairIntersects(const Interval& a, const Interval& b) {
    return (a.low == b.low && a.high == b.high) || (a.low < b.high && b.low < a.low) ||
           (b.low < a.high && a.low < b.low) || (a.high < b.high && b.low < a.high) ||
           (a.low == b.high && b.highIncluded && a.lowIncluded) || (a.high == b.low && b.lowIncluded && a.highIncluded);
}

bool AnyPairIntersects(const std::vector<Interval>& intervals) {
    for (std::size_t i = 0; i < intervals.size(); ++i) {
        for (std::size_t j = i + 1; j < intervals.size(); ++j) {
            if (PairIntersects(intervals[i], intervals[j])) {
                return true;
            }
        }
    }
    return false;
}

struct PairRow {
    const char* name;
    Interval first;
    Interval second;
    bool intersects;
};
class BinRanges : public testing::TestWithParam<PairRow> {};

TEST_P(BinRanges, IntersectOrNot) {
    const std::string field = NumericField(DiscretizeOf({GetParam().first, GetParam().second}));
    if (GetParam().intersects) {
        ExpectReadFailure(field, {VALUE_RANGE_INTERSECTS, "x"});
    } else {
        EXPECT_EQ(BinsOf(DerivedFields(field).Var("z")).size(), 2U);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Conditions, BinRanges,
    testing::Values(PairRow{"Apart", {0, 1, true, true}, {2, 3, true, true}, false},
                    PairRow{"ApartTheOtherWay", {2, 3, true, true}, {0, 1, true, true}, false},
                    PairRow{"SameBoundsClosed", {0, 1, true, true}, {0, 1, true, true}, true},
                    PairRow{"SameBoundsWhateverTheirEnds", {0, 1, true, false}, {0, 1, false, true}, true},
                    PairRow{"LowEndOfTheFirstInside", {1, 5, false, false}, {0, 2, false, false}, true},
                    PairRow{"LowEndOfTheSecondInside", {0, 2, false, false}, {1, 5, false, false}, true},
                    PairRow{"TheFirstWithinTheSecond", {1, 2, false, false}, {0, 5, false, false}, true},
                    PairRow{"TheSecondWithinTheFirst", {0, 5, false, false}, {1, 2, false, false}, true},
                    PairRow{"HighEndOfTheFirstInside", {0, 1, true, true}, {0, 2, true, true}, true},
                    PairRow{"SameHighEnd", {0, 2, true, true}, {1, 2, true, true}, true},
                    PairRow{"TouchingBothClosed", {0, 1, true, true}, {1, 2, true, true}, true},
                    PairRow{"TouchingFirstOpen", {0, 1, true, false}, {1, 2, true, true}, false},
                    PairRow{"TouchingSecondOpen", {0, 1, true, true}, {1, 2, false, true}, false},
                    PairRow{"TouchingBothOpen", {0, 1, true, false}, {1, 2, false, true}, false},
                    PairRow{"TouchingFromAboveBothClosed", {1, 2, true, true}, {0, 1, true, true}, true},
                    PairRow{"TouchingFromAboveHighOpen", {1, 2, true, true}, {0, 1, true, false}, false},
                    PairRow{"TouchingFromAboveLowOpen", {1, 2, false, true}, {0, 1, true, true}, false},
                    PairRow{"APointAtAClosedEnd", {1, 1, true, true}, {1, 2, true, true}, true},
                    PairRow{"TwoPoints", {1, 1, true, true}, {2, 2, true, true}, false},
                    PairRow{"HalfLinesApart", {-kInfinity, 0, false, false}, {0, kInfinity, false, false}, false},
                    PairRow{"HalfLinesMeet", {-kInfinity, 0, false, true}, {0, kInfinity, true, false}, true},
                    PairRow{"TheLineAndAPoint", {-kInfinity, kInfinity, false, false}, {0, 0, true, true}, true}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Kept, BinRanges,
    testing::Values(
        PairRow{"ALaterShorterRangeFromTheSameStart", {0, 2, true, true}, {0, 1, true, true}, false},
        PairRow{"ALaterHalfLineWithinTheFirst", {-kInfinity, 2, true, true}, {-kInfinity, 1, true, true}, false},
        PairRow{"ReversedBounds", {2, 0, true, true}, {0.5, 1, true, true}, false}),
    NameOfRow());

/// Reads many Discretize elements and compares what becomes of each with the rule for pairs.
class BinRangesAgainstTheRule : public testing::Test {
protected:
    void Expect(const std::vector<std::vector<Interval>>& cases) {
        std::string elements;
        for (const auto& intervals : cases) {
            elements += DiscretizeOf(intervals);
        }
        const ParsedXml document = ParseXml("<All>" + elements + "</All>");
        auto* element = document.Root()->getFirstElementChild();
        for (const auto& intervals : cases) {
            ASSERT_EQ(Intersects(element), AnyPairIntersects(intervals)) << DiscretizeOf(intervals);
            element = element->getNextElementSibling();
        }
    }

    static std::vector<Interval> AllIntervals(const std::vector<double>& lows, const std::vector<double>& highs) {
        std::vector<Interval> intervals;
        for (const double low : lows) {
            for (const double high : highs) {
                for (const unsigned ends : {0U, 1U, 2U, 3U}) {
                    intervals.push_back({low, high, (ends & 1U) != 0, (ends & 2U) != 0});
                }
            }
        }
        return intervals;
    }

private:
    bool Intersects(xercesc::DOMElement* discretize) {
        TransformVar var("z", ScoreDictVar::kNUMERIC_VAR);
        try {
            fields.translator->HandleDiscritize(discretize, &var, fields.dictionary.get(), nullptr);
            return false;
        } catch (const VTException& failure) {
            EXPECT_EQ(failure.GetErrorCode(), static_cast<int>(VALUE_RANGE_INTERSECTS));
            return true;
        }
    }

    DerivedFields fields{""};
};

TEST_F(BinRangesAgainstTheRule, EveryPair) {
    const std::vector<Interval> intervals = AllIntervals({-kInfinity, 0, 1, 2, kInfinity}, {0, 1, 2, kInfinity});
    std::vector<std::vector<Interval>> pairs;
    for (const Interval& first : intervals) {
        for (const Interval& second : intervals) {
            pairs.push_back({first, second});
        }
    }
    Expect(pairs);
}

TEST_F(BinRangesAgainstTheRule, ManyRanges) {
    const std::vector<Interval> intervals = AllIntervals({0, 1, 2, 3, 4, 5, 6}, {0, 1, 2, 3, 4, 5, 6});
    std::mt19937 random(20);
    std::vector<std::vector<Interval>> lists(3000);
    for (auto& list : lists) {
        for (std::size_t size = 3 + random() % 3; list.size() < size;) {
            list.push_back(intervals[random() % intervals.size()]);
        }
    }
    Expect(lists);
}

} // namespace
} // namespace veltrane::tests
