#include "transform/derivation/deferred_fields.h"
#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/FunctionTree.h>
#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/StringValue.h>

namespace MCVeltrane_900 {

namespace {

/// Takes over a new object without deleting the earlier one, which stays with whoever has fetched it.
template <typename T>
void Overwrite(std::unique_ptr<T>& field, T* object) {
    static_cast<void>(field.release());
    field.reset(object);
}

using veltrane::transform::ApplyCase;
using veltrane::transform::CaseEvaluation;
using veltrane::transform::Derivation;
using veltrane::transform::FieldEvaluation;

} // namespace

TransformVar::TransformVar(const std::string& name, VariableType type)
    : DictVar(name, type), fEvaluation(std::make_unique<FieldEvaluation>(*this)) {}

TransformVar::TransformVar(const TransformVar& other)
    : DictVar(other), fResult(other.fResult == nullptr ? nullptr : other.fResult->Clone()),
      fRecodeElseCopy(other.fRecodeElseCopy), fRecodeMissingCopy(other.fRecodeMissingCopy),
      fEvaluation(std::make_unique<FieldEvaluation>(*this)) {
    fEvaluation->CopyExpression(other);
    fEvaluation->resultHoldsText = other.fEvaluation->resultHoldsText;
}

TransformVar& TransformVar::operator=(const TransformVar& other) {
    if (this == &other) {
        return *this;
    }
    DictVar::operator=(other);
    fEvaluation->CopyExpression(other);
    fEvaluation->resultHoldsText = other.GetVarType() != kNUMERIC_VAR;
    if (other.fResult == nullptr) {
        fResult.reset();
    } else if (fEvaluation->resultHoldsText) {
        fResult = std::make_unique<StringValue>(other.fResult->GetString());
    } else {
        fResult = std::make_unique<NumericValue>(other.fResult->GetDouble());
    }
    return *this;
}

TransformVar::~TransformVar() = default;

ScoreDictVar* TransformVar::Clone() const {
    return new TransformVar(*this);
}

bool TransformVar::IsDerivedVariable() const {
    return true;
}

void TransformVar::AddFieldNameAndTransExpression(const std::string& fieldName,
                                                  TransformationDictionary::TransExpression expression) {
    fFieldName = fieldName;
    fTransExpression = expression;
}

void TransformVar::SetRoot(FunctionTree* root) {
    Overwrite(fRoot, root);
    fEvaluation->ForgetPlan();
}

void TransformVar::SetMapValues(MapValues* mapValues) {
    fMapValues.reset(mapValues);
}

void TransformVar::SetLags(int n, std::vector<const ScoreDictVar*> blocks) {
    fLagCount = n;
    fBlockVariables = std::move(blocks);
}

void TransformVar::AddEncodingMap(ScoreValue* key, ScoreValue* encoded) {
    fEncodedValues.emplace_back(key, encoded);
}

void TransformVar::SetRecodeMissValueTo(ScoreValue* value) {
    Overwrite(fRecodeMissValue, value);
    fRecodeMissingCopy = false;
}

void TransformVar::SetRecodeDefaultValue(ScoreValue* value) {
    Overwrite(fRecodeDefaultValue, value);
    fRecodeElseCopy = false;
}

void TransformVar::SetRecodeSysmisValue(ScoreValue* value) {
    Overwrite(fRecodeSysmisValue, value);
}

void TransformVar::SetRecodeIntervalCopy(ScoreValueRange* range) {
    Overwrite(fRecodeIntervalCopy, range);
}

void TransformVar::SetRecodeMissingCopy(bool copy) {
    fRecodeMissingCopy = copy;
    fRecodeMissValue.reset();
}

void TransformVar::SetRecodeElseCopy(bool copy) {
    fRecodeElseCopy = copy;
    fRecodeDefaultValue.reset();
}

const ScoreValue* TransformVar::GetTransformedValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                                    const ScoreDictionary* transformations) {
    if (fTransExpression == TransformationDictionary::TE_CONSTANT) {
        return fEvaluation->GetConstant();
    }
    const ApplyCase oneCase{record, dictionary, transformations};
    Derivation& derivation = Derivation::Of(oneCase);
    // A host can call from within an evaluation, for the same case or for another one. Where fields wait in a list,
    // what it asks for must not get among what the field that is being evaluated asks for.
    if (derivation.Runs(oneCase) && derivation.deferred == nullptr) {
        return fEvaluation->Evaluate(derivation);
    }
    const CaseEvaluation evaluation(derivation, oneCase);
    return fEvaluation->Evaluate(derivation);
}

} // namespace MCVeltrane_900
