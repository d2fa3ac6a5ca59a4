#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/BaseModel.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValueProbability.h>
#include <MCVeltrane_900/ScoreValueProbabilitySet.h>

#include <algorithm>
#include <iterator>

namespace MCVeltrane_900 {

namespace {

MCScore::MCStatus NoPrediction() {
    return MCScore::MCStatus(ScoreModel::NO_PREDICTION, false);
}

/// A result takes its values by a pointer to non-const, and clones them.
ScoreValue* Lend(const ScoreValue* value) {
    return const_cast<ScoreValue*>(value);
}

/// The entry with the highest probability above 0, the first one among equals; null when there is none.
const ScoreValueProbability* MostProbable(const ScoreValueProbabilitySet& probabilities) {
    const ScoreValueProbability* chosen = nullptr;
    double best = 0.0;
    for (const ScoreValueProbability* entry : probabilities.GetAllValueProbabilities()) {
        if (entry->GetProbability() > best) {
            best = entry->GetProbability();
            chosen = entry;
        }
    }
    return chosen;
}

MCScore::MCStatus PredictDefault(const ScoreDictVar& target, ScoreResult& result) {
    const ScoreValue* value = target.GetDefValue();
    if (value == nullptr) {
        return NoPrediction();
    }
    result.SetResultValue(Lend(value));
    return MCScore::MCStatus();
}

} // namespace

MCScore::MCStatus BaseModel::HandleMissingValue(ScoreResult* result) {
    if (result == nullptr) {
        return MCScore::MCStatus();
    }
    const ScoreDictVar* target = GetTargetVar();
    if (target == nullptr) {
        return NoPrediction();
    }
    if (target->GetMLevel() == ScoreDictVar::LEVEL_CONTINUOUS) {
        return PredictDefault(*target, *result);
    }
    const ScoreValueProbabilitySet* probabilities = target->GetValueProbabilities();
    if (probabilities == nullptr) {
        result->SetResultValue(nullptr);
        return NoPrediction();
    }
    for (const ScoreValueProbability* entry : probabilities->GetAllValueProbabilities()) {
        if (ScoreResult::HasCategories(result->GetResultKind()) && !SkipsCategoryProbabilities()) {
            static_cast<ScoreClsResult*>(result)->SetCategoryProbability(Lend(entry->GetValue()),
                                                                         entry->GetProbability());
        }
    }
    if (const ScoreValueProbability* chosen = MostProbable(*probabilities); chosen != nullptr) {
        result->SetResultValue(Lend(chosen->GetValue()));
        result->SetResultConfidence(chosen->GetProbability());
    }
    return MCScore::MCStatus();
}

} // namespace MCVeltrane_900
