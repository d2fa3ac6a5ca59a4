// What a document says of a model stays as it is once it is read: threads share it, each with a state of its own, and
// one document may give several models.
#include "kit/conditions/decide.h"
#include "kit/inputs/case_view.h"
#include "kit/model/model.h"
#include "models/plans/plan_reading.h"
#include "models/tree/small_tree.h"
#include "regression/regression_scorer.h"
#include "support/numbers.h"
#include "tree/tree_scorer.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace veltrane_kit;
using namespace veltrane::tests;
using MCVeltrane_900::CaseRecord;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::StringValue;

const std::string kTwoModels = R"(<PMML version='4.4'><DataDictionary>
 <DataField name='y' optype='continuous' dataType='double'/>
 <DataField name='x' optype='continuous' dataType='double'/>
</DataDictionary>
<TransformationDictionary><DerivedField name='twice' optype='continuous' dataType='double'><Apply function='*'><FieldRef field='x'/><Constant>2</Constant></Apply></DerivedField></TransformationDictionary>
<TreeModel functionName='regression'>
 <MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/></MiningSchema>
 <Targets><Target field='y' rescaleFactor='10'/></Targets>
 <Node><True/><Node score='1'><SimplePredicate field='twice' operator='lessThan' value='4'/></Node><Node score='2'><True/></Node></Node>
</TreeModel>
<RegressionModel functionName='regression'>
 <MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/></MiningSchema>
 <RegressionTable intercept='1'><NumericPredictor name='twice' coefficient='3'/></RegressionTable>
</RegressionModel></PMML>)";

double PredictionFor(const ModelPlan& plan, double x) {
    CaseRecord record(1);
    record.Add("x", new NumericValue(x));
    ModelState state(plan);
    return plan.Predict(record, state) ? state.prediction.number : veltrane::tests::kMissing;
}

TEST(ModelPlan, IsMadeOfEachModelElementOfADocumentThatIsCompletedOnce) {
    PlanReader reader(kTwoModels);
    const auto tree = reader.Read(u"TreeModel", veltrane_tree::MakeTreeScorer);
    const auto regression = reader.Read(u"RegressionModel", veltrane_regression::MakeRegressionScorer);
    EXPECT_EQ(PredictionFor(*tree, 1.0), 10.0);
    EXPECT_EQ(PredictionFor(*tree, 3.0), 20.0);
    EXPECT_EQ(PredictionFor(*regression, 3.0), 19.0) << "the other model's Target is its own";
}

/// What a model says of a case, in full.
std::string AnswerOf(const ModelPlan& plan, const CaseRecord& record, ModelState& state) {
    if (!plan.Predict(record, state)) {
        return "none";
    }
    std::string answer = std::to_string(state.prediction.category);
    for (int category = 0; category < plan.GetTarget().CategoryCount(); ++category) {
        answer += " " + std::to_string(Bits(state.prediction.ProbabilityOf(category))) + " " +
                  std::to_string(Bits(state.prediction.ConfidenceOf(category)));
    }
    return answer + " " + *state.prediction.entityId;
}

std::vector<std::string> AnswersOf(const ModelPlan& plan) {
    std::mt19937 random(7);
    std::vector<std::string> answers;
    ModelState state(plan);
    for (int i = 0; i < 2000; ++i) {
        CaseRecord record(3);
        record.Add("x",
                   new NumericValue(random() % 4 == 0 ? veltrane::tests::kMissing : static_cast<double>(random() % 3)));
        record.Add("c", new StringValue(std::string(1, static_cast<char>('t' + random() % 4))));
        record.Add("o", new StringValue("low"));
        answers.push_back(AnswerOf(plan, record, state));
        state.inputs.EndCase();
    }
    return answers;
}

TEST(ModelPlanThreads, ShareOnePlanWithAStateEach) {
    PlanReader reader(kSmallTree);
    const auto plan = reader.Read(u"TreeModel", veltrane_tree::MakeTreeScorer);
    const std::vector<std::string> expected = AnswersOf(*plan);
    std::vector<std::vector<std::string>> answers(8);
    std::vector<std::thread> threads;
    for (std::vector<std::string>& each : answers) {
        threads.emplace_back([&plan, &each] { each = AnswersOf(*plan); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const std::vector<std::string>& each : answers) {
        EXPECT_EQ(each, expected);
    }
}

TEST(ModelPlan, IsSharedByModelsOfHosts) {
    PlanReader reader(kTwoModels);
    const std::shared_ptr<const ModelPlan> plan = reader.Read(u"TreeModel", veltrane_tree::MakeTreeScorer);
    Model first(plan);
    Model second(plan);
    CaseRecord record(1);
    record.Add("x", new NumericValue(1.0));
    const std::unique_ptr<MCVeltrane_900::ScoreResult> result(first.CreateResult());
    EXPECT_TRUE(second.Score(&record, result.get()).IsOK());
    EXPECT_EQ(result->GetResultValue()->GetDouble(), 10.0);
    EXPECT_TRUE(first.Score(&record, result.get()).IsOK());
    EXPECT_EQ(result->GetResultValue()->GetDouble(), 10.0);
}

/// Two fields in columns, and the row that is looked at.
struct Columns {
    std::array<double, 2> numbers;
    std::array<int, 2> categories;

    bool IsMissing(int slot) const { return std::isnan(numbers[static_cast<std::size_t>(slot)]); }
    double Number(int slot) const { return numbers[static_cast<std::size_t>(slot)]; }
    int Category(int slot) const { return categories[static_cast<std::size_t>(slot)]; }
};

class AnyView : public testing::Test {
protected:
    Condition Simple() {
        Condition condition;
        condition.test = static_cast<veltrane_kit::Test>(Below(static_cast<int>(veltrane_kit::Test::AND)));
        condition.slot = Below(2);
        switch (condition.test) {
        case veltrane_kit::Test::IN_NUMBERS:
        case veltrane_kit::Test::NOT_IN_NUMBERS:
            condition.span = fConditions.AddNumbers({1.0, 2.0});
            break;
        case veltrane_kit::Test::IN_CATEGORIES:
        case veltrane_kit::Test::NOT_IN_CATEGORIES:
            fConditions.SetCategories(condition, {0, 2, 70}, Below(2) == 0);
            break;
        case veltrane_kit::Test::IN_FIRST_CATEGORIES:
        case veltrane_kit::Test::NOT_IN_FIRST_CATEGORIES:
            fConditions.SetCategories(condition, {0, 2}, Below(2) == 0);
            break;
        case veltrane_kit::Test::IN_FEW_CATEGORIES:
        case veltrane_kit::Test::NOT_IN_FEW_CATEGORIES:
            fConditions.SetCategories(condition, {0, 2, 900}, Below(2) == 0);
            break;
        case veltrane_kit::Test::IS_CATEGORY:
        case veltrane_kit::Test::IS_NOT_CATEGORY:
            condition.category = Below(3);
            break;
        default:
            if (condition.test >= veltrane_kit::Test::PLACE_LESS) {
                condition.place = {Below(3), 3};
            } else {
                condition.number = Below(3);
            }
        }
        return condition;
    }

    Condition Any(int depth) {
        if (depth == 0 || Below(2) == 0) {
            return Simple();
        }
        Condition condition;
        condition.test = static_cast<veltrane_kit::Test>(static_cast<int>(veltrane_kit::Test::AND) + Below(4));
        const Condition::Span span = fConditions.AddParts(3);
        condition.span = span;
        for (int part = 0; part < 3; ++part) {
            fConditions.SetPart(span.first + part, Any(depth - 1));
        }
        return condition;
    }

    int Below(int bound) { return static_cast<int>(fRandom() % static_cast<unsigned>(bound)); }

    Conditions fConditions;
    std::mt19937 fRandom{11};
};

TEST_F(AnyView, OfACaseDecidesAConditionTheSame) {
    for (int i = 0; i < 20000; ++i) {
        const Condition condition = Any(3);
        std::array<FieldValue, 2> fields;
        Columns columns{};
        for (std::size_t slot = 0; slot < fields.size(); ++slot) {
            fields[slot].number = Below(4) == 0 ? std::nan("") : Below(4);
            fields[slot].isMissing = std::isnan(fields[slot].number);
            fields[slot].category = Below(5) - 1;
            columns.numbers[slot] = fields[slot].number;
            columns.categories[slot] = fields[slot].category;
        }
        bool usedSurrogate = false;
        bool usedInColumns = false;
        const CaseView view(fields.data());
        ASSERT_EQ(fConditions.Decide(condition, view, usedSurrogate),
                  fConditions.Decide(condition, columns, usedInColumns));
        ASSERT_EQ(usedSurrogate, usedInColumns);
        bool usedStepByStep = false;
        ASSERT_EQ(fConditions.Decide(condition, view, usedSurrogate),
                  fConditions.DecideAny(condition, view, usedStepByStep))
            << "a comparison that is decided at once";
        ASSERT_EQ(usedSurrogate, usedStepByStep);
        ASSERT_EQ(fConditions.LackingSlot(condition, view), fConditions.LackingSlot(condition, columns));
    }
}

} // namespace
