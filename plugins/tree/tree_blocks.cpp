// A tree for blocks of cases. The way of nearly all rows is clear: each condition can be decided and none needs a
// surrogate. Such a row gets what stands at its leaf; any other one goes the road of a single case.
#include "kit/conditions/decide.h"
#include "tree_scorer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <vector>

namespace veltrane_tree {

using veltrane_kit::Block;
using veltrane_kit::Condition;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;
using veltrane_kit::RowView;
using veltrane_kit::Test;
using veltrane_kit::Truth;

class TreeScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const TreeScorer& scorer) : fScorer(scorer), fTree(scorer.fTree) {
        for (const Node& node : fTree.nodes) {
            const bool hasSurrogates = node.condition.test == Test::SURROGATE && node.condition.span.count > 0;
            fFirst.push_back(hasSurrogates ? fTree.conditions.FirstPart(node.condition) : node.condition);
        }
    }

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        ClearProbabilities(predictions, block.Rows());
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            const int leaf = FindLeaf(RowView(block, row));
            if (leaf >= 0) {
                Answer(fTree.Score(leaf), row, block, predictions);
            } else if (leaf == kNoNode) {
                predictions.predicted[row] = 0;
            } else {
                veltrane_kit::PredictRow(fScorer, block, row, predictions, state);
            }
        }
    }

private:
    /// The node whose prediction a row gets; kNoNode for one without a prediction, kUndecided for one whose way isn't
    /// clear.
    int FindLeaf(const RowView& fields) const {
        bool usedSurrogate = false;
        if (fTree.conditions.Decide(fTree.nodes.front().condition, fields, usedSurrogate) != Truth::YES) {
            return kNoNode;
        }
        std::int32_t node = 0;
        while (fTree.nodes[static_cast<std::size_t>(node)].childCount > 0) {
            const std::int32_t above = node;
            const Node& parent = fTree.nodes[static_cast<std::size_t>(node)];
            const std::int32_t end = parent.firstChild + parent.childCount;
            Truth truth = Truth::NO;
            usedSurrogate = false;
            node = parent.firstChild;
            while (node != end &&
                   (truth = Decide(fFirst[static_cast<std::size_t>(node)], fields, usedSurrogate)) == Truth::NO) {
                ++node;
            }
            if (node == end) {
                return fScorer.fAnswersFromLast ? PredictingFrom(above) : kNoNode;
            }
            if (truth != Truth::YES || usedSurrogate) {
                return kUndecided;
            }
        }
        return !fScorer.fModels.IsEmpty() && fScorer.fModels.At(node) != LeafModels::kNone ? kUndecided : node;
    }

    /// The node whose prediction a row has got that no child of a node takes.
    int PredictingFrom(int node) const {
        const int last = fTree.LastPredicting(node);
        return last == NodeScore::kNone ? kNoNode : last;
    }

    /// The comparisons that most trees consist of come first; not a number is a missing value.
    Truth Decide(const Condition& condition, const RowView& fields, bool& usedSurrogate) const {
        switch (condition.test) {
        case Test::LESS:
            return Compare(fields, condition, [](double x, double y) { return x < y; });
        case Test::LESS_OR_EQUAL:
            return Compare(fields, condition, [](double x, double y) { return x <= y; });
        case Test::GREATER:
            return Compare(fields, condition, [](double x, double y) { return x > y; });
        case Test::GREATER_OR_EQUAL:
            return Compare(fields, condition, [](double x, double y) { return x >= y; });
        default:
            return fTree.conditions.Decide(condition, fields, usedSurrogate);
        }
    }

    template <typename Comparison>
    static Truth Compare(const RowView& fields, const Condition& condition, Comparison compare) {
        const double number = fields.Number(condition.slot);
        return std::isnan(number) ? Truth::UNKNOWN : veltrane_kit::TruthOf(compare(number, condition.number));
    }

    /// A category that a leaf doesn't tell of has no share.
    static void ClearProbabilities(PredictionBlock& predictions, std::size_t rows) {
        for (std::size_t category = 0; category < predictions.Categories(); ++category) {
            std::fill_n(predictions.Probabilities(category), rows, 0.0);
            std::fill_n(predictions.Confidences(category), rows, 0.0);
        }
    }

    void Answer(const NodeScore& score, std::size_t row, Block& block, PredictionBlock& predictions) const {
        predictions.numbers[row] = score.number;
        predictions.categories[row] = score.category;
        predictions.predicted[row] = !fScorer.fIsClassification || score.category != Prediction::kNoCategory ? 1 : 0;
        predictions.entities[row] = NameOf(score, block);
        if (score.shareCount == 0) {
            ForgetProbabilities(row, predictions);
        }
        const Share* share = fTree.shares.data() + score.firstShare;
        for (const Share* const end = share + score.shareCount; share != end; ++share) {
            const auto category = static_cast<std::size_t>(share->category);
            predictions.Probabilities(category)[row] = share->probability;
            if (predictions.HasConfidences()) {
                const bool isTold = fTree.hasConfidences && share->confidence != Prediction::kNone;
                predictions.Confidences(category)[row] = isTold ? share->confidence : share->probability;
            }
        }
    }

    static void ForgetProbabilities(std::size_t row, PredictionBlock& predictions) {
        for (std::size_t category = 0; category < predictions.Categories(); ++category) {
            predictions.Probabilities(category)[row] = Prediction::kNone;
            predictions.Confidences(category)[row] = Prediction::kNone;
        }
    }

    std::string_view NameOf(const NodeScore& score, Block& block) const {
        if (score.id != NodeScore::kNone) {
            return fTree.IdOf(score);
        }
        char digits[16];
        const char* const end = std::to_chars(digits, digits + sizeof(digits), score.place).ptr;
        return block.Arena().Keep(std::string_view(digits, static_cast<std::size_t>(end - digits)));
    }

    const TreeScorer& fScorer;
    const Tree& fTree;
    std::vector<Condition> fFirst; ///< by node, its condition, or the one that surrogates stand behind
};

std::unique_ptr<const veltrane_kit::BlockScorer> TreeScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(*this);
}

/// Steps that cost confidence are told of by the penalty alone.
bool TreeScorer::MayHaveConfidences() const {
    return fTree.hasConfidences || fModels.HaveConfidences() || fPenalty != 1.0 ||
           fStrategy == MissingStrategy::WEIGHTED_CONFIDENCE || fStrategy == MissingStrategy::AGGREGATE_NODES;
}

} // namespace veltrane_tree
