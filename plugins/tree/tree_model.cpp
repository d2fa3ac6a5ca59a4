#include "tree_model.h"

#include "kit/document/common_elements.h"
#include "tree_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <ostream>

namespace veltrane_tree {

using veltrane_kit::Element;
using veltrane_kit::Inputs;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::Word;

namespace {

constexpr Word<MissingStrategy> kStrategies[] = {
    {u"none", MissingStrategy::NONE},
    {u"lastPrediction", MissingStrategy::LAST_PREDICTION},
    {u"nullPrediction", MissingStrategy::NULL_PREDICTION},
    {u"defaultChild", MissingStrategy::DEFAULT_CHILD},
    {u"weightedConfidence", MissingStrategy::WEIGHTED_CONFIDENCE},
    {u"aggregateNodes", MissingStrategy::AGGREGATE_NODES},
};

constexpr Word<bool> kNoTrueChild[] = {{u"returnNullPrediction", false}, {u"returnLastPrediction", true}};

/// It says nothing that the nodes don't say themselves.
constexpr Word<bool> kSplits[] = {{u"binarySplit", true}, {u"multiSplit", false}};

/// The place of the highest of some numbers, the first among equals.
int Highest(const std::vector<double>& numbers) {
    return static_cast<int>(std::max_element(numbers.begin(), numbers.end()) - numbers.begin());
}

double ReadPenalty(const Element& element) {
    const double penalty = element.NumberOr(u"missingValuePenalty", 1.0);
    if (penalty < 0.0 || penalty > 1.0) {
        element.RaiseInvalid(u"missingValuePenalty");
    }
    return penalty;
}

} // namespace

TreeModel::TreeModel(const Element& element, ModelParts& parts)
    : fStrategy(element.OneOfOr(u"missingValueStrategy", kStrategies, MissingStrategy::NONE)),
      fPenalty(ReadPenalty(element)), fAnswersFromLast(element.OneOfOr(u"noTrueChildStrategy", kNoTrueChild, false)) {
    element.OneOfOr(u"splitCharacteristic", kSplits, false);
    for (const Element child : element.Children()) {
        if (!child.Is(u"Node")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    const bool weighs = fStrategy == MissingStrategy::WEIGHTED_CONFIDENCE ||
                        (fStrategy == MissingStrategy::AGGREGATE_NODES && !parts.IsClassification());
    TreeReader(fTree, parts, {weighs}).Read(element.RequireChild(u"Node"));
    if (fAnswersFromLast || fStrategy == MissingStrategy::LAST_PREDICTION) {
        fTree.SetLastPredicting();
    }
}

bool TreeModel::Predict(const Inputs& inputs, Prediction& prediction) {
    bool usedSurrogate = false;
    const Condition& condition = fTree.nodes.front().condition;
    if (fTree.conditions.Decide(condition, inputs, usedSurrogate) != Truth::YES) {
        prediction.lacking = fTree.conditions.LackingSlot(condition, inputs);
        return false;
    }
    return GoOn(0, inputs, prediction);
}

/// The first child whose condition holds; kNoNode when none does, kUndecided when one that comes first can't be
/// decided.
/// @param usedSurrogate set to whether the condition of the child that is found needed a surrogate
int TreeModel::FindChild(const Node& node, const Inputs& inputs, bool& usedSurrogate) const {
    const bool isDecided = fStrategy == MissingStrategy::NONE;
    for (int child = node.firstChild; child < node.firstChild + node.childCount; ++child) {
        const Condition& condition = fTree.nodes[static_cast<std::size_t>(child)].condition;
        usedSurrogate = false;
        const Truth truth = fTree.conditions.Decide(condition, inputs, usedSurrogate);
        if (truth == Truth::YES) {
            return child;
        }
        if (truth == Truth::UNKNOWN && !isDecided) {
            return kUndecided;
        }
    }
    return kNoNode;
}

bool TreeModel::GoOn(int node, const Inputs& inputs, Prediction& prediction) {
    int penalties = 0;
    while (fTree.nodes[static_cast<std::size_t>(node)].childCount > 0) {
        bool isPenalized = false;
        int next = FindChild(fTree.nodes[static_cast<std::size_t>(node)], inputs, isPenalized);
        if (next == kNoNode) {
            return (fAnswersFromLast && AnswerFromLast(node, penalties, prediction)) || EndAt(node, inputs, prediction);
        }
        if (next == kUndecided) {
            if (fStrategy == MissingStrategy::LAST_PREDICTION) {
                return AnswerFromLast(node, penalties, prediction) || EndAt(node, inputs, prediction);
            }
            if (fStrategy != MissingStrategy::DEFAULT_CHILD) {
                const bool answers = fStrategy != MissingStrategy::NULL_PREDICTION &&
                                     AnswerFromSeveral(node, penalties, inputs, prediction);
                return answers || EndAt(node, inputs, prediction);
            }
            next = fTree.scores[static_cast<std::size_t>(node)].defaultChild;
            if (next == NodeScore::kNone) {
                return EndAt(node, inputs, prediction);
            }
            isPenalized = true;
        }
        penalties += isPenalized ? 1 : 0;
        node = next;
    }
    return Answer(node, penalties, prediction);
}

/// The prediction that a case has got on its way to a node.
bool TreeModel::AnswerFromLast(int node, int penalties, Prediction& prediction) {
    const int last = fTree.LastPredicting(node);
    return last != NodeScore::kNone && Answer(last, penalties, prediction);
}

/// Ends the way of a case at a node, without a prediction, with the first value that would have decided the next step.
/// @return false
bool TreeModel::EndAt(int node, const Inputs& inputs, Prediction& prediction) const {
    const Node& end = fTree.nodes[static_cast<std::size_t>(node)];
    for (int child = 0; child < end.childCount && prediction.lacking == Prediction::kNoSlot; ++child) {
        const auto at = static_cast<std::size_t>(end.firstChild) + static_cast<std::size_t>(child);
        prediction.lacking = fTree.conditions.LackingSlot(fTree.nodes[at].condition, inputs);
    }
    return false;
}

double TreeModel::PenaltyOf(int penalties) const {
    return penalties > 0 ? std::pow(fPenalty, penalties) : 1.0;
}

/// The prediction of one node.
/// @param penalties the steps on the case's way that needed a surrogate or a default child
/// @return false for a node that predicts nothing
bool TreeModel::Answer(int node, int penalties, Prediction& prediction) {
    const NodeScore& score = fTree.scores[static_cast<std::size_t>(node)];
    if (!IsClassification()) {
        prediction.number = score.number;
    } else if (!AnswerCategory(score, penalties, prediction)) {
        return false;
    }
    NameNode(score, prediction);
    return true;
}

bool TreeModel::AnswerCategory(const NodeScore& score, int penalties, Prediction& prediction) const {
    const bool hasConfidences = fTree.hasConfidences || (penalties > 0 && fPenalty != 1.0);
    const double penalty = PenaltyOf(penalties);
    if (score.shareCount > 0) {
        prediction.probabilities.assign(prediction.probabilities.size(), 0.0);
    }
    if (hasConfidences) {
        prediction.confidences.assign(prediction.probabilities.size(), score.shareCount > 0 ? 0.0 : Prediction::kNone);
    }
    const Share* share = fTree.shares.data() + score.firstShare;
    for (const Share* const end = share + score.shareCount; share != end; ++share) {
        const auto category = static_cast<std::size_t>(share->category);
        prediction.probabilities[category] = share->probability;
        if (hasConfidences) {
            const double told = share->confidence == Prediction::kNone ? share->probability : share->confidence;
            prediction.confidences[category] = told == Prediction::kNone ? told : told * penalty;
        }
    }
    prediction.category = score.category;
    return prediction.category != Prediction::kNoCategory;
}

/// A node without an id is called by its place in the document.
void TreeModel::NameNode(const NodeScore& score, Prediction& prediction) {
    if (score.id != NodeScore::kNone) {
        prediction.entityId = &fTree.ids[static_cast<std::size_t>(score.id)];
        return;
    }
    char digits[16];
    fPlaceName.assign(digits, std::to_chars(digits, digits + sizeof(digits), score.place).ptr);
    prediction.entityId = &fPlaceName;
}

/// The prediction of all nodes that a case may come to from one that doesn't decide.
/// @param penalties the steps on the way to it that needed a surrogate
bool TreeModel::AnswerFromSeveral(int node, int penalties, const Inputs& inputs, Prediction& prediction) {
    Sums sums;
    prediction.probabilities.assign(prediction.probabilities.size(), 0.0);
    if (fTree.hasConfidences) {
        prediction.confidences.assign(prediction.probabilities.size(), 0.0);
    }
    AddChildren(fTree.nodes[static_cast<std::size_t>(node)], 1.0, inputs, prediction, sums);
    if (!(sums.weight > 0.0)) {
        return false;
    }
    if (!IsClassification()) {
        prediction.number = sums.number / sums.weight;
        return true;
    }
    const bool areCounts = fStrategy == MissingStrategy::AGGREGATE_NODES;
    for (double& probability : prediction.probabilities) {
        probability /= areCounts ? sums.weight : 1.0;
    }
    if (areCounts) {
        prediction.confidences.clear();
    }
    if (penalties > 0 && prediction.confidences.empty()) {
        prediction.confidences = prediction.probabilities;
    }
    for (double& confidence : prediction.confidences) {
        confidence *= PenaltyOf(penalties);
    }
    prediction.category = Highest(prediction.confidences.empty() ? prediction.probabilities : prediction.confidences);
    return true;
}

/// Adds what a case gets that has come to a node with part of its weight.
void TreeModel::Add(int node, double weight, const Inputs& inputs, Prediction& prediction, Sums& sums) const {
    while (fTree.nodes[static_cast<std::size_t>(node)].childCount > 0) {
        bool usedSurrogate = false;
        const int next = FindChild(fTree.nodes[static_cast<std::size_t>(node)], inputs, usedSurrogate);
        if (next == kUndecided) {
            AddChildren(fTree.nodes[static_cast<std::size_t>(node)], weight, inputs, prediction, sums);
            return;
        }
        if (next == kNoNode) {
            if (const int last = fTree.LastPredicting(node); fAnswersFromLast && last != NodeScore::kNone) {
                AddNode(fTree.scores[static_cast<std::size_t>(last)], weight, prediction, sums);
            }
            return;
        }
        node = next;
    }
    AddNode(fTree.scores[static_cast<std::size_t>(node)], weight, prediction, sums);
}

/// Shares a weight out among the children that may hold, by their records.
void TreeModel::AddChildren(const Node& node, double weight, const Inputs& inputs, Prediction& prediction,
                            Sums& sums) const {
    const int end = node.firstChild + node.childCount;
    double records = 0.0;
    for (int pass = 0; pass < 2; ++pass) {
        for (int child = node.firstChild; child < end; ++child) {
            const auto at = static_cast<std::size_t>(child);
            bool usedSurrogate = false;
            if (fTree.conditions.Decide(fTree.nodes[at].condition, inputs, usedSurrogate) == Truth::NO) {
                continue;
            }
            if (fStrategy == MissingStrategy::AGGREGATE_NODES) {
                if (pass == 0) {
                    Add(child, weight, inputs, prediction, sums);
                }
            } else if (pass == 0) {
                records += fTree.scores[at].recordCount;
            } else if (records > 0.0) {
                Add(child, weight * fTree.scores[at].recordCount / records, inputs, prediction, sums);
            }
        }
    }
}

void TreeModel::AddNode(const NodeScore& score, double weight, Prediction& prediction, Sums& sums) const {
    const bool areCounts = fStrategy == MissingStrategy::AGGREGATE_NODES;
    if (!IsClassification()) {
        if (score.number != Prediction::kNone) {
            const double part = areCounts ? score.recordCount : weight;
            sums.number += part * score.number;
            sums.weight += part;
        }
        return;
    }
    if (score.shareCount == 0 && score.category != NodeScore::kNone) {
        AddShare({score.recordCount, 1.0, 1.0, score.category}, weight, prediction, sums);
    }
    const Share* share = fTree.shares.data() + score.firstShare;
    for (const Share* const end = share + score.shareCount; share != end; ++share) {
        AddShare(*share, weight, prediction, sums);
    }
}

void TreeModel::AddShare(const Share& share, double weight, Prediction& prediction, Sums& sums) const {
    const auto category = static_cast<std::size_t>(share.category);
    const double probability = share.probability == Prediction::kNone ? 0.0 : share.probability;
    double part = weight * probability;
    if (fStrategy == MissingStrategy::AGGREGATE_NODES) {
        part = share.recordCount == Prediction::kNone ? 0.0 : share.recordCount;
    }
    prediction.probabilities[category] += part;
    sums.weight += part;
    if (!prediction.confidences.empty()) {
        prediction.confidences[category] +=
            weight * (share.confidence == Prediction::kNone ? probability : share.confidence);
    }
}

void TreeModel::DisplayModel(std::ostream& out) const {
    for (const Word<MissingStrategy>& strategy : kStrategies) {
        if (strategy.meaning == fStrategy) {
            out << "missing values: " << veltrane_kit::Narrow(strategy.text) << "\n";
        }
    }
    out << "nodes: " << fTree.nodes.size() << ", bytes: " << fTree.Bytes() << "\n";
}

/// Children stand behind their parent, so one pass from the root does.
void Tree::SetLastPredicting() {
    lastPredicting.assign(nodes.size(), NodeScore::kNone);
    bool predictsEach = true;
    lastPredicting.front() = Predicts(0) ? 0 : NodeScore::kNone;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        for (int child = nodes[i].firstChild; child < nodes[i].firstChild + nodes[i].childCount; ++child) {
            lastPredicting[static_cast<std::size_t>(child)] = Predicts(child) ? child : lastPredicting[i];
        }
        predictsEach = predictsEach && lastPredicting[i] == static_cast<std::int32_t>(i);
    }
    if (predictsEach) {
        lastPredicting = {};
    }
}

std::size_t Tree::Bytes() const {
    std::size_t texts = ids.capacity() * sizeof(std::string);
    for (const std::string& id : ids) {
        texts += id.capacity() > std::string().capacity() ? id.capacity() + 1 : 0;
    }
    return lastPredicting.capacity() * sizeof(std::int32_t) + nodes.capacity() * sizeof(Node) +
           scores.capacity() * sizeof(NodeScore) + shares.capacity() * sizeof(Share) + texts + conditions.Bytes();
}

} // namespace veltrane_tree
