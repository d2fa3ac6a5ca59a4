#include "mining_scorer.h"

#include "kit/conditions/decide.h"
#include "kit/document/common_elements.h"
#include "segmentation_reader.h"

#include <algorithm>
#include <iterator>
#include <ostream>

namespace veltrane_mining {

using veltrane_forest::Forest;
using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::Frame;
using veltrane_kit::ModelPlan;
using veltrane_kit::OutputValues;
using veltrane_kit::Prediction;
using veltrane_kit::Target;
using veltrane_kit::Truth;

MiningScorer::MiningScorer(const Element& element, veltrane_kit::ModelParts& parts, Road road, Forest::Walk walk)
    : fInputs(*parts.inputs) {
    for (const Element child : element.Children()) {
        if (!child.Is(u"Segmentation") && !child.Is(u"Regression") && !child.Is(u"DecisionTree")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    SegmentationReader(fSegmentation, parts).Read(element);
    if (road != Road::SEGMENTS) {
        const int categories = parts.IsClassification() ? parts.target->CategoryCount() : 0;
        fFlat = FlatEnsemble::Of(fSegmentation, static_cast<std::size_t>(categories), walk);
    }
}

std::unique_ptr<veltrane_kit::Scorer::State> MiningScorer::NewState() const {
    auto state = std::make_unique<Parts>();
    for (const Segment& segment : fSegmentation.segments) {
        Part& part = state->parts.emplace_back();
        part.scorer = segment.plan->GetScorer().NewState();
        if (!segment.told.empty()) {
            part.outputs = std::make_unique<OutputValues>(*segment.plan->Layout());
        }
    }
    return state;
}

bool MiningScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    auto& own = static_cast<Parts&>(state);
    if (fFlat != nullptr) {
        own.combination.Start(fSegmentation, prediction.probabilities.size());
        if (fFlat->Combine(fields, own.flat, own.combination)) {
            return own.combination.Finish(fSegmentation, prediction);
        }
    }
    return PredictBySegments(fields, prediction, own);
}

bool MiningScorer::PredictBySegments(const CaseView& fields, Prediction& prediction, Parts& own) const {
    fInputs.ForgetTold(*fields.Room());
    for (std::size_t i = 0; i < fSegmentation.ahead; ++i) {
        Ask(i, fields, own);
    }
    switch (fSegmentation.method) {
    case Method::SELECT_FIRST:
    case Method::SELECT_ALL:
        return Select(fields, prediction, own);
    case Method::MODEL_CHAIN:
        return Chain(fields, prediction, own);
    default:
        return Combine(fields, prediction, own);
    }
}

bool MiningScorer::Holds(const Segment& segment, const CaseView& fields) const {
    bool usedSurrogate = false;
    return fSegmentation.conditions.Decide(segment.condition, fields, usedSurrogate) == Truth::YES;
}

/// Has a segment predict a case, and others see what it tells.
bool MiningScorer::Ask(std::size_t index, const CaseView& fields, Parts& state) const {
    const Segment& segment = fSegmentation.segments[index];
    Part& part = state.parts[index];
    const bool isPredicted = segment.plan->PredictPart(fields, state.prediction, *part.scorer);
    if (part.outputs != nullptr) {
        Tell(segment, isPredicted, *fields.Room(), part, state);
    }
    return isPredicted;
}

void MiningScorer::Tell(const Segment& segment, bool isPredicted, Frame& frame, Part& part, Parts& state) const {
    const ModelPlan& plan = *segment.plan;
    const MCVeltrane_900::ScoreValue* value = nullptr;
    if (isPredicted && plan.IsClassification()) {
        value = &plan.GetTarget().Category(state.prediction.category);
    } else if (isPredicted) {
        state.number.SetNumber(state.prediction.number);
        value = state.number.Get();
    }
    plan.GetOutputs().Fill(value, state.prediction, frame, plan.GetTarget(), *part.outputs);
    for (const Segment::Told& told : segment.told) {
        if (told.from != told.to) {
            frame.Field(told.to) = frame.Field(told.from);
        }
        fInputs.SetCode(told.to, frame);
    }
}

/// A segment that looks back sees the cases that aren't its own too.
void MiningScorer::PassBy(std::size_t index, const CaseView& fields, Parts& state) const {
    const Segment& segment = fSegmentation.segments[index];
    if (segment.looksBack) {
        segment.plan->PredictPart(fields, state.prediction, *state.parts[index].scorer);
    }
}

/// Makes the prediction of a segment that of the whole.
void MiningScorer::Take(const Segment& segment, Parts& state, Prediction& prediction) const {
    const Prediction& own = state.prediction;
    prediction.number = own.number;
    prediction.standardError = own.standardError;
    prediction.entityId = &segment.id;
    prediction.grounds.reasons = own.grounds.reasons;
    prediction.grounds.rules = own.grounds.rules;
    prediction.grounds.entities = own.grounds.entities;
    prediction.affinity = own.affinity;
    for (const int named : segment.named) {
        const auto at = static_cast<std::size_t>(named);
        prediction.affinities.push_back(at < own.affinities.size() ? own.affinities[at] : Prediction::kNone);
    }
    if (!fSegmentation.isClassification) {
        return;
    }
    // A category that the segment doesn't have has no share, where it tells any.
    const auto take = [&](const std::vector<double>& from, std::vector<double>& to) {
        const bool tells = !from.empty() && from[static_cast<std::size_t>(own.category)] != Prediction::kNone;
        to.assign(prediction.probabilities.size(), tells ? 0.0 : Prediction::kNone);
        for (std::size_t code = 0; code < from.size(); ++code) {
            to[segment.categories[code]] = from[code];
        }
    };
    for (const int code : own.grounds.order) {
        prediction.grounds.order.push_back(static_cast<int>(segment.categories[static_cast<std::size_t>(code)]));
    }
    prediction.category = static_cast<int>(segment.categories[static_cast<std::size_t>(own.category)]);
    take(own.probabilities, prediction.probabilities);
    if (!own.confidences.empty()) {
        take(own.confidences, prediction.confidences);
    }
}

bool MiningScorer::Combine(const CaseView& fields, Prediction& prediction, Parts& state) const {
    state.combination.Start(fSegmentation, prediction.probabilities.size());
    bool isMissing = false;
    for (std::size_t i = fSegmentation.ahead; i < fSegmentation.segments.size(); ++i) {
        const Segment& segment = fSegmentation.segments[i];
        if (isMissing || !Holds(segment, fields)) {
            PassBy(i, fields, state);
        } else if (Ask(i, fields, state)) {
            state.combination.Add(fSegmentation, segment, state.prediction);
        } else {
            prediction.lacking =
                prediction.lacking == Prediction::kNoSlot ? state.prediction.lacking : prediction.lacking;
            state.combination.AddMissing(fSegmentation, segment);
            isMissing = fSegmentation.missing == MissingPrediction::RETURN_MISSING;
        }
    }
    return !isMissing && state.combination.Finish(fSegmentation, prediction);
}

/// The first segment whose condition holds has the prediction. Where all are selected the others are asked too, and
/// tell what output fields want to know.
bool MiningScorer::Select(const CaseView& fields, Prediction& prediction, Parts& state) const {
    bool isDecided = false;
    bool isPredicted = false;
    for (std::size_t i = fSegmentation.ahead; i < fSegmentation.segments.size(); ++i) {
        const Segment& segment = fSegmentation.segments[i];
        const bool isWanted = !isDecided || fSegmentation.method == Method::SELECT_ALL;
        if (!isWanted || !Holds(segment, fields)) {
            PassBy(i, fields, state);
            continue;
        }
        const bool isAnswered = Ask(i, fields, state);
        if (isAnswered && !isDecided) {
            Take(segment, state, prediction);
            isPredicted = true;
            isDecided = true;
        } else if (!isAnswered && fSegmentation.missing == MissingPrediction::RETURN_MISSING) {
            isPredicted = false;
            isDecided = true;
        } else if (!isAnswered && !isDecided) {
            prediction.lacking = state.prediction.lacking;
            isDecided = fSegmentation.missing == MissingPrediction::CONTINUE;
        }
    }
    return isPredicted;
}

/// Each segment sees what those before it tell; the last one whose condition holds has the prediction.
bool MiningScorer::Chain(const CaseView& fields, Prediction& prediction, Parts& state) const {
    const std::size_t categories = prediction.probabilities.size();
    bool isMissing = false;
    bool isPredicted = false;
    for (std::size_t i = fSegmentation.ahead; i < fSegmentation.segments.size(); ++i) {
        const Segment& segment = fSegmentation.segments[i];
        if (isMissing || !Holds(segment, fields)) {
            PassBy(i, fields, state);
        } else if (Ask(i, fields, state)) {
            prediction.Clear(categories);
            isPredicted = segment.predictsTarget;
            if (isPredicted) {
                Take(segment, state, prediction);
            }
        } else if (fSegmentation.missing != MissingPrediction::SKIP_SEGMENT) {
            prediction.Clear(categories);
            prediction.lacking = state.prediction.lacking;
            isPredicted = false;
            isMissing = fSegmentation.missing == MissingPrediction::RETURN_MISSING;
        }
    }
    return isPredicted;
}

void MiningScorer::Display(std::ostream& out, const Target& /*target*/) const {
    const auto* const method =
        std::find_if(std::begin(kMethods), std::end(kMethods),
                     [&](const veltrane_kit::Word<Method>& word) { return word.meaning == fSegmentation.method; });
    out << "method: " << veltrane_kit::Narrow(method->text) << "\n";
    for (const Segment& segment : fSegmentation.segments) {
        out << "segment " << segment.id << ": " << segment.plan->Parts().tag << "\n";
        segment.plan->GetScorer().Display(out, segment.plan->GetTarget());
    }
}

std::unique_ptr<const veltrane_kit::Scorer> MakeMiningScorer(const Element& element, veltrane_kit::ModelParts& parts) {
    return std::make_unique<const MiningScorer>(element, parts);
}

} // namespace veltrane_mining
