#include "transform/derivation/field_evaluation.h"

#include "data/values/number_tests.h"
#include "data/values/value_cast.h"
#include "transform/derivation/deferred_fields.h"
#include "transform/derivation/values.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

using namespace MCVeltrane_900;

namespace veltrane::transform {

using TD = TransformationDictionary;
using data::AsDateTime;
using data::AsNumber;
using data::AsText;

namespace {

/// How many levels of fields and of functions within them may stand on the stack above a field that is to stand there
/// too. Fields below wait in a list.
constexpr int kDeepestStack = 250;

/// Takes place on the stack for as long as it lives.
class OnTheStack {
public:
    OnTheStack(Derivation& derivation, int levels) : fDerivation(derivation), fLevels(levels) {
        fDerivation.levels += fLevels;
    }
    ~OnTheStack() { fDerivation.levels -= fLevels; }
    OnTheStack(const OnTheStack&) = delete;
    OnTheStack& operator=(const OnTheStack&) = delete;

private:
    Derivation& fDerivation;
    const int fLevels;
};

/// Marks a field as being evaluated for as long as it lives.
class Evaluating {
public:
    explicit Evaluating(bool& flag) : fFlag(flag) { fFlag = true; }
    ~Evaluating() { fFlag = false; }
    Evaluating(const Evaluating&) = delete;
    Evaluating& operator=(const Evaluating&) = delete;

private:
    bool& fFlag;
};

} // namespace

const ScoreValue* FieldEvaluation::GetConstant() {
    if (fVar.fResult == nullptr) {
        PrepareResult();
        FillConstant();
        FitResultToWidth();
    }
    return fVar.fResult.get();
}

const ScoreValue* FieldEvaluation::Evaluate(Derivation& derivation) {
    if (fVar.fTransExpression == TD::TE_CONSTANT) {
        return GetConstant();
    }
    if (derivation.Holds(computedFor)) {
        if (computedFor != derivation.caseNumber) {
            derivation.ReachForTurn();
        }
        return fVar.fResult.get();
    }
    if (isEvaluating) {
        derivation.ReachUnrepeatable();
        PrepareResult();
        return fVar.fResult.get();
    }
    const Evaluating running(isEvaluating);
    return Attempt(derivation);
}

const ScoreValue* FieldEvaluation::EvaluateNested(Derivation& derivation, int levels) {
    if (fVar.fTransExpression == TD::TE_CONSTANT || isEvaluating || derivation.Holds(computedFor)) {
        return Evaluate(derivation);
    }
    derivation.evaluations = derivation.levels == 0 ? 0 : derivation.evaluations;
    if (derivation.evaluations > TransformVar::MAX_NESTED_EVALUATIONS) {
        derivation.ReachUnrepeatable();
        PrepareResult();
        return fVar.fResult.get();
    }
    if (derivation.deferred != nullptr) {
        return derivation.deferred->Ask(*this);
    }
    const OnTheStack nested(derivation, levels);
    return derivation.levels > kDeepestStack ? DeferredFields(derivation).Evaluate(*this) : Evaluate(derivation);
}

inline void FieldEvaluation::Compute(Derivation& derivation) {
    const ApplyCase oneCase = derivation.oneCase;
    const ScoreValue* source = ReadSource(oneCase.record);
    FindSourceVar(oneCase);
    if (source == nullptr && fVar.fSourceVar != nullptr && fVar.fTransExpression != TD::TE_APPLY &&
        fVar.fSourceVar->IsDerivedVariable()) {
        source = EvaluateDerived(*fVar.fSourceVar, oneCase);
        if (derivation.IsGivenUp()) {
            return;
        }
    }
    if (fVar.fTransExpression == TD::TE_LAG) {
        derivation.ReachUnrepeatable();
    }
    if (fVar.fTransExpression == TD::TE_NORM_CONTINUOUS) {
        StoreNormValue(source);
    } else if (const ScoreValue* value = EvaluateExpression(oneCase, source)) {
        StoreResult(*value);
    }
    FitResultToWidth();
}

const ScoreValue* FieldEvaluation::Attempt(Derivation& derivation) {
    const std::uint64_t reached = derivation.reached;
    PrepareResult();
    Compute(derivation);
    if (derivation.IsGivenUp()) {
        return fVar.fResult.get();
    }
    if (derivation.reached == reached) {
        computedFor = derivation.caseNumber;
    } else if (derivation.reached - reached < Derivation::kUnrepeatable) {
        computedFor = derivation.NumberOfTurn();
    } else {
        ++derivation.evaluations;
    }
    return fVar.fResult.get();
}

/// Clears the result, or makes it. One that can't hold a value of the variable's type, which assignment can bring, is
/// made anew.
void FieldEvaluation::PrepareResult() {
    computedFor = 0;
    const VariableType type = fVar.GetVarType();
    if (fVar.fResult == nullptr || resultHoldsText != HoldsText(type)) {
        fVar.fResult = MissingValueOf(type);
        resultHoldsText = HoldsText(type);
    } else if (resultHoldsText) {
        AsText(*fVar.fResult).SetString(std::string());
    } else {
        AsNumber(*fVar.fResult).SetDoubleValue(data::kMissingNumber);
    }
}

void FieldEvaluation::FillConstant() {
    const VariableType type = fVar.GetVarType();
    if (HoldsText(type)) {
        AsText(*fVar.fResult).SetString(fVar.fConstString);
        return;
    }
    const double number = NumericValue(fVar.fConstString).GetDouble();
    if (type == ScoreDictVar::DATETIME_VAR) {
        AsDateTime(*fVar.fResult).SetDateTimeValue(number, DateTimeValue::GetValType(fVar.GetDateTimeType()));
    } else {
        AsNumber(*fVar.fResult).SetDoubleValue(number);
    }
}

/// The source's value in the record. Its position is looked up until it is found, and then stands.
const ScoreValue* FieldEvaluation::ReadSource(const ScoreCaseRecord* record) {
    if (fVar.fFieldName.empty() || record == nullptr) {
        return nullptr;
    }
    if (fVar.fSourceIndex == -1) {
        fVar.fSourceIndex = record->GetIndex(fVar.fFieldName);
    }
    return fVar.fSourceIndex == -1 ? nullptr : record->Get(fVar.fSourceIndex);
}

/// Looks the source variable up until it is found.
void FieldEvaluation::FindSourceVar(const ApplyCase& oneCase) {
    if (fVar.fFieldName.empty() || HasSourceVar(oneCase)) {
        return;
    }
    fVar.fSourceVar = nullptr;
    const bool inBoth = fVar.fTransExpression != TD::TE_APPLY;
    for (const ScoreDictionary* place : {oneCase.dictionary, inBoth ? oneCase.transformations : nullptr}) {
        if (place == nullptr) {
            continue;
        }
        fVar.fSourceVar = place->GetVar(fVar.fFieldName);
        if (fVar.fSourceVar != nullptr) {
            fSourceDictionary = dynamic_cast<const BaseDictionary*>(place);
            fSourceRevision = fSourceDictionary == nullptr ? 0 : fSourceDictionary->GetRevision();
            return;
        }
    }
}

/// Whether the source variable is known. The dictionary that it came from is asked again when its variables have
/// changed, since this one may be gone.
bool FieldEvaluation::HasSourceVar(const ApplyCase& oneCase) {
    if (fVar.fSourceVar == nullptr) {
        return false;
    }
    const bool isHere = fSourceDictionary != nullptr &&
                        (fSourceDictionary == oneCase.dictionary || fSourceDictionary == oneCase.transformations);
    if (!isHere || fSourceDictionary->GetRevision() == fSourceRevision) {
        return true;
    }
    fSourceRevision = fSourceDictionary->GetRevision();
    return fSourceDictionary->GetVar(fVar.fFieldName) == fVar.fSourceVar;
}

/// The outcome of every kind but continuous normalisation; null leaves the result cleared.
const ScoreValue* FieldEvaluation::EvaluateExpression(const ApplyCase& oneCase, const ScoreValue* source) {
    switch (fVar.fTransExpression) {
    case TD::TE_FIELD_REF:
        return fVar.fRecodeMissValue != nullptr && fVar.fSourceVar != nullptr && fVar.fSourceVar->IsMissingValue(source)
                   ? fVar.fRecodeMissValue.get()
                   : source;
    case TD::TE_NORM_DISCRETE:
        return fVar.GetEncodedValue(fVar.fSourceVar, source);
    case TD::TE_DISCRETIZE:
        return fVar.GetBinningValue(fVar.fSourceVar, source);
    case TD::TE_MAP_VALUES:
        return fVar.GetMappedValue(oneCase.record, oneCase.dictionary, oneCase.transformations, source);
    case TD::TE_APPLY:
        return EvaluateApply(oneCase);
    case TD::TE_LAG:
        return fVar.GetLagValue(oneCase.record, oneCase.dictionary, oneCase.transformations, source);
    default:
        return nullptr;
    }
}

void FieldEvaluation::StoreNormValue(const ScoreValue* source) {
    if (fVar.GetVarType() != ScoreDictVar::kNUMERIC_VAR || fVar.fSourceVar == nullptr) {
        return;
    }
    auto& result = AsNumber(*fVar.fResult);
    if (source != nullptr && !fVar.fSourceVar->IsMissingValue(source)) {
        result.SetDoubleValue(fVar.GetNormValue(source->GetDouble()));
    } else if (fVar.fRecodeMissValue != nullptr) {
        result.SetDoubleValue(fVar.fRecodeMissValue->GetDouble());
    }
}

void FieldEvaluation::StoreResult(const ScoreValue& value) {
    // Types are compared for text results alone: those of two kinds are told apart by their names.
    const std::string* text = resultHoldsText ? data::StoredText(value) : nullptr;
    if (text != nullptr) {
        AsText(*fVar.fResult).SetString(*text);
    } else {
        fVar.fResult->SetValue(&value);
    }
}

/// Cuts a text result to the variable's width and takes the width as its length.
void FieldEvaluation::FitResultToWidth() {
    const int width = resultHoldsText ? fVar.GetWidth() : -1;
    if (width < 0) {
        return;
    }
    auto& text = AsText(*fVar.fResult);
    if (text.GetText().size() > static_cast<std::size_t>(width)) {
        text.SetString(text.GetText().substr(0, static_cast<std::size_t>(width)));
    }
    text.SetLength(width);
}

} // namespace veltrane::transform
