#include "sketch.h"

#include <algorithm>

namespace veltrane_forest {

using veltrane_kit::Truth;
using veltrane_tree::MissingStrategy;
using veltrane_tree::Node;
using veltrane_tree::NodeScore;
using veltrane_tree::Tree;
using veltrane_tree::TreeScorer;

Sketcher::Sketcher(Decisions& decisions, std::vector<std::uint32_t>& pool) : fDecisions(decisions), fPool(pool) {
    const std::vector<Feature>& features = decisions.Features();
    const bool areFew = std::all_of(features.begin(), features.end(), [](const Feature& feature) {
        return feature.GetKind() == Feature::Kind::RANK || feature.HasFewMarks();
    });
    fSets = areFew ? Sets::OF_BITS : Sets::OF_POOL;
}

bool Sketcher::Draw(const TreeScorer& tree, Sketch& sketch) {
    fScorer = &tree;
    fSketch = &sketch;
    fLeaves.assign(tree.GetTree().nodes.size(), Sketch::kNoLeaf);
    Decision decision;
    if (!fDecisions.Read(tree.GetTree().conditions, tree.GetTree().nodes.front().condition, decision)) {
        return false;
    }
    // A case that the root doesn't take has no prediction.
    if (decision.feature == Decision::kConstant) {
        return decision.missing != Truth::YES || DrawNode(0, sketch.root);
    }
    Way taken;
    if (!DrawNode(0, taken)) {
        return false;
    }
    sketch.root = AddStep(decision, decision.missing == Truth::YES, taken, Way());
    return true;
}

/// @param way set to where a case goes that comes to a node
bool Sketcher::DrawNode(std::int32_t node, Way& way) {
    const Node& parent = fScorer->GetTree().nodes[static_cast<std::size_t>(node)];
    if (parent.childCount == 0) {
        way = LeafWay(node);
        return true;
    }
    std::vector<Choice> choices;
    if (!ReadChoices(parent, choices)) {
        return false;
    }
    std::vector<Way> taken(choices.size());
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (!DrawNode(choices[i].child, taken[i])) {
            return false;
        }
    }
    way = DrawChoices(node, choices, taken);
    return true;
}

/// The children that a case may come to, up to the first one that takes all.
/// @return false for one that no case is decided for
bool Sketcher::ReadChoices(const Node& node, std::vector<Choice>& choices) const {
    const Tree& tree = fScorer->GetTree();
    choices.reserve(static_cast<std::size_t>(node.childCount));
    for (std::int32_t child = node.firstChild; child < node.firstChild + node.childCount; ++child) {
        Choice choice{child, {}};
        const bool isRead =
            fDecisions.Read(tree.conditions, tree.nodes[static_cast<std::size_t>(child)].condition, choice.decision);
        if (!isRead || choice.decision.IsConstant(Truth::UNKNOWN)) {
            return false;
        }
        const bool takesAll = choice.decision.IsConstant(Truth::YES);
        if (!choice.decision.IsConstant(Truth::NO)) {
            choices.push_back(std::move(choice));
        }
        if (takesAll) {
            return true;
        }
    }
    return true;
}

/// From the last child to the first: what one doesn't take goes on to the next one, what none takes has no prediction
/// or an earlier one. The last child isn't asked where it takes all that the one before it leaves.
/// @param taken the ways of what the children take
Sketch::Way Sketcher::DrawChoices(std::int32_t node, const std::vector<Choice>& choices,
                                  const std::vector<Way>& taken) {
    const bool isDecided = fScorer->Strategy() == MissingStrategy::NONE;
    const Way undecided = isDecided ? Way() : UndecidedWay(node, choices, taken);
    // Where a missing value goes at a child, and on from it.
    const auto missingAt = [&](std::size_t i, Way on) {
        const Truth truth = choices[i].decision.missing;
        return truth == Truth::YES ? taken[i] : truth == Truth::UNKNOWN && !isDecided ? undecided : on;
    };
    Way way = fScorer->AnswersFromLast() ? LastWay(node) : Way();
    Way missing = way; // that of a missing value which the child at hand doesn't take
    for (std::size_t i = choices.size(); i-- > 0;) {
        const Decision& decision = choices[i].decision;
        if (decision.IsConstant(Truth::YES)) {
            way = missing = taken[i];
        } else if (i > 0 && i + 1 == choices.size() && IsRest(choices[i - 1], choices[i])) {
            missing = missingAt(i, missing);
            way = taken[i];
        } else {
            const Way wanted = missingAt(i, missing);
            if (!(wanted == taken[i]) && !(wanted == way)) {
                FeatureOf(decision).RefuseMissing();
            }
            way = missing = AddStep(decision, wanted == taken[i], taken[i], way);
        }
    }
    return way;
}

/// Where a case goes whose next child isn't decided.
Sketch::Way Sketcher::UndecidedWay(std::int32_t node, const std::vector<Choice>& choices,
                                   const std::vector<Way>& taken) {
    if (fScorer->Strategy() == MissingStrategy::LAST_PREDICTION) {
        return LastWay(node);
    }
    if (fScorer->Strategy() != MissingStrategy::DEFAULT_CHILD) {
        return {};
    }
    const std::int32_t child = fScorer->GetTree().DefaultChildOf(node);
    const auto found =
        std::find_if(choices.begin(), choices.end(), [child](const Choice& choice) { return choice.child == child; });
    return found == choices.end() ? Way() : taken[static_cast<std::size_t>(found - choices.begin())];
}

/// Whether a child takes every value that the one before it leaves, but for those that no condition mentions.
bool Sketcher::IsRest(const Choice& first, const Choice& last) {
    const Decision& one = first.decision;
    const Decision& other = last.decision;
    if (one.feature != other.feature) {
        return false;
    }
    Feature& feature = FeatureOf(one);
    if (!one.isSet) {
        return AreAll(one, other, feature.Marks());
    }
    const bool hasOther = feature.GetKind() != Feature::Kind::PRESENCE;
    const std::uint32_t known = feature.Marks() - (hasOther ? 1 : 0);
    for (std::uint32_t mark = 0; mark < known; ++mark) {
        if (!one.Holds(mark) && !other.Holds(mark)) {
            return false;
        }
    }
    if (hasOther && !one.Holds(feature.Other()) && !other.Holds(feature.Other())) {
        feature.RefuseOther();
    }
    return true;
}

/// Whether one of two ranges holds for each mark. What neither holds for would begin where one of them ends.
bool Sketcher::AreAll(const Decision& one, const Decision& other, std::uint32_t marks) {
    for (const std::uint32_t mark : {0U, one.low, one.high + 1, other.low, other.high + 1}) {
        if (mark < marks && !one.Holds(mark) && !other.Holds(mark)) {
            return false;
        }
    }
    return true;
}

Sketch::Way Sketcher::LastWay(std::int32_t node) {
    const std::int32_t last = fScorer->GetTree().LastPredicting(node);
    return last == NodeScore::kNone ? Way() : LeafWay(last);
}

Sketch::Way Sketcher::LeafWay(std::int32_t node) {
    std::uint32_t& leaf = fLeaves[static_cast<std::size_t>(node)];
    if (leaf == Sketch::kNoLeaf && fScorer->GetTree().Predicts(node)) {
        leaf = static_cast<std::uint32_t>(fSketch->leaves.size());
        fSketch->leaves.push_back(node);
    }
    return {leaf, true};
}

Sketch::Way Sketcher::AddStep(const Decision& decision, bool isMissingYes, Way yes, Way no) {
    Feature& feature = FeatureOf(decision);
    Question question;
    // Feature 0 of nodes is that of leaves.
    question.feature = static_cast<std::uint32_t>(decision.feature) + 1;
    const bool isSwapped = decision.isSet ? AskSet(decision, isMissingYes, feature, question)
                                          : AskRange(decision, isMissingYes, feature, question);
    const auto step = static_cast<std::uint32_t>(fSketch->steps.size());
    fSketch->steps.push_back({question, isSwapped ? no : yes, isSwapped ? yes : no});
    return {step, false};
}

/// The highest mark is that of a missing value; a range that holds it goes on to 0, or begins below.
/// @return whether the question asks for what the decision doesn't hold for
bool Sketcher::AskRange(const Decision& decision, bool isMissingYes, Feature& feature, Question& question) const {
    question.low = decision.low;
    question.reach = decision.high - decision.low;
    if (isMissingYes != decision.isInverted) {
        if (decision.low == 0) {
            question.low = feature.Missing();
            question.reach = decision.high + 1;
        } else if (decision.high == feature.Marks() - 1) {
            question.reach = feature.Missing() - decision.low;
        } else {
            feature.RefuseMissing();
        }
    }
    return decision.isInverted;
}

/// A run of marks that no missing value belongs to is a range.
/// @return whether the question asks for what the decision doesn't hold for
bool Sketcher::AskSet(const Decision& decision, bool isMissingYes, const Feature& feature, Question& question) {
    const std::uint8_t inRun = isMissingYes ? 0 : 1;
    const auto first = std::find(decision.holds.begin(), decision.holds.end(), inRun);
    const auto end = std::find_if(first, decision.holds.end(), [inRun](std::uint8_t holds) { return holds != inRun; });
    if (first != end && std::find(end, decision.holds.end(), inRun) == decision.holds.end()) {
        question.low = static_cast<std::uint32_t>(first - decision.holds.begin());
        question.reach = static_cast<std::uint32_t>(end - first) - 1;
        return isMissingYes;
    }
    question.isSet = true;
    question.bits = KeepSet(decision, isMissingYes, feature);
    fMet = fSets;
    return false;
}

/// The bits of a set, or its place in the pool.
std::uint32_t Sketcher::KeepSet(const Decision& decision, bool isMissingYes, const Feature& feature) {
    const auto size = static_cast<std::uint32_t>(decision.holds.size());
    const std::uint32_t missing = fSets == Sets::OF_BITS ? feature.Missing() : size;
    std::vector<std::uint32_t> words(missing / kMarksOfWord + 1);
    const auto add = [&words](std::uint32_t mark) { words[mark / kMarksOfWord] |= 1U << (mark % kMarksOfWord); };
    for (std::uint32_t mark = 0; mark < size; ++mark) {
        if (decision.holds[mark] != 0) {
            add(mark);
        }
    }
    if (isMissingYes) {
        add(missing);
    }
    if (fSets == Sets::OF_BITS) {
        return words.front();
    }
    const auto place = static_cast<std::uint32_t>(fPool.size());
    fPool.push_back(size);
    fPool.insert(fPool.end(), words.begin(), words.end());
    return place;
}

} // namespace veltrane_forest
