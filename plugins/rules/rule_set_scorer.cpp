#include "rule_set_scorer.h"

#include "kit/conditions/decide.h"
#include "kit/document/common_elements.h"
#include "rule_set_reader.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <vector>

namespace veltrane_rules {

using veltrane_kit::Block;
using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;
using veltrane_kit::RowView;
using veltrane_kit::Target;
using veltrane_kit::Truth;

/// The rules that hold for a case.
struct RuleSetScorer::Hits : State {
    std::vector<std::int32_t> rules; ///< those that count most first
    std::vector<double> weights;     ///< by score, of all rules that predict it
};

RuleSetScorer::RuleSetScorer(const Element& element, ModelParts& parts)
    : fIsClassification(parts.IsClassification()), fTold(parts.more.entities.Ranks()) {
    for (const Element child : element.Children()) {
        if (!child.Is(u"RuleSet")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    RuleSetReader(fRules, parts).Read(element.RequireChild(u"RuleSet"));
}

std::unique_ptr<veltrane_kit::Scorer::State> RuleSetScorer::NewState() const {
    auto hits = std::make_unique<Hits>();
    std::int32_t scores = 0;
    for (const RuleScore& rule : fRules.rules) {
        scores = std::max(scores, rule.score + 1);
    }
    hits->rules.reserve(fRules.rules.size());
    hits->weights.resize(static_cast<std::size_t>(scores));
    return hits;
}

bool RuleSetScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    return PredictFrom(fields, prediction, static_cast<Hits&>(state));
}

template <typename View>
bool RuleSetScorer::PredictFrom(const View& fields, Prediction& prediction, Hits& hits) const {
    FindHits(fields, hits);
    if (hits.rules.empty()) {
        if (!fRules.otherwise) {
            prediction.lacking = LackingSlot(fields);
            return false;
        }
        PredictDefault(prediction);
        return true;
    }
    if (!Order(hits)) {
        return false;
    }
    for (std::size_t rank = 0; rank < std::min(hits.rules.size(), fTold); ++rank) {
        prediction.grounds.rules.push_back(At(hits.rules[rank]).rule);
    }
    prediction.entityId = &prediction.grounds.rules.front()->id;
    if (fIsClassification) {
        return PredictCategory(hits, prediction);
    }
    prediction.number = fRules.numbers[static_cast<std::size_t>(At(hits.rules.front()).score)];
    return true;
}

template <typename View>
void RuleSetScorer::FindHits(const View& fields, Hits& hits) const {
    hits.rules.clear();
    for (std::size_t at = 0; at < fRules.steps.size();) {
        const Step& step = fRules.steps[at];
        bool usedSurrogate = false;
        if (fRules.conditions.Decide(step.condition, fields, usedSurrogate) != Truth::YES) {
            at = static_cast<std::size_t>(step.next);
            continue;
        }
        if (step.rule != Step::kNoRule) {
            hits.rules.push_back(step.rule);
        }
        ++at;
    }
}

/// The first missing value that keeps a rule from being decided.
template <typename View>
int RuleSetScorer::LackingSlot(const View& fields) const {
    for (std::size_t at = 0; at < fRules.steps.size();) {
        const Step& step = fRules.steps[at];
        bool usedSurrogate = false;
        const Truth truth = fRules.conditions.Decide(step.condition, fields, usedSurrogate);
        if (truth == Truth::UNKNOWN) {
            return fRules.conditions.LackingSlot(step.condition, fields);
        }
        at = truth == Truth::YES ? at + 1 : static_cast<std::size_t>(step.next);
    }
    return Prediction::kNoSlot;
}

/// Rules of equal weight stay in the order of the document. Of equal sums that of the category comes first that the
/// dictionary lists first, of numbers the one that the document has first.
/// @return false where a sum of weights is beyond all doubles, so that there is no order
bool RuleSetScorer::Order(Hits& hits) const {
    if (fRules.criterion == Criterion::FIRST_HIT) {
        return true;
    }
    const bool isBySum = fRules.criterion == Criterion::WEIGHTED_SUM;
    if (isBySum) {
        std::fill(hits.weights.begin(), hits.weights.end(), 0.0);
        for (const std::int32_t rule : hits.rules) {
            hits.weights[static_cast<std::size_t>(At(rule).score)] += At(rule).weight;
        }
        if (!std::all_of(hits.weights.begin(), hits.weights.end(), [](double sum) { return std::isfinite(sum); })) {
            return false;
        }
    }
    std::sort(hits.rules.begin(), hits.rules.end(), [&](std::int32_t a, std::int32_t b) {
        const RuleScore& left = At(a);
        const RuleScore& right = At(b);
        if (isBySum && left.score != right.score) {
            const double leftSum = hits.weights[static_cast<std::size_t>(left.score)];
            const double rightSum = hits.weights[static_cast<std::size_t>(right.score)];
            return leftSum != rightSum ? leftSum > rightSum : left.score < right.score;
        }
        return left.weight != right.weight ? left.weight > right.weight : a < b;
    });
    return true;
}

void RuleSetScorer::PredictDefault(Prediction& prediction) const {
    if (!fIsClassification) {
        prediction.number = fRules.numbers[static_cast<std::size_t>(fRules.otherwise->score)];
        return;
    }
    prediction.category = fRules.otherwise->score;
    SetProbabilities(fRules.distribution, prediction);
    if (fRules.otherwise->confidence != Prediction::kNone) {
        prediction.confidences.assign(prediction.probabilities.size(), 0.0);
        prediction.confidences[static_cast<std::size_t>(prediction.category)] = fRules.otherwise->confidence;
    }
}

/// @return false where a sum of weights or confidences is beyond all doubles
bool RuleSetScorer::PredictCategory(const Hits& hits, Prediction& prediction) const {
    prediction.category = At(hits.rules.front()).score;
    if (fRules.criterion != Criterion::WEIGHTED_SUM) {
        SetProbabilities(At(hits.rules.front()).distribution, prediction);
    } else if (!AddProbabilities(hits, prediction)) {
        return false;
    }
    SetConfidences(hits, prediction);
    const std::vector<double>& confidences = prediction.confidences;
    return std::all_of(confidences.begin(), confidences.end(), [](double each) { return std::isfinite(each); });
}

/// The confidence of a category is that of the rule that predicts it, the first one in their order; of sums, what all
/// those have together that predict it, shared out over all rules that hold. A category that no rule predicts has what
/// the distribution of the chosen rule tells, else 0.
void RuleSetScorer::SetConfidences(const Hits& hits, Prediction& prediction) const {
    std::vector<double>& confidences = prediction.confidences;
    confidences.assign(prediction.probabilities.size(), Prediction::kNone);
    for (const std::int32_t rule : hits.rules) {
        double& confidence = confidences[static_cast<std::size_t>(At(rule).score)];
        if (confidence == Prediction::kNone) {
            prediction.grounds.order.push_back(At(rule).score);
            confidence = At(rule).confidence;
        } else if (fRules.criterion == Criterion::WEIGHTED_SUM) {
            confidence += At(rule).confidence;
        }
    }
    if (fRules.criterion == Criterion::WEIGHTED_SUM) {
        for (const int category : prediction.grounds.order) {
            confidences[static_cast<std::size_t>(category)] /= static_cast<double>(hits.rules.size());
        }
    } else {
        const Distribution distribution = At(hits.rules.front()).distribution;
        const Share* share = fRules.shares.data() + distribution.first;
        for (const Share* const end = share + distribution.count; share != end; ++share) {
            double& confidence = confidences[static_cast<std::size_t>(share->category)];
            confidence = confidence == Prediction::kNone ? share->confidence : confidence;
        }
    }
    std::replace(confidences.begin(), confidences.end(), Prediction::kNone, 0.0);
}

/// A category without a share has the probability 0; a distribution without shares tells none.
void RuleSetScorer::SetProbabilities(Distribution distribution, Prediction& prediction) const {
    if (distribution.count == 0) {
        return;
    }
    prediction.probabilities.assign(prediction.probabilities.size(), 0.0);
    const Share* share = fRules.shares.data() + distribution.first;
    for (const Share* const end = share + distribution.count; share != end; ++share) {
        prediction.probabilities[static_cast<std::size_t>(share->category)] = share->probability;
    }
}

/// The mean of all distributions, weighed as their rules are; rules without one, or without a weight, don't count.
/// @return false where the sum of the weights is beyond all doubles
bool RuleSetScorer::AddProbabilities(const Hits& hits, Prediction& prediction) const {
    double weights = 0.0;
    for (const std::int32_t rule : hits.rules) {
        weights += At(rule).distribution.count > 0 ? std::max(At(rule).weight, 0.0) : 0.0;
    }
    if (!(weights > 0.0) || !std::isfinite(weights)) {
        return weights == 0.0;
    }
    prediction.probabilities.assign(prediction.probabilities.size(), 0.0);
    for (const std::int32_t rule : hits.rules) {
        const Distribution distribution = At(rule).distribution;
        const Share* share = fRules.shares.data() + distribution.first;
        for (const Share* const end = share + distribution.count; share != end; ++share) {
            const double probability = share->probability == Prediction::kNone ? 0.0 : share->probability;
            prediction.probabilities[static_cast<std::size_t>(share->category)] +=
                std::max(At(rule).weight, 0.0) / weights * probability;
        }
    }
    return true;
}

class RuleSetScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const RuleSetScorer& scorer) : fScorer(scorer) {}

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        Prediction& prediction = predictions.scratch;
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            prediction.Clear(predictions.Categories());
            if (fScorer.PredictFrom(RowView(block, row), prediction, static_cast<Hits&>(state))) {
                predictions.Set(row, prediction, block.Arena());
            } else {
                predictions.predicted[row] = 0;
            }
        }
    }

private:
    const RuleSetScorer& fScorer;
};

std::unique_ptr<const veltrane_kit::BlockScorer> RuleSetScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(*this);
}

void RuleSetScorer::Display(std::ostream& out, const Target& target) const {
    const char* const names[] = {"firstHit", "weightedMax", "weightedSum"};
    out << "criterion: " << names[static_cast<int>(fRules.criterion)] << "\n";
    out << "rules: " << fRules.rules.size() << "\n";
    if (!fRules.otherwise) {
        return;
    }
    const auto score = static_cast<std::size_t>(fRules.otherwise->score);
    out << "otherwise: ";
    if (fIsClassification) {
        out << target.Category(fRules.otherwise->score).GetString() << "\n";
    } else {
        out << fRules.numbers[score] << "\n";
    }
}

std::unique_ptr<const veltrane_kit::Scorer> MakeRuleSetScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const RuleSetScorer>(element, parts);
}

} // namespace veltrane_rules
