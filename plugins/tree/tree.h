#ifndef VELTRANE_PLUGINS_TREE_TREE_H
#define VELTRANE_PLUGINS_TREE_TREE_H

#include "kit/conditions/condition.h"
#include "kit/results/prediction.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane_tree {

/// A node as the way through the tree needs it. The children of a node stand side by side.
struct Node {
    veltrane_kit::Condition condition;
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
    std::int32_t id = kNone;           ///< see Tree::IdOf; none for a node that is called by its place
    std::int32_t place = 0;            ///< in the document's order, from 1; or the number that is the id
};

/// A tree, laid out flat. Node 0 is the root. What only some trees tell of their nodes takes no room in others: a tree
/// of a million nodes has a million of each.
struct Tree {
    std::vector<Node> nodes;
    std::vector<Share> shares;
    veltrane_kit::Conditions conditions;
    /// By node, the nearest one from there up that predicts something; none where there is none. Empty where each does.
    std::vector<std::int32_t> lastPredicting;
    bool hasConfidences = false;    ///< whether a share tells a confidence apart from its probability
    bool keepsRecordCounts = false; ///< whether those of nodes are asked for

    /// What a node predicts; its recordCount where they are kept.
    NodeScore Score(int node) const;
    std::int32_t DefaultChildOf(int node) const;

    /// The id of a node that has one.
    std::string_view IdOf(const NodeScore& score) const;

    bool Predicts(int node) const {
        const auto at = static_cast<std::size_t>(node);
        return (at < fCategories.size() && fCategories[at] != NodeScore::kNone) ||
               (at < fNumbers.size() && fNumbers[at] != veltrane_kit::Prediction::kNone);
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

    // For the reader of trees.

    /// Makes room for some nodes in all.
    void Reserve(std::size_t count);
    /// Adds some nodes.
    /// @return the first of them
    std::size_t AddNodes(std::size_t count);
    void SetScore(std::size_t node, const NodeScore& score);
    void SetDefaultChild(std::size_t node, std::size_t child);
    /// Keeps an id.
    /// @return what IdOf finds it by; NodeScore::kNone when there is no room for another one
    std::int32_t KeepId(const std::string& id);
    /// Gives back the room that wasn't needed.
    void Settle();

private:
    struct ShareSpan {
        std::int32_t first = 0;
        std::int32_t count = 0;
    };

    std::vector<double> fNumbers;          ///< by node; none behind the last node that predicts one
    std::vector<std::int32_t> fCategories; ///< by node; none behind the last node that predicts one
    std::vector<std::int32_t> fNames;   ///< by node, the id, above 0; of one that is called by a number that, below 1
    std::vector<double> fRecordCounts;  ///< by node; empty where they aren't kept
    std::vector<ShareSpan> fShareSpans; ///< by node; none behind the last node with shares
    std::vector<std::int32_t> fDefaultChildren; ///< by node; none behind the last node with a default child
    std::vector<char> fIds;                     ///< each behind its length
};

} // namespace veltrane_tree

#endif
