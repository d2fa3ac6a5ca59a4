#include "support/allocations.h"
#include "transform/fields/fields.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>

using namespace veltrane::tests;

namespace {

/// A record that counts how it is asked.
class CountingRecord : public CaseRecord {
public:
    using CaseRecord::Get;
    const ScoreValue* Get(const std::string& name) const override {
        ++byName;
        return CaseRecord::Get(name);
    }
    int GetIndex(const std::string& name) const override {
        ++byName;
        return CaseRecord::GetIndex(name);
    }
    mutable int byName = 0;
};

/// A dictionary that counts its lookups.
class CountingDictionary : public BaseDictionary {
public:
    using BaseDictionary::GetVar;
    ScoreDictVar* GetVar(const std::string& name) override {
        ++lookups;
        return BaseDictionary::GetVar(name);
    }
    int lookups = 0;
};

/// Evaluates one field for case after case, once the first cases are done.
class ScoringPath : public DerivedFields {
protected:
    template <typename Change>
    std::size_t AllocationsOfCases(TransformVar& field, Change change) {
        for (int i = 0; i < 8; ++i) {
            change(i);
            Value(field);
        }
        std::size_t allocations = 0;
        for (int i = 0; i < 100; ++i) {
            change(i);
            allocations += AllocationsOf([&] { Value(field); });
        }
        return allocations;
    }

    std::size_t AllocationsOfCases(TransformVar& field) {
        return AllocationsOfCases(field, [this](int i) { record.SetValue("x", i % 5 == 4 ? kMissing : i); });
    }
};

const char* const kLongText = "a text that is longer than what a string holds in itself";

} // namespace

TEST_F(ScoringPath, TheCounterCounts) {
    EXPECT_GT(AllocationsOf([] { const std::unique_ptr<ScoreValue> value(Num(1)); }), 0U);
}

TEST_F(ScoringPath, AFieldReferenceAllocatesNothing) {
    Input("x", 1.0);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
    field.SetRecodeMissValueTo(Num(1));
    EXPECT_EQ(AllocationsOfCases(field), 0U);
}

TEST_F(ScoringPath, AFieldReferenceToALongTextAllocatesNothing) {
    Input("t", kLongText);
    TransformVar& field = Derived("d", kText, "t", TD::TE_FIELD_REF);
    EXPECT_EQ(AllocationsOfCases(field), 0U);
}

TEST_F(ScoringPath, AContinuousNormalisationAllocatesNothing) {
    Input("x", 1.0);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_NORM_CONTINUOUS);
    for (int i = 0; i < 5; ++i) {
        field.AddLinearNorm(i, i);
        field.AddNormInfo(1, 0);
    }
    EXPECT_EQ(AllocationsOfCases(field), 0U);
}

TEST_F(ScoringPath, ADiscreteNormalisationAllocatesNothing) {
    Input("x", 1.0);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_NORM_DISCRETE);
    field.SetRecodeDefaultValue(Num(1));
    EXPECT_EQ(AllocationsOfCases(field), 0U);
}

TEST_F(ScoringPath, ADiscretisationAllocatesNothing) {
    Input("x", 1.0);
    TransformVar& field = Derived("d", kText, "x", TD::TE_DISCRETIZE);
    field.AddBinningValue(new Range(0.0, 2.0, true, true), Txt(kLongText), "x");
    field.SetRecodeMissValueTo(Txt(kLongText));
    field.SetRecodeDefaultValue(Txt(kLongText));
    EXPECT_EQ(AllocationsOfCases(field), 0U);
}

TEST_F(ScoringPath, AValueMapAllocatesNothing) {
    Input("x", 1.0);
    TransformVar& inner = Derived("inner", kNumeric, "x", TD::TE_FIELD_REF);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_MAP_VALUES);
    auto* map = new MapValues(&field);
    auto* table = new InlineTable;
    table->AppendInputField(dictionary.GetVar("x"));
    table->AppendInputField(&inner);
    for (int i = 0; i < 50; ++i) {
        table->AddInputOutput({Num(i), Num(i)}, Num(-i));
    }
    map->SetTable(table);
    field.SetMapValues(map);
    EXPECT_EQ(AllocationsOfCases(field), 0U);
}

TEST_F(ScoringPath, ALagAllocatesNothingOnceItsHistoryIsFull) {
    Input("x", 1.0);
    const DictVar& block = Input("who", kLongText);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_LAG);
    field.SetLags(3, {&block});
    EXPECT_EQ(AllocationsOfCases(field), 0U);
}

TEST_F(ScoringPath, AConstantAllocatesNothing) {
    TransformVar& field = Derived("d", kText, "", TD::TE_CONSTANT);
    field.SetConstString(kLongText);
    EXPECT_EQ(AllocationsOfCases(field, [](int) {}), 0U);
}

TEST_F(ScoringPath, AChainAllocatesNothing) {
    Input("x", 1.0);
    Derived("first", kNumeric, "x", TD::TE_FIELD_REF);
    Derived("second", kNumeric, "first", TD::TE_FIELD_REF);
    EXPECT_EQ(AllocationsOfCases(Derived("third", kNumeric, "second", TD::TE_FIELD_REF)), 0U);
}

TEST(ScoringPathOfADictionary, AllocatesNothingAndLooksNoNameUpAfterTheFirstCase) {
    CountingRecord record;
    CountingDictionary dictionary;
    TransformationDictionary derived;
    for (const std::string name : {"a", "b", "c", "d"}) {
        dictionary.AddVar(name, new DictVar(name, kNumeric));
        record.Add(name, Num(1));
        auto* field = new TransformVar("n_" + name, kNumeric);
        field->AddFieldNameAndTransExpression(name, TD::TE_NORM_CONTINUOUS);
        field->AddLinearNorm(0, 0);
        field->AddLinearNorm(10, 1);
        field->AddNormInfo(0.1, 0);
        derived.AddVar("n_" + name, field);
        derived.AddDerievedVarName("n_" + name);
    }
    record.Add("t", Txt(kLongText));
    dictionary.AddVar("t", new DictVar("t", kText));
    auto* text = new TransformVar("text", kText);
    text->AddFieldNameAndTransExpression("t", TD::TE_FIELD_REF);
    derived.AddVar("text", text);
    derived.AddDerievedVarName("text");
    derived.SetUpDerivedCaseRecord();
    derived.GetValuesForDerivedVars(&record, &dictionary);

    record.byName = 0;
    dictionary.lookups = 0;
    const std::size_t before = AllocationsSoFar();
    const ScoreCaseRecord* values = nullptr;
    for (int i = 0; i < 100; ++i) {
        record.SetValue(i % 4, i % 10);
        values = derived.GetValuesForDerivedVars(&record, &dictionary);
    }
    EXPECT_EQ(AllocationsSoFar(), before);
    EXPECT_EQ(record.byName, 0);
    EXPECT_EQ(dictionary.lookups, 0);
    EXPECT_EQ(Written(values->Get("n_d")), "number 0.90000000000000002");
    EXPECT_EQ(Written(values->Get("text")), "text '" + std::string(kLongText) + "'");
}
