#include "fields.h"
#include "support/foreign_value.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/FunctionTreeImp.h>

// Derived fields of a record that holds values of a host's own classes, which are of no class of the library's.

using namespace veltrane::tests;

namespace {

/// Input fields "number", "text" and "date", each with a foreign value of its kind.
class ForeignSource : public DerivedFields {
protected:
    void SetUp() override {
        Input("number", kNumeric, new ForeignValue(ScoreValue::NUMERIC_VALUE, 5.0));
        Input("text", kText, new ForeignValue(ScoreValue::STRING_VALUE, 5.0));
        Input("date", kDateTime, new ForeignValue(ScoreValue::DATETIME_VALUE, 86400.0));
    }

    void TearDown() override {
        for (const char* name : {"number", "text", "date"}) {
            EXPECT_TRUE(static_cast<const ForeignValue*>(record.Get(name))->IsWhole()) << name;
        }
    }

    /// The result of a function of one field, for two cases.
    std::string Call(TD::TransformFunction function, ScoreDictVar::VariableType type, const std::string& field) {
        auto* leaf = new FunctionTreeImp;
        ApplyNodeStats leafStats;
        leafStats.SetParameterName(field);
        leafStats.SetNodeID("1");
        leaf->SetNodeStats(leafStats);
        auto* root = new FunctionTreeImp;
        ApplyNodeStats stats;
        stats.SetTransformFunction(function);
        root->SetNodeStats(stats);
        root->Add(leaf);
        TransformVar& var = Derived("call", type, "", TD::TE_APPLY);
        var.SetRoot(root);
        const std::string first = Result(var);
        EXPECT_EQ(Result(var), first);
        return first;
    }
};

TEST_F(ForeignSource, OfAFieldReference) {
    EXPECT_EQ(Result(Derived("n", kNumeric, "number", TD::TE_FIELD_REF)), "number 5");
    EXPECT_EQ(Result(Derived("t", kText, "text", TD::TE_FIELD_REF)), "text 'f'");
    EXPECT_EQ(Result(Derived("d", kDateTime, "date", TD::TE_FIELD_REF)), "kind 2 86400.000000");
}

TEST_F(ForeignSource, OfALag) {
    for (const char* name : {"number", "text", "date"}) {
        const auto type = dictionary.GetVar(name)->GetVarType();
        TransformVar& lag = Derived(std::string("lag of ") + name, type, name, TD::TE_LAG);
        lag.SetLags(1, {});
        Result(lag);
        EXPECT_EQ(Result(lag), type == kNumeric ? "number 5" : type == kText ? "text 'f'" : "kind 2 86400.000000");
    }
}

TEST_F(ForeignSource, OfAFunctionOfANumber) {
    EXPECT_EQ(Call(TD::TF_ABS, kNumeric, "number"), "number 5");
}

TEST_F(ForeignSource, OfAFunctionOfAText) {
    EXPECT_EQ(Call(TD::TF_UPPERCASE, kText, "text"), "text 'F'");
}

TEST_F(ForeignSource, OfAFunctionOfADate) {
    EXPECT_EQ(Call(TD::TF_YEAR_FROM_DATE, kNumeric, "date"), "number SYSMIS");
}

TEST_F(ForeignSource, OfTheDerivedRecord) {
    Derived("n", kNumeric, "number", TD::TE_FIELD_REF);
    Derived("t", kText, "text", TD::TE_FIELD_REF);
    Derived("d", kDateTime, "date", TD::TE_FIELD_REF);
    derived.SetUpDerivedCaseRecord();
    const ScoreCaseRecord* values = derived.GetValuesForDerivedVars(&record, &dictionary);
    EXPECT_EQ(Written(values->Get("n")), "number 5");
    EXPECT_EQ(Written(values->Get("t")), "text 'f'");
    EXPECT_EQ(Written(values->Get("d")), "kind 2 86400.000000");
}

} // namespace
