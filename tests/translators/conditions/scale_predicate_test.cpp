#include "support/faults/failure.h"
#include "support/numbers.h"
#include "support/rows.h"
#include "translators/conditions/predicate_reading.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/DictVar.h>

// SimplePredicate over a field that is split into ranges.

namespace veltrane::tests {
namespace {

class ScalePredicateReading : public PredicateReading {};
class KeptScaleReading : public PredicateReading {};

struct RangeRow {
    const char* name;
    const char* attributes;
    const char* range;
    SimplePredicate::SimplePredOperator op;
};
class ScaleOperator : public PredicateReading, public testing::WithParamInterface<RangeRow> {};

TEST_P(ScaleOperator, BecomesARange) {
    const Simple predicate = ReadSimple(std::string("field='x' ") + GetParam().attributes);
    EXPECT_EQ(FirstRangeOf(predicate->GetSplit()), GetParam().range);
    EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), -1);
    EXPECT_EQ(predicate->GetPredicateOperator(), GetParam().op);
    EXPECT_FALSE(predicate->IsMissingValue());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ScaleOperator,
    testing::Values(
        RangeRow{"GreaterThan", "operator='greaterThan' value='3'", "(3,inf)", SimplePredicate::OP_GREATER_THAN},
        RangeRow{"GreaterOrEqual", "operator='greaterOrEqual' value='3'", "[3,inf)",
                 SimplePredicate::OP_GREATER_OR_EQUAL},
        RangeRow{"LessThan", "operator='lessThan' value='3'", "(-inf,3)", SimplePredicate::OP_LESS_THAN},
        RangeRow{"LessOrEqual", "operator='lessOrEqual' value='3'", "(-inf,3]", SimplePredicate::OP_LESS_OR_EQUAL},
        RangeRow{"Equal", "operator='equal' value='3'", "[3,3]", SimplePredicate::OP_EQUAL},
        RangeRow{"NotEqual", "operator='notEqual' value='3'", "(-inf,3)", SimplePredicate::OP_NOT_EQUAL},
        RangeRow{"IsNotMissing", "operator='isNotMissing'", "(-inf,inf)", SimplePredicate::OP_IS_NOT_MISSING}),
    NameOfRow());

TEST_F(ScalePredicateReading, NotEqualIsTwoOpenRanges) {
    const Simple predicate = ReadSimple("field='x' operator='notEqual' value='3'");
    EXPECT_FALSE(Holds(predicate->GetSplit(), 3.0));
    EXPECT_TRUE(Holds(predicate->GetSplit(), 2.5));
    EXPECT_TRUE(Holds(predicate->GetSplit(), 3.5));
}

TEST_F(ScalePredicateReading, OperandIsKeptAsTextAndNumber) {
    const Simple predicate = ReadSimple("field='x' operator='lessThan' value='3.50'");
    EXPECT_EQ(predicate->GetPredValueByString(), "3.50");
    EXPECT_EQ(predicate->GetPredValueByDouble(), 3.5);
}

TEST_F(ScalePredicateReading, IsMissingHoldsForMissingValuesAlone) {
    const Simple predicate = ReadSimple("field='x' operator='isMissing'");
    EXPECT_TRUE(predicate->IsMissingValue());
    EXPECT_EQ(predicate->GetPredicateOperator(), SimplePredicate::OP_IS_MISSING);
    EXPECT_EQ(FirstRangeOf(predicate->GetSplit()), "none");
    EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), 0);
    EXPECT_FALSE(Holds(predicate->GetSplit(), 0.0));
    EXPECT_TRUE(Holds(predicate->GetSplit(), kMissing));
}

TEST_F(ScalePredicateReading, IsNotMissingLeavesMissingValuesUnmapped) {
    const Simple predicate = ReadSimple("field='x' operator='isNotMissing'");
    EXPECT_FALSE(predicate->IsMissingValue());
    EXPECT_TRUE(Holds(predicate->GetSplit(), -1e300));
    EXPECT_FALSE(Holds(predicate->GetSplit(), kMissing));
    EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), -1);
}

TEST_F(ScalePredicateReading, EqualWithAnEmptyValueIsATestForMissing) {
    const Simple predicate = ReadSimple("field='x' operator='equal' value=''");
    EXPECT_TRUE(predicate->IsMissingValue());
    EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), 0);
    EXPECT_EQ(FirstRangeOf(predicate->GetSplit()), "none");
    EXPECT_EQ(predicate->GetPredicateOperator(), SimplePredicate::OP_EQUAL);
    EXPECT_EQ(predicate->GetPredValueByString(), "");
}

TEST_F(ScalePredicateReading, IsMissingAndIsNotMissingTakeNoValue) {
    ExpectSimpleFault("field='x' operator='isMissing' value='1'", {CONFLICTING_ATTRIBUTES, "value", "isMissing"});
    ExpectSimpleFault("field='x' operator='isNotMissing' value='1'", {CONFLICTING_ATTRIBUTES, "value", "isNotMissing"});
    ExpectSimpleFault("field='x' operator='isMissing' value=''", {CONFLICTING_ATTRIBUTES, "value", "isMissing"});
}

TEST_F(ScalePredicateReading, AnEmptyValueGoesWithEqualAlone) {
    for (const char* op : {"lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual", "notEqual", "like", ""}) {
        ExpectSimpleFault(std::string("field='x' value='' operator='") + op + "'",
                          {ATTRIBUTE_NEEDS_NULL_TEXT, "operator", "equal"});
    }
}

TEST_F(ScalePredicateReading, AnUnknownOperatorIsRefusedBehindTheNumber) {
    ExpectSimpleFault("field='x' operator='like' value='1'", {UNSUPPORTED_VALUE, "like", "operator"});
    ExpectSimpleFault("field='x' operator='like' value='one'", {INVALID_VALUE_OF_TYPE, "one", "double"});
}

TEST_F(ScalePredicateReading, AComparisonNeedsAValue) {
    for (const char* op :
         {"lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual", "equal", "notEqual", "like", ""}) {
        ExpectSimpleFault(std::string("field='x' operator='") + op + "'", {MISSING_ATTRIBUTE, "value"});
    }
}

TEST_F(ScalePredicateReading, AnotherNodeGivesTheWholeLine) {
    std::string op = "op";
    std::string value = "value";
    bool isMissing = true;
    const std::unique_ptr<ScaleSplit> split(translator.HandleNodeScaleSplit(
        Element("<Node operator='lessThan' value='1'/>"), &Field("x"), op, isMissing, value));
    EXPECT_EQ(FirstRangeOf(split.get()), "(-inf,inf)");
    EXPECT_EQ(op, "op");
    EXPECT_EQ(value, "value");
    EXPECT_FALSE(isMissing);
}

TEST_F(ScalePredicateReading, NoNodeGivesTheWholeLine) {
    std::string op;
    std::string value;
    bool isMissing = false;
    const std::unique_ptr<ScaleSplit> split(
        translator.HandleNodeScaleSplit(nullptr, &Field("x"), op, isMissing, value));
    EXPECT_EQ(FirstRangeOf(split.get()), "(-inf,inf)");
}

TEST_F(ScalePredicateReading, AnAbsentValueLeavesTheCallersText) {
    std::string op;
    std::string value = "before";
    bool isMissing = false;
    const std::unique_ptr<ScaleSplit> split(translator.HandleNodeScaleSplit(
        Element("<SimplePredicate operator='isMissing'/>"), &Field("x"), op, isMissing, value));
    EXPECT_EQ(op, "isMissing");
    EXPECT_EQ(value, "before");
    EXPECT_TRUE(isMissing);
}

TEST_F(ScalePredicateReading, ADateIsComparedByItsNumber) {
    const Simple predicate = ReadSimple("field='d' operator='greaterThan' value='10'");
    EXPECT_EQ(FirstRangeOf(predicate->GetSplit()), "(10,inf)");
}

TEST_F(ScalePredicateReading, OrdinalNumbersCanBeReadAsAScale) {
    EXPECT_EQ(ReadSimple("field='i' operator='lessThan' value='2.5'", true)->GetSplit()->GetSplitVarType(),
              ScoreSplitVar::SCALE_SPLIT);
    EXPECT_EQ(ReadSimple("field='i' operator='lessThan' value='2'", false)->GetSplit()->GetSplitVarType(),
              ScoreSplitVar::DISCRETE_SPLIT);
}

TEST_F(ScalePredicateReading, OrdinalTextsAreNeverAScale) {
    EXPECT_EQ(ReadSimple("field='o' operator='lessThan' value='b'", true)->GetSplit()->GetSplitVarType(),
              ScoreSplitVar::DISCRETE_SPLIT);
}

TEST_F(ScalePredicateReading, ACategoricalFieldIsNeverAScale) {
    EXPECT_EQ(ReadSimple("field='n' operator='equal' value='2'", true)->GetSplit()->GetSplitVarType(),
              ScoreSplitVar::DISCRETE_SPLIT);
}

TEST_F(KeptScaleReading, OrdinalDatesAreAlwaysAScale) {
    const Simple predicate = ReadSimple("field='q' operator='lessThan' value='2'", false);
    EXPECT_EQ(FirstRangeOf(predicate->GetSplit()), "(-inf,2)");
}

// A number beyond the largest double is no bound: "lessThan" it has no range at all, though every number is below it.
TEST_F(KeptScaleReading, LessThanAnOverflowedNumberHoldsForNothing) {
    const Simple predicate = ReadSimple("field='x' operator='lessThan' value='1e400'");
    EXPECT_EQ(FirstRangeOf(predicate->GetSplit()), "none");
    EXPECT_FALSE(predicate->IsMissingValue());
    EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), -1);
}

TEST_F(KeptScaleReading, NotEqualAnOverflowedNumberHoldsForNothing) {
    const Simple predicate = ReadSimple("field='x' operator='notEqual' value='1e400'");
    EXPECT_EQ(FirstRangeOf(predicate->GetSplit()), "(inf,inf)");
    EXPECT_FALSE(Holds(predicate->GetSplit(), 0.0));
}

struct BoundsRow {
    const char* name;
    const char16_t* op;
    double low;
    double high;
    bool included;
};
class ScaleBounds : public PredicateReading, public testing::WithParamInterface<BoundsRow> {};

TEST_P(ScaleBounds, FollowTheOperator) {
    double low = 0.0;
    double high = 0.0;
    bool included = !GetParam().included;
    translator.GetScaleSplitValue(u" 2.5", GetParam().op, low, high, included);
    EXPECT_EQ(low, GetParam().low);
    EXPECT_EQ(high, GetParam().high);
    EXPECT_EQ(included, GetParam().included);
}

INSTANTIATE_TEST_SUITE_P(Rows, ScaleBounds,
                         testing::Values(BoundsRow{"GreaterThan", u"greaterThan", 2.5, kInfinity, false},
                                         BoundsRow{"GreaterOrEqual", u"greaterOrEqual", 2.5, kInfinity, true},
                                         BoundsRow{"LessThan", u"lessThan", -kInfinity, 2.5, false},
                                         BoundsRow{"LessOrEqual", u"lessOrEqual", -kInfinity, 2.5, true},
                                         BoundsRow{"Equal", u"equal", 2.5, 2.5, true},
                                         BoundsRow{"NotEqual", u"notEqual", 2.5, 2.5, false}),
                         NameOfRow());

TEST_F(ScalePredicateReading, BoundsNeedAnOperatorOfTheSix) {
    double low = 0.0;
    double high = 0.0;
    bool included = false;
    ExpectFailure([&] { translator.GetScaleSplitValue(u"1", u"isMissing", low, high, included); },
                  {UNSUPPORTED_VALUE, "isMissing", "operator"});
    ExpectFailure([&] { translator.GetScaleSplitValue(u"1", nullptr, low, high, included); },
                  {UNSUPPORTED_VALUE, "", "operator"});
    ExpectFailure([&] { translator.GetScaleSplitValue(nullptr, u"equal", low, high, included); },
                  {MISSING_ATTRIBUTE, "value"});
}

TEST_F(ScalePredicateReading, TheFirstDictionaryIsAskedFirst) {
    BaseDictionary derived;
    for (const char* name : {"x", "z"}) {
        derived.AddVar(name, new DictVar(name, ScoreDictVar::kNUMERIC_VAR));
    }
    xercesc::DOMElement* x = Element("<SimplePredicate field='x' operator='isMissing'/>");
    xercesc::DOMElement* z = Element("<SimplePredicate field='z' operator='isMissing'/>");
    const ScoreDictionary& borrowed = derived;
    const Simple first(translator.ParsePredicate(x, dictionary.get(), &derived, false));
    const Simple second(translator.ParsePredicate(z, dictionary.get(), &derived, false));
    EXPECT_EQ(first->GetSplit()->GetSplitVar(), &Field("x"));
    EXPECT_EQ(second->GetSplit()->GetSplitVar(), borrowed.GetVar("z"));
}

} // namespace
} // namespace veltrane::tests
