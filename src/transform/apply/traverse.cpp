#include "transform/apply/apply_node.h"
#include "transform/apply/apply_plan.h"
#include "transform/apply/leaf_tie.h"
#include "transform/derivation/dictionary_evaluation.h"
#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <typeinfo>

using namespace MCVeltrane_900;

namespace veltrane::transform {

using TD = TransformationDictionary;

namespace {

/// Gives a text the width of its field as its length. That writes into the very object of the record, or of another
/// field: `length` and `concat` read it from there.
const ScoreValue* FitLength(const ScoreValue* value, const ScoreDictVar& variable) {
    if (value == nullptr || variable.GetVarType() != ScoreDictVar::STRING_VAR ||
        value->GetType() != ScoreValue::STRING_VALUE) {
        return value;
    }
    const auto* text = typeid(*value) == typeid(StringValue) ? static_cast<const StringValue*>(value)
                                                             : dynamic_cast<const StringValue*>(value);
    if (text != nullptr) {
        const_cast<StringValue*>(text)->SetLength(variable.GetWidth());
    }
    return value;
}

/// Finds the field of a leaf on its first use, and leaves what was found in the leaf.
void Resolve(FunctionTree& leaf, const ApplyCase& oneCase) {
    const std::string& name = leaf.GetNodeStats().GetParameterName();
    const ScoreDictVar* variable = oneCase.dictionary != nullptr ? oneCase.dictionary->GetVar(name) : nullptr;
    if (variable == nullptr && oneCase.transformations != nullptr) {
        variable = oneCase.transformations->GetVar(name);
    }
    const int position = oneCase.record != nullptr ? oneCase.record->GetIndex(name) : -1;
    LeafTie::Set(leaf, variable, position);
}

TD::TransformFunction ParentFunction(const FunctionTree& leaf) {
    const FunctionTree* parent = leaf.GetParent();
    return parent != nullptr ? parent->GetNodeStats().GetTransformFunction() : TD::TF_NONE;
}

} // namespace

/// The first case walks the tree and resolves its leaves; from then on a plan of it does the numeric part. Leaves that
/// are reached later give a new plan, and so does a change of the tree. A derived class is walked every time, since the
/// plan doesn't ask for its operations.
const ScoreValue* FieldEvaluation::EvaluateApply(const ApplyCase& oneCase) {
    if (fVar.fRoot == nullptr) {
        return nullptr;
    }
    const ScoreValue* value = fPlan != nullptr ? fPlan->Evaluate(fVar, oneCase) : nullptr;
    if (value == nullptr) {
        int status = 0;
        value = Traverse(*fVar.fRoot, oneCase, status);
    }
    if (!fIsPlanned || (fPlan != nullptr && fPlan->IsOutdated())) {
        fIsPlanned = true;
        fPlan = typeid(fVar) == typeid(TransformVar) ? ApplyPlan::Make(*fVar.fRoot) : nullptr;
    }
    return value;
}

const ScoreValue* FieldEvaluation::TraverseLeaf(FunctionTree& leaf, const ApplyCase& oneCase) {
    if (leaf.GetNodeStats().IsConstNode()) {
        return leaf.GetNodeStats().GetValue();
    }
    if (leaf.GetNodeStats().GetVariable() == nullptr) {
        Resolve(leaf, oneCase);
    }
    const ApplyNodeStats& stats = leaf.GetNodeStats();
    const ScoreDictVar* variable = stats.GetVariable();
    if (variable == nullptr) {
        // A function without arguments, or a field that nobody knows.
        return MissingScratch(fVar.GetVarType(), fVar.GetWidth());
    }
    const ScoreValue* value =
        stats.GetVarIndex() >= 0 && oneCase.record != nullptr ? oneCase.record->Get(stats.GetVarIndex()) : nullptr;
    if (value == nullptr) {
        return FitLength(ReadAbsentField(stats, oneCase), *variable);
    }
    const TD::TransformFunction parent = ParentFunction(leaf);
    if (parent != TD::TF_VALUE && parent != TD::TF_SYSMIS && variable->IsMissingValue(value)) {
        if (const ScoreValue* replaced = ReplaceMissingLeaf(*variable, *value, stats)) {
            return replaced;
        }
    }
    return FitLength(value, *variable);
}

/// The value of a field that the record does not hold: the derived record's when the field has been computed for this
/// case, its evaluation otherwise, and a missing value for a field that is not derived. The value index tells whether
/// it has been computed, the name which value it is.
const ScoreValue* FieldEvaluation::ReadAbsentField(const ApplyNodeStats& leaf, const ApplyCase& oneCase) {
    const ScoreDictVar& variable = *leaf.GetVariable();
    if (!variable.IsDerivedVariable()) {
        return MissingScratch(variable.GetVarType(), variable.GetWidth());
    }
    const TD* derived = DictionaryEvaluation::DictionaryOf(oneCase);
    const int index = variable.GetValueIndex();
    return derived != nullptr && DictionaryEvaluation::IsComputed(*derived, index)
               ? DictionaryEvaluation::StoredValue(*derived, index, NameOfField(leaf))
               : EvaluateField(variable, oneCase);
}

const ScoreValue* FieldEvaluation::EvaluateField(const ScoreDictVar& variable, const ApplyCase& oneCase) {
    const ScoreValue* value = EvaluateDerived(variable, oneCase, 1 + Frames().Depth());
    Derivation& derivation = Derivation::Of(oneCase);
    if (derivation.IsGivenUp()) {
        throw GivenUp();
    }
    // Once the derived record has the field's value of the case, that one counts.
    derivation.ReachForTurn();
    return value;
}

const std::string& FieldEvaluation::NameOfField(const ApplyNodeStats& leaf) {
    return leaf.GetParameterName().empty() ? leaf.GetVariable()->GetName() : leaf.GetParameterName();
}

ApplyFrames& FieldEvaluation::Frames() {
    if (fFrames == nullptr) {
        fFrames = std::make_unique<ApplyFrames>();
    }
    return *fFrames;
}

} // namespace veltrane::transform

namespace MCVeltrane_900 {

const ScoreValue* TransformVar::Traverse(FunctionTree* node, const ScoreCaseRecord* record,
                                         const ScoreDictionary* dictionary, const ScoreDictionary* transformations,
                                         int& status) {
    const veltrane::transform::ApplyCase oneCase{record, dictionary, transformations};
    if (node->IsLeaf()) {
        return fEvaluation->TraverseLeaf(*node, oneCase);
    }
    if (fEvaluation->Frames().Depth() >= MAX_DERIVATION_DEPTH) {
        return fEvaluation->MissingScratch(GetVarType(), GetWidth());
    }
    return veltrane::transform::ApplyNode(*this, *node, oneCase, status).Evaluate();
}

} // namespace MCVeltrane_900
