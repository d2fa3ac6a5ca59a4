#include "factory/entries/small_model.h"

#include <MCVeltrane_900/CaseRecord.h>

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

using namespace veltrane::tests;
using namespace MCVeltrane_900;

/// The operations between hosts and plug-ins, called by their place in the table of virtual operations: a plug-in that
/// was built earlier calls them so.
namespace {

/// The operation at a place, counted from 1 for the destructor, which takes two entries.
template <typename Function>
Function AtPlace(const void* object, int place) {
    void* const* table = nullptr;
    std::memcpy(&table, object, sizeof(table));
    Function function = nullptr;
    std::memcpy(&function, &table[place], sizeof(function));
    return function;
}

class ModelPlace : public testing::Test {
protected:
    template <typename Result, typename... Arguments>
    Result Call(int place, Arguments... arguments) {
        return AtPlace<Result (*)(ScoreModel*, Arguments...)>(fModel, place)(fModel, arguments...);
    }
    SmallModel fSmall;
    ScoreModel* fModel = &fSmall;
};

TEST_F(ModelPlace, NineSetsAnOption) {
    EXPECT_TRUE((Call<bool, const std::string&, const std::string&>(9, "option", "value")));
    EXPECT_FALSE((Call<bool, const std::string&, const std::string&>(9, "other", "value")));
}

TEST_F(ModelPlace, TenGivesARole) {
    fModel->SetVarRole("x", ScoreModel::ROLE_GROUP);
    EXPECT_EQ((Call<int, const std::string&>(10, "x")), ScoreModel::ROLE_GROUP);
}

TEST_F(ModelPlace, ThirteenGivesTheInputNames) {
    EXPECT_EQ(Call<std::vector<std::string>>(13), (std::vector<std::string>{"x", "z"}));
}

TEST_F(ModelPlace, EighteenMakesAResult) {
    const std::unique_ptr<ScoreResult> result(Call<ScoreResult*>(18));
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->GetResultKind(), 1);
}

TEST_F(ModelPlace, NineteenGivesThePolicy) {
    EXPECT_EQ(Call<ScoreModel::MVPolicy>(19), ScoreModel::MV_DEFAULT_PREDICTION);
}

TEST_F(ModelPlace, TwentyScoresACase) {
    const CaseRecord record;
    EXPECT_EQ((Call<MCScore::MCStatus, const ScoreCaseRecord*, ScoreResult*>(20, &record, nullptr)),
              MCScore::MCStatus(7, true));
}

TEST_F(ModelPlace, TwentyOneTellsWhetherCategoriesAreSkipped) {
    EXPECT_FALSE(Call<bool>(21));
    fSmall.skips = true;
    EXPECT_TRUE(Call<bool>(21));
}

TEST_F(ModelPlace, TwentyTwoDisplays) {
    std::ostringstream out;
    fModel->SetOption("option", "on");
    Call<void, std::ostream&>(22, out);
    EXPECT_EQ(out.str(), "small model on");
}

TEST_F(ModelPlace, TwentyThreeSetsADictionaryAndItsOwner) {
    auto* dictionary = reinterpret_cast<ScoreDictionary*>(&fSmall);
    Call<void, ScoreDictionary*, bool>(23, dictionary, false);
    EXPECT_EQ(fModel->GetDictionary(), dictionary);
}

template <typename Result, typename Object, typename... Arguments>
Result CallResult(Object* object, int place, Arguments... arguments) {
    return AtPlace<Result (*)(Object*, Arguments...)>(object, place)(object, arguments...);
}

TEST(ResultPlace, TwoToSevenAreTheCommonOnes) {
    SmallClsResult small(26);
    ScoreResult* result = &small;
    NumericValue value(3.0);
    CallResult<void, ScoreResult, ScoreValue*>(result, 2, &value);
    EXPECT_EQ(CallResult<const ScoreValue*>(result, 3), small.GetResultValue());
    EXPECT_EQ(small.GetResultValue()->GetDouble(), 3.0);
    EXPECT_EQ(CallResult<ScoreResultField*>(result, 4), small.GetResultFields());
    CallResult<void, ScoreResult, double>(result, 5, 0.25);
    EXPECT_EQ(CallResult<double>(result, 6), 0.25);
    EXPECT_EQ(CallResult<int>(result, 7), 26);
}

TEST(ResultPlace, EightToTenAreThoseOfACategoricalTarget) {
    SmallClsResult small(0);
    ScoreClsResult* result = &small;
    NumericValue category(1.0);
    CallResult<void, ScoreClsResult, ScoreValue*, double>(result, 8, &category, 0.75);
    EXPECT_EQ((CallResult<double, ScoreClsResult, const ScoreValue*>(result, 9, &category)), 0.75);
    EXPECT_EQ(CallResult<std::vector<const ScoreValue*>>(result, 10), small.GetCategories());
}

TEST(ResultPlace, EightAndNineAreThoseOfAContinuousTarget) {
    SmallRegResult small(1);
    ScoreRegResult* result = &small;
    CallResult<void, ScoreRegResult, double>(result, 8, 1.5);
    EXPECT_EQ(CallResult<double>(result, 9), 1.5);
}

} // namespace
