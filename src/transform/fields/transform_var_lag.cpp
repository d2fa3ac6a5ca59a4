#include "transform/derivation/deferred_fields.h"
#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformVar.h>

using namespace MCVeltrane_900;

namespace veltrane::transform {

bool FieldEvaluation::AreBlocksKnown(const ApplyCase& oneCase) const {
    DeferredFields* deferred = fVar.fBlockVariables.empty() ? nullptr : Derivation::Of(oneCase).deferred;
    if (deferred == nullptr) {
        return true;
    }
    const std::size_t used = deferred->Used();
    for (const ScoreDictVar* block : fVar.fBlockVariables) {
        if (block != nullptr) {
            ReadField(*block, oneCase);
        }
    }
    deferred->GoBack(used);
    return !deferred->IsGivenUp();
}

bool FieldEvaluation::AdvanceBlocks(const ApplyCase& oneCase) {
    const std::vector<const ScoreDictVar*>& blocks = fVar.fBlockVariables;
    std::vector<ValueQueue>& histories = fVar.fBlockHistories;
    if (histories.size() < blocks.size()) {
        histories.resize(histories.size() + blocks.size());
    }
    bool sameBlock = true;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (blocks[i] == nullptr) {
            continue;
        }
        const ScoreValue* current = ReadField(*blocks[i], oneCase);
        ValueQueue& history = histories[i];
        if (history.Size() == static_cast<std::size_t>(fVar.fLagCount)) {
            sameBlock = sameBlock && current != nullptr && *history.Oldest() == *current;
            history.DropOldest();
        }
        if (current != nullptr) {
            history.Append(current);
        }
    }
    return sameBlock;
}

} // namespace veltrane::transform

namespace MCVeltrane_900 {

const ScoreValue* TransformVar::GetLagValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                            const ScoreDictionary* transformations, const ScoreValue* value) {
    // The history of a date-time field is given back as a number, like that of a numeric field.
    const VariableType scratchType = GetVarType() == DATETIME_VAR ? kNUMERIC_VAR : GetVarType();
    const veltrane::transform::ApplyCase oneCase{record, dictionary, transformations};
    if (fLagCount < 1 || !fEvaluation->AreBlocksKnown(oneCase)) {
        return fEvaluation->ClearScratch(scratchType);
    }
    if (fLagHistory == nullptr) {
        fLagHistory = std::make_unique<veltrane::transform::ValueQueue>();
    }
    const bool sameBlock = fEvaluation->AdvanceBlocks(oneCase);
    const ScoreValue* outcome = nullptr;
    if (fLagHistory->Size() == static_cast<std::size_t>(fLagCount)) {
        if (sameBlock && fLagHistory->Oldest() != nullptr) {
            outcome = fEvaluation->FillScratch(scratchType, *fLagHistory->Oldest());
        }
        fLagHistory->DropOldest();
    }
    fLagHistory->Append(value);
    return outcome != nullptr ? outcome : fEvaluation->ClearScratch(scratchType);
}

} // namespace MCVeltrane_900
