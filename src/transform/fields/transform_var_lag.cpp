#include "transform/derivation/deferred_fields.h"
#include "transform/derivation/value_queue.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformVar.h>

namespace MCVeltrane_900 {

/// Whether all block fields have their values. Where fields wait for each other in a list, asking for one can end this
/// evaluation, and no history may have moved on by then.
bool TransformVar::AreBlocksKnown(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                  const ScoreDictionary* transformations) const {
    if (fBlockVariables.empty()) {
        return true;
    }
    veltrane::transform::DeferredFields* deferred =
        veltrane::transform::Derivation::Of({record, dictionary, transformations}).deferred;
    if (deferred == nullptr) {
        return true;
    }
    const std::size_t used = deferred->Used();
    for (const ScoreDictVar* block : fBlockVariables) {
        if (block != nullptr) {
            veltrane::transform::ReadField(*block, record, dictionary, transformations);
        }
    }
    deferred->GoBack(used);
    return !deferred->IsGivenUp();
}

/// Moves the histories of the block fields on by one case.
/// @return whether every block field with a full history has the value again that it had then
bool TransformVar::AdvanceBlocks(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                 const ScoreDictionary* transformations) {
    if (fBlockHistories.size() < fBlockVariables.size()) {
        fBlockHistories.resize(fBlockHistories.size() + fBlockVariables.size());
    }
    bool sameBlock = true;
    for (std::size_t i = 0; i < fBlockVariables.size(); ++i) {
        if (fBlockVariables[i] == nullptr) {
            continue;
        }
        const ScoreValue* current =
            veltrane::transform::ReadField(*fBlockVariables[i], record, dictionary, transformations);
        veltrane::transform::ValueQueue& history = fBlockHistories[i];
        if (history.Size() == static_cast<std::size_t>(fLagCount)) {
            sameBlock = sameBlock && current != nullptr && *history.Oldest() == *current;
            history.DropOldest();
        }
        if (current != nullptr) {
            history.Append(current);
        }
    }
    return sameBlock;
}

const ScoreValue* TransformVar::GetLagValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                            const ScoreDictionary* transformations, const ScoreValue* value) {
    // The history of a date-time field is given back as a number, like that of a numeric field.
    const VariableType scratchType = GetVarType() == DATETIME_VAR ? kNUMERIC_VAR : GetVarType();
    if (fLagCount < 1 || !AreBlocksKnown(record, dictionary, transformations)) {
        return ClearScratch(scratchType);
    }
    if (fLagHistory == nullptr) {
        fLagHistory = std::make_unique<veltrane::transform::ValueQueue>();
    }
    const bool sameBlock = AdvanceBlocks(record, dictionary, transformations);
    const ScoreValue* outcome = nullptr;
    if (fLagHistory->Size() == static_cast<std::size_t>(fLagCount)) {
        if (sameBlock && fLagHistory->Oldest() != nullptr) {
            outcome = FillScratch(scratchType, *fLagHistory->Oldest());
        }
        fLagHistory->DropOldest();
    }
    fLagHistory->Append(value);
    return outcome != nullptr ? outcome : ClearScratch(scratchType);
}

} // namespace MCVeltrane_900
