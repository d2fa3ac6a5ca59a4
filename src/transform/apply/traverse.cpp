#include "transform/apply/apply_node.h"
#include "transform/apply/apply_plan.h"
#include "transform/apply/leaf_tie.h"
#include "transform/derivation/derivation.h"
#include "transform/derivation/values.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <typeinfo>

namespace MCVeltrane_900 {

using TD = TransformationDictionary;
using veltrane::transform::ApplyCase;
using veltrane::transform::ApplyNode;
using veltrane::transform::Derivation;

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
    veltrane::transform::LeafTie::Set(leaf, variable, position);
}

TD::TransformFunction ParentFunction(const FunctionTree& leaf) {
    const FunctionTree* parent = leaf.GetParent();
    return parent != nullptr ? parent->GetNodeStats().GetTransformFunction() : TD::TF_NONE;
}

} // namespace

/// The first case walks the tree and resolves its leaves; from then on a plan of it does the numeric part. Leaves that
/// are reached later give a new plan, and so does a change of the tree. A derived class is walked every time, since the
/// plan doesn't ask for its operations.
const ScoreValue* TransformVar::EvaluateApply(const ApplyCase& oneCase) {
    if (fRoot == nullptr) {
        return nullptr;
    }
    const ScoreValue* value = fPlan != nullptr ? fPlan->Evaluate(*this, oneCase) : nullptr;
    if (value == nullptr) {
        int status = 0;
        value = Traverse(fRoot.get(), oneCase.record, oneCase.dictionary, oneCase.transformations, status);
    }
    if (!fIsPlanned || (fPlan != nullptr && fPlan->IsOutdated())) {
        fIsPlanned = true;
        fPlan = typeid(*this) == typeid(TransformVar) ? veltrane::transform::ApplyPlan::Make(*fRoot) : nullptr;
    }
    return value;
}

const ScoreValue* TransformVar::Traverse(FunctionTree* node, const ScoreCaseRecord* record,
                                         const ScoreDictionary* dictionary, const ScoreDictionary* transformations,
                                         int& status) {
    const ApplyCase oneCase{record, dictionary, transformations};
    if (node->IsLeaf()) {
        return TraverseLeaf(*node, oneCase);
    }
    if (Frames().Depth() >= MAX_DERIVATION_DEPTH) {
        return MissingScratch(GetVarType(), GetWidth());
    }
    return ApplyNode(*this, *node, oneCase, status).Evaluate();
}

const ScoreValue* TransformVar::TraverseLeaf(FunctionTree& leaf, const ApplyCase& oneCase) {
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
        return MissingScratch(GetVarType(), GetWidth());
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

/// What stands for a missing value of a field in the record; null when the value itself does.
const ScoreValue* TransformVar::ReplaceMissingLeaf(const ScoreDictVar& variable, const ScoreValue& value,
                                                   const ApplyNodeStats& stats) {
    const ScoreValue* replacement = stats.GetFieldrefRecodeMissValueRep();
    switch (variable.GetVarType()) {
    case kNUMERIC_VAR:
        NumericScratch().SetDoubleValue(replacement != nullptr ? replacement->GetDouble()
                                                               : NumericValue::GetSysmisValue());
        return fNumericScratch.get();
    case DATETIME_VAR:
        if (replacement == nullptr || value.GetType() != ScoreValue::DATETIME_VALUE) {
            return nullptr;
        }
        SecondDateTimeScratch().SetValue(replacement);
        return fSecondDateTimeScratch.get();
    case STRING_VAR:
        if (replacement == nullptr || value.GetType() != ScoreValue::STRING_VALUE) {
            return nullptr;
        }
        SecondTextScratch().SetLength(variable.GetWidth());
        SecondTextScratch().SetValue(replacement);
        return fSecondTextScratch.get();
    default:
        return nullptr;
    }
}

/// The value of a field that the record does not hold: the derived record's when the field has been computed for this
/// case, its evaluation otherwise, and a missing value for a field that is not derived. The value index tells whether
/// it has been computed, the name which value it is.
const ScoreValue* TransformVar::ReadAbsentField(const ApplyNodeStats& leaf, const ApplyCase& oneCase) {
    const ScoreDictVar& variable = *leaf.GetVariable();
    if (!variable.IsDerivedVariable()) {
        return MissingScratch(variable.GetVarType(), variable.GetWidth());
    }
    const TD* derived = DerivedFields(oneCase);
    const int index = variable.GetValueIndex();
    return derived != nullptr && derived->IsComputed(index) ? derived->StoredValue(index, NameOfField(leaf))
                                                            : EvaluateField(variable, oneCase);
}

/// The value of a derived field that has not been computed for this case.
const ScoreValue* TransformVar::EvaluateField(const ScoreDictVar& variable, const ApplyCase& oneCase) {
    const ScoreValue* value = veltrane::transform::EvaluateDerived(variable, oneCase, 1 + Frames().Depth());
    Derivation& derivation = Derivation::Of(oneCase);
    if (derivation.IsGivenUp()) {
        throw veltrane::transform::GivenUp();
    }
    // Once the derived record has the field's value of the case, that one counts.
    derivation.ReachForTurn();
    return value;
}

/// The dictionary of derived fields, seen through its base; null when it is of another class.
const TD* TransformVar::DerivedFields(const ApplyCase& oneCase) {
    const ScoreDictionary* place = oneCase.transformations;
    return place != nullptr && typeid(*place) == typeid(TD) ? static_cast<const TD*>(place)
                                                            : dynamic_cast<const TD*>(place);
}

/// The name of a leaf's field in the derived record. A leaf can have been given its field without a name.
const std::string& TransformVar::NameOfField(const ApplyNodeStats& leaf) {
    return leaf.GetParameterName().empty() ? leaf.GetVariable()->GetName() : leaf.GetParameterName();
}

const ScoreValue* TransformVar::MissingScratch(VariableType type, int width) {
    switch (type) {
    case kNUMERIC_VAR:
        return ClearScratch(kNUMERIC_VAR);
    case DATETIME_VAR:
        DateTimeScratch().SetDoubleValue(NumericValue::GetSysmisValue());
        return fDateTimeScratch.get();
    default:
        TextScratch().SetString(std::string());
        TextScratch().SetLength(width);
        return fTextScratch.get();
    }
}

veltrane::transform::ApplyFrames& TransformVar::Frames() {
    if (fFrames == nullptr) {
        fFrames = std::make_unique<veltrane::transform::ApplyFrames>();
    }
    return *fFrames;
}

} // namespace MCVeltrane_900
