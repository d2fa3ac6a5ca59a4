#include "transform/apply/apply_fields.h"

#include <gtest/gtest.h>

// An Apply that refers to a field that has been computed for the case reads the derived record, by the field's name.
// The field's value index, which a host can set, only says whether it has been computed.

namespace veltrane::tests {
namespace {

class ComputedField : public ApplyFields {
protected:
    void SetUp() override {
        Input("x", 1.0);
        Input("y", 2.0);
        Input("s", "one");
        Input("t", "two");
        one = &Derived("one", kNumeric, "x", TD::TE_FIELD_REF);
        two = &Derived("two", kNumeric, "y", TD::TE_FIELD_REF);
        first = &Derived("first", kText, "s", TD::TE_FIELD_REF);
        second = &Derived("second", kText, "t", TD::TE_FIELD_REF);
    }

    /// The value of a field of the list after the nth case.
    std::string Computed(const std::string& name, int cases) {
        for (int i = 0; i < cases; ++i) {
            derived.GetValuesForDerivedVars(&record, &dictionary);
        }
        return Written(derived.GetVarValue(name));
    }

    TransformVar* one = nullptr;
    TransformVar* two = nullptr;
    TransformVar* first = nullptr;
    TransformVar* second = nullptr;
};

TEST_F(ComputedField, ANumberIsReadByItsNameWhateverItsValueIndex) {
    Apply(kNumeric, Call(TD::TF_PLUS, {Field("one"), Const(10)}));
    derived.SetUpDerivedCaseRecord();
    one->SetValueIndex(two->GetValueIndex());
    for (int cases = 1; cases <= 3; ++cases) {
        EXPECT_EQ(Computed("z", cases), "number 11") << cases;
    }
}

TEST_F(ComputedField, ATextIsReadByItsNameWhateverItsValueIndex) {
    Apply(kText, Call(TD::TF_UPPERCASE, {Field("first")}));
    derived.SetUpDerivedCaseRecord();
    first->SetValueIndex(second->GetValueIndex());
    for (int cases = 1; cases <= 3; ++cases) {
        EXPECT_EQ(Computed("z", cases), "text 'ONE'") << cases;
    }
}

TEST_F(ComputedField, AComparisonReadsItByItsName) {
    Apply(kNumeric, Call(TD::TF_EQUAL, {Field("one"), Const(1)}));
    derived.SetUpDerivedCaseRecord();
    one->SetValueIndex(first->GetValueIndex());
    for (int cases = 1; cases <= 3; ++cases) {
        EXPECT_EQ(Computed("z", cases), "number 1") << cases;
    }
}

TEST_F(ComputedField, TheValueIndexSaysWhetherItHasBeenComputed) {
    // A lag moves on with each evaluation: once in its turn, and once more when it doesn't count as computed.
    TransformVar& lagged = Derived("lagged", kNumeric, "x", TD::TE_LAG);
    Apply(kNumeric, Call(TD::TF_PLUS, {Field("lagged"), Const(0.0)}));
    derived.SetUpDerivedCaseRecord();
    EXPECT_EQ(Computed("z", 1), "number SYSMIS");
    lagged.SetValueIndex(-1);
    EXPECT_EQ(Computed("z", 1), "number 1");
    record.SetValue("x", 2.0);
    EXPECT_EQ(Computed("z", 1) + ", " + Written(derived.GetVarValue("lagged")), "number 2, number 1");
}

TEST_F(ComputedField, ALeafThatWasGivenItsFieldWithoutANameReadsItByTheFieldsName) {
    FunctionTreeImp* leaf = Field("");
    ApplyNodeStats stats(leaf->GetNodeStats());
    stats.SetVariable(one);
    leaf->SetNodeStats(stats);
    Apply(kNumeric, Call(TD::TF_PLUS, {leaf, Const(10)}));
    derived.SetUpDerivedCaseRecord();
    one->SetValueIndex(two->GetValueIndex());
    for (int cases = 1; cases <= 3; ++cases) {
        EXPECT_EQ(Computed("z", cases), "number 11") << cases;
    }
}

TEST_F(ComputedField, ACopiedDictionaryReadsItsOwnRecordByName) {
    Apply(kNumeric, Call(TD::TF_PLUS, {Field("one"), Const(10)}));
    derived.SetUpDerivedCaseRecord();
    EXPECT_EQ(Computed("z", 2), "number 11");
    TransformationDictionary copy(derived);
    copy.GetVar("one")->SetValueIndex(copy.GetVar("two")->GetValueIndex());
    TransformationDictionary assigned;
    assigned = copy;
    record.SetValue("x", 5.0);
    for (TransformationDictionary* other : {&copy, &assigned}) {
        for (int i = 0; i < 3; ++i) {
            other->GetValuesForDerivedVars(&record, &dictionary);
            EXPECT_EQ(Written(other->GetVarValue("z")), "number 15");
        }
    }
}

} // namespace
} // namespace veltrane::tests
