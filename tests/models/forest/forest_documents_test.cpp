// Which ensembles of trees make a forest.
#include "mining/mining_scorer.h"
#include "models/kit/scoring.h"
#include "models/mining/small_ensemble.h"
#include "models/plans/plan_reading.h"
#include "support/folders.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace veltrane::tests;
using veltrane_mining::FlatEnsemble;
using veltrane_mining::MiningScorer;

namespace {

/// What the first ensemble of a document is asked as; its segments have to be read as long as that is used.
class Ensemble {
public:
    explicit Ensemble(const std::string& document)
        : fPlan(PlanReader(document).Read(u"MiningModel", veltrane_mining::MakeMiningScorer)) {}

    const FlatEnsemble* Flat() const { return static_cast<const MiningScorer&>(fPlan->GetScorer()).Flat(); }
    bool IsForest() const { return Flat() != nullptr; }

private:
    std::shared_ptr<const veltrane_kit::ModelPlan> fPlan;
};

TEST(ForestDocuments, OfProducersMakeForestsOfSmallNodes) {
    if (!std::filesystem::exists(CasesFolder() + "/models")) {
        GTEST_SKIP() << "the real documents stand outside the tree";
    }
    for (const char* name : {"forest-audit", "sklearn-gbt-housing", "rattle-forest-iris"}) {
        SCOPED_TRACE(name);
        const Ensemble ensemble(ReadFile(CasesFolder() + "/models/" + name + ".pmml"));
        ASSERT_TRUE(ensemble.IsForest());
        EXPECT_EQ(ensemble.Flat()->Trees().NodeBytes(), 8U);
    }
}

TEST(ForestDocuments, OfTheCorpusMakeForests) {
    for (const char* name : {"scikit-learn/forest-iris", "scikit-learn/forest-digits", "scikit-learn/hist-diabetes",
                             "scikit-learn/adaboost-diabetes", "scikit-learn/isolation-iris", "xgboost/xgb-diabetes",
                             "lightgbm/lgb-diabetes"}) {
        EXPECT_TRUE(Ensemble(ReadFile(TestsFolder() + "/corpus/" + name + ".pmml")).IsForest()) << name;
    }
}

/// A tree of y: 1 where a condition holds, else 2.
std::string TreeOn(const std::string& predicate, const std::string& ahead = "",
                   const std::string& schema = Schema("y", Fields("xzc"))) {
    return "<TreeModel functionName='regression'>" + schema + ahead + "<Node><True/><Node score='1'>" + predicate +
           "</Node><Node score='2'><True/></Node></Node></TreeModel>";
}

const std::string kAbove = "<SimplePredicate field='x' operator='greaterThan' value='0'/>";

std::string Both(const std::string& word, const std::string& other) {
    return "<CompoundPredicate booleanOperator='" + word + "'>" + kAbove + other + "</CompoundPredicate>";
}

bool IsForest(const std::string& segment, const std::string& method = "sum") {
    return Ensemble(EnsembleDocument(Mining(method, SegmentOf(TreeOn(kAbove)) + segment))).IsForest();
}

TEST(ForestDocuments, NeedTreesForAllCasesThatPredictAndDoNothingElse) {
    EXPECT_TRUE(IsForest(SegmentOf(TreeOn(kAbove))));
    EXPECT_FALSE(IsForest(SegmentOf(Line("x", 1.0, 1.0)))) << "another kind";
    EXPECT_FALSE(IsForest(SegmentOf(TreeOn(kAbove), "", kAbove))) << "a segment for some cases";
    EXPECT_FALSE(IsForest(SegmentOf(TreeOn(kAbove)), "selectFirst")) << "one segment decides";
}

TEST(ForestDocuments, MayHaveTreesWithFieldsAndTreatmentsOfTheirOwn) {
    const std::string derived = "<LocalTransformations><DerivedField name='d' optype='continuous' dataType='double'>"
                                "<Apply function='-'><FieldRef field='x'/><Constant>5</Constant></Apply>"
                                "</DerivedField></LocalTransformations>";
    const std::string own = "<SimplePredicate field='d' operator='greaterThan' value='0'/>";
    const std::string treated = Schema("y", "<MiningField name='x' missingValueReplacement='1'/>");
    const std::string refusing = Schema("y", "<MiningField name='z' missingValueTreatment='returnInvalid'/>");
    const std::string segments =
        SegmentOf(TreeOn(own, derived)) + SegmentOf(TreeOn(kAbove, "", treated)) +
        SegmentOf(TreeOn("<SimplePredicate field='z' operator='lessThan' value='0'/>", "", refusing));
    const std::string document = EnsembleDocument(
        Replaced(Mining("sum", segments), "<Segmentation", "<Segmentation missingPredictionTreatment='skipSegment'"));
    EXPECT_TRUE(Ensemble(document).IsForest());
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"z", "1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1.0 + 1.0 + 2.0);
    ASSERT_TRUE(scored.Score({{"x", ""}, {"z", "-1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 2.0 + 1.0 + 1.0) << "a treatment of its own";
    ASSERT_TRUE(scored.Score({{"x", "3"}, {"z", ""}}).IsOK());
    EXPECT_EQ(scored.Number(), 2.0 + 1.0) << "a segment that refuses the case";
}

TEST(ForestDocuments, NeedConditionsThatAskForARangeOrASetOfOneField) {
    const std::string missing = "<SimplePredicate field='x' operator='isMissing'/>";
    const std::string below = "<SimplePredicate field='x' operator='lessThan' value='9'/>";
    const std::string other = "<SimplePredicate field='z' operator='lessThan' value='9'/>";
    const std::string farAbove = "<SimplePredicate field='x' operator='greaterThan' value='9'/>";
    EXPECT_TRUE(IsForest(SegmentOf(TreeOn(Both("or", missing)))));
    EXPECT_TRUE(IsForest(SegmentOf(TreeOn(Both("and", below)))));
    EXPECT_TRUE(IsForest(SegmentOf(TreeOn(Both("xor", farAbove)))));
    EXPECT_FALSE(IsForest(SegmentOf(TreeOn(Both("surrogate", other))))) << "two fields";
    const std::string within = Both("and", "<SimplePredicate field='x' operator='lessThan' value='3'/>");
    const std::string ranges = "<CompoundPredicate booleanOperator='or'>" + within + farAbove + "</CompoundPredicate>";
    EXPECT_FALSE(IsForest(SegmentOf(TreeOn(ranges)))) << "two ranges";
}

} // namespace
