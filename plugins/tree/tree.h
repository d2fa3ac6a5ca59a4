#ifndef VELTRANE_PLUGINS_TREE_TREE_H
#define VELTRANE_PLUGINS_TREE_TREE_H

#include "condition.h"
#include "kit/results/prediction.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace veltrane_tree {

/// A node as the way through the tree needs it. The children of a node stand side by side.
struct Node {
    Condition condition;
    std::int32_t firstChild = 0;
    std::int32_t childCount = 0;
};

/// The share of one category in a node.
struct Share {
    double recordCount = 0.0;
    double probability = veltrane_kit::Prediction::kNone;
    double confidence = veltrane_kit::Prediction::kNone;
    std::int32_t category = 0;
};

/// What a node predicts.
struct NodeScore {
    static constexpr std::int32_t kNone = -1;

    double number = veltrane_kit::Prediction::kNone; ///< of a regression
    double recordCount = veltrane_kit::Prediction::kNone;
    std::int32_t category = kNone; ///< of a classification; the winner of the shares where no score is told
    std::int32_t firstShare = 0;
    std::int32_t shareCount = 0;
    std::int32_t defaultChild = kNone; ///< a node
    std::int32_t id = kNone;           ///< in Tree::ids; none for a node that is called by its place
    std::int32_t place = 0;            ///< in the document's order, from 1
};

/// A tree, laid out flat. Node 0 is the root.
struct Tree {
    std::vector<Node> nodes;
    std::vector<NodeScore> scores; ///< one for each node
    std::vector<Share> shares;
    std::vector<std::string> ids;
    Conditions conditions;
    /// By node, the nearest one from there up that predicts something; none where there is none. Empty where each does.
    std::vector<std::int32_t> lastPredicting;
    bool hasConfidences = false; ///< whether a share tells a confidence apart from its probability

    bool Predicts(int node) const {
        const NodeScore& score = scores[static_cast<std::size_t>(node)];
        return score.category != NodeScore::kNone || score.number != veltrane_kit::Prediction::kNone;
    }

    /// The node whose prediction a case has got that has come to a node.
    /// @return NodeScore::kNone when no node on the way predicts anything
    int LastPredicting(int node) const {
        return lastPredicting.empty() ? node : lastPredicting[static_cast<std::size_t>(node)];
    }

    /// Finds out where each node has its last prediction from.
    void SetLastPredicting();

    /// The memory that is taken, in bytes.
    std::size_t Bytes() const;
};

} // namespace veltrane_tree

#endif
