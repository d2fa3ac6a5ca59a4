#include "kit/model/model_plan.h"

#include <cmath>
#include <utility>

namespace veltrane_kit {

namespace {

std::shared_ptr<const ResultLayout> LayoutOf(const ModelParts& parts) {
    auto layout = std::make_shared<ResultLayout>();
    for (int code = 0; parts.IsClassification() && code < parts.target->CategoryCount(); ++code) {
        layout->categories.emplace_back(parts.target->Category(code).Clone());
    }
    layout->outputs = parts.outputs->Layout();
    return layout;
}

} // namespace

ModelPlan::ModelPlan(ModelParts parts)
    : fParts(std::move(parts)), fIsClassification(fParts.IsClassification()),
      fCategories(fIsClassification && fParts.scorer->MayHaveProbabilities()
                      ? static_cast<std::size_t>(fParts.target->CategoryCount())
                      : 0),
      fLayout(LayoutOf(fParts)) {
    fParts.inputs->Settle();
}

bool ModelPlan::Predict(const MCVeltrane_900::ScoreCaseRecord& record, ModelState& state) const {
    if (!fParts.inputs->Read(record, state.inputs)) {
        fParts.inputs->ForgetTold(state.inputs.Case());
        state.prediction.Clear(fCategories);
        return false;
    }
    return Predict(CaseView(state.inputs.Case()), state.prediction, *state.scorer);
}

bool ModelPlan::Predict(const CaseView& fields, Prediction& prediction, Scorer::State& state) const {
    prediction.Clear(fCategories);
    if (!fParts.scorer->Predict(fields, prediction, state)) {
        return false;
    }
    if (fIsClassification) {
        return prediction.category != Prediction::kNoCategory;
    }
    if (prediction.number == Prediction::kNone) {
        return false;
    }
    prediction.number = fParts.target->Adjust(prediction.number);
    return std::isfinite(prediction.number);
}

bool ModelPlan::PredictDefault(Prediction& prediction) const {
    std::vector<Prediction> others;
    others.swap(prediction.others);
    prediction.Clear(fCategories);
    others.swap(prediction.others);
    if (!fParts.target->PredictDefault(fIsClassification, prediction)) {
        prediction.Clear(fCategories);
        return false;
    }
    CompleteOthers(prediction.others);
    return true;
}

void ModelPlan::CompleteOthers(std::vector<Prediction>& others) const {
    const std::vector<Outputs::OtherTarget>& targets = fParts.more.targets;
    others.resize(targets.size());
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const bool isCategory = targets[i].isCategory;
        if (others[i].IsThere()) {
            continue;
        }
        others[i].Clear(isCategory ? static_cast<std::size_t>(targets[i].target->CategoryCount()) : 0);
        if (!targets[i].target->PredictDefault(isCategory, others[i])) {
            others[i].number = Prediction::kNone;
        }
    }
}

bool ModelPlan::PredictPart(const CaseView& fields, Prediction& prediction, Scorer::State& state) const {
    Frame& frame = *fields.Room();
    const int refused = fParts.inputs->ReadPart(frame);
    if (refused == Inputs::kNoSlot && Predict(fields, prediction, state)) {
        CompleteOthers(prediction.others);
        return true;
    }
    if (refused != Inputs::kNoSlot) {
        prediction.Clear(fCategories);
    }
    const int lacking = refused == Inputs::kNoSlot ? prediction.lacking : refused;
    if (PredictDefault(prediction)) {
        return true;
    }
    prediction.lacking = fParts.inputs->OuterSlotOf(lacking, frame);
    return false;
}

} // namespace veltrane_kit
