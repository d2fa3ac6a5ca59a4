#ifndef VELTRANE_PLUGINS_FOREST_SKETCH_H
#define VELTRANE_PLUGINS_FOREST_SKETCH_H

#include "decision.h"
#include "node.h"
#include "tree/tree_scorer.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_forest {

/// A tree as steps with two ways on, before it is laid out flat: the children of a node are asked one after the other.
///
/// What a case without a value comes to is one of the two ways where the tree's treatment of missing values says so.
/// Where it says something else - no prediction, an earlier one, all children together - the feature refuses such
/// cases.
struct Sketch {
    /// A step, or the number of a leaf.
    struct Way {
        std::uint32_t to = 0;
        bool isLeaf = true;

        bool operator==(const Way& other) const { return to == other.to && isLeaf == other.isLeaf; }
    };
    struct Step {
        Question question;
        Way yes;
        Way no;
    };

    /// The leaf of cases that go tree by tree.
    static constexpr std::uint32_t kNoLeaf = 0;

    std::vector<Step> steps;
    std::vector<std::int32_t> leaves{veltrane_tree::NodeScore::kNone}; ///< the nodes that they are; none of kNoLeaf
    Way root;
};

/// Sketches trees, and finds out what their features refuse.
class Sketcher {
public:
    /// @param decisions settled, with the conditions of all trees
    /// @param pool      where sets are put that a node has no room for
    Sketcher(Decisions& decisions, std::vector<std::uint32_t>& pool);

    /// @return false for a tree with a condition that is no decision
    bool Draw(const veltrane_tree::TreeScorer& tree, Sketch& sketch);

    /// Where sets are put, if there are any.
    Sets Kept() const { return fSets; }
    /// Which sets were met.
    Sets Met() const { return fMet; }

private:
    using Way = Sketch::Way;

    /// A child that a case may come to, and what decides.
    struct Choice {
        std::int32_t child;
        Decision decision;
    };

    bool DrawNode(std::int32_t node, Way& way);
    bool ReadChoices(const veltrane_tree::Node& node, std::vector<Choice>& choices) const;
    Way DrawChoices(std::int32_t node, const std::vector<Choice>& choices, const std::vector<Way>& taken);
    Way UndecidedWay(std::int32_t node, const std::vector<Choice>& choices, const std::vector<Way>& taken);
    bool IsRest(const Choice& first, const Choice& last);
    static bool AreAll(const Decision& one, const Decision& other, std::uint32_t marks);
    Way LastWay(std::int32_t node);
    Way LeafWay(std::int32_t node);
    Way AddStep(const Decision& decision, bool isMissingYes, Way yes, Way no);
    bool AskRange(const Decision& decision, bool isMissingYes, Feature& feature, Question& question) const;
    bool AskSet(const Decision& decision, bool isMissingYes, const Feature& feature, Question& question);
    std::uint32_t KeepSet(const Decision& decision, bool isMissingYes, const Feature& feature);
    Feature& FeatureOf(const Decision& decision) {
        return fDecisions.Features()[static_cast<std::size_t>(decision.feature)];
    }

    Decisions& fDecisions;
    std::vector<std::uint32_t>& fPool;
    Sets fSets;             ///< where sets are put
    Sets fMet = Sets::NONE; ///< whether there are any
    const veltrane_tree::TreeScorer* fScorer = nullptr;
    Sketch* fSketch = nullptr;
    std::vector<std::uint32_t> fLeaves; ///< by node, its number as a leaf; kNoLeaf for none yet
};

} // namespace veltrane_forest

#endif
