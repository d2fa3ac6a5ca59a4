#include "kinds.h"

#include "baseline/baseline_scorer.h"
#include "bayes/bayes_scorer.h"
#include "clustering/clustering_scorer.h"
#include "general/general_scorer.h"
#include "mining_scorer.h"
#include "neighbours/neighbours_scorer.h"
#include "network/network_scorer.h"
#include "regression/regression_scorer.h"
#include "rules/rule_set_scorer.h"
#include "scorecard/scorecard_scorer.h"
#include "tree/tree_scorer.h"
#include "vectors/vectors_scorer.h"

namespace veltrane_mining {

namespace {

struct Kind {
    const XMLCh* tag;
    veltrane_kit::MakeScorer make;
};

// A line a kind; CMakeLists.txt links its core.
constexpr Kind kKinds[] = {
    {u"TreeModel", veltrane_tree::MakeTreeScorer},
    {u"RegressionModel", veltrane_regression::MakeRegressionScorer},
    {u"RuleSetModel", veltrane_rules::MakeRuleSetScorer},
    {u"Scorecard", veltrane_scorecard::MakeScorecardScorer},
    {u"BaselineModel", veltrane_baseline::MakeBaselineScorer},
    {u"NeuralNetwork", veltrane_network::MakeNetworkScorer},
    {u"SupportVectorMachineModel", veltrane_vectors::MakeVectorsScorer},
    {u"GeneralRegressionModel", veltrane_general::MakeGeneralScorer},
    {u"NaiveBayesModel", veltrane_bayes::MakeBayesScorer},
    {u"ClusteringModel", veltrane_clustering::MakeClusteringScorer},
    {u"NearestNeighborModel", veltrane_neighbours::MakeNeighboursScorer},
    {u"MiningModel", MakeMiningScorer},
    {u"Regression", veltrane_regression::MakeRegressionScorer},
    {u"DecisionTree", veltrane_tree::MakeTreeScorer},
};

} // namespace

veltrane_kit::MakeScorer MakerOf(const veltrane_kit::Element& element) {
    for (const Kind& kind : kKinds) {
        if (element.Is(kind.tag)) {
            return kind.make;
        }
    }
    return nullptr;
}

} // namespace veltrane_mining
