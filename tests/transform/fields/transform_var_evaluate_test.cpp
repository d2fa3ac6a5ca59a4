#include "fields.h"
#include "support/numbers.h"

using namespace veltrane::tests;

namespace {

using FieldReference = DerivedFields;
using SourceLookup = DerivedFields;
using Constant = DerivedFields;
using ResultWidth = DerivedFields;
using OtherKinds = DerivedFields;

} // namespace

TEST_F(FieldReference, GivesTheSourcesValueInAnObjectOfItsOwn) {
    Input("x", 3.5);
    Input("t", "abc");
    Input("when", kDateTime, new DateTimeValue(60.0, DateTimeValue::VAL_TIME));
    EXPECT_EQ(Result(Derived("n", kNumeric, "x", TD::TE_FIELD_REF)), "number 3.5");
    EXPECT_EQ(Result(Derived("s", kText, "t", TD::TE_FIELD_REF)), "text 'abc'");
    EXPECT_EQ(Result(Derived("w", kDateTime, "when", TD::TE_FIELD_REF)), "kind 1 60.000000");
    auto& field = static_cast<TransformVar&>(*derived.GetVar("n"));
    EXPECT_NE(Value(field), record.Get("x"));
    EXPECT_EQ(Value(field), Value(field));
}

TEST_F(FieldReference, AMissingSourceTakesTheReplacement) {
    MakeMissing(Input("x", 99.0), 99.0);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
    EXPECT_EQ(Result(field), "number 99");
    field.SetRecodeMissValueTo(Num(-1));
    EXPECT_EQ(Result(field), "number -1");
    record.SetValue("x", kMissing);
    EXPECT_EQ(Result(field), "number -1");
    record.SetValue("x", 5.0);
    EXPECT_EQ(Result(field), "number 5");
}

TEST_F(FieldReference, ASourceThatIsNotInTheRecordIsMissing) {
    Input("x", kNumeric, nullptr);
    Input("t", kText, nullptr);
    EXPECT_EQ(Result(Derived("n", kNumeric, "x", TD::TE_FIELD_REF)), "number SYSMIS");
    TransformVar& text = Derived("s", kText, "t", TD::TE_FIELD_REF);
    EXPECT_EQ(Result(text), "text ''");
    text.SetRecodeMissValueTo(Txt("none"));
    EXPECT_EQ(Result(text), "text 'none'");
}

TEST_F(FieldReference, WithoutASourceVariableNothingIsReplaced) {
    record.Add("x", Num(kMissing));
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
    field.SetRecodeMissValueTo(Num(1));
    EXPECT_EQ(Result(field), "number SYSMIS");
    record.SetValue("x", 4.0);
    EXPECT_EQ(Result(field), "number 4");
}

TEST_F(FieldReference, TheResultIsClearedBeforeEachCase) {
    Input("x", 1.0);
    Input("t", "abc");
    TransformVar& number = Derived("n", kNumeric, "x", TD::TE_FIELD_REF);
    TransformVar& text = Derived("s", kText, "t", TD::TE_FIELD_REF);
    EXPECT_EQ(Result(number), "number 1");
    EXPECT_EQ(Result(text), "text 'abc'");
    record.Remove("x");
    record.Remove("t");
    EXPECT_EQ(Result(number), "number SYSMIS");
    EXPECT_EQ(Result(text), "text ''");
}

TEST_F(FieldReference, AValueOfAnotherKindGoesThroughSetValue) {
    Input("x", 1.0);
    Input("t", "abc");
    EXPECT_EQ(Result(Derived("n", kNumeric, "t", TD::TE_FIELD_REF)), "number SYSMIS");
    EXPECT_EQ(Result(Derived("s", kText, "x", TD::TE_FIELD_REF)), "text ''");
    EXPECT_EQ(Result(Derived("w", kDateTime, "x", TD::TE_FIELD_REF)), "kind 2 1.000000");
}

TEST(KeptDateScale, AReferenceToADateStoresItsDaysAsSeconds) {
    CaseRecord record;
    BaseDictionary dictionary;
    dictionary.AddVar("day", new DictVar("day", kDateTime));
    record.Add("day", new DateTimeValue(2 * 86400.0, DateTimeValue::VAL_DATE));
    TransformVar field("d", kDateTime);
    field.AddFieldNameAndTransExpression("day", TD::TE_FIELD_REF);
    EXPECT_EQ(Written(field.GetTransformedValue(&record, &dictionary, nullptr)), "kind 0 2.000000");
}

TEST_F(SourceLookup, ThePositionIsFoundOnceAndStands) {
    Input("x", 1.0);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
    EXPECT_EQ(Result(field), "number 1");
    CaseRecord other;
    other.Add("y", Num(7));
    other.Add("x", Num(8));
    EXPECT_EQ(Written(field.GetTransformedValue(&other, &dictionary, &derived)), "number 7");
}

TEST_F(SourceLookup, APositionThatWasNotFoundIsLookedUpAgain) {
    Input("x", kNumeric, nullptr);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
    EXPECT_EQ(Result(field), "number SYSMIS");
    record.Add("x", Num(2));
    EXPECT_EQ(Result(field), "number 2");
}

TEST_F(SourceLookup, TheDataDictionaryComesFirst) {
    MakeMissing(Input("x", 1.0), 1.0);
    TransformVar& sameName = Derived("x", kNumeric, "", TD::TE_CONSTANT);
    sameName.SetConstString("5");
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
    field.SetRecodeMissValueTo(Num(-1));
    EXPECT_EQ(Result(field), "number -1");
}

TEST_F(SourceLookup, AVariableThatWasNotFoundIsLookedUpAgain) {
    record.Add("x", Num(1));
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
    field.SetRecodeMissValueTo(Num(-1));
    EXPECT_EQ(Result(field), "number 1");
    auto* late = new DictVar("x", kNumeric);
    MakeMissing(*late, 1.0);
    dictionary.AddVar("x", late);
    EXPECT_EQ(Result(field), "number -1");
}

TEST_F(SourceLookup, AVariableThatWasFoundStaysWhateverIsAdded) {
    record.Add("x", Num(1));
    Derived("x", kNumeric, "", TD::TE_CONSTANT).SetConstString("5");
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_NORM_CONTINUOUS);
    EXPECT_EQ(Result(field), "number 1");
    auto* late = new DictVar("x", kNumeric);
    MakeMissing(*late, 1.0);
    dictionary.AddVar("x", late);
    Derived("y", kNumeric, "", TD::TE_CONSTANT);
    EXPECT_EQ(Result(field), "number 1");
}

TEST_F(SourceLookup, AVariableThatWasRemovedIsForgotten) {
    MakeMissing(Input("x", 1.0), 1.0);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
    field.SetRecodeMissValueTo(Num(-1));
    EXPECT_EQ(Result(field), "number -1");
    dictionary.RemoveVar("x");
    EXPECT_EQ(Result(field), "number 1");
}

TEST_F(SourceLookup, ADerivedSourceIsEvaluated) {
    Input("x", 3.0);
    Derived("first", kNumeric, "x", TD::TE_FIELD_REF);
    EXPECT_EQ(Result(Derived("second", kNumeric, "first", TD::TE_FIELD_REF)), "number 3");
}

TEST_F(SourceLookup, AValueInTheRecordWinsOverTheDerivation) {
    Input("x", 3.0);
    Derived("first", kNumeric, "x", TD::TE_FIELD_REF);
    record.Add("first", Num(50));
    EXPECT_EQ(Result(Derived("second", kNumeric, "first", TD::TE_FIELD_REF)), "number 50");
}

TEST_F(SourceLookup, NullArgumentsGiveAMissingValue) {
    Input("x", 3.0);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
    EXPECT_EQ(Written(field.GetTransformedValue(nullptr, nullptr, nullptr)), "number SYSMIS");
    for (const auto kind : {TD::TE_NORM_DISCRETE, TD::TE_DISCRETIZE, TD::TE_MAP_VALUES, TD::TE_LAG}) {
        field.AddFieldNameAndTransExpression("x", kind);
        EXPECT_EQ(Written(field.GetTransformedValue(nullptr, nullptr, nullptr)), "number SYSMIS") << kind;
        EXPECT_EQ(Written(field.GetTransformedValue(&record, nullptr, nullptr)), "number SYSMIS") << kind;
    }
}

TEST_F(Constant, IsReadByVariableType) {
    TransformVar& number = Derived("n", kNumeric, "", TD::TE_CONSTANT);
    number.SetConstString("12.5");
    TransformVar& text = Derived("s", kText, "", TD::TE_CONSTANT);
    text.SetConstString("12.5");
    EXPECT_EQ(Result(number), "number 12.5");
    EXPECT_EQ(Result(text), "text '12.5'");
}

TEST_F(Constant, ATextThatIsNoNumberIsMissing) {
    TransformVar& number = Derived("n", kNumeric, "", TD::TE_CONSTANT);
    number.SetConstString("abc");
    EXPECT_EQ(Result(number), "number SYSMIS");
    EXPECT_EQ(Result(Derived("empty", kNumeric, "", TD::TE_CONSTANT)), "number SYSMIS");
}

TEST_F(Constant, IsComputedOnce) {
    TransformVar& field = Derived("n", kNumeric, "", TD::TE_CONSTANT);
    field.SetConstString("1");
    const ScoreValue* first = Value(field);
    field.SetConstString("2");
    EXPECT_EQ(Value(field), first);
    EXPECT_EQ(Result(field), "number 1");
}

TEST_F(Constant, ADateTimeIsReadAsInternalSecondsWithTheKindOfItsType) {
    const struct {
        ScoreDictVar::DateTimeType type;
        const char* text;
        const char* expected;
    } rows[] = {
        {ScoreDictVar::DT_DATETIME, "946684800.000000", "kind 2 946684800.000000"},
        {ScoreDictVar::DT_DAYS_SINCE_1960, "86400.000000", "kind 0 86400.000000"},
        {ScoreDictVar::DT_TIME, "3600.000000", "kind 1 3600.000000"},
        {ScoreDictVar::DT_NONE, "5", "kind 2 5.000000"},
        {ScoreDictVar::DT_DATE, "Undefined", "kind 0 Undefined"},
    };
    for (const auto& row : rows) {
        TransformVar field("c", kDateTime);
        field.SetDateTimeType(row.type);
        field.AddFieldNameAndTransExpression("", TD::TE_CONSTANT);
        field.SetConstString(row.text);
        EXPECT_EQ(Written(field.GetTransformedValue(nullptr, nullptr, nullptr)), row.expected) << row.type;
    }
}

TEST_F(Constant, ATextIsFitToTheWidth) {
    TransformVar& field = Derived("s", kText, "", TD::TE_CONSTANT);
    field.SetConstString("abcdef");
    field.SetWidth(4);
    EXPECT_EQ(Result(field), "text 'abcd'");
    EXPECT_EQ(static_cast<const StringValue*>(Value(field))->GetLength(), 4);
}

TEST_F(ResultWidth, CutsALongerTextAndSetsTheLength) {
    Input("t", "abcdef");
    const struct {
        int width;
        const char* text;
        int length;
    } rows[] = {{-1, "text 'abcdef'", 0},
                {0, "text ''", 0},
                {3, "text 'abc'", 3},
                {6, "text 'abcdef'", 6},
                {9, "text 'abcdef'", 9}};
    for (const auto& row : rows) {
        TransformVar field("s", kText);
        field.AddFieldNameAndTransExpression("t", TD::TE_FIELD_REF);
        field.SetWidth(row.width);
        const ScoreValue* value = field.GetTransformedValue(&record, &dictionary, &derived);
        EXPECT_EQ(Written(value), row.text) << row.width;
        EXPECT_EQ(static_cast<const StringValue*>(value)->GetLength(), row.length) << row.width;
    }
}

TEST_F(ResultWidth, AnEmptyResultHasTheWidthAsLengthToo) {
    TransformVar& field = Derived("s", kText, "t", TD::TE_FIELD_REF);
    field.SetWidth(7);
    EXPECT_EQ(Result(field), "text ''");
    EXPECT_EQ(static_cast<const StringValue*>(Value(field))->GetLength(), 7);
}

TEST_F(ResultWidth, LeavesNumbersAlone) {
    Input("x", 123456.0);
    TransformVar& field = Derived("n", kNumeric, "x", TD::TE_FIELD_REF);
    field.SetWidth(2);
    EXPECT_EQ(Result(field), "number 123456");
}

TEST_F(OtherKinds, LeaveTheResultCleared) {
    Input("x", 1.0);
    for (const int kind : {8, 9, -1}) {
        TransformVar number("n", kNumeric);
        number.AddFieldNameAndTransExpression("x", static_cast<TD::TransExpression>(kind));
        EXPECT_EQ(Written(number.GetTransformedValue(&record, &dictionary, &derived)), "number SYSMIS") << kind;
        TransformVar text("s", kText);
        text.AddFieldNameAndTransExpression("x", static_cast<TD::TransExpression>(kind));
        EXPECT_EQ(Written(text.GetTransformedValue(&record, &dictionary, &derived)), "text ''") << kind;
    }
}

TEST_F(OtherKinds, AnyTypeButNumericAndDateTimeHoldsText) {
    Input("t", "abc");
    TransformVar field("s", static_cast<ScoreDictVar::VariableType>(3));
    field.AddFieldNameAndTransExpression("t", TD::TE_FIELD_REF);
    EXPECT_EQ(Written(field.GetTransformedValue(&record, &dictionary, &derived)), "text 'abc'");
}
