#include "fields.h"
#include "support/numbers.h"

#include <sstream>

using namespace veltrane::tests;

namespace {

class Lag : public DerivedFields {
protected:
    TransformVar& LagOf(const std::string& source, ScoreDictVar::VariableType type, int n,
                        std::vector<const ScoreDictVar*> blocks = {}) {
        TransformVar& field = Derived("lag", type, source, TD::TE_LAG);
        field.SetLags(n, std::move(blocks));
        return field;
    }

    /// The results of the cases with these numbers in x, joined.
    std::string Cases(TransformVar& field, std::initializer_list<double> numbers) {
        std::ostringstream out;
        for (const double number : numbers) {
            record.SetValue("x", number);
            out << Result(field) << "; ";
        }
        return out.str();
    }
};

} // namespace

TEST_F(Lag, OfOneGivesTheCaseBefore) {
    Input("x", 0.0);
    EXPECT_EQ(Cases(LagOf("x", kNumeric, 1), {1, 2, 3}), "number SYSMIS; number 1; number 2; ");
}

TEST_F(Lag, IsOneUntilSet) {
    Input("x", 0.0);
    EXPECT_EQ(Cases(Derived("lag", kNumeric, "x", TD::TE_LAG), {1, 2, 3}), "number SYSMIS; number 1; number 2; ");
}

TEST_F(Lag, OfThreeGivesMissingForThreeCases) {
    Input("x", 0.0);
    EXPECT_EQ(Cases(LagOf("x", kNumeric, 3), {1, 2, 3, 4, 5, 6, 7}),
              "number SYSMIS; number SYSMIS; number SYSMIS; number 1; number 2; number 3; number 4; ");
}

TEST_F(Lag, OfTexts) {
    Input("t", "first");
    TransformVar& field = LagOf("t", kText, 1);
    EXPECT_EQ(Result(field), "text ''");
    record.SetValue("t", "a second text that is longer than any short one");
    EXPECT_EQ(Result(field), "text 'first'");
    record.SetValue("t", "third");
    EXPECT_EQ(Result(field), "text 'a second text that is longer than any short one'");
}

TEST_F(Lag, OfDateTimesGoesThroughTheNumber) {
    Input("when", kDateTime, new DateTimeValue(60.0, DateTimeValue::VAL_TIME));
    TransformVar& field = LagOf("when", kDateTime, 1);
    EXPECT_EQ(Result(field), "kind 2 Undefined");
    EXPECT_EQ(Result(field), "kind 2 60.000000");
}

TEST_F(Lag, KeepsAMissingValueAsIt) {
    Input("x", 0.0);
    EXPECT_EQ(Cases(LagOf("x", kNumeric, 1), {1, kMissing, 3, 4}),
              "number SYSMIS; number 1; number SYSMIS; number 3; ");
}

TEST_F(Lag, ACaseWithoutTheSourceCountsAsMissing) {
    Input("x", 0.0);
    TransformVar& field = LagOf("x", kNumeric, 2);
    EXPECT_EQ(Cases(field, {1, 2}), "number SYSMIS; number SYSMIS; ");
    record.Remove("x");
    EXPECT_EQ(Result(field), "number 1");
    EXPECT_EQ(Cases(field, {4, 5, 6}), "number 2; number SYSMIS; number 4; ");
}

TEST_F(Lag, AChangeOfTheBlockMakesTheCaseMissingAndTheHistoryMovesOn) {
    Input("x", 0.0);
    const DictVar& block = Input("who", "a");
    TransformVar& field = LagOf("x", kNumeric, 1, {&block});
    EXPECT_EQ(Cases(field, {1, 2}), "number SYSMIS; number 1; ");
    record.SetValue("who", "b");
    EXPECT_EQ(Cases(field, {3, 4}), "number SYSMIS; number 3; ");
    record.SetValue("who", "a");
    EXPECT_EQ(Cases(field, {5, 6}), "number SYSMIS; number 5; ");
}

TEST_F(Lag, TheBlockIsComparedWithTheCaseThatIsLookedBackAt) {
    Input("x", 0.0);
    const DictVar& block = Input("who", "a");
    TransformVar& field = LagOf("x", kNumeric, 2, {&block});
    const struct {
        const char* who;
        double x;
        const char* expected;
    } rows[] = {{"a", 1, "number SYSMIS"}, {"b", 2, "number SYSMIS"}, {"a", 3, "number 1"},
                {"b", 4, "number 2"},      {"b", 5, "number SYSMIS"}, {"b", 6, "number 4"}};
    for (const auto& row : rows) {
        record.SetValue("who", row.who);
        record.SetValue("x", row.x);
        EXPECT_EQ(Result(field), row.expected) << row.x;
    }
}

TEST_F(Lag, EveryBlockFieldHasToAgree) {
    Input("x", 0.0);
    const DictVar& one = Input("one", "a");
    const DictVar& two = Input("two", 1.0);
    TransformVar& field = LagOf("x", kNumeric, 1, {&one, nullptr, &two});
    EXPECT_EQ(Cases(field, {1, 2}), "number SYSMIS; number 1; ");
    record.SetValue("two", 2.0);
    EXPECT_EQ(Cases(field, {3, 4}), "number SYSMIS; number 3; ");
    record.SetValue("one", "b");
    EXPECT_EQ(Cases(field, {5, 6}), "number SYSMIS; number 5; ");
}

TEST_F(Lag, ADerivedBlockFieldIsEvaluated) {
    Input("x", 0.0);
    Input("who", "a");
    TransformVar& block = Derived("block", kText, "who", TD::TE_FIELD_REF);
    TransformVar& field = LagOf("x", kNumeric, 1, {&block});
    EXPECT_EQ(Cases(field, {1, 2}), "number SYSMIS; number 1; ");
    record.SetValue("who", "b");
    EXPECT_EQ(Cases(field, {3, 4}), "number SYSMIS; number 3; ");
}

TEST_F(Lag, ABlockFieldWithoutValueDiffersFromEveryEarlierOne) {
    Input("x", 0.0);
    const DictVar& block = Input("who", "a");
    TransformVar& field = LagOf("x", kNumeric, 1, {&block});
    EXPECT_EQ(Cases(field, {1, 2}), "number SYSMIS; number 1; ");
    record.Remove("who");
    // Nothing went into the block's history, so it is too short to object one case later.
    EXPECT_EQ(Cases(field, {3, 4}), "number SYSMIS; number 3; ");
}

TEST_F(Lag, EachEvaluationAdvancesTheHistory) {
    Input("x", 1.0);
    LagOf("x", kNumeric, 1);
    TransformVar& twice = Derived("twice", kNumeric, "lag", TD::TE_FIELD_REF);
    derived.SetUpDerivedCaseRecord();
    const auto results = [&](double number) {
        record.SetValue("x", number);
        const ScoreCaseRecord* values = derived.GetValuesForDerivedVars(&record, &dictionary);
        return Written(values->Get("lag")) + ", " + Written(values->Get("twice"));
    };
    EXPECT_EQ(results(1), "number SYSMIS, number 1");
    EXPECT_EQ(results(2), "number 1, number 2");
    EXPECT_EQ(twice.GetFieldName(), "lag");
}

TEST_F(Lag, TheHistoriesAreNotReset) {
    Input("x", 0.0);
    TransformVar& field = LagOf("x", kNumeric, 1);
    EXPECT_EQ(Cases(field, {1, 2}), "number SYSMIS; number 1; ");
    derived.SetUpDerivedCaseRecord();
    record.SetValue("x", 3.0);
    EXPECT_EQ(Written(derived.GetValuesForDerivedVars(&record, &dictionary)->Get("lag")), "number 2");
}

TEST_F(Lag, BelowOneEveryCaseIsMissing) {
    Input("x", 0.0);
    for (const int n : {0, -1}) {
        TransformVar field("lag", kNumeric);
        field.AddFieldNameAndTransExpression("x", TD::TE_LAG);
        field.SetLags(n, {});
        EXPECT_EQ(Cases(field, {1, 2, 3}), "number SYSMIS; number SYSMIS; number SYSMIS; ") << n;
    }
}

TEST_F(Lag, AKindOfValueThatChangesInTheStreamIsKept) {
    Input("x", 0.0);
    TransformVar& field = LagOf("x", kText, 1);
    const NumericValue number(5.0);
    const StringValue text("five");
    const DateTimeValue time(7.0, DateTimeValue::VAL_TIME);
    const auto next = [&](const ScoreValue& value) {
        return Written(field.GetLagValue(&record, &dictionary, &derived, &value));
    };
    EXPECT_EQ(next(number), "text ''");
    EXPECT_EQ(next(text), "text '5'");
    EXPECT_EQ(next(time), "text 'five'");
    EXPECT_EQ(next(text), "text 'Undefined'");
    EXPECT_EQ(next(number), "text 'five'");
}
