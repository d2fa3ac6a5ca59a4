#include "data/sets/counted_values.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ResultVar.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>
#include <MCVeltrane_900/ValueProbability.h>
#include <MCVeltrane_900/ValueProbabilitySet.h>
#include <MCVeltrane_900/VarStats.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace MCVeltrane_900 {
namespace {

using veltrane::tests::CountedNumber;

/// Counts its own destruction; its clones are plain.
class CountedStats : public VarStats {
public:
    explicit CountedStats(int& deleted) : fDeleted(deleted) {}
    ~CountedStats() override { ++fDeleted; }

private:
    int& fDeleted;
};

class CountedEncoder : public ScoreCatStringEncoder {
public:
    explicit CountedEncoder(int& deleted) : ScoreCatStringEncoder(2), fDeleted(deleted) {}
    ~CountedEncoder() override { ++fDeleted; }

private:
    int& fDeleted;
};

/// Gives a variable all six owned objects, each of which counts its own destruction.
void SetOwned(ScoreDictVar& var, int& deleted) {
    auto* missing = new MissingValueSet;
    missing->Add(new Range(new CountedNumber(9.0, deleted)));
    var.SetMissingValues(missing);
    auto* labels = new ValueLabelSet;
    labels->Add(new ValueLbl(new CountedNumber(1.0, deleted), "one"));
    var.SetValueLabels(labels);
    var.SetVarStats(new CountedStats(deleted));
    var.SetDefValue(new CountedNumber(4.0, deleted));
    auto* probabilities = new ValueProbabilitySet;
    probabilities->Add(new ValueProbability(new CountedNumber(1.0, deleted), 0.5));
    var.SetValueProbabilities(probabilities);
    auto* encoder = new CountedEncoder(deleted);
    encoder->Encode(std::string("red"));
    var.SetEncoder(encoder);
}

void SetPlain(ScoreDictVar& var) {
    var.SetLabel("label");
    var.SetDateTimeType(ScoreDictVar::DT_TIME);
    var.SetNumericDataType(ScoreDictVar::NUM_INTEGER);
    var.SetMLevel(ScoreDictVar::LEVEL_NOMINAL);
    var.SetFormat(1, 2);
    var.SetValueIndex(3);
    var.SetEncodedValueIndex(4);
    var.SetNoSpaceTrim(true);
    var.SetEmptyStringOK(true);
    var.SetXMeasure("measure");
    var.SetFlagVariable(true);
    var.SetUsageType(false);
    var.SetOutlierHandleMethod(ScoreDictVar::OUTLIER_AS_MISSING_VALUES);
    var.SetEmptyCateValues(true);
    var.SetFalgTypeTrueValue("T");
}

void ExpectPlain(const ScoreDictVar& var) {
    EXPECT_EQ(var.GetName(), "x");
    EXPECT_EQ(var.GetVarType(), ScoreDictVar::STRING_VAR);
    EXPECT_EQ(var.GetLabel(), "label");
    EXPECT_EQ(var.GetDateTimeType(), ScoreDictVar::DT_TIME);
    EXPECT_EQ(var.GetNumericDataType(), ScoreDictVar::NUM_INTEGER);
    EXPECT_EQ(var.GetMLevel(), ScoreDictVar::LEVEL_NOMINAL);
    EXPECT_EQ(var.GetDecimal(), 1);
    EXPECT_EQ(var.GetWidth(), 2);
    EXPECT_EQ(var.GetValueIndex(), 3);
    EXPECT_EQ(var.GetEncodedValueIndex(), 4);
    EXPECT_TRUE(var.GetNoSpaceTrim());
    EXPECT_TRUE(var.GetEmptyStringOK());
    EXPECT_EQ(var.GetXMeasure(), "measure");
    EXPECT_TRUE(var.IsFlagVariable());
    EXPECT_FALSE(var.IsUsageTypeEnable());
    EXPECT_EQ(var.GetOutlierHandleMethod(), 1);
    EXPECT_TRUE(var.IsEmptyCateValues());
    EXPECT_EQ(var.GetFalgTypeTrueValue(), "T");
}

void ExpectOwnedClones(const ScoreDictVar& copy, const ScoreDictVar& source) {
    EXPECT_NE(copy.GetMissingValues(), source.GetMissingValues());
    EXPECT_EQ(copy.GetMissingValues()->GetMissingValues()[0]->GetMin()->GetDouble(), 9.0);
    EXPECT_NE(copy.GetValueLabels(), source.GetValueLabels());
    EXPECT_EQ(copy.GetValueLabels()->GetAllValueLabels()[0]->GetLabel(), "one");
    EXPECT_NE(copy.GetVarStats(), source.GetVarStats());
    EXPECT_EQ(copy.GetVarStats()->GetStddev(), 1.0);
    EXPECT_NE(copy.GetDefValue(), source.GetDefValue());
    EXPECT_EQ(copy.GetDefValue()->GetDouble(), 4.0);
    EXPECT_NE(copy.GetValueProbabilities(), source.GetValueProbabilities());
    EXPECT_EQ(copy.GetValueProbabilities()->GetAllValueProbabilities()[0]->GetProbability(), 0.5);
    EXPECT_NE(copy.GetEncoder(), source.GetEncoder());
    EXPECT_EQ(copy.GetEncoder()->EncodeConst(std::string("red")), 0);
}

using Log = std::vector<std::string>;

/// An owned object that writes down its destruction and its cloning. Its clones are plain.
template <typename Base, typename Interface>
class Logged : public Base {
public:
    template <typename... Arguments>
    Logged(std::string name, Log& log, Arguments... arguments)
        : Base(arguments...), fName(std::move(name)), fLog(log) {}
    ~Logged() override { fLog.push_back("delete " + fName); }
    Interface* Clone() const override {
        fLog.push_back("clone " + fName);
        return Base::Clone();
    }

private:
    std::string fName;
    Log& fLog;
};

void SetLogged(ScoreDictVar& var, const std::string& name, Log& log) {
    var.SetMissingValues(new Logged<MissingValueSet, ScoreMissingValueSet>(name + " missing", log));
    var.SetValueLabels(new Logged<ValueLabelSet, ScoreValueLabelSet>(name + " labels", log));
    var.SetVarStats(new Logged<VarStats, ScoreVarStats>(name + " stats", log));
    var.SetDefValue(new Logged<NumericValue, ScoreValue>(name + " default", log));
    var.SetValueProbabilities(new Logged<ValueProbabilitySet, ScoreValueProbabilitySet>(name + " priors", log));
    var.SetEncoder(new Logged<ScoreCatStringEncoder, ScoreEncoder>(name + " encoder", log, 2));
}

TEST(DictVarOwnership, AssignmentDeletesAllBeforeItClonesAny) {
    Log log;
    DictVar source("x", ScoreDictVar::kNUMERIC_VAR);
    DictVar target("y", ScoreDictVar::kNUMERIC_VAR);
    SetLogged(source, "x", log);
    SetLogged(target, "y", log);
    target = source;
    EXPECT_EQ(log, (Log{"delete y missing", "delete y labels", "delete y stats", "delete y default", "delete y priors",
                        "delete y encoder", "clone x missing", "clone x labels", "clone x stats", "clone x default",
                        "clone x priors", "clone x encoder"}));
}

TEST(DictVarOwnership, AssignmentToItselfDoesNothing) {
    Log log;
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    SetLogged(var, "x", log);
    const DictVar& same = var;
    var = same;
    EXPECT_EQ(log, Log{});
}

TEST(DictVarOwnership, DestructorDeletesTheSixObjects) {
    int deleted = 0;
    {
        DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
        SetOwned(var, deleted);
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 6);
}

TEST(KeptDictVar, SettersOverwriteWithoutDeleting) {
    int deleted = 0;
    DictVar var("x", ScoreDictVar::kNUMERIC_VAR);
    SetOwned(var, deleted);
    std::unique_ptr<ScoreMissingValueSet> missing(var.GetMissingValues());
    std::unique_ptr<ScoreValueLabelSet> labels(var.GetValueLabels());
    std::unique_ptr<ScoreVarStats> stats(var.GetVarStats());
    std::unique_ptr<const ScoreValue> defValue(var.GetDefValue());
    std::unique_ptr<ScoreValueProbabilitySet> probabilities(var.GetValueProbabilities());
    std::unique_ptr<ScoreEncoder> encoder(var.GetEncoder());
    var.SetMissingValues(nullptr);
    var.SetValueLabels(nullptr);
    var.SetVarStats(nullptr);
    var.SetDefValue(nullptr);
    var.SetValueProbabilities(nullptr);
    var.SetEncoder(nullptr);
    EXPECT_EQ(deleted, 0);
    EXPECT_EQ(var.GetMissingValues(), nullptr);
    EXPECT_EQ(var.GetValueLabels(), nullptr);
    EXPECT_EQ(var.GetVarStats(), nullptr);
    EXPECT_EQ(var.GetDefValue(), nullptr);
    EXPECT_EQ(var.GetValueProbabilities(), nullptr);
    EXPECT_EQ(var.GetEncoder(), nullptr);
}

TEST(DictVarCopy, ConstructorCopiesFieldsAndClonesObjects) {
    int deleted = 0;
    DictVar source("x", ScoreDictVar::STRING_VAR);
    SetPlain(source);
    SetOwned(source, deleted);
    const DictVar copy(source);
    ExpectPlain(copy);
    ExpectOwnedClones(copy, source);
    EXPECT_EQ(deleted, 0);
}

TEST(DictVarCopy, NullStaysNull) {
    const DictVar source("x", ScoreDictVar::STRING_VAR);
    const DictVar copy(source);
    EXPECT_EQ(copy.GetMissingValues(), nullptr);
    EXPECT_EQ(copy.GetValueLabels(), nullptr);
    EXPECT_EQ(copy.GetVarStats(), nullptr);
    EXPECT_EQ(copy.GetDefValue(), nullptr);
    EXPECT_EQ(copy.GetValueProbabilities(), nullptr);
    EXPECT_EQ(copy.GetEncoder(), nullptr);
}

TEST(DictVarCopy, AssignmentDeletesTheTargetsObjects) {
    int deletedSource = 0;
    int deletedTarget = 0;
    DictVar source("x", ScoreDictVar::STRING_VAR);
    SetPlain(source);
    SetOwned(source, deletedSource);
    DictVar target("y", ScoreDictVar::kNUMERIC_VAR);
    SetOwned(target, deletedTarget);
    target = source;
    EXPECT_EQ(deletedTarget, 6);
    EXPECT_EQ(deletedSource, 0);
    ExpectPlain(target);
    ExpectOwnedClones(target, source);
    target = DictVar("z", ScoreDictVar::kNUMERIC_VAR);
    EXPECT_EQ(target.GetEncoder(), nullptr);
    EXPECT_EQ(target.GetDefValue(), nullptr);
}

TEST(DictVarCopy, SelfAssignmentKeepsEverything) {
    int deleted = 0;
    DictVar var("x", ScoreDictVar::STRING_VAR);
    SetPlain(var);
    SetOwned(var, deleted);
    const DictVar& alias = var;
    var = alias;
    EXPECT_EQ(deleted, 0);
    ExpectPlain(var);
}

TEST(DictVarCopy, CloneIsADictVar) {
    int deleted = 0;
    DictVar source("x", ScoreDictVar::STRING_VAR);
    SetPlain(source);
    SetOwned(source, deleted);
    std::unique_ptr<ScoreDictVar> clone(source.Clone());
    const ScoreDictVar& cloned = *clone;
    EXPECT_EQ(typeid(cloned), typeid(DictVar));
    ExpectPlain(*clone);
    ExpectOwnedClones(*clone, source);
}

TEST(ResultVar, HasAFeature) {
    ResultVar var("out", ScoreDictVar::STRING_VAR);
    EXPECT_EQ(var.GetName(), "out");
    EXPECT_EQ(var.GetVarType(), ScoreDictVar::STRING_VAR);
    EXPECT_EQ(var.GetFeature(), ScoreResultField::RF_NONE);
    var.SetFeature(ScoreResultField::RF_PROBABILITY);
    EXPECT_EQ(var.GetFeature(), ScoreResultField::RF_PROBABILITY);
}

TEST(ResultVar, CopiesTakeTheFeature) {
    ResultVar var("x", ScoreDictVar::STRING_VAR);
    SetPlain(var);
    var.SetFeature(ScoreResultField::RF_WARNING);
    const ResultVar copy(var);
    EXPECT_EQ(copy.GetFeature(), ScoreResultField::RF_WARNING);
    ExpectPlain(copy);
    ResultVar assigned("y", ScoreDictVar::kNUMERIC_VAR);
    assigned = var;
    EXPECT_EQ(assigned.GetFeature(), ScoreResultField::RF_WARNING);
    ExpectPlain(assigned);
    std::unique_ptr<ScoreDictVar> clone(var.Clone());
    auto* cloned = dynamic_cast<ResultVar*>(clone.get());
    ASSERT_NE(cloned, nullptr);
    EXPECT_EQ(cloned->GetFeature(), ScoreResultField::RF_WARNING);
}

} // namespace
} // namespace MCVeltrane_900
