#include "tree_scorer.h"

#include "kit/conditions/decide.h"
#include "kit/document/common_elements.h"
#include "kit/document/raise.h"
#include "tree_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <ostream>

namespace veltrane_tree {

using veltrane_kit::CaseView;
using veltrane_kit::Condition;
using veltrane_kit::Element;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::Target;
using veltrane_kit::Truth;
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

TreeScorer::TreeScorer(const Element& element, ModelParts& parts)
    : fStrategy(element.OneOfOr(u"missingValueStrategy", kStrategies, MissingStrategy::NONE)),
      fPenalty(ReadPenalty(element)), fAnswersFromLast(element.OneOfOr(u"noTrueChildStrategy", kNoTrueChild, false)),
      fIsClassification(parts.IsClassification()) {
    element.OneOfOr(u"splitCharacteristic", kSplits, false);
    for (const Element child : element.Children()) {
        if (!child.Is(u"Node")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    const bool weighs = fStrategy == MissingStrategy::WEIGHTED_CONFIDENCE ||
                        (fStrategy == MissingStrategy::AGGREGATE_NODES && !parts.IsClassification());
    fTree.keepsRecordCounts = fStrategy >= MissingStrategy::WEIGHTED_CONFIDENCE;
    TreeReader(fTree, fModels, parts, {weighs}).Read(element.RequireChild(u"Node"));
    if (!fModels.IsEmpty() && fStrategy >= MissingStrategy::WEIGHTED_CONFIDENCE) {
        veltrane_kit::Raise<veltrane_kit::Message::UNSUPPORTED_VALUE_IN>(
            element.Text(u"missingValueStrategy"), "missingValueStrategy", element.Tag(),
            "none, lastPrediction, nullPrediction, defaultChild");
    }
    if (fAnswersFromLast || fStrategy == MissingStrategy::LAST_PREDICTION) {
        fTree.SetLastPredicting();
    }
}

struct TreeScorer::Own : State {
    std::string name; ///< of the node that predicts
    LeafModels::State models;
    int asked = LeafModels::kNone; ///< the model that the case has come to
};

std::unique_ptr<veltrane_kit::Scorer::State> TreeScorer::NewState() const {
    auto state = std::make_unique<Own>();
    state->models = fModels.NewState();
    return state;
}

bool TreeScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    if (fModels.IsEmpty()) {
        return Descend(fields, prediction, state);
    }
    auto& own = static_cast<Own&>(state);
    own.asked = LeafModels::kNone;
    const bool isPredicted = Descend(fields, prediction, state);
    fModels.PassBy(own.asked, fields, own.models);
    return isPredicted;
}

bool TreeScorer::Descend(const CaseView& fields, Prediction& prediction, State& state) const {
    bool usedSurrogate = false;
    const Condition& condition = fTree.nodes.front().condition;
    if (fTree.conditions.Decide(condition, fields, usedSurrogate) != Truth::YES) {
        prediction.lacking = fTree.conditions.LackingSlot(condition, fields);
        return false;
    }
    return GoOn(0, fields, prediction, state);
}

/// The first child whose condition holds; kNoNode when none does, kUndecided when one that comes first can't be
/// decided.
/// @param usedSurrogate set to whether the condition of the child that is found needed a surrogate
int TreeScorer::FindChild(const Node& node, const CaseView& fields, bool& usedSurrogate) const {
    const bool isDecided = fStrategy == MissingStrategy::NONE;
    for (int child = node.firstChild; child < node.firstChild + node.childCount; ++child) {
        const Condition& condition = fTree.nodes[static_cast<std::size_t>(child)].condition;
        usedSurrogate = false;
        const Truth truth = fTree.conditions.Decide(condition, fields, usedSurrogate);
        if (truth == Truth::YES) {
            return child;
        }
        if (truth == Truth::UNKNOWN && !isDecided) {
            return kUndecided;
        }
    }
    return kNoNode;
}

bool TreeScorer::GoOn(int node, const CaseView& fields, Prediction& prediction, State& state) const {
    int penalties = 0;
    while (fTree.nodes[static_cast<std::size_t>(node)].childCount > 0) {
        bool isPenalized = false;
        int next = FindChild(fTree.nodes[static_cast<std::size_t>(node)], fields, isPenalized);
        if (next == kNoNode) {
            return (fAnswersFromLast && AnswerFromLast(node, penalties, prediction, state)) ||
                   EndAt(node, fields, prediction);
        }
        if (next == kUndecided) {
            if (fStrategy == MissingStrategy::LAST_PREDICTION) {
                return AnswerFromLast(node, penalties, prediction, state) || EndAt(node, fields, prediction);
            }
            if (fStrategy != MissingStrategy::DEFAULT_CHILD) {
                const bool answers = fStrategy != MissingStrategy::NULL_PREDICTION &&
                                     AnswerFromSeveral(node, penalties, fields, prediction);
                return answers || EndAt(node, fields, prediction);
            }
            next = fTree.DefaultChildOf(node);
            if (next == NodeScore::kNone) {
                return EndAt(node, fields, prediction);
            }
            isPenalized = true;
        }
        penalties += isPenalized ? 1 : 0;
        node = next;
    }
    const int model = fModels.At(node);
    return model == LeafModels::kNone ? Answer(node, penalties, prediction, state)
                                      : AnswerByModel(model, penalties, fTree.Score(node), fields, prediction, state);
}

/// The prediction of the model that stands in a leaf.
bool TreeScorer::AnswerByModel(int model, int penalties, const NodeScore& score, const CaseView& fields,
                               Prediction& prediction, State& state) const {
    auto& own = static_cast<Own&>(state);
    own.asked = model;
    if (!fModels.Predict(model, fields, prediction, own.models)) {
        return false;
    }
    if (fIsClassification && penalties > 0 && fPenalty != 1.0) {
        if (prediction.confidences.empty()) {
            prediction.confidences = prediction.probabilities;
        }
        for (double& confidence : prediction.confidences) {
            confidence *= confidence == Prediction::kNone ? 1.0 : PenaltyOf(penalties);
        }
    }
    NameNode(score, prediction, state);
    return true;
}

/// The prediction that a case has got on its way to a node.
bool TreeScorer::AnswerFromLast(int node, int penalties, Prediction& prediction, State& state) const {
    const int last = fTree.LastPredicting(node);
    return last != NodeScore::kNone && Answer(last, penalties, prediction, state);
}

/// Ends the way of a case at a node, without a prediction, with the first value that would have decided the next step.
/// @return false
bool TreeScorer::EndAt(int node, const CaseView& fields, Prediction& prediction) const {
    const Node& end = fTree.nodes[static_cast<std::size_t>(node)];
    for (int child = 0; child < end.childCount && prediction.lacking == Prediction::kNoSlot; ++child) {
        const auto at = static_cast<std::size_t>(end.firstChild) + static_cast<std::size_t>(child);
        prediction.lacking = fTree.conditions.LackingSlot(fTree.nodes[at].condition, fields);
    }
    return false;
}

double TreeScorer::PenaltyOf(int penalties) const {
    return penalties > 0 ? std::pow(fPenalty, penalties) : 1.0;
}

/// The prediction of one node.
/// @param penalties the steps on the case's way that needed a surrogate or a default child
/// @return false for a node that predicts nothing
bool TreeScorer::Answer(int node, int penalties, Prediction& prediction, State& state) const {
    const NodeScore score = fTree.Score(node);
    if (!fIsClassification) {
        prediction.number = score.number;
    } else if (!AnswerCategory(score, penalties, prediction)) {
        return false;
    }
    NameNode(score, prediction, state);
    return true;
}

bool TreeScorer::PredictAt(int node, Prediction& prediction) const {
    const NodeScore score = fTree.Score(node);
    prediction.number = score.number;
    return fIsClassification ? AnswerCategory(score, 0, prediction) : score.number != Prediction::kNone;
}

bool TreeScorer::AnswerCategory(const NodeScore& score, int penalties, Prediction& prediction) const {
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
void TreeScorer::NameNode(const NodeScore& score, Prediction& prediction, State& state) const {
    std::string& name = static_cast<Own&>(state).name;
    if (score.id != NodeScore::kNone) {
        name.assign(fTree.IdOf(score));
    } else {
        char digits[16];
        name.assign(digits, std::to_chars(digits, digits + sizeof(digits), score.place).ptr);
    }
    prediction.entityId = &name;
}

/// The prediction of all nodes that a case may come to from one that doesn't decide.
/// @param penalties the steps on the way to it that needed a surrogate
bool TreeScorer::AnswerFromSeveral(int node, int penalties, const CaseView& fields, Prediction& prediction) const {
    const bool areCounts = fStrategy == MissingStrategy::AGGREGATE_NODES;
    Sums sums;
    prediction.probabilities.assign(prediction.probabilities.size(), 0.0);
    if (fPenalty != 1.0 || (fTree.hasConfidences && !areCounts)) {
        prediction.confidences.assign(prediction.probabilities.size(), 0.0);
    }
    AddChildren(fTree.nodes[static_cast<std::size_t>(node)], {1.0, PenaltyOf(penalties)}, fields, prediction, sums);
    if (!(sums.weight > 0.0)) {
        return false;
    }
    if (!fIsClassification) {
        prediction.number = sums.number / sums.weight;
        return true;
    }
    if (areCounts) {
        for (std::vector<double>* numbers : {&prediction.probabilities, &prediction.confidences}) {
            for (double& number : *numbers) {
                number /= sums.weight;
            }
        }
    }
    const bool isByConfidence = !areCounts && !prediction.confidences.empty();
    prediction.category = Highest(isByConfidence ? prediction.confidences : prediction.probabilities);
    return true;
}

/// Adds what a case gets that has come to a node with part of its weight.
void TreeScorer::Add(int node, Part part, const CaseView& fields, Prediction& prediction, Sums& sums) const {
    while (fTree.nodes[static_cast<std::size_t>(node)].childCount > 0) {
        bool usedSurrogate = false;
        const int next = FindChild(fTree.nodes[static_cast<std::size_t>(node)], fields, usedSurrogate);
        if (next == kUndecided) {
            AddChildren(fTree.nodes[static_cast<std::size_t>(node)], part, fields, prediction, sums);
            return;
        }
        if (next == kNoNode) {
            if (const int last = fTree.LastPredicting(node); fAnswersFromLast && last != NodeScore::kNone) {
                AddNode(fTree.Score(last), part, prediction, sums);
            }
            return;
        }
        part.penalty *= usedSurrogate ? fPenalty : 1.0;
        node = next;
    }
    AddNode(fTree.Score(node), part, prediction, sums);
}

/// Shares a weight out among the children that may hold, by their records.
void TreeScorer::AddChildren(const Node& node, Part part, const CaseView& fields, Prediction& prediction,
                             Sums& sums) const {
    const int end = node.firstChild + node.childCount;
    double records = 0.0;
    for (int pass = 0; pass < 2; ++pass) {
        for (int child = node.firstChild; child < end; ++child) {
            const auto at = static_cast<std::size_t>(child);
            bool usedSurrogate = false;
            const Truth truth = fTree.conditions.Decide(fTree.nodes[at].condition, fields, usedSurrogate);
            if (truth == Truth::NO) {
                continue;
            }
            const double penalty = part.penalty * (usedSurrogate && truth == Truth::YES ? fPenalty : 1.0);
            if (fStrategy == MissingStrategy::AGGREGATE_NODES) {
                if (pass == 0) {
                    Add(child, {part.weight, penalty}, fields, prediction, sums);
                }
            } else if (pass == 0) {
                records += fTree.Score(child).recordCount;
            } else if (records > 0.0) {
                Add(child, {part.weight * fTree.Score(child).recordCount / records, penalty}, fields, prediction, sums);
            }
        }
    }
}

void TreeScorer::AddNode(const NodeScore& score, Part part, Prediction& prediction, Sums& sums) const {
    const bool areCounts = fStrategy == MissingStrategy::AGGREGATE_NODES;
    if (!fIsClassification) {
        if (score.number != Prediction::kNone) {
            const double weight = areCounts ? score.recordCount : part.weight;
            sums.number += weight * score.number;
            sums.weight += weight;
        }
        return;
    }
    if (score.shareCount == 0 && score.category != NodeScore::kNone) {
        AddShare({score.recordCount, 1.0, 1.0, score.category}, part, prediction, sums);
    }
    const Share* share = fTree.shares.data() + score.firstShare;
    for (const Share* const end = share + score.shareCount; share != end; ++share) {
        AddShare(*share, part, prediction, sums);
    }
}

void TreeScorer::AddShare(const Share& share, Part part, Prediction& prediction, Sums& sums) const {
    const auto category = static_cast<std::size_t>(share.category);
    const bool areCounts = fStrategy == MissingStrategy::AGGREGATE_NODES;
    const double told = areCounts ? share.recordCount : share.probability;
    const double own = told == Prediction::kNone ? 0.0 : told;
    const double weight = areCounts ? 1.0 : part.weight;
    prediction.probabilities[category] += weight * own;
    sums.weight += weight * own;
    if (!prediction.confidences.empty()) {
        const bool hasConfidence = !areCounts && share.confidence != Prediction::kNone;
        prediction.confidences[category] += weight * part.penalty * (hasConfidence ? share.confidence : own);
    }
}

void TreeScorer::Display(std::ostream& out, const Target& /*target*/) const {
    for (const Word<MissingStrategy>& strategy : kStrategies) {
        if (strategy.meaning == fStrategy) {
            out << "missing values: " << veltrane_kit::Narrow(strategy.text) << "\n";
        }
    }
    out << "nodes: " << fTree.nodes.size() << ", bytes: " << fTree.Bytes() << "\n";
}

std::unique_ptr<const veltrane_kit::Scorer> MakeTreeScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const TreeScorer>(element, parts);
}

} // namespace veltrane_tree
