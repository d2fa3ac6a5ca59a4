#include "transform/derivation/derivation.h"

#include "transform/derivation/deferred_fields.h"
#include "transform/derivation/dictionary_evaluation.h"
#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>

#include <atomic>
#include <typeinfo>

using namespace MCVeltrane_900;

namespace veltrane::transform {

namespace {

/// How many numbers are taken at a time.
constexpr std::uint64_t kManyNumbers = 1 << 20;

std::atomic<std::uint64_t> gNextNumber = 1;

} // namespace

Derivation& Derivation::Of(const ApplyCase& oneCase) {
    static thread_local constinit Derivation tDerivation;
    const TransformationDictionary* fields = DictionaryEvaluation::DictionaryOf(oneCase);
    return fields != nullptr ? DictionaryEvaluation::Of(*fields).derivation : tDerivation;
}

std::uint64_t Derivation::ReserveNumbers() {
    nextNumber = gNextNumber.fetch_add(kManyNumbers, std::memory_order_relaxed);
    endOfNumbers = nextNumber + kManyNumbers;
    return nextNumber++;
}

bool Derivation::HasGivenUp() const {
    return deferred->IsGivenUp();
}

const ScoreValue* EvaluateDerived(const ScoreDictVar& var, const ApplyCase& oneCase, int levels) {
    TransformVar* derived = AsTransformVar(var);
    if (derived == nullptr) {
        return nullptr;
    }
    Derivation& derivation = Derivation::Of(oneCase);
    FieldEvaluation& field = FieldEvaluation::Of(*derived);
    if (derivation.Runs(oneCase)) {
        return field.EvaluateNested(derivation, levels);
    }
    const CaseEvaluation evaluation(derivation, oneCase);
    return field.EvaluateNested(derivation, levels);
}

const ScoreValue* ReadField(const ScoreDictVar& var, const ApplyCase& oneCase) {
    if (var.IsDerivedVariable()) {
        return EvaluateDerived(var, oneCase);
    }
    return oneCase.record == nullptr ? nullptr : oneCase.record->Get(var.GetName());
}

TransformVar* AsTransformVar(const ScoreDictVar& var) {
    // Evaluation writes into a field, but fields are handed around as const: who refers to one doesn't own it.
    const auto* derived = typeid(var) == typeid(TransformVar) ? static_cast<const TransformVar*>(&var)
                                                              : dynamic_cast<const TransformVar*>(&var);
    return const_cast<TransformVar*>(derived);
}

} // namespace veltrane::transform
