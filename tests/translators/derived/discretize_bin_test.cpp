#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

// One bin: what its children add to the list of ranges and to that of values, which grow apart.

namespace veltrane::tests {
namespace {

using Texts = std::vector<std::string>;

const std::string kInterval = "<Interval closure='closedOpen' leftMargin='0' rightMargin='1'/>";
constexpr Failure kNoInterval{MISSING_NODE_IN, "Interval", "DiscretizeBin"};

std::string Extension(const std::string& name) {
    return "<Extension name='" + name + "' value='5'/>";
}

/// A numeric field with one bin of value 7 that has this content, and a plain bin [8,9) of value 8 behind it.
std::string BinField(const std::string& content) {
    return NumericField("<Discretize field='x'><DiscretizeBin binValue='7'>" + content +
                        "</DiscretizeBin><DiscretizeBin binValue='8'><Interval closure='closedOpen' leftMargin='8' "
                        "rightMargin='9'/></DiscretizeBin></Discretize>");
}

struct BinRow {
    const char* name;
    std::string content;
    Texts bins;
    const char* sysmisValue = "none";
    bool missingCopy = false;
};
class BinContent : public testing::TestWithParam<BinRow> {};

TEST_P(BinContent, AddsRangesAndValues) {
    const DerivedFields fields(BinField(GetParam().content));
    const TransformVar& var = fields.Var("z");
    EXPECT_EQ(BinsOf(var), GetParam().bins);
    EXPECT_EQ(ToText(var.GetRecodeSysmisValueRep()), GetParam().sysmisValue);
    EXPECT_EQ(var.IsRecodeMissingCopy(), GetParam().missingCopy);
    EXPECT_FALSE(var.IsRecodeElseCopy());
}

const Texts kPlain = {"[0,1) 7", "[8,9) 8"};
const Texts kSysmis = {"[0,1) Undefined", "[8,9) 8"};
const Texts kCopy = {"[0,1) copy", "[8,9) 8"};
const Texts kSecondOnly = {"[8,9) 8"};
/// The first bin gave a range and no value: the value of the second goes with it, and the last range is dropped.
const Texts kShifted = {"[0,1) 8"};

INSTANTIATE_TEST_SUITE_P(
    One, BinContent,
    testing::Values(BinRow{"Plain", kInterval, kPlain},
                    BinRow{"TargetSysmis", Extension("recodeTargetSysmis") + kInterval, kSysmis},
                    BinRow{"TargetSysmisBehind", kInterval + Extension("recodeTargetSysmis"), kSysmis},
                    BinRow{"IntervalCopy", Extension("recodeIntervalCopy") + kInterval, kCopy},
                    BinRow{"IntervalCopyBehind", kInterval + Extension("recodeIntervalCopy"), kCopy},
                    BinRow{"ElseCopy", Extension("recodeElseCopy") + kInterval, kCopy},
                    BinRow{"ElseCopyBehind", kInterval + Extension("recodeElseCopy"), kCopy},
                    BinRow{"MapSysmisTo", Extension("mapSysmisTo") + kInterval, kSecondOnly, "5"},
                    BinRow{"MissingCopy", Extension("recodeMissingCopy") + kInterval, kSecondOnly, "none", true}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Kept, BinContent,
    testing::Values(
        BinRow{"MapSysmisToBehind", kInterval + Extension("mapSysmisTo"), kShifted, "5"},
        BinRow{"MissingCopyBehind", kInterval + Extension("recodeMissingCopy"), kShifted, "none", true},
        BinRow{"OtherName", Extension("other") + kInterval, kShifted},
        BinRow{"NoName", "<Extension/>" + kInterval, kShifted},
        BinRow{"MissingSysmisIsAnOtherName", Extension("recodeMissingSysmis") + kInterval, kShifted},
        BinRow{"TargetSysmisTwiceIsOnce", Extension("recodeTargetSysmis") + Extension("recodeTargetSysmis") + kInterval,
               kSysmis},
        BinRow{"IntervalAndElseCopyAreOne", Extension("recodeIntervalCopy") + Extension("recodeElseCopy") + kInterval,
               kCopy},
        BinRow{"MapSysmisToBehindWithTargetSysmis",
               kInterval + Extension("mapSysmisTo") + Extension("recodeTargetSysmis"), kSysmis, "5"},
        BinRow{"MissingCopyBehindWithIntervalCopy",
               kInterval + Extension("recodeMissingCopy") + Extension("recodeIntervalCopy"), kCopy, "none", true},
        BinRow{"OtherNameWithTargetSysmis", Extension("other") + kInterval + Extension("recodeTargetSysmis"), kSysmis}),
    NameOfRow());

class BinValueWithoutRange : public testing::TestWithParam<BinRow> {};

TEST_P(BinValueWithoutRange, IsAMissingInterval) {
    ExpectReadFailure(BinField(GetParam().content), kNoInterval);
}

INSTANTIATE_TEST_SUITE_P(
    Flags, BinValueWithoutRange,
    testing::Values(BinRow{"TargetSysmisAndIntervalCopy",
                           Extension("recodeTargetSysmis") + Extension("recodeIntervalCopy") + kInterval,
                           {}},
                    BinRow{"TargetSysmisAndElseCopy",
                           kInterval + Extension("recodeTargetSysmis") + Extension("recodeElseCopy"),
                           {}},
                    BinRow{"MapSysmisToAheadWithTargetSysmis",
                           Extension("mapSysmisTo") + Extension("recodeTargetSysmis") + kInterval,
                           {}},
                    BinRow{"MissingCopyAheadWithElseCopy",
                           Extension("recodeMissingCopy") + kInterval + Extension("recodeElseCopy"),
                           {}}),
    NameOfRow());

TEST(KeptBin, TwoShiftsMakeUpForEachOther) {
    const DerivedFields fields(NumericField(
        "<Discretize field='x'><DiscretizeBin binValue='7'>" + kInterval + Extension("other") +
        "</DiscretizeBin><DiscretizeBin binValue='8'><Interval closure='closedOpen' leftMargin='8' rightMargin='9'/>" +
        Extension("recodeTargetSysmis") + Extension("recodeIntervalCopy") + "</DiscretizeBin></Discretize>"));
    EXPECT_EQ(BinsOf(fields.Var("z")), (Texts{"[0,1) Undefined", "[8,9) copy"}));
}

TEST(DiscretizeBin, TwoIntervalsAreRefused) {
    ExpectReadFailure(BinField(kInterval + "<Interval/>"), {MORE_THAN_ONE, "Interval", "DiscretizeBin"});
    ExpectReadFailure(BinField(Extension("mapSysmisTo") + kInterval + kInterval),
                      {MORE_THAN_ONE, "Interval", "DiscretizeBin"});
}

TEST(DiscretizeBin, NoIntervalIsRefused) {
    ExpectReadFailure(BinField(""), kNoInterval);
    ExpectReadFailure(BinField(Extension("mapSysmisTo")), kNoInterval);
}

TEST(DiscretizeBin, AnotherChildIsRefused) {
    ExpectReadFailure(BinField("<Foo/>" + kInterval),
                      {UNEXPECTED_NODE_IN, "Foo", "Extension, Interval", "DiscretizeBin"});
}

TEST(DiscretizeBin, TheBinValueMustBeThere) {
    ExpectReadFailure(NumericField("<Discretize field='x'><DiscretizeBin><Foo/></DiscretizeBin></Discretize>"),
                      {MISSING_ATTRIBUTE_OF, "binValue", "DiscretizeBin"});
}

TEST(DiscretizeBin, TheLabelOfANumericFieldMustBeANumber) {
    ExpectReadFailure(NumericField("<Discretize field='x'><DiscretizeBin binValue='b'><Foo/></DiscretizeBin>"
                                   "</Discretize>"),
                      {INVALID_VALUE_OF_TYPE, "b", "double"});
}

TEST(DiscretizeBin, ThePlainValueIsReadBeforeTheIntervalIsMissed) {
    ExpectReadFailure(NumericField("<Value value='1'/><Discretize field='x'><DiscretizeBin binValue='b'/>"
                                   "</Discretize>"),
                      {INVALID_VALUE_OF_TYPE, "b", "double"});
    ExpectReadFailure(NumericField("<Discretize field='x'><DiscretizeBin binValue=''/></Discretize>"),
                      {INVALID_VALUE_OF_TYPE, "", "double"});
}

TEST(DiscretizeBin, ABinThatIsNotPlainNeedsNoNumber) {
    const DerivedFields fields(NumericField("<Value value='1'/><Discretize field='x'><DiscretizeBin binValue='b'>" +
                                            kInterval + Extension("recodeElseCopy") + "</DiscretizeBin></Discretize>"));
    EXPECT_EQ(BinsOf(fields.Var("z")), Texts{"[0,1) copy"});
}

TEST(DiscretizeBin, AConflictWithTheFieldIsReported) {
    ExpectReadFailure(BinField(Extension("mapSysmisTo") + Extension("mapSysmisTo") + kInterval),
                      {CONFLICTING_ELEMENTS, "mapSysmisTo", "mapSysmisTo"});
}

TEST(DiscretizeBin, RangesAreTestedBeforeValuesAreCounted) {
    const std::string bin = "<DiscretizeBin binValue='7'>" + kInterval + Extension("recodeTargetSysmis") +
                            Extension("recodeElseCopy") + "</DiscretizeBin>";
    ExpectReadFailure(NumericField("<Discretize field='x'>" + bin + bin + "</Discretize>"),
                      {VALUE_RANGE_INTERSECTS, "x"});
}

} // namespace
} // namespace veltrane::tests
