#include "apply_fields.h"
#include "support/numbers.h"
#include "transform/trees/trees.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// The evaluation of trees that are built by hand, and so have numbers of arguments that no document may have.

namespace veltrane::tests {

namespace {

class ApplyTraverse : public ApplyFields {
protected:
    /// The result of a tree, which has to be the same for a second case.
    std::string ResultOf(ScoreDictVar::VariableType type, FunctionTreeImp* root) {
        TransformVar& field = Apply(type, root, "z" + std::to_string(++fields));
        const std::string first = Result(field);
        EXPECT_EQ(Result(field), first) << "for the second case";
        return first;
    }
    std::string NumberOf(FunctionTreeImp* root) { return ResultOf(kNumeric, root); }
    std::string TextOf(FunctionTreeImp* root) { return ResultOf(kText, root); }

    /// Whether a leaf has been evaluated, which leaves its field in it.
    static bool IsEvaluated(const FunctionTree& leaf) { return leaf.GetNodeStats().GetVariable() != nullptr; }

    int fields = 0;
};

/// A derived field of a plug-in's own class, which is asked for every number that its tree makes.
class AskedField : public TransformVar {
public:
    using TransformVar::TransformVar;
    bool IsValidValue(const ScoreValue* value) const override {
        asked.push_back(Written(value));
        return isValid;
    }

    bool isValid = true;
    mutable std::vector<std::string> asked;
};

TEST_F(ApplyTraverse, ADerivedClassIsAskedWhetherEachNumberIsValid) {
    Input("x", 3.0);
    ApplyNodeStats asMissing;
    asMissing.SetInvalidValueTreatmentMethod(ApplyNodeStats::IV_AS_MISSING);
    for (const bool isTreated : {false, true}) {
        AskedField field("z", kNumeric);
        field.AddFieldNameAndTransExpression("", TD::TE_APPLY);
        FunctionTreeImp* inner = Call(TD::TF_MULTIPLY, {Field("x"), Const(2)});
        field.SetRoot(Call(isTreated ? asMissing : ApplyNodeStats(), TD::TF_PLUS, {inner, Const(1)}));
        for (int oneCase = 0; oneCase < 3; ++oneCase) {
            field.asked.clear();
            field.isValid = oneCase != 1;
            EXPECT_EQ(Result(field), isTreated && !field.isValid ? "number SYSMIS" : "number 7");
            EXPECT_EQ(field.asked, (std::vector<std::string>{"number 6", "number 7"}));
        }
    }
}

using KeptApplyTraverse = ApplyTraverse;

// ---- numbers of arguments ----

TEST_F(ApplyTraverse, PlusOfThreeFoldsFromTheLeft) {
    EXPECT_EQ(NumberOf(Call(TD::TF_PLUS, {Const(1e16), Const(1), Const(-1e16)})), "number 0");
    EXPECT_EQ(NumberOf(Call(TD::TF_PLUS, {Const(1e16), Const(-1e16), Const(1)})), "number 1");
}

TEST_F(ApplyTraverse, OneMissingMakesAPlusOfThreeMissingAndNothingRescuesIt) {
    Input("x", kMissing);
    ApplyNodeStats stats;
    stats.SetRecodeMissValueTo(Own(Num(9)));
    stats.SetDefaultValue(Own(Num(8)));
    EXPECT_EQ(NumberOf(Call(stats, TD::TF_PLUS, {Const(1), Field("x"), Const(2)})), "number SYSMIS");
}

TEST_F(ApplyTraverse, MinusOfThreeIsMissing) {
    EXPECT_EQ(NumberOf(Call(TD::TF_MINUS, {Const(5), Const(3), Const(1)})), "number SYSMIS");
}

TEST_F(ApplyTraverse, OutlierHandleNeedsSixChildren) {
    const auto arguments = [this](std::size_t count) {
        std::vector<FunctionTreeImp*> children;
        for (const double number : {20.0, 2.0, 10.0, 2.0, 3.0, 4.0, 5.0}) {
            if (children.size() < count) {
                children.push_back(Const(number));
            }
        }
        return children;
    };
    EXPECT_EQ(NumberOf(Call(TD::TF_OUTLIER_HANDLE, arguments(5))), "number SYSMIS");
    EXPECT_EQ(NumberOf(Call(TD::TF_OUTLIER_HANDLE, arguments(6))), "number 13");
    EXPECT_EQ(NumberOf(Call(TD::TF_OUTLIER_HANDLE, arguments(7))), "number SYSMIS");
}

TEST_F(ApplyTraverse, ADateDifferenceFindsNoDateForAThirdArgument) {
    Input("d", kDateTime, new DateTimeValue(90000, DateTimeValue::VAL_DATETIME));
    EXPECT_EQ(NumberOf(Call(TD::TF_TIME_SECONDS_DIFFERENCE, {Field("d"), Const(1000)})), "number 89000");
    EXPECT_EQ(NumberOf(Call(TD::TF_TIME_SECONDS_DIFFERENCE, {Field("d"), Const(1000), Const(1)})), "number SYSMIS");
}

TEST_F(ApplyTraverse, ADateDifferenceOfOneArgumentTakesZeroFromIt) {
    Input("d", kDateTime, new DateTimeValue(90000, DateTimeValue::VAL_DATETIME));
    EXPECT_EQ(NumberOf(Call(TD::TF_TIME_SECONDS_DIFFERENCE, {Field("d")})), "number 90000");
}

TEST_F(ApplyTraverse, ADateDifferenceWithASysmisOperandIsMissing) {
    Input("d", kDateTime, new DateTimeValue(90000, DateTimeValue::VAL_DATETIME));
    EXPECT_EQ(NumberOf(Call(TD::TF_DATE_DAYS_DIFFERENCE, {Field("d"), Const(kMissing)})), "number SYSMIS");
}

TEST_F(ApplyTraverse, ADateFunctionWithAnOperandThatIsNoNumberIsMissing) {
    Input("d", kDateTime, new DateTimeValue(90000, DateTimeValue::VAL_DATETIME));
    Input("x", kNaN);
    for (const TD::TransformFunction function :
         {TD::TF_DATE_YEARS_DIFFERENCE, TD::TF_DATE_MONTHS_DIFFERENCE, TD::TF_DATE_DAYS_DIFFERENCE,
          TD::TF_TIME_HOURS_DIFFERENCE, TD::TF_TIME_MINUTES_DIFFERENCE, TD::TF_TIME_SECONDS_DIFFERENCE,
          TD::TF_YEAR_FROM_DATE}) {
        EXPECT_EQ(NumberOf(Call(function, {Field("d"), Field("x")})), "number SYSMIS") << function;
    }
}

TEST_F(ApplyTraverse, EveryLaterArgumentOfSubstrStartsFromTheSubjectAnew) {
    EXPECT_EQ(TextOf(Call(TD::TF_SUBSTR, {Const(Txt("abcdef")), Const(2), Const(4)})), "text 'def'");
}

TEST_F(ApplyTraverse, TheLastArgumentOfSubstringIsItsLength) {
    EXPECT_EQ(TextOf(Call(TD::TF_SUBSTRING, {Const(Txt("abcdef")), Const(2), Const(4), Const(1)})), "text 'b'");
}

// ---- the order of evaluation and its early ends ----

TEST_F(ApplyTraverse, ATrueConditionDoesNotEvaluateTheThirdArgument) {
    Input("c", 1);
    Input("x", 5);
    Input("y", 6);
    FunctionTreeImp* root = Call(TD::TF_IF, {Field("c"), Field("x"), Field("y")});
    EXPECT_EQ(NumberOf(root), "number 5");
    EXPECT_TRUE(IsEvaluated(*root->GetChildAt(1)));
    EXPECT_FALSE(IsEvaluated(*root->GetChildAt(2)));
}

TEST_F(ApplyTraverse, AFalseConditionEvaluatesTheSecondAndTheThirdArgument) {
    Input("c", 0.0);
    Input("x", 5);
    Input("y", 6);
    FunctionTreeImp* root = Call(TD::TF_IF, {Field("c"), Field("x"), Field("y")});
    EXPECT_EQ(NumberOf(root), "number 6");
    EXPECT_TRUE(IsEvaluated(*root->GetChildAt(1)));
    EXPECT_TRUE(IsEvaluated(*root->GetChildAt(2)));
}

TEST_F(ApplyTraverse, AFalseConditionWithTwoArgumentsGivesZero) {
    EXPECT_EQ(NumberOf(Call(TD::TF_IF, {Const(0.0), Const(5)})), "number 0");
}

TEST_F(ApplyTraverse, ATextThatIfGivesHasTheLengthZero) {
    EXPECT_EQ(NumberOf(Call(TD::TF_LENGTH, {Call(TD::TF_IF, {Const(1), Const(Txt("abc"))})})), "number 0");
}

TEST_F(ApplyTraverse, ATestForMissingLeavesTheFurtherArgumentsAlone) {
    Input("x", kMissing);
    Input("y", 6);
    for (const auto function : {TD::TF_IS_MISSING, TD::TF_IS_NOT_MISSING}) {
        FunctionTreeImp* root = Call(function, {Field("x"), Field("y")});
        EXPECT_EQ(NumberOf(root), function == TD::TF_IS_MISSING ? "number 1" : "number 0");
        EXPECT_FALSE(IsEvaluated(*root->GetChildAt(1)));
    }
}

TEST_F(ApplyTraverse, AndAndOrEvaluateAllTheirArguments) {
    Input("x", 0.0);
    Input("y", 1);
    for (const auto function : {TD::TF_AND, TD::TF_OR}) {
        FunctionTreeImp* root = Call(function, {Field("x"), Field("y"), Field("x")});
        EXPECT_EQ(NumberOf(root), function == TD::TF_AND ? "number 0" : "number 1");
        EXPECT_TRUE(IsEvaluated(*root->GetChildAt(1)));
        EXPECT_TRUE(IsEvaluated(*root->GetChildAt(2)));
    }
}

// ---- field leaves ----

TEST_F(ApplyTraverse, ALeafKeepsThePositionThatItFoundFirst) {
    Input("x", kNumeric, nullptr);
    TransformVar& field = Apply(kNumeric, Call(TD::TF_ABS, {Field("x")}));
    EXPECT_EQ(Result(field), "number SYSMIS");
    record.Add("x", Num(-4));
    EXPECT_EQ(Result(field), "number SYSMIS");
}

TEST_F(ApplyTraverse, AFieldInTheDataDictionaryComesFirst) {
    Input("x", 4);
    Derived("x", kNumeric, "", TD::TE_CONSTANT).SetConstString("7");
    EXPECT_EQ(NumberOf(Call(TD::TF_ABS, {Field("x")})), "number 4");
}

TEST_F(ApplyTraverse, AnAbsentFieldIsMissingAsItsTypeIs) {
    Input("x", kNumeric, nullptr);
    Input("d", kDateTime, nullptr);
    Input("t", kText, nullptr).SetWidth(6);
    EXPECT_EQ(NumberOf(Call(TD::TF_SYSMIS, {Field("x")})), "number 1");
    EXPECT_EQ(NumberOf(Call(TD::TF_SYSMIS, {Field("d")})), "number 1");
    EXPECT_EQ(TextOf(Call(TD::TF_UPPERCASE, {Field("t")})), "text ''");
    EXPECT_EQ(NumberOf(Call(TD::TF_LENGTH, {Field("t")})), "number 6");
}

TEST_F(ApplyTraverse, AMissingNumberIsSysmisUnderAnythingButValueAndSysmis) {
    MakeMissing(Input("x", -9), -9);
    EXPECT_EQ(NumberOf(Call(TD::TF_ABS, {Field("x")})), "number SYSMIS");
    EXPECT_EQ(NumberOf(Call(TD::TF_ABS, {Field("x", Num(-3))})), "number 3");
    EXPECT_EQ(NumberOf(Call(TD::TF_VALUE, {Field("x", Num(-3))})), "number -9");
    EXPECT_EQ(NumberOf(Call(TD::TF_SYSMIS, {Field("x", Num(-3))})), "number 0");
}

TEST_F(ApplyTraverse, AMissingDateIsReplacedOrStays) {
    Input("d", kDateTime, new DateTimeValue(kMissing, DateTimeValue::VAL_DATETIME));
    const auto replacement = [] { return new DateTimeValue(400 * 86400.0, DateTimeValue::VAL_DATETIME); };
    EXPECT_EQ(NumberOf(Call(TD::TF_YEAR_FROM_DATE, {Field("d", replacement())})), "number 1971");
    EXPECT_EQ(NumberOf(Call(TD::TF_YEAR_FROM_DATE, {Field("d")})), "number SYSMIS");
}

TEST_F(ApplyTraverse, AMissingTextIsReplacedAndHasTheWidthOfItsField) {
    DictVar& var = Input("t", "?");
    MakeMissing(var, "?");
    var.SetWidth(7);
    EXPECT_EQ(TextOf(Call(TD::TF_UPPERCASE, {Field("t", Txt("abc"))})), "text 'ABC'");
    EXPECT_EQ(NumberOf(Call(TD::TF_LENGTH, {Field("t", Txt("abc"))})), "number 7");
    EXPECT_EQ(TextOf(Call(TD::TF_UPPERCASE, {Field("t")})), "text '?'");
}

TEST_F(KeptApplyTraverse, TheWidthOfAFieldIsWrittenIntoTheValueOfTheRecord) {
    auto* value = new StringValue("abc");
    Input("t", kText, value).SetWidth(10);
    EXPECT_EQ(NumberOf(Call(TD::TF_LENGTH, {Field("t")})), "number 10");
    EXPECT_EQ(value->GetLength(), 10);
}

// ---- what stands behind the last argument ----

TEST_F(ApplyTraverse, AReplacementThatIsMissingItselfGivesWayToTheDefault) {
    Input("x", kMissing);
    ApplyNodeStats stats;
    stats.SetRecodeMissValueTo(Own(Num(kMissing)));
    stats.SetDefaultValue(Own(Num(8)));
    EXPECT_EQ(NumberOf(Call(stats, TD::TF_SUM, {Field("x"), Field("x")})), "number 8");
}

TEST_F(KeptApplyTraverse, ADateThatIsPassedOnIsATextAndItsTextIsUndefined) {
    Input("d", kDateTime, new DateTimeValue(90000, DateTimeValue::VAL_DATETIME));
    for (const auto function : {TD::TF_VALUE, TD::TF_RECAST_TO_ORDINAL, TD::TF_RECAST_TO_SCALE}) {
        EXPECT_EQ(TextOf(Call(function, {Field("d")})), "text 'Undefined'");
    }
}

TEST_F(ApplyTraverse, APassedTextKeepsItsLength) {
    Input("t", "abc").SetWidth(5);
    EXPECT_EQ(NumberOf(Call(TD::TF_LENGTH, {Call(TD::TF_VALUE, {Field("t")})})), "number 5");
}

TEST_F(ApplyTraverse, AValueThatOutlivesItsNeighboursIsACopy) {
    // Both branches end in the same scratch values.
    Input("s", "ab");
    Input("t", "cd");
    const auto upper = [this](const char* name) { return Call(TD::TF_UPPERCASE, {Field(name)}); };
    EXPECT_EQ(NumberOf(Call(TD::TF_EQUAL, {upper("s"), upper("t")})), "number 0");
    EXPECT_EQ(NumberOf(Call(TD::TF_IS_IN, {upper("s"), upper("t")})), "number 0");
    EXPECT_EQ(NumberOf(Call(TD::TF_IS_IN, {upper("s"), upper("t"), upper("s")})), "number 1");
}

TEST_F(ApplyTraverse, TheWholeFieldJudgesTheResultsOfInnerNodes) {
    // 7 is no value of the field, 1 is: the inner node becomes missing, and the outer sum skips it.
    Input("x", 7);
    ApplyNodeStats asMissing;
    asMissing.SetInvalidValueTreatmentMethod(ApplyNodeStats::IV_AS_MISSING);
    TransformVar& field = Apply(kNumeric, Call(TD::TF_SUM, {Call(asMissing, TD::TF_ABS, {Field("x")}), Const(1)}));
    MakeMissing(field, 7);
    EXPECT_EQ(Result(field), "number 1");
    EXPECT_EQ(Result(field), "number 1");
}

// ---- fields that stand later in the list ----

TEST_F(ApplyTraverse, AFieldListedLaterIsEvaluatedOnTheSpotAndAgainInItsTurn) {
    Input("x", 1);
    Apply(kNumeric, Call(TD::TF_ABS, {Field("lagged")}));
    Derived("lagged", kNumeric, "x", TD::TE_LAG);
    derived.SetUpDerivedCaseRecord();
    const auto score = [this](double x) {
        record.SetValue("x", x);
        derived.GetValuesForDerivedVars(&record, &dictionary);
        return Written(derived.GetVarValue("z")) + ", " + Written(derived.GetVarValue("lagged"));
    };
    // A lag moves on with each evaluation, here twice a case.
    EXPECT_EQ(score(1), "number SYSMIS, number 1");
    EXPECT_EQ(score(2), "number 1, number 2");
    EXPECT_EQ(score(3), "number 2, number 3");
}

TEST_F(ApplyTraverse, AFieldListedEarlierIsReadFromTheDerivedRecord) {
    Input("x", 1);
    Derived("lagged", kNumeric, "x", TD::TE_LAG);
    Apply(kNumeric, Call(TD::TF_ABS, {Field("lagged")}));
    derived.SetUpDerivedCaseRecord();
    const auto score = [this](double x) {
        record.SetValue("x", x);
        derived.GetValuesForDerivedVars(&record, &dictionary);
        return Written(derived.GetVarValue("z")) + ", " + Written(derived.GetVarValue("lagged"));
    };
    EXPECT_EQ(score(1), "number SYSMIS, number SYSMIS");
    EXPECT_EQ(score(2), "number 1, number 1");
    EXPECT_EQ(score(3), "number 2, number 2");
}

// ---- copies ----

TEST_F(ApplyTraverse, TheLeavesOfACopyLookTheirFieldsUpAfresh) {
    Input("x", 1);
    Apply(kNumeric, Call(TD::TF_ABS, {Field("lagged")}));
    Derived("lagged", kNumeric, "x", TD::TE_LAG);
    derived.SetUpDerivedCaseRecord();
    derived.GetValuesForDerivedVars(&record, &dictionary);
    TransformationDictionary copy(derived);
    copy.GetValuesForDerivedVars(&record, &dictionary);
    // The lag of the copy has no history yet; that of the original would give 1.
    EXPECT_EQ(Written(copy.GetVarValue("z")), "number SYSMIS");
}

TEST_F(ApplyTraverse, ACopyOutlivesTheFieldsOfTheOriginal) {
    Input("x", -3);
    auto original = std::make_unique<TransformationDictionary>();
    for (const char* name : {"a", "b"}) {
        auto* field = new TransformVar(name, kNumeric);
        field->AddFieldNameAndTransExpression("", TD::TE_APPLY);
        field->SetRoot(Call(TD::TF_ABS, {Field(name == std::string("a") ? "x" : "a")}));
        original->AddVar(name, field);
        original->AddDerievedVarName(name);
    }
    original->SetUpDerivedCaseRecord();
    original->GetValuesForDerivedVars(&record, &dictionary);
    TransformationDictionary copy(*original);
    original.reset();
    copy.GetValuesForDerivedVars(&record, &dictionary);
    EXPECT_EQ(Written(copy.GetVarValue("b")), "number 3");
}

TEST_F(ApplyTraverse, ALeafThatWasGivenItsFieldWithoutANameKeepsItInACopy) {
    const DictVar& var = Input("x", -3);
    ApplyNodeStats stats;
    stats.SetVariable(&var);
    stats.SetVarIndex(record.GetIndex("x"));
    TransformVar field("z", kNumeric);
    field.AddFieldNameAndTransExpression("", TD::TE_APPLY);
    field.SetRoot(Call(TD::TF_ABS, {Node(stats)}));
    TransformVar copy(field);
    EXPECT_EQ(Result(field), "number 3");
    EXPECT_EQ(Result(copy), "number 3");
}

// ---- the imputation ----

TEST_F(ApplyTraverse, AnImputationBeyondTheLabelsThrowsAndLeavesTheFieldUsable) {
    Input("s", "a");
    Input("x", 9);
    ApplyNodeStats stats;
    stats.AddArray({0, 10});
    stats.AddArray({1, 1});
    TransformVar& field = Apply(kText, Call(stats, TD::TF_IMPUTE_CAT_FIELD_MISSING, {Field("s"), Field("x")}));
    field.AddScoreValueLabel(Txt("low"), "low");
    for (int time = 0; time < 2; ++time) {
        try {
            Value(field);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::out_of_range& failure) {
            EXPECT_STREQ(failure.what(), "invalid vector<T> subscript");
        }
    }
    field.AddScoreValueLabel(Txt("high"), "high");
    EXPECT_EQ(Result(field), "text 'high'");
}

TEST_F(ApplyTraverse, AnAbsentTextIsNotMissing) {
    // It is the empty text, which only a field that declares it missing takes for missing.
    Input("t", kText, nullptr);
    MakeMissing(Input("u", kText, nullptr), "");
    EXPECT_EQ(NumberOf(Call(TD::TF_IS_MISSING, {Field("t")})), "number 0");
    EXPECT_EQ(NumberOf(Call(TD::TF_IS_MISSING, {Field("u")})), "number 1");
}

} // namespace

} // namespace veltrane::tests
