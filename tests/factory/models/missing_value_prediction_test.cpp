#include "factory/entries/small_model.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/ValueProbability.h>
#include <MCVeltrane_900/ValueProbabilitySet.h>

#include <gtest/gtest.h>

#include <set>

using namespace veltrane::tests;
using namespace MCVeltrane_900;

namespace {

const MCScore::MCStatus kOk;
const MCScore::MCStatus kNoPrediction(90027, false);

using Prior = std::pair<const char*, double>;

class MissingValuePrediction : public testing::Test {
protected:
    /// Gives the model a target of this level.
    DictVar& Target(ScoreDictVar::MeasureLevel level) {
        auto* target = new DictVar("y", ScoreDictVar::STRING_VAR);
        target->SetMLevel(level);
        auto* dictionary = new BaseDictionary;
        dictionary->AddVar("y", target);
        fModel.SetScoreDictionary(dictionary);
        fModel.SetVarRole("y", ScoreModel::ROLE_TARGET);
        return *target;
    }

    void TargetWithPriors(const std::vector<Prior>& priors) {
        auto* set = new ValueProbabilitySet;
        for (const auto& [value, probability] : priors) {
            set->Add(new ValueProbability(new StringValue(value), probability));
        }
        Target(ScoreDictVar::LEVEL_NOMINAL).SetValueProbabilities(set);
    }

    SmallModel fModel;
    SmallClsResult fResult{0};
};

TEST_F(MissingValuePrediction, OfNoResultIsOk) {
    EXPECT_EQ(fModel.HandleMissingValue(nullptr), kOk);
}

TEST_F(MissingValuePrediction, WithoutATargetFails) {
    EXPECT_EQ(fModel.HandleMissingValue(&fResult), kNoPrediction);
    EXPECT_FALSE(fResult.WasValueSet());
}

TEST_F(MissingValuePrediction, IsTheDefaultOfAContinuousTarget) {
    Target(ScoreDictVar::LEVEL_CONTINUOUS).SetDefValue(new NumericValue(2.5));
    SmallRegResult result(1);
    EXPECT_EQ(fModel.HandleMissingValue(&result), kOk);
    ASSERT_NE(result.GetResultValue(), nullptr);
    EXPECT_EQ(result.GetResultValue()->GetDouble(), 2.5);
    EXPECT_EQ(result.GetResultConfidence(), -1.0);
}

TEST_F(MissingValuePrediction, FailsForAContinuousTargetWithoutADefault) {
    Target(ScoreDictVar::LEVEL_CONTINUOUS);
    SmallRegResult result(1);
    const MCScore::MCStatus status = fModel.HandleMissingValue(&result);
    EXPECT_EQ(status, kNoPrediction);
    EXPECT_EQ(status.GetErrorCode(), 90027);
    EXPECT_TRUE(status.IsError());
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(status.GetDiscreteDatum(i), 0);
        EXPECT_EQ(status.GetScaleDatum(i), 0.0);
    }
    EXPECT_FALSE(result.WasValueSet());
}

TEST_F(MissingValuePrediction, IsTheFirstOfTheMostProbableValues) {
    TargetWithPriors({{"a", 0.2}, {"b", 0.5}, {"c", 0.5}});
    EXPECT_EQ(fModel.HandleMissingValue(&fResult), kOk);
    EXPECT_EQ(fResult.GetResultValue()->GetString(), "b");
    EXPECT_EQ(fResult.GetResultConfidence(), 0.5);
}

TEST_F(MissingValuePrediction, GivesEveryCategoryItsProbability) {
    TargetWithPriors({{"a", 0.2}, {"b", 0.0}, {"c", 0.8}});
    fModel.HandleMissingValue(&fResult);
    const std::vector<const ScoreValue*> categories = fResult.GetCategories();
    ASSERT_EQ(categories.size(), 3u);
    EXPECT_EQ(categories[0]->GetString(), "a");
    EXPECT_EQ(categories[1]->GetString(), "b");
    EXPECT_EQ(categories[2]->GetString(), "c");
    EXPECT_EQ(fResult.GetCategoryProbability(categories[0]), 0.2);
    EXPECT_EQ(fResult.GetCategoryProbability(categories[1]), 0.0);
    EXPECT_EQ(fResult.GetCategoryProbability(categories[2]), 0.8);
}

TEST_F(MissingValuePrediction, LeavesTheCategoriesOutForAModelThatSkipsThem) {
    TargetWithPriors({{"a", 0.2}, {"b", 0.8}});
    fModel.skips = true;
    EXPECT_EQ(fModel.HandleMissingValue(&fResult), kOk);
    EXPECT_TRUE(fResult.GetCategories().empty());
    EXPECT_EQ(fResult.GetResultValue()->GetString(), "b");
}

TEST_F(MissingValuePrediction, GivesCategoriesToTheKindsThatHaveThem) {
    TargetWithPriors({{"a", 1.0}});
    const std::set<int> withCategories = {0, 2, 3, 4, 6, 10, 15, 18, 20, 21, 24, 26};
    for (int kind = -1; kind <= 28; ++kind) {
        SmallClsResult result(kind);
        EXPECT_EQ(fModel.HandleMissingValue(&result), kOk);
        EXPECT_EQ(result.GetCategories().size(), withCategories.count(kind)) << kind;
        EXPECT_EQ(result.GetResultValue()->GetString(), "a") << kind;
    }
}

TEST_F(MissingValuePrediction, GivesARegressionResultNoCategories) {
    TargetWithPriors({{"a", 1.0}});
    SmallRegResult result(1);
    EXPECT_EQ(fModel.HandleMissingValue(&result), kOk);
    EXPECT_EQ(result.GetResultValue()->GetString(), "a");
}

TEST_F(MissingValuePrediction, FailsForACategoricalTargetWithoutPriors) {
    for (const auto level : {ScoreDictVar::LEVEL_ORDINAL, ScoreDictVar::LEVEL_NOMINAL}) {
        SmallModel model;
        auto* target = new DictVar("y", ScoreDictVar::STRING_VAR);
        target->SetMLevel(level);
        target->SetDefValue(new StringValue("a"));
        auto* dictionary = new BaseDictionary;
        dictionary->AddVar("y", target);
        model.SetScoreDictionary(dictionary);
        model.SetVarRole("y", ScoreModel::ROLE_TARGET);
        SmallClsResult result(0);
        EXPECT_EQ(model.HandleMissingValue(&result), kNoPrediction);
        EXPECT_TRUE(result.WasValueSet());
        EXPECT_EQ(result.GetResultValue(), nullptr);
    }
}

TEST_F(MissingValuePrediction, OfAnEmptySetIsOkAndUnset) {
    TargetWithPriors({});
    EXPECT_EQ(fModel.HandleMissingValue(&fResult), kOk);
    EXPECT_FALSE(fResult.WasValueSet());
    EXPECT_EQ(fResult.GetResultConfidence(), -1.0);
}

TEST_F(MissingValuePrediction, NeverChoosesAProbabilityOfZero) {
    TargetWithPriors({{"a", 0.0}, {"b", 0.0}});
    EXPECT_EQ(fModel.HandleMissingValue(&fResult), kOk);
    EXPECT_FALSE(fResult.WasValueSet());
    EXPECT_EQ(fResult.GetCategories().size(), 2u);
}

TEST_F(MissingValuePrediction, KeepsClonesOfTheTargetsValues) {
    TargetWithPriors({{"a", 1.0}});
    fModel.HandleMissingValue(&fResult);
    const ScoreDictVar* target = fModel.GetTargetVar();
    EXPECT_NE(fResult.GetResultValue(), target->GetValueProbabilities()->GetAllValueProbabilities()[0]->GetValue());
}

} // namespace
