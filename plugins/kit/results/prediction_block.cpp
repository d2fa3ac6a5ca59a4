#include "kit/results/prediction_block.h"

#include <string>

namespace veltrane_kit {

void PredictionBlock::Set(std::size_t row, const Prediction& prediction, TextArena& texts) {
    predicted[row] = 1;
    numbers[row] = prediction.number;
    if (standardErrors.empty() && prediction.standardError != Prediction::kNone) {
        KeepStandardErrors();
    }
    if (!standardErrors.empty()) {
        standardErrors[row] = prediction.standardError;
    }
    categories[row] = prediction.category;
    entities[row] = prediction.entityId == nullptr ? std::string_view() : texts.Keep(*prediction.entityId);
    affinities[row] = prediction.affinity;
    if (fNamed < prediction.affinities.size()) {
        NameEntities(prediction.affinities.size());
    }
    for (std::size_t named = 0; named < fNamed; ++named) {
        Affinities(named)[row] =
            named < prediction.affinities.size() ? prediction.affinities[named] : Prediction::kNone;
    }
    SetOthers(row, prediction.others);
    if (grounds.empty() && !prediction.grounds.IsEmpty()) {
        grounds.resize(fRows);
    }
    if (!grounds.empty()) {
        grounds[row] = prediction.grounds;
    }
    for (std::size_t category = 0; category < fCategories; ++category) {
        Probabilities(category)[row] = prediction.probabilities[category];
        if (fHasConfidences) {
            Confidences(category)[row] = prediction.ConfidenceOf(static_cast<int>(category));
        }
    }
}

void PredictionBlock::SetOthers(std::size_t row, const std::vector<Prediction>& further) {
    if (others.empty() && !further.empty()) {
        others.resize(fRows);
    }
    if (!others.empty()) {
        others[row] = further;
    }
}

void PredictionBlock::CompleteOthers(std::size_t row, const std::vector<Prediction>& defaults) {
    if (defaults.empty()) {
        return;
    }
    if (others.empty()) {
        others.resize(fRows);
    }
    std::vector<Prediction>& own = others[row];
    own.resize(defaults.size());
    for (std::size_t i = 0; i < defaults.size(); ++i) {
        if (!own[i].IsThere()) {
            own[i] = defaults[i];
        }
    }
}

void PredictionBlock::SetDefault(std::size_t row, const Prediction& prediction, TextArena& texts) {
    std::vector<Prediction> own;
    if (!others.empty()) {
        own.swap(others[row]);
    }
    Set(row, prediction, texts);
    if (!others.empty()) {
        own.swap(others[row]);
        CompleteOthers(row, prediction.others);
    }
}

void PredictionBlock::ClearOthers(std::size_t row) {
    if (!others.empty()) {
        others[row].clear();
    }
}

void PredictionBlock::Get(std::size_t row, Prediction& prediction, std::string& entity) const {
    prediction.Clear(fCategories);
    prediction.number = numbers[row];
    if (!standardErrors.empty()) {
        prediction.standardError = standardErrors[row];
    }
    prediction.category = categories[row];
    if (entities[row].data() != nullptr) {
        entity.assign(entities[row]);
        prediction.entityId = &entity;
    }
    prediction.affinity = affinities[row];
    for (std::size_t named = 0; named < fNamed; ++named) {
        prediction.affinities.push_back(Affinities(named)[row]);
    }
    if (!others.empty()) {
        prediction.others = others[row];
    }
    if (!grounds.empty()) {
        prediction.grounds = grounds[row];
    }
    prediction.confidences.resize(fHasConfidences ? fCategories : 0);
    for (std::size_t category = 0; category < fCategories; ++category) {
        prediction.probabilities[category] = Probabilities(category)[row];
        if (fHasConfidences) {
            prediction.confidences[category] = Confidences(category)[row];
        }
    }
}

} // namespace veltrane_kit
