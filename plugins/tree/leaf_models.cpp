#include "leaf_models.h"

#include "kit/document/raise.h"
#include "kit/model/completion.h"
#include "regression/regression_scorer.h"
#include "tree_scorer.h"

#include <algorithm>
#include <utility>

namespace veltrane_tree {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;

namespace {

const char* NameOf(bool isClassification) {
    return isClassification ? "classification" : "regression";
}

} // namespace

bool LeafModels::IsModel(const Element& element) {
    return element.Is(u"Regression") || element.Is(u"DecisionTree");
}

void LeafModels::Read(const Element& element, int leaf, ModelParts& parts) {
    veltrane_kit::RequireRoomForParts(element, parts);
    const std::size_t histories = parts.inputs->Layout().histories.size();
    const veltrane_kit::MakeScorer make =
        element.Is(u"Regression") ? veltrane_regression::MakeRegressionScorer : MakeTreeScorer;
    Model model{leaf, false, CompletePart(element, parts, make, {}), {}};
    model.looksBack = parts.inputs->Layout().histories.size() > histories;
    if (model.plan->IsClassification() != parts.IsClassification()) {
        Raise<Message::CONFLICTING_VALUES_IN>(NameOf(model.plan->IsClassification()), "functionName", element.Tag(),
                                              NameOf(parts.IsClassification()), "functionName", parts.tag);
    }
    // The target is that of the tree, so each category of the model is one of the tree's.
    const veltrane_kit::Target& target = model.plan->GetTarget();
    for (int code = 0; parts.IsClassification() && code < target.CategoryCount(); ++code) {
        model.categories.push_back(static_cast<std::size_t>(parts.target->CategoryOf(target, code)));
    }
    fModels.push_back(std::move(model));
}

void LeafModels::Settle() {
    std::sort(fModels.begin(), fModels.end(), [](const Model& a, const Model& b) { return a.leaf < b.leaf; });
}

int LeafModels::At(int node) const {
    const auto found = std::lower_bound(fModels.begin(), fModels.end(), node,
                                        [](const Model& model, int leaf) { return model.leaf < leaf; });
    return found != fModels.end() && found->leaf == node ? static_cast<int>(found - fModels.begin()) : kNone;
}

bool LeafModels::HaveConfidences() const {
    return std::any_of(fModels.begin(), fModels.end(),
                       [](const Model& model) { return model.plan->GetScorer().MayHaveConfidences(); });
}

LeafModels::State LeafModels::NewState() const {
    State state;
    for (const Model& model : fModels) {
        state.models.push_back(model.plan->GetScorer().NewState());
    }
    return state;
}

bool LeafModels::Predict(int model, const CaseView& fields, Prediction& prediction, State& state) const {
    const auto at = static_cast<std::size_t>(model);
    const Prediction& own = state.prediction;
    if (!fModels[at].plan->PredictPart(fields, state.prediction, *state.models[at])) {
        prediction.lacking = own.lacking;
        return false;
    }
    prediction.number = own.number;
    if (own.category == Prediction::kNoCategory) {
        return true;
    }
    // A category that the model doesn't have has no share, where the model tells any.
    const std::vector<std::size_t>& categories = fModels[at].categories;
    const auto take = [&](const std::vector<double>& from, std::vector<double>& to) {
        const bool tells = from[static_cast<std::size_t>(own.category)] != Prediction::kNone;
        to.assign(prediction.probabilities.size(), tells ? 0.0 : Prediction::kNone);
        for (std::size_t code = 0; code < from.size(); ++code) {
            to[categories[code]] = from[code];
        }
    };
    prediction.category = static_cast<int>(categories[static_cast<std::size_t>(own.category)]);
    take(own.probabilities, prediction.probabilities);
    if (!own.confidences.empty()) {
        take(own.confidences, prediction.confidences);
    }
    return true;
}

void LeafModels::PassBy(int asked, const CaseView& fields, State& state) const {
    for (std::size_t i = 0; i < fModels.size(); ++i) {
        if (fModels[i].looksBack && static_cast<int>(i) != asked) {
            fModels[i].plan->PredictPart(fields, state.prediction, *state.models[i]);
        }
    }
}

} // namespace veltrane_tree
