#include "factory/entries/small_model.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>
#include <MCVeltrane_900/VersionInfo.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;
using namespace MCVeltrane_900;

namespace {

/// A dictionary that tells its deletion.
template <typename Dictionary>
class Watched : public Dictionary {
public:
    Watched(std::string& log, std::string name) : fLog(log), fName(std::move(name)) {}
    ~Watched() override { fLog += fName + ";"; }

private:
    std::string& fLog;
    std::string fName;
};

class WatchedVersion : public VersionInfo {
public:
    explicit WatchedVersion(std::string& log) : fLog(log) {}
    ~WatchedVersion() override { fLog += "version;"; }

private:
    std::string& fLog;
};

DictVar* Variable(const std::string& name) {
    return new DictVar(name, ScoreDictVar::kNUMERIC_VAR);
}

/// A dictionary with these variables.
template <typename Dictionary = BaseDictionary>
Dictionary* WithVariables(const std::vector<std::string>& names) {
    auto* dictionary = new Dictionary;
    for (const std::string& name : names) {
        dictionary->AddVar(name, Variable(name));
    }
    return dictionary;
}

TEST(BaseModelFields, StartAsStated) {
    const SmallModel model;
    EXPECT_EQ(model.GetDictionary(), nullptr);
    EXPECT_EQ(model.GetTransformationDictionary(), nullptr);
    EXPECT_EQ(model.GetResultDictionary(), nullptr);
    EXPECT_EQ(model.GetVersionInfo(), nullptr);
    EXPECT_EQ(model.GetMissingValuePolicy(), 1);
    EXPECT_EQ(model.GetAlgorithmName(), "");
    EXPECT_EQ(model.GetMiningFunction(), 0);
    EXPECT_EQ(model.GetTargetVar(), nullptr);
    EXPECT_EQ(model.GetVarRole("x"), -1);
}

TEST(BaseModelFields, KeepWhatIsSet) {
    SmallModel model;
    auto* dictionary = new BaseDictionary;
    auto* transformation = new TransformationDictionary;
    auto* result = new BaseDictionary;
    auto* version = new VersionInfo;
    model.SetScoreDictionary(dictionary);
    model.SetTransformationScoreDictionary(transformation);
    model.SetResultScoreDictionary(result);
    model.SetVersionInfo(version);
    model.SetMissingValuePolicy(ScoreModel::MV_NO_PREDICTION);
    model.SetMiningFunction(BaseModel::FUNC_CLUSTERING);
    model.SetAlgorithmName("name");
    EXPECT_EQ(model.GetDictionary(), dictionary);
    EXPECT_EQ(model.GetTransformationDictionary(), transformation);
    EXPECT_EQ(model.GetResultDictionary(), result);
    EXPECT_EQ(model.GetVersionInfo(), version);
    EXPECT_EQ(model.GetMissingValuePolicy(), ScoreModel::MV_NO_PREDICTION);
    EXPECT_EQ(model.GetMiningFunction(), BaseModel::FUNC_CLUSTERING);
    EXPECT_EQ(model.GetAlgorithmName(), "name");
}

TEST(BaseModelOwnership, DeletesEverythingInItsOrder) {
    std::string log;
    {
        SmallModel model;
        model.SetResultScoreDictionary(new Watched<BaseDictionary>(log, "result"));
        model.SetTransformationScoreDictionary(new Watched<TransformationDictionary>(log, "transformation"));
        model.SetScoreDictionary(new Watched<BaseDictionary>(log, "dictionary"));
        model.SetVersionInfo(new WatchedVersion(log));
    }
    EXPECT_EQ(log, "version;dictionary;transformation;result;");
}

TEST(BaseModelOwnership, LeavesASharedDictionaryAlone) {
    std::string log;
    Watched<BaseDictionary> shared(log, "shared");
    {
        SmallModel model;
        model.SetScoreDictionary(&shared, false);
        EXPECT_EQ(model.GetDictionary(), &shared);
    }
    EXPECT_EQ(log, "");
}

TEST(BaseModelOwnership, CanBeTakenWithTheDictionary) {
    std::string log;
    {
        SmallModel model;
        model.SetScoreDictionary(nullptr, false);
        model.SetScoreDictionary(new Watched<BaseDictionary>(log, "dictionary"), true);
    }
    EXPECT_EQ(log, "dictionary;");
}

TEST(KeptBaseModelOwnership, StaysWhenOnlyTheDictionaryIsSet) {
    std::string log;
    Watched<BaseDictionary> shared(log, "shared");
    {
        SmallModel model;
        model.SetScoreDictionary(nullptr, false);
        model.SetScoreDictionary(&shared);
    }
    EXPECT_EQ(log, "");
}

TEST(KeptBaseModelOwnership, LosesWhatASetterReplaces) {
    std::string log;
    {
        WatchedVersion version(log);
        Watched<BaseDictionary> first(log, "first");
        SmallModel model;
        model.SetVersionInfo(&version);
        model.SetVersionInfo(nullptr);
        model.SetScoreDictionary(&first);
        model.SetScoreDictionary(nullptr);
        EXPECT_EQ(log, "");
    }
    EXPECT_EQ(log, "first;version;");
}

TEST(VarRole, OfAKnownVariableIsKept) {
    SmallModel model;
    model.SetScoreDictionary(WithVariables({"x", "y"}));
    EXPECT_TRUE(model.SetVarRole("x", ScoreModel::ROLE_INPUT));
    EXPECT_EQ(model.GetVarRole("x"), ScoreModel::ROLE_INPUT);
    EXPECT_TRUE(model.SetVarRole("x", ScoreModel::ROLE_GROUP));
    EXPECT_EQ(model.GetVarRole("x"), ScoreModel::ROLE_GROUP);
    EXPECT_EQ(model.GetVarRole("y"), -1);
}

TEST(VarRole, OfAnEmptyNameIsRefused) {
    SmallModel model;
    model.SetScoreDictionary(new BaseDictionary);
    EXPECT_FALSE(model.SetVarRole("", ScoreModel::ROLE_TARGET));
    EXPECT_EQ(model.GetVarRole(""), -1);
    EXPECT_FALSE(model.SetVarRole(static_cast<const ScoreDictVar*>(nullptr), ScoreModel::ROLE_TARGET));
    EXPECT_EQ(model.GetVarRole(static_cast<const ScoreDictVar*>(nullptr)), -1);
}

TEST(VarRole, IsLookedUpAmongTheDerivedVariablesToo) {
    SmallModel model;
    model.SetScoreDictionary(WithVariables({"x"}));
    model.SetTransformationScoreDictionary(WithVariables<TransformationDictionary>({"y"}));
    EXPECT_TRUE(model.SetVarRole("x", ScoreModel::ROLE_INPUT));
    EXPECT_TRUE(model.SetVarRole("y", ScoreModel::ROLE_INPUT));
    EXPECT_FALSE(model.SetVarRole("z", ScoreModel::ROLE_INPUT));
    EXPECT_EQ(model.GetVarRole("z"), -1);
}

TEST(KeptVarRole, IsGivenToUnknownNamesWithoutDerivedVariables) {
    SmallModel model;
    model.SetScoreDictionary(WithVariables({"x"}));
    EXPECT_TRUE(model.SetVarRole("z", ScoreModel::ROLE_INPUT));
    EXPECT_EQ(model.GetVarRole("z"), ScoreModel::ROLE_INPUT);
}

TEST(VarRole, GoesByTheNameOfAVariable) {
    SmallModel model;
    model.SetScoreDictionary(WithVariables({"x"}));
    const DictVar other("x", ScoreDictVar::STRING_VAR);
    EXPECT_TRUE(model.SetVarRole(&other, ScoreModel::ROLE_ORDER));
    EXPECT_EQ(model.GetVarRole(&other), ScoreModel::ROLE_ORDER);
    EXPECT_EQ(model.GetVarRole("x"), ScoreModel::ROLE_ORDER);
}

TEST(VarRole, NeedsNoDictionary) {
    SmallModel model;
    EXPECT_TRUE(model.SetVarRole("x", ScoreModel::ROLE_TARGET));
    EXPECT_EQ(model.GetTargetVar(), nullptr);
}

TEST(Target, IsTheVariableOfTheRole) {
    SmallModel model;
    BaseDictionary* dictionary = WithVariables({"x", "y"});
    model.SetScoreDictionary(dictionary);
    model.SetVarRole("x", ScoreModel::ROLE_INPUT);
    EXPECT_EQ(model.GetTargetVar(), nullptr);
    model.SetVarRole("y", ScoreModel::ROLE_TARGET);
    EXPECT_EQ(model.GetTargetVar(), static_cast<const ScoreDictionary*>(dictionary)->GetVar("y"));
}

TEST(KeptTarget, MovesAndLeavesTheEarlierRole) {
    SmallModel model;
    model.SetScoreDictionary(WithVariables({"x", "y"}));
    model.SetVarRole("x", ScoreModel::ROLE_TARGET);
    model.SetVarRole("y", ScoreModel::ROLE_TARGET);
    EXPECT_EQ(model.GetTargetVar()->GetName(), "y");
    EXPECT_EQ(model.GetVarRole("x"), ScoreModel::ROLE_TARGET);
    model.SetVarRole("y", ScoreModel::ROLE_INPUT);
    EXPECT_EQ(model.GetTargetVar()->GetName(), "y");
}

TEST(KeptTarget, IsNotFoundAmongTheDerivedVariables) {
    SmallModel model;
    model.SetScoreDictionary(new BaseDictionary);
    model.SetTransformationScoreDictionary(WithVariables<TransformationDictionary>({"y"}));
    EXPECT_TRUE(model.SetVarRole("y", ScoreModel::ROLE_TARGET));
    EXPECT_EQ(model.GetTargetVar(), nullptr);
}

TEST(MiningFunction, IsReadByItsExactName) {
    EXPECT_EQ(BaseModel::MiningFunctionFromString("associationRules"), 1);
    EXPECT_EQ(BaseModel::MiningFunctionFromString("sequences"), 2);
    EXPECT_EQ(BaseModel::MiningFunctionFromString("classification"), 3);
    EXPECT_EQ(BaseModel::MiningFunctionFromString("regression"), 4);
    EXPECT_EQ(BaseModel::MiningFunctionFromString("clustering"), 5);
    EXPECT_EQ(BaseModel::MiningFunctionFromString("timeSeries"), 6);
    for (const char* const other : {"", "Classification", "CLASSIFICATION", "classification ", "timeseries", "3"}) {
        EXPECT_EQ(BaseModel::MiningFunctionFromString(other), 0) << other;
    }
}

TEST(Algorithm, OfTheTwoKindsIsKnown) {
    SmallModel model;
    EXPECT_FALSE(model.isKMorPDF());
    for (const char* const name : {"KM", "Parametric Distribution Fitting"}) {
        model.SetAlgorithmName(name);
        EXPECT_TRUE(model.isKMorPDF()) << name;
    }
    for (const char* const name : {"km", "KM ", "parametric distribution fitting", "Parametric"}) {
        model.SetAlgorithmName(name);
        EXPECT_FALSE(model.isKMorPDF()) << name;
    }
}

TEST(MadeUpTarget, IsNeededByARegressionWithoutOne) {
    SmallModel model;
    model.SetScoreDictionary(WithVariables({"y"}));
    EXPECT_FALSE(model.NeedToMakeupATarget());
    model.SetMiningFunction(BaseModel::FUNC_CLASSIFICATION);
    EXPECT_FALSE(model.NeedToMakeupATarget());
    model.SetMiningFunction(BaseModel::FUNC_REGRESSION);
    EXPECT_TRUE(model.NeedToMakeupATarget());
    model.SetVarRole("y", ScoreModel::ROLE_TARGET);
    EXPECT_FALSE(model.NeedToMakeupATarget());
    model.SetMiningFunction(BaseModel::FUNC_CLASSIFICATION);
    EXPECT_FALSE(model.NeedToMakeupATarget());
}

} // namespace
