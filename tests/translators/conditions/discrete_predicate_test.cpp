#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/conditions/predicate_reading.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/ValueLabelSet.h>

// SimplePredicate over a field that is split into categories.

namespace veltrane::tests {
namespace {

class DiscretePredicateReading : public PredicateReading {};
class KeptDiscreteReading : public PredicateReading {};

struct OrdinalRow {
    const char* name;
    const char* op;
    const char* texts;   ///< the categories of o for the value b
    const char* numbers; ///< those of i for the value 2
};
class OrdinalOperator : public PredicateReading, public testing::WithParamInterface<OrdinalRow> {
protected:
    std::string Attributes(const char* fieldAndValue) const {
        return std::string(fieldAndValue) + " operator='" + GetParam().op + "'";
    }
};

TEST_P(OrdinalOperator, BecomesTheCategoriesItSpans) {
    EXPECT_EQ(ValuesOf(ReadSimple(Attributes("field='o' value='b'"))->GetSplit()), GetParam().texts);
    EXPECT_EQ(ValuesOf(ReadSimple(Attributes("field='i' value='2'"))->GetSplit()), GetParam().numbers);
}

TEST_P(OrdinalOperator, IsKeyedByNumberOverAnEncoder) {
    Encode("o");
    Encode("i");
    std::string codes;
    for (const char* text = GetParam().texts; *text != '\0'; ++text) {
        codes += *text == ',' ? ',' : static_cast<char>(*text - 'a' + '0');
    }
    const Simple texts = ReadSimple(Attributes("field='o' value='b'"));
    EXPECT_EQ(ValuesOf(texts->GetSplit()), "");
    EXPECT_EQ(NumbersOf(texts->GetSplit()), codes);
    const Simple numbers = ReadSimple(Attributes("field='i' value='2'"));
    EXPECT_EQ(ValuesOf(numbers->GetSplit()), "");
    EXPECT_EQ(NumbersOf(numbers->GetSplit()), GetParam().numbers);
}

INSTANTIATE_TEST_SUITE_P(Rows, OrdinalOperator,
                         testing::Values(OrdinalRow{"GreaterThan", "greaterThan", "c", "3"},
                                         OrdinalRow{"GreaterOrEqual", "greaterOrEqual", "b,c", "2,3"},
                                         OrdinalRow{"LessThan", "lessThan", "a", "1"},
                                         OrdinalRow{"LessOrEqual", "lessOrEqual", "a,b", "1,2"},
                                         OrdinalRow{"Equal", "equal", "b", "2"},
                                         OrdinalRow{"NotEqual", "notEqual", "a,c", "1,3"}),
                         NameOfRow());

TEST_F(DiscretePredicateReading, GreaterThanTheFirstOrdinalCategoryGivesTheOthers) {
    EXPECT_EQ(ValuesOf(ReadSimple("field='o' operator='greaterThan' value='a'")->GetSplit()), "b,c");
}

TEST_F(DiscretePredicateReading, LessThanTheFirstOrdinalCategoryIsFalseForEveryPresentValue) {
    const Simple predicate = ReadSimple("field='o' operator='lessThan' value='a'");
    EXPECT_EQ(ValuesOf(predicate->GetSplit()), "");
    for (const char* text : {"a", "b", "c"}) {
        const StringValue value(text);
        EXPECT_EQ(predicate->GetSplit()->GetSplitChildIndex(&value), -1);
    }
}

TEST_F(DiscretePredicateReading, GreaterThanTheLastOrdinalCategoryGivesNone) {
    EXPECT_EQ(ValuesOf(ReadSimple("field='o' operator='greaterThan' value='c'")->GetSplit()), "");
}

TEST_F(DiscretePredicateReading, TheEndsOfAnOrdinalFieldAreSpanned) {
    EXPECT_EQ(ValuesOf(ReadSimple("field='o' operator='greaterOrEqual' value='a'")->GetSplit()), "a,b,c");
    EXPECT_EQ(ValuesOf(ReadSimple("field='o' operator='lessOrEqual' value='c'")->GetSplit()), "a,b,c");
    EXPECT_EQ(ValuesOf(ReadSimple("field='o' operator='notEqual' value='a'")->GetSplit()), "b,c");
    EXPECT_EQ(ValuesOf(ReadSimple("field='o' operator='equal' value='a'")->GetSplit()), "a");
}

TEST_F(DiscretePredicateReading, AnOrdinalValueOutsideTheCategoriesIsRefused) {
    ExpectSimpleFault("field='o' operator='lessThan' value='d'", {INVALID_ATTRIBUTE_VALUE_IN, "d", "value", "o"});
    ExpectSimpleFault("field='i' operator='equal' value='4'", {INVALID_ATTRIBUTE_VALUE_IN, "4", "value", "i"});
}

TEST_F(DiscretePredicateReading, AnUnknownOperatorOfAnOrdinalFieldIsRefused) {
    ExpectSimpleFault("field='o' operator='like' value='a'", {INVALID_ATTRIBUTE_VALUE_IN, "like", "operator", "o"});
}

TEST_F(DiscretePredicateReading, AnOrdinalComparisonNeedsAValue) {
    ExpectSimpleFault("field='o' operator='lessThan'", {MISSING_ATTRIBUTE_OF, "value", "SimplePredicate"});
}

TEST_F(DiscretePredicateReading, AnOrdinalFieldNeedsAListOfValues) {
    ExpectSimpleFault("field='v' operator='equal' value='a'", {MISSING_VALUE_LIST, "v"});
    ExpectSimpleFault("field='v' operator='equal' value=''", {MISSING_VALUE_LIST, "v"});
    ExpectSimpleFault("field='j' operator='equal' value=''", {MISSING_VALUE_LIST, "j"});
}

TEST_F(DiscretePredicateReading, ACategoricalFieldNeedsAListOfValues) {
    ExpectSimpleFault("field='t' operator='equal' value=''", {MISSING_VALUE_LIST, "t"});
    ExpectSimpleFault("field='t' operator='equal' value='a'", {MISSING_VALUE_LIST, "t"});
    ExpectSimpleFault("field='m' operator='equal' value='1'", {MISSING_VALUE_LIST, "m"});
}

TEST_F(DiscretePredicateReading, ACategoricalValueOutsideTheListIsRefused) {
    ExpectSimpleFault("field='s' operator='equal' value='d'", {NO_VALID_VALUE, "s"});
    ExpectSimpleFault("field='s' operator='equal' value='?'", {NO_VALID_VALUE, "s"});
    ExpectSimpleFault("field='n' operator='equal' value='4'", {NO_VALID_VALUE, "n"});
    ExpectSimpleFault("field='n' operator='equal' value='two'", {NO_VALID_VALUE, "n"});
}

TEST_F(DiscretePredicateReading, ACategoricalComparisonNeedsAValue) {
    ExpectSimpleFault("field='s' operator='equal'", {MISSING_ATTRIBUTE, "value"});
    ExpectSimpleFault("field='s' operator='isMissing '", {MISSING_ATTRIBUTE, "value"});
}

TEST_F(DiscretePredicateReading, ACategoryComesIntoTheStoreThatTheFieldAnswersWith) {
    EXPECT_EQ(ValuesOf(ReadSimple("field='s' operator='equal' value='b'")->GetSplit()), "b");
    EXPECT_EQ(ValuesOf(ReadSimple("field='n' operator='equal' value='2'")->GetSplit()), "2");
    Encode("s");
    Encode("n");
    EXPECT_EQ(NumbersOf(ReadSimple("field='s' operator='equal' value='b'")->GetSplit()), "1");
    EXPECT_EQ(NumbersOf(ReadSimple("field='n' operator='equal' value='3'")->GetSplit()), "2");
}

TEST_F(KeptDiscreteReading, EveryOperatorOfACategoricalFieldReadsLikeEqual) {
    const struct {
        const char* op;
        SimplePredicate::SimplePredOperator stored;
    } rows[] = {{"equal", SimplePredicate::OP_EQUAL},
                {"notEqual", SimplePredicate::OP_NOT_EQUAL},
                {"lessThan", SimplePredicate::OP_LESS_THAN},
                {"lessOrEqual", SimplePredicate::OP_LESS_OR_EQUAL},
                {"greaterThan", SimplePredicate::OP_GREATER_THAN},
                {"greaterOrEqual", SimplePredicate::OP_GREATER_OR_EQUAL},
                {"like", SimplePredicate::OP_IS_NOT_MISSING}};
    for (const auto& row : rows) {
        const Simple predicate = ReadSimple(std::string("field='s' value='b' operator='") + row.op + "'");
        EXPECT_EQ(ValuesOf(predicate->GetSplit()), "b") << row.op;
        EXPECT_EQ(predicate->GetPredicateOperator(), row.stored) << row.op;
    }
}

TEST_F(DiscretePredicateReading, IsMissingHoldsNoCategory) {
    for (const char* field : {"o", "i", "s", "n", "t", "v"}) {
        const Simple predicate = ReadSimple(std::string("operator='isMissing' field='") + field + "'");
        EXPECT_EQ(ValuesOf(predicate->GetSplit()), "") << field;
        EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), 0) << field;
        EXPECT_TRUE(predicate->IsMissingValue()) << field;
    }
}

TEST_F(DiscretePredicateReading, IsNotMissingHoldsEveryCategory) {
    const struct {
        const char* field;
        const char* values;
    } rows[] = {{"o", "a,b,c"}, {"i", "1,2,3"}, {"s", "a,b,c"}, {"n", "1,2,3"}, {"t", ""}, {"v", ""}};
    for (const auto& row : rows) {
        const Simple predicate = ReadSimple(std::string("operator='isNotMissing' field='") + row.field + "'");
        EXPECT_EQ(ValuesOf(predicate->GetSplit()), row.values) << row.field;
        EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), -1) << row.field;
        EXPECT_FALSE(predicate->IsMissingValue()) << row.field;
    }
}

TEST_F(DiscretePredicateReading, IsMissingAndIsNotMissingTakeNoValue) {
    ExpectSimpleFault("field='s' operator='isMissing' value='a'", {CONFLICTING_ATTRIBUTES, "value", "isMissing"});
    ExpectSimpleFault("field='o' operator='isNotMissing' value=''", {CONFLICTING_ATTRIBUTES, "value", "isNotMissing"});
}

TEST_F(DiscretePredicateReading, AnEmptyValueGoesWithEqualAlone) {
    for (const char* field : {"o", "i", "s", "n", "w", "h", "t"}) {
        ExpectSimpleFault(std::string("value='' operator='lessThan' field='") + field + "'",
                          {ATTRIBUTE_NEEDS_NULL_TEXT, "operator", "equal"});
    }
}

TEST_F(DiscretePredicateReading, EqualWithAnEmptyValueIsATestForMissing) {
    const CaseRecord nothing;
    for (const char* field : {"o", "s", "n"}) {
        const Simple predicate = ReadSimple(std::string("value='' operator='equal' field='") + field + "'");
        EXPECT_TRUE(predicate->IsMissingValue()) << field;
        EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), 0) << field;
        EXPECT_EQ(ValuesOf(predicate->GetSplit()), "") << field;
        EXPECT_EQ(predicate->Evaluate(&nothing, nullptr), ScorePredicate::PRED_TRUE) << field;
    }
}

TEST_F(DiscretePredicateReading, AnEmptyValueThatIsACategoryIsANormalComparison) {
    const Simple categorical = ReadSimple("field='w' operator='equal' value=''");
    EXPECT_FALSE(categorical->IsMissingValue());
    EXPECT_EQ(categorical->GetSplit()->GetMissvalMap(), -1);
    const StringValue empty("");
    const StringValue other("a");
    EXPECT_EQ(categorical->GetSplit()->GetSplitChildIndex(&empty), 0);
    EXPECT_EQ(categorical->GetSplit()->GetSplitChildIndex(&other), -1);
    const CaseRecord nothing;
    EXPECT_EQ(categorical->Evaluate(&nothing, nullptr), ScorePredicate::PRED_UNKNOWN);

    const Simple ordinal = ReadSimple("field='h' operator='equal' value=''");
    EXPECT_FALSE(ordinal->IsMissingValue());
    EXPECT_EQ(ordinal->GetSplit()->GetMissvalMap(), -1);
    EXPECT_EQ(ordinal->GetSplit()->GetSplitChildIndex(&empty), 0);
    EXPECT_EQ(ordinal->GetSplit()->GetSplitChildIndex(&other), -1);
    EXPECT_EQ(ordinal->Evaluate(&nothing, nullptr), ScorePredicate::PRED_UNKNOWN);
}

TEST_F(KeptDiscreteReading, EqualWithAnEmptyValueHoldsForEveryOrdinalNumberToo) {
    const Simple predicate = ReadSimple("field='i' operator='equal' value=''");
    EXPECT_TRUE(predicate->IsMissingValue());
    EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), 0);
    EXPECT_EQ(ValuesOf(predicate->GetSplit()), "1,2,3");
}

TEST_F(KeptDiscreteReading, ACodedOrdinalNumberIsKeyedByItselfAndAskedForByItsCode) {
    Encode("i");
    const Simple predicate = ReadSimple("field='i' operator='equal' value='2'");
    const ScoreEncoder* encoder = Field("i").GetEncoder();
    const NumericValue two(2.0);
    EXPECT_EQ(encoder->EncodeConst(&two), 1);
    EXPECT_EQ(NumbersOf(predicate->GetSplit()), "2");
}

TEST_F(KeptDiscreteReading, ATestForMissingTeachesTheEncoderTheEmptyText) {
    Encode("s");
    ReadSimple("field='s' operator='isMissing'");
    EXPECT_EQ(Field("s").GetEncoder()->EncodeConst(std::string()), 3);
}

TEST_F(DiscretePredicateReading, AnotherNodeGivesAnOrdinalFieldAllItsCategories) {
    std::string op = "op";
    std::string value = "value";
    bool isMissing = true;
    const std::unique_ptr<DiscreteSplit> split(translator.HandleNodeDiscreteSplit(
        Element("<Node operator='equal' value='a'/>"), &Field("o"), op, isMissing, value));
    EXPECT_EQ(ValuesOf(split.get()), "a,b,c");
    EXPECT_EQ(op + value, "opvalue");
    EXPECT_FALSE(isMissing);
}

TEST_F(DiscretePredicateReading, AnotherNodeGivesACategoricalFieldNone) {
    std::string op;
    std::string value;
    bool isMissing = false;
    const std::unique_ptr<DiscreteSplit> split(
        translator.HandleNodeDiscreteSplit(nullptr, &Field("s"), op, isMissing, value));
    EXPECT_EQ(ValuesOf(split.get()), "");
    ExpectFailure([&] { translator.HandleNodeDiscreteSplit(nullptr, &Field("v"), op, isMissing, value); },
                  {MISSING_VALUE_LIST, "v"});
}

class CategoryLearning : public PredicateReading {
protected:
    /// Gives the field without values an empty list, which makes it ready to learn.
    void MakeReady(const char* field) { Field(field).SetValueLabels(new ValueLabelSet); }
};
class KeptCategoryLearning : public CategoryLearning {};

TEST_F(CategoryLearning, AFieldWithoutValuesTakesTheOperand) {
    MakeReady("t");
    EXPECT_EQ(ValuesOf(ReadSimple("field='t' operator='equal' value='new'")->GetSplit()), "new");
    ReadSimple("field='t' operator='equal' value='other'");
    ReadSimple("field='t' operator='equal' value='new'");
    EXPECT_EQ(CategoriesOf(Field("t")), "new,other");
    MakeReady("m");
    EXPECT_EQ(ValuesOf(ReadSimple("field='m' operator='equal' value='2.50'")->GetSplit()), "2.5");
    EXPECT_EQ(CategoriesOf(Field("m")), "2.50");
}

TEST_F(CategoryLearning, TheEncoderTakesTheOperandToo) {
    MakeReady("t");
    Encode("t");
    EXPECT_EQ(NumbersOf(ReadSimple("field='t' operator='equal' value='new'")->GetSplit()), "0");
    EXPECT_EQ(NumbersOf(ReadSimple("field='t' operator='equal' value='other'")->GetSplit()), "1");
}

TEST_F(CategoryLearning, ANumberHasToBeOne) {
    MakeReady("m");
    ExpectSimpleFault("field='m' operator='equal' value='two'", {INVALID_VALUE_OF_TYPE, "two", "double"});
    EXPECT_EQ(CategoriesOf(Field("m")), "");
}

TEST_F(CategoryLearning, TheEmptyTextIsNotLearned) {
    MakeReady("t");
    DiscreteSplit split(&Field("t"));
    ExpectFailure([&] { translator.SetDiscreteSplitValue(&Field("t"), &split, u"", 0); }, {NO_VALID_VALUE, "t"});
    EXPECT_EQ(CategoriesOf(Field("t")), "");
}

TEST_F(CategoryLearning, AListedFieldLearnsNothing) {
    DiscreteSplit split(&Field("s"));
    ExpectFailure([&] { translator.SetDiscreteSplitValue(&Field("s"), &split, u"d", 0); }, {NO_VALID_VALUE, "s"});
    EXPECT_EQ(CategoriesOf(Field("s")), "a,b,c");
}

TEST_F(KeptCategoryLearning, ALoneSimplePredicateFindsNoListToAddTo) {
    ExpectSimpleFault("field='t' operator='equal' value='a'", {MISSING_VALUE_LIST, "t"});
    ReadSet("field='t' booleanOperator='isIn'", "<Array n='1' type='string'>b</Array>");
    EXPECT_EQ(ValuesOf(ReadSimple("field='t' operator='equal' value='a'")->GetSplit()), "a");
    EXPECT_EQ(CategoriesOf(Field("t")), "b,a");
}

TEST_F(DiscretePredicateReading, SetDiscreteSplitValueTakesAnyIndex) {
    DiscreteSplit split(&Field("s"));
    translator.SetDiscreteSplitValue(&Field("s"), &split, u"a", 4);
    const StringValue value("a");
    EXPECT_EQ(split.GetSplitChildIndex(&value), 4);
    ExpectFailure([&] { translator.SetDiscreteSplitValue(&Field("s"), &split, nullptr, 0); },
                  {MISSING_ATTRIBUTE, "value"});
}

} // namespace
} // namespace veltrane::tests
