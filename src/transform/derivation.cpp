#include "transform/derivation.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>

#include <typeinfo>

using namespace MCVeltrane_900;

namespace veltrane::transform {

struct ClearedResult {
    static const ScoreValue* Of(TransformVar& var) { return var.GetClearedResult(); }
};

namespace {

struct NestingCount {
    int depth = 0;
    int evaluations = 0; ///< since the depth was 0
};

thread_local NestingCount tNesting;

} // namespace

NestedEvaluation::NestedEvaluation(bool isField) {
    if (tNesting.depth++ == 0) {
        tNesting.evaluations = 0;
    }
    tNesting.evaluations += isField ? 1 : 0;
}

NestedEvaluation::~NestedEvaluation() {
    --tNesting.depth;
}

bool NestedEvaluation::IsAllowed() const {
    return tNesting.depth <= TransformVar::MAX_DERIVATION_DEPTH &&
           tNesting.evaluations <= TransformVar::MAX_NESTED_EVALUATIONS;
}

const ScoreValue* EvaluateDerived(const ScoreDictVar& var, const ScoreCaseRecord* record,
                                  const ScoreDictionary* dictionary, const ScoreDictionary* transformations) {
    TransformVar* derived = AsTransformVar(var);
    if (derived == nullptr) {
        return nullptr;
    }
    const NestedEvaluation nested(true);
    return nested.IsAllowed() ? derived->GetTransformedValue(record, dictionary, transformations)
                              : ClearedResult::Of(*derived);
}

const ScoreValue* ReadField(const ScoreDictVar& var, const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                            const ScoreDictionary* transformations) {
    if (var.IsDerivedVariable()) {
        return EvaluateDerived(var, record, dictionary, transformations);
    }
    return record == nullptr ? nullptr : record->Get(var.GetName());
}

TransformVar* AsTransformVar(const ScoreDictVar& var) {
    // Evaluation writes into a field, but fields are handed around as const: who refers to one doesn't own it.
    const auto* derived = typeid(var) == typeid(TransformVar) ? static_cast<const TransformVar*>(&var)
                                                              : dynamic_cast<const TransformVar*>(&var);
    return const_cast<TransformVar*>(derived);
}

} // namespace veltrane::transform
