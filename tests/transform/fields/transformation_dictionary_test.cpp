#include "fields.h"

#include <type_traits>

using namespace veltrane::tests;
using Names = std::vector<std::string>;

static_assert(std::is_base_of_v<BaseDictionary, TransformationDictionary>);

namespace {

class Dictionary : public DerivedFields {
protected:
    const ScoreCaseRecord* Score() { return derived.GetValuesForDerivedVars(&record, &dictionary); }

    /// A reference to an input field of the same name with "d_" before it.
    TransformVar& Reference(const std::string& source, ScoreDictVar::VariableType type = kNumeric) {
        return Derived("d_" + source, type, source, TD::TE_FIELD_REF);
    }
};

} // namespace

TEST_F(Dictionary, DerivedNamesKeepTheirOrder) {
    derived.AddDerievedVarName("b");
    derived.AddDerievedVarName("a");
    Names names = derived.GetDerivedVarNames();
    EXPECT_EQ(names, (Names{"b", "a"}));
    names.clear();
    EXPECT_EQ(derived.GetDerivedVarNames().size(), 2U);
}

TEST_F(Dictionary, SetUpMakesAMissingValueForEachField) {
    Derived("n", kNumeric, "", TD::TE_NONE);
    Derived("s", kText, "", TD::TE_NONE);
    Derived("w", kDateTime, "", TD::TE_NONE);
    EXPECT_EQ(derived.GetVarValue("n"), nullptr);
    derived.SetUpDerivedCaseRecord();
    EXPECT_EQ(Written(derived.GetVarValue("n")), "number SYSMIS");
    EXPECT_EQ(Written(derived.GetVarValue("s")), "text ''");
    EXPECT_EQ(Written(derived.GetVarValue("w")), "kind 2 Undefined");
    EXPECT_EQ(derived.GetVarValue("unknown"), nullptr);
}

TEST_F(Dictionary, SetUpGivesEachFieldItsPositionInListOrder) {
    const TransformVar& b = Derived("b", kNumeric, "", TD::TE_NONE);
    const TransformVar& a = Derived("a", kNumeric, "", TD::TE_NONE);
    derived.SetUpDerivedCaseRecord();
    EXPECT_EQ(b.GetValueIndex(), 0);
    EXPECT_EQ(a.GetValueIndex(), 1);
    EXPECT_EQ(derived.GetValuesForDerivedVars(nullptr, nullptr)->GetVarNames(true), (Names{"b", "a"}));
}

TEST_F(Dictionary, ASecondSetUpChangesNothing) {
    Input("x", 3.0);
    TransformVar& field = Reference("x");
    derived.SetUpDerivedCaseRecord();
    const ScoreCaseRecord* values = Score();
    field.SetValueIndex(0);
    derived.AddDerievedVarName("more");
    derived.SetUpDerivedCaseRecord();
    EXPECT_EQ(derived.GetValuesForDerivedVars(nullptr, nullptr), values);
    EXPECT_EQ(Written(values->Get("d_x")), "number 3");
    EXPECT_TRUE(derived.IsVarValueComputed(&field));
    EXPECT_EQ(values->Size(), 1);
}

TEST_F(Dictionary, ANullRecordGivesTheEarlierRecordUnchanged) {
    EXPECT_EQ(derived.GetValuesForDerivedVars(nullptr, &dictionary), nullptr);
    Input("x", 3.0);
    const TransformVar& field = Reference("x");
    derived.SetUpDerivedCaseRecord();
    const ScoreCaseRecord* values = Score();
    record.SetValue("x", 4.0);
    EXPECT_EQ(derived.GetValuesForDerivedVars(nullptr, &dictionary), values);
    EXPECT_EQ(Written(values->Get("d_x")), "number 3");
    EXPECT_TRUE(derived.IsVarValueComputed(&field));
}

TEST_F(Dictionary, EveryCaseIsComputedIntoTheSameRecord) {
    Input("x", 1.0);
    Input("t", "one");
    Input("when", kDateTime, new DateTimeValue(60.0, DateTimeValue::VAL_TIME));
    Reference("x");
    Reference("t", kText);
    Reference("when", kDateTime);
    derived.SetUpDerivedCaseRecord();
    const ScoreCaseRecord* values = Score();
    EXPECT_EQ(Written(values->Get("d_x")), "number 1");
    EXPECT_EQ(Written(values->Get("d_t")), "text 'one'");
    EXPECT_EQ(Written(values->Get("d_when")), "kind 1 60.000000");
    record.SetValue("x", 2.0);
    record.SetValue("t", "two");
    record.SetMissingValue("when");
    EXPECT_EQ(Score(), values);
    EXPECT_EQ(Written(values->Get("d_x")), "number 2");
    EXPECT_EQ(Written(values->Get("d_t")), "text 'two'");
    EXPECT_EQ(Written(derived.GetVarValue("d_when")), "kind 1 Undefined");
}

TEST_F(Dictionary, FlagsSayWhatWasStoredForTheCase) {
    Input("x", 1.0);
    const TransformVar& x = Reference("x");
    Input("t", "one");
    const TransformVar& t = Reference("t", kText);
    derived.SetUpDerivedCaseRecord();
    EXPECT_FALSE(derived.IsVarValueComputed(&x));
    Score();
    EXPECT_TRUE(derived.IsVarValueComputed(&x));
    EXPECT_TRUE(derived.IsVarValueComputed(&t));
}

TEST_F(Dictionary, AFlagOutsideTheListIsClear) {
    DictVar stranger("x", kNumeric);
    EXPECT_FALSE(derived.IsVarValueComputed(&stranger));
    stranger.SetValueIndex(12);
    EXPECT_FALSE(derived.IsVarValueComputed(&stranger));
    EXPECT_FALSE(derived.IsVarValueComputed(nullptr));
}

TEST_F(Dictionary, AValueOfAnotherKindThanItsSlotIsNotStored) {
    Input("x", 1.0);
    TransformVar& field = Reference("x");
    derived.SetUpDerivedCaseRecord();
    Score();
    field.SetVarType(kText);
    record.SetValue("x", 2.0);
    EXPECT_EQ(Written(Score()->Get("d_x")), "number 1");
    EXPECT_FALSE(derived.IsVarValueComputed(&field));
}

TEST_F(Dictionary, ANameWithoutVariableIsSkipped) {
    Input("x", 1.0);
    derived.AddDerievedVarName("nothing");
    Reference("x");
    derived.SetUpDerivedCaseRecord();
    const ScoreCaseRecord* values = Score();
    EXPECT_EQ(values->GetIndex("nothing"), -1);
    EXPECT_EQ(Written(values->Get("d_x")), "number 1");
}

TEST_F(Dictionary, AVariableThatIsNoDerivedFieldIsSkipped) {
    derived.AddVar("plain", new DictVar("plain", kNumeric));
    derived.AddDerievedVarName("plain");
    derived.SetUpDerivedCaseRecord();
    EXPECT_EQ(Written(Score()->Get("plain")), "number SYSMIS");
    EXPECT_FALSE(derived.IsVarValueComputed(derived.GetVar("plain")));
}

TEST_F(Dictionary, ANameThatIsListedTwiceIsComputedOnce) {
    Input("x", 1.0);
    TransformVar& lag = Derived("lag", kNumeric, "x", TD::TE_LAG);
    derived.AddDerievedVarName("lag");
    derived.SetUpDerivedCaseRecord();
    EXPECT_EQ(Score()->Size(), 1);
    record.SetValue("x", 2.0);
    EXPECT_EQ(Written(Score()->Get("lag")), "number 1");
    EXPECT_EQ(lag.GetValueIndex(), 0);
}

TEST_F(Dictionary, FieldsThatComeLaterAreComputedAndNotStored) {
    Input("x", 1.0);
    derived.SetUpDerivedCaseRecord();
    Score();
    TransformVar& lag = Derived("lag", kNumeric, "x", TD::TE_LAG);
    Score();
    EXPECT_EQ(Score()->Size(), 0);
    EXPECT_FALSE(derived.IsVarValueComputed(&lag));
    EXPECT_EQ(Result(lag), "number 1"); // the two cases have advanced it
}

TEST_F(Dictionary, AVariableThatWasRemovedIsSkippedAndKeepsItsLastValue) {
    Input("x", 1.0);
    Reference("x");
    derived.SetUpDerivedCaseRecord();
    Score();
    derived.RemoveVar("d_x");
    record.SetValue("x", 2.0);
    EXPECT_EQ(Written(Score()->Get("d_x")), "number 1");
    auto* again = new TransformVar("d_x", kNumeric);
    again->AddFieldNameAndTransExpression("x", TD::TE_FIELD_REF);
    derived.AddVar("d_x", again);
    EXPECT_EQ(Written(Score()->Get("d_x")), "number 2");
}

TEST_F(Dictionary, BeforeSetUpFieldsAreEvaluatedAndNothingIsStored) {
    Input("x", 1.0);
    Reference("x");
    Derived("t", kText, "", TD::TE_CONSTANT);
    TransformVar& lag = Derived("lag", kNumeric, "x", TD::TE_LAG);
    EXPECT_EQ(Score(), nullptr);
    EXPECT_EQ(Result(lag), "number 1");
    EXPECT_FALSE(derived.IsVarValueComputed(&lag));
}

TEST_F(Dictionary, FieldsAreComputedInListOrder) {
    Input("x", 1.0);
    Derived("late", kNumeric, "early", TD::TE_FIELD_REF);
    Reference("x");
    derived.AddDerievedVarName("early");
    auto* early = new TransformVar("early", kNumeric);
    early->AddFieldNameAndTransExpression("x", TD::TE_LAG);
    derived.AddVar("early", early);
    derived.SetUpDerivedCaseRecord();
    Score(); // "late" advances the lag first, "early" once more
    record.SetValue("x", 2.0);
    const ScoreCaseRecord* values = Score();
    EXPECT_EQ(Written(values->Get("late")), "number 1");
    EXPECT_EQ(Written(values->Get("early")), "number 2");
}

TEST(KeptDateScale, ADerivedDateIsStoredWithItsDaysAsSeconds) {
    TransformationDictionary derived;
    auto* day = new TransformVar("day", kDateTime);
    day->SetDateTimeType(ScoreDictVar::DT_DATE);
    day->AddFieldNameAndTransExpression("", TD::TE_CONSTANT);
    day->SetConstString("864000.000000");
    derived.AddVar("day", day);
    derived.AddDerievedVarName("day");
    derived.SetUpDerivedCaseRecord();
    const CaseRecord record;
    EXPECT_EQ(Written(derived.GetValuesForDerivedVars(&record, nullptr)->Get("day")), "kind 0 10.000000");
}
