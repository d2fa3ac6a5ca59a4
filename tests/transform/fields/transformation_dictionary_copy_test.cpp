#include "fields.h"

using namespace veltrane::tests;
using Names = std::vector<std::string>;

namespace {

class DictionaryCopy : public DerivedFields {
protected:
    void SetUp() override {
        Input("x", 1.0);
        field = &Derived("d", kNumeric, "x", TD::TE_FIELD_REF);
        derived.SetUpDerivedCaseRecord();
        values = Score(derived);
    }

    const ScoreCaseRecord* Score(TransformationDictionary& fields) {
        return fields.GetValuesForDerivedVars(&record, &dictionary);
    }

    static const ScoreCaseRecord* RecordOf(TransformationDictionary& fields) {
        return fields.GetValuesForDerivedVars(nullptr, nullptr);
    }

    TransformVar* field = nullptr;
    const ScoreCaseRecord* values = nullptr;
};

} // namespace

TEST_F(DictionaryCopy, ConstructedHasRecordsOfItsOwn) {
    TransformationDictionary copy(derived);
    EXPECT_NE(copy.GetVar("d"), field);
    EXPECT_NE(RecordOf(copy), values);
    EXPECT_EQ(Written(copy.GetVarValue("d")), "number 1");
    EXPECT_EQ(copy.GetDerivedVarNames(), (Names{"d"}));
    EXPECT_TRUE(copy.IsVarValueComputed(copy.GetVar("d")));
    record.SetValue("x", 2.0);
    EXPECT_EQ(Written(Score(copy)->Get("d")), "number 2");
    EXPECT_EQ(Written(values->Get("d")), "number 1");
}

TEST_F(DictionaryCopy, ConstructedIsSetUpAsTheOriginalWas) {
    TransformationDictionary copy(derived);
    copy.AddDerievedVarName("more");
    copy.SetUpDerivedCaseRecord();
    EXPECT_EQ(RecordOf(copy)->Size(), 1);
    const TransformationDictionary fresh;
    TransformationDictionary copyOfFresh(fresh);
    EXPECT_EQ(RecordOf(copyOfFresh), nullptr);
    copyOfFresh.SetUpDerivedCaseRecord();
    EXPECT_NE(RecordOf(copyOfFresh), nullptr);
}

TEST_F(DictionaryCopy, AssignedSharesTheRecords) {
    TransformationDictionary target;
    target = derived;
    EXPECT_EQ(RecordOf(target), values);
    EXPECT_NE(target.GetVar("d"), field);
    EXPECT_EQ(target.GetDerivedVarNames(), (Names{"d"}));
    EXPECT_TRUE(target.IsVarValueComputed(target.GetVar("d")));
    record.SetValue("x", 2.0);
    Score(target);
    EXPECT_EQ(Written(derived.GetVarValue("d")), "number 2");
}

TEST_F(DictionaryCopy, AssignedRecordsLiveAsLongAsOneOfTheTwo) {
    for (const bool sourceFirst : {true, false}) {
        auto source = std::make_unique<TransformationDictionary>(derived);
        auto target = std::make_unique<TransformationDictionary>();
        *target = *source;
        const ScoreCaseRecord* shared = RecordOf(*source);
        (sourceFirst ? source : target).reset();
        TransformationDictionary& left = sourceFirst ? *target : *source;
        EXPECT_EQ(Score(left), shared);
        EXPECT_EQ(Written(shared->Get("d")), "number 1");
    }
}

TEST_F(DictionaryCopy, TheTargetsEarlierRecordLivesOn) {
    TransformationDictionary target(derived);
    const ScoreCaseRecord* earlier = RecordOf(target);
    target = TransformationDictionary();
    EXPECT_EQ(RecordOf(target), nullptr);
    EXPECT_EQ(Written(earlier->Get("d")), "number 1");
}

TEST_F(DictionaryCopy, AssignmentThereAndBackAndToItselfIsSafe) {
    TransformationDictionary other;
    for (int i = 0; i < 3; ++i) {
        other = derived;
        derived = other;
        const TransformationDictionary& same = other;
        other = same;
    }
    record.SetValue("x", 5.0);
    EXPECT_EQ(Score(derived), values);
    EXPECT_EQ(Written(values->Get("d")), "number 5");
}

TEST_F(DictionaryCopy, AnAssignedDictionaryComputesItsNewFields) {
    TransformationDictionary target;
    auto* constant = new TransformVar("d", kNumeric);
    constant->AddFieldNameAndTransExpression("", TD::TE_CONSTANT);
    constant->SetConstString("9");
    target.AddVar("d", constant);
    target.AddDerievedVarName("d");
    target.SetUpDerivedCaseRecord();
    EXPECT_EQ(Written(Score(target)->Get("d")), "number 9");
    target = derived;
    record.SetValue("x", 3.0);
    EXPECT_EQ(Written(Score(target)->Get("d")), "number 3");
}

TEST_F(DictionaryCopy, ACloneIsAPlainDictionary) {
    const std::unique_ptr<ScoreDictionary> clone(derived.Clone());
    EXPECT_EQ(dynamic_cast<TransformationDictionary*>(clone.get()), nullptr);
    EXPECT_NE(dynamic_cast<TransformVar*>(clone->GetVar("d")), nullptr);
}
