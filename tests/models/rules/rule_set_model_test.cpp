// What sets of rules make of cases where the standard leaves room, and what hosts get to know.
#include "models/kit/scoring.h"
#include "models/plans/plan_reading.h"
#include "models/rules/small_rules.h"
#include "rules/rule_set_scorer.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

namespace {

TEST(RuleSet, TakesTheFirstRuleThatHolds) {
    Scored scored(kSmallRules);
    EXPECT_TRUE(scored.Score({{"x", "0"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Text(), "a");
    EXPECT_EQ(scored.Text("id"), "low");
    EXPECT_EQ(scored.Number("conf"), 0.75);
    EXPECT_EQ(scored.Text("second"), "b");
    EXPECT_EQ(scored.Probability("b"), 0.3);
    EXPECT_EQ(scored.Probability("c"), 0.0);
    scored.Score({{"x", "3"}, {"k", "u"}});
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Number("conf"), 1.0);
    EXPECT_EQ(scored.Text("second"), "");
    EXPECT_EQ(scored.Text("rule"), "k = u and x < 5 -> b");
    EXPECT_EQ(scored.Probability("b"), kMissing);
}

/// What holds is kept for each row of a block: of a hundred thousand rules no more than somebody reads.
TEST(RuleSet, TellsAsManyRulesAsOutputFieldsAskFor) {
    const auto document = [](const std::string& rank) {
        std::string rules;
        for (int i = 0; i < 100; ++i) {
            rules += "<SimpleRule score='" + std::to_string(i) + "'><True/></SimpleRule>";
        }
        return Replaced(Replaced(kNumberRules, "rank='2'", "rank='" + rank + "'"),
                        "<RuleSelectionMethod criterion='firstHit'/>",
                        "<RuleSelectionMethod criterion='firstHit'/>" + rules);
    };
    for (const std::size_t rank : {1U, 2U, 7U}) {
        PlanReader reader(document(std::to_string(rank)));
        const auto plan = reader.Read(u"RuleSetModel", veltrane_rules::MakeRuleSetScorer);
        veltrane_kit::ModelState state(*plan);
        CaseRecord record(1);
        record.Add("x", std::make_unique<NumericValue>(1.0).release());
        ASSERT_TRUE(plan->Predict(record, state));
        EXPECT_EQ(state.prediction.number, 0.0);
        EXPECT_EQ(state.prediction.grounds.rules.size(), rank);
        EXPECT_EQ(state.prediction.grounds.rules.back()->id, std::to_string(rank));
    }
}

/// Weights and confidences may be any numbers, but what no double holds has no order and is no output.
TEST(RuleSet, PredictsNothingBySumsBeyondAllDoubles) {
    const std::string rules = "<SimpleRule score='a' weight='1e308' confidence='1e308'><SimplePredicate field='x' "
                              "operator='lessThan' value='0'/></SimpleRule>";
    for (const auto* weight : {"weight='1e308'", "weight='1' confidence='1e308'"}) {
        SCOPED_TRACE(weight);
        Scored scored(Replaced(Replaced(kSmallRules, "firstHit", "weightedSum"), "<SimpleRule id='low' score='a'",
                               rules + "<SimpleRule score='a' " + weight +
                                   "><SimplePredicate field='x' operator='lessThan' value='-1'/></SimpleRule>"
                                   "<SimpleRule id='low' score='a'"));
        EXPECT_TRUE(scored.Score({{"x", "-0.5"}, {"k", "u"}}).IsOK());
        EXPECT_EQ(scored.Text(), "a");
        EXPECT_EQ(scored.Score({{"x", "-5"}, {"k", "u"}}).GetErrorCode(), kNoPrediction);
        EXPECT_EQ(scored.Number("conf"), kMissing);
        EXPECT_EQ(scored.Text(), "");
    }
}

/// The sum of a category's weights is a number, that of all whose distributions are to be mixed is none.
TEST(RuleSet, MixesNoDistributionsByWeightsBeyondAllDoubles) {
    const std::string other = "<SimpleRule score='b' weight='1.5e308'><True/><ScoreDistribution value='b' "
                              "recordCount='1'/></SimpleRule><SimpleRule id='low' score='a'";
    std::string document = Replaced(kSmallRules, "firstHit", "weightedSum");
    Scored scored(
        Replaced(Replaced(document, "<SimpleRule id='low' score='a'", other), "weight='2'", "weight='1e308'"));
    EXPECT_TRUE(scored.Score({{"x", "1"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Probability("b"), 1);
    EXPECT_EQ(scored.Score({{"x", "0"}, {"k", "u"}}).GetErrorCode(), kNoPrediction);
}

TEST(RuleSet, IsAsSureAsItsRuleWhereNothingTellsAProbability) {
    Scored scored(Replaced(kSmallRules, "<SimpleRule id='mid' score='b'>", "<SimpleRule score='b' confidence='0.6'>"));
    scored.Score({{"x", "3"}, {"k", "u"}});
    EXPECT_EQ(scored.Result().GetResultConfidence(), 0.6);
    EXPECT_EQ(scored.Text("id"), "2");
    scored.Score({{"x", "0"}});
    EXPECT_EQ(scored.Result().GetResultConfidence(), 0.7);
}

TEST(RuleSet, TakesTheDefaultWhereNoRuleHolds) {
    Scored scored(kSmallRules);
    EXPECT_TRUE(scored.Score({{"x", "7"}}).IsOK());
    EXPECT_EQ(scored.Text(), "c");
    EXPECT_EQ(scored.Text("id"), "");
    EXPECT_EQ(scored.Number("conf"), 0.5);
    EXPECT_EQ(scored.Probability("a"), 0.6);
    Scored unsure(Replaced(kSmallRules, " defaultConfidence='0.5'", ""));
    unsure.Score({{"x", "7"}});
    EXPECT_EQ(unsure.Number("conf"), 0.4);
}

TEST(RuleSet, HasNoPredictionWhereNoRuleHoldsAndThereIsNoDefault) {
    Scored scored(Replaced(kSmallRules, " defaultScore='c'", ""));
    EXPECT_EQ(scored.Score({{"x", "7"}, {"k", "u"}}).GetErrorCode(), kNoPrediction);
    const MCScore::MCStatus lacking = scored.Score({{"k", "u"}});
    EXPECT_EQ(lacking.GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Text("id"), "");
}

TEST(RuleSet, AsksTheRulesOfACompoundWhereItsConditionHolds) {
    Scored scored(kSmallRules);
    for (const char* k : {"", "v"}) {
        scored.Score({{"x", "3"}, {"k", k}});
        EXPECT_EQ(scored.Text(), "c");
    }
}

TEST(RuleSet, GoesByTheFirstCriterion) {
    const std::string document = Replaced(kSmallRules, "<RuleSelectionMethod criterion='firstHit'/>",
                                          "<RuleSelectionMethod criterion='weightedMax'/>"
                                          "<RuleSelectionMethod criterion='firstHit'/>");
    Scored scored(Replaced(document, "weight='2'", "weight='0.5'"));
    scored.Score({{"x", "0"}, {"k", "u"}});
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Text("second"), "a");
}

TEST(RuleSet, PrefersTheFirstAmongEqualWeights) {
    Scored scored(Replaced(Replaced(kSmallRules, "weight='2'", "weight='1'"), "firstHit", "weightedMax"));
    scored.Score({{"x", "0"}, {"k", "u"}});
    EXPECT_EQ(scored.Text(), "a");
}

TEST(RuleSet, PrefersTheFirstCategoryAmongEqualSums) {
    std::string document = Replaced(Replaced(kSmallRules, "weight='2'", "weight='1'"), "firstHit", "weightedSum");
    document = Replaced(document, "<Value value='a'/><Value value='b'/>", "<Value value='b'/><Value value='a'/>");
    Scored scored(document);
    scored.Score({{"x", "0"}, {"k", "u"}});
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Number("conf"), 0.5);
}

TEST(RuleSet, TakesARuleThatCannotBeDecidedForOneThatDoesNotHold) {
    Scored scored(kSmallRules);
    scored.Score({{"k", "u"}});
    EXPECT_EQ(scored.Text(), "c");
}

TEST(RuleSet, PredictsNumbers) {
    Scored first(kNumberRules);
    EXPECT_TRUE(first.Score({{"x", "3"}}).IsOK());
    EXPECT_EQ(first.Number(), 10);
    EXPECT_EQ(first.Text("id"), "1");
    EXPECT_EQ(first.Number("cost"), 10);
    EXPECT_EQ(first.Text("next"), "20");
    first.Score({{"x", "-1"}});
    EXPECT_EQ(first.Number(), -1);
    Scored highest(Replaced(kNumberRules, "firstHit", "weightedMax"));
    highest.Score({{"x", "3"}});
    EXPECT_EQ(highest.Number(), 20);
    Scored sum(Replaced(kNumberRules, "firstHit", "weightedSum"));
    sum.Score({{"x", "3"}}); // 1 and 2.5 for 10, 3 for 20
    EXPECT_EQ(sum.Number(), 10);
    EXPECT_EQ(sum.Text("id"), "3");
    sum.Score({{"x", "2"}});
    EXPECT_EQ(sum.Number(), 20);
}

TEST(RuleSet, MayHaveADefaultAlone) {
    std::string document = kNumberRules;
    const std::size_t begin = document.find("  <SimpleRule");
    document.erase(begin, document.find("</RuleSet>") - begin);
    Scored scored(document);
    EXPECT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Number(), -1);
}

TEST(RuleSet, WritesItsConditionsForPeople) {
    const std::string predicate =
        "<CompoundPredicate booleanOperator='surrogate'><SimplePredicate field='x' operator='isNotMissing'/>"
        "<CompoundPredicate booleanOperator='xor'><SimplePredicate field='x' operator='isMissing'/>"
        "<SimpleSetPredicate field='k' booleanOperator='isNotIn'><Array>u \"\" \"a b\"</Array></SimpleSetPredicate>"
        "</CompoundPredicate><SimplePredicate field='k' operator='notEqual' value='u v'/><True/><False/>"
        "<SimplePredicate field='x' operator='lessOrEqual' value='1'/>"
        "<SimplePredicate field='x' operator='greaterThan' value='2'/>"
        "<SimplePredicate field='x' operator='greaterOrEqual' value='3'/></CompoundPredicate>";
    Scored scored(Replaced(kSmallRules, "<SimplePredicate field='x' operator='lessThan' value='1'/>", predicate));
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Text("rule"), "(x is not missing surrogate (x is missing xor k not in {u, \"\", \"a b\"}) "
                                   "surrogate k <> u v surrogate true surrogate false surrogate x <= 1 surrogate "
                                   "x > 2 surrogate x >= 3) -> a");
}

TEST(RuleSet, ShowsItself) {
    const auto model = ReadModel(kSmallRules);
    std::ostringstream out;
    model->Display(out);
    EXPECT_EQ(out.str(), "RuleSetModel\nfunction: classification\ntarget: t\ninputs: x k\n"
                         "criterion: firstHit\nrules: 2\notherwise: c\n");
}

} // namespace
