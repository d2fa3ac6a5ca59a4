#include "data/values/number_tests.h"
#include "data/values/value_cast.h"
#include "transform/apply/apply_node.h"
#include "transform/derivation/deferred_fields.h"
#include "transform/derivation/value_queue.h"
#include "transform/derivation/values.h"

#include <MCVeltrane_900/FunctionTree.h>
#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformVar.h>

namespace MCVeltrane_900 {

namespace {

using TD = TransformationDictionary;
using veltrane::data::AsDateTime;
using veltrane::data::AsNumber;
using veltrane::data::AsText;
using veltrane::data::StoredText;
using veltrane::transform::ApplyCase;
using veltrane::transform::CaseEvaluation;
using veltrane::transform::DeferredFields;
using veltrane::transform::Derivation;
using veltrane::transform::HoldsText;

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

const ScoreValue* TransformVar::GetTransformedValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                                    const ScoreDictionary* transformations) {
    if (fTransExpression == TD::TE_CONSTANT) {
        return GetConstant();
    }
    const ApplyCase oneCase{record, dictionary, transformations};
    Derivation& derivation = Derivation::Of(oneCase);
    // A host can call from within an evaluation, for the same case or for another one. Where fields wait in a list,
    // what it asks for must not get among what the field that is being evaluated asks for.
    if (derivation.Runs(oneCase) && derivation.deferred == nullptr) {
        return Evaluate(derivation);
    }
    const CaseEvaluation evaluation(derivation, oneCase);
    return Evaluate(derivation);
}

const ScoreValue* TransformVar::GetConstant() {
    if (fResult == nullptr) {
        PrepareResult();
        FillConstant();
        FitResultToWidth();
    }
    return fResult.get();
}

/// The value for the case that is being evaluated: kept from an earlier evaluation, or computed.
const ScoreValue* TransformVar::Evaluate(Derivation& derivation) {
    if (fTransExpression == TD::TE_CONSTANT) {
        return GetConstant();
    }
    if (derivation.Holds(fComputedFor)) {
        if (fComputedFor != derivation.caseNumber) {
            derivation.ReachForTurn();
        }
        return fResult.get();
    }
    if (fEvaluating) {
        derivation.ReachUnrepeatable();
        PrepareResult();
        return fResult.get();
    }
    const Evaluating evaluating(fEvaluating);
    return Attempt(derivation);
}

/// The value as another field needs it. What leads nowhere further is never denied.
/// @param levels of the stack between the two
const ScoreValue* TransformVar::EvaluateNested(Derivation& derivation, int levels) {
    if (fTransExpression == TD::TE_CONSTANT || fEvaluating || derivation.Holds(fComputedFor)) {
        return Evaluate(derivation);
    }
    derivation.evaluations = derivation.levels == 0 ? 0 : derivation.evaluations;
    if (derivation.evaluations > MAX_NESTED_EVALUATIONS) {
        derivation.ReachUnrepeatable();
        PrepareResult();
        return fResult.get();
    }
    if (derivation.deferred != nullptr) {
        return derivation.deferred->Ask(*this);
    }
    const OnTheStack nested(derivation, levels);
    return derivation.levels > kDeepestStack ? DeferredFields(derivation).Evaluate(*this) : Evaluate(derivation);
}

inline void TransformVar::Compute(Derivation& derivation) {
    const ApplyCase oneCase = derivation.oneCase;
    const ScoreValue* source = ReadSource(oneCase.record);
    FindSourceVar(oneCase.dictionary, oneCase.transformations);
    if (source == nullptr && fSourceVar != nullptr && fTransExpression != TD::TE_APPLY &&
        fSourceVar->IsDerivedVariable()) {
        source = veltrane::transform::EvaluateDerived(*fSourceVar, oneCase);
        if (derivation.IsGivenUp()) {
            return;
        }
    }
    if (fTransExpression == TD::TE_LAG) {
        derivation.ReachUnrepeatable();
    }
    if (fTransExpression == TD::TE_NORM_CONTINUOUS) {
        StoreNormValue(source);
    } else if (const ScoreValue* value =
                   EvaluateExpression(oneCase.record, oneCase.dictionary, oneCase.transformations, source)) {
        StoreResult(*value);
    }
    FitResultToWidth();
}

/// Computes the result. It holds for the rest of the case, or of the turn, unless something was reached that another
/// evaluation would not repeat.
const ScoreValue* TransformVar::Attempt(Derivation& derivation) {
    const std::uint64_t reached = derivation.reached;
    PrepareResult();
    Compute(derivation);
    if (derivation.IsGivenUp()) {
        return fResult.get();
    }
    if (derivation.reached == reached) {
        fComputedFor = derivation.caseNumber;
    } else if (derivation.reached - reached < Derivation::kUnrepeatable) {
        fComputedFor = derivation.NumberOfTurn();
    } else {
        ++derivation.evaluations;
    }
    return fResult.get();
}

/// Clears the result, or makes it. One that can't hold a value of the variable's type, which assignment can bring, is
/// made anew.
void TransformVar::PrepareResult() {
    fComputedFor = 0;
    const VariableType type = GetVarType();
    if (fResult == nullptr || fResultHoldsText != HoldsText(type)) {
        fResult = veltrane::transform::MissingValueOf(type);
        fResultHoldsText = HoldsText(type);
    } else if (fResultHoldsText) {
        AsText(*fResult).SetString(std::string());
    } else {
        AsNumber(*fResult).SetDoubleValue(veltrane::data::kMissingNumber);
    }
}

void TransformVar::FillConstant() {
    const VariableType type = GetVarType();
    if (HoldsText(type)) {
        AsText(*fResult).SetString(fConstString);
        return;
    }
    const double number = NumericValue(fConstString).GetDouble();
    if (type == DATETIME_VAR) {
        AsDateTime(*fResult).SetDateTimeValue(number, DateTimeValue::GetValType(GetDateTimeType()));
    } else {
        AsNumber(*fResult).SetDoubleValue(number);
    }
}

/// The source's value in the record. Its position is looked up until it is found, and then stands.
const ScoreValue* TransformVar::ReadSource(const ScoreCaseRecord* record) {
    if (fFieldName.empty() || record == nullptr) {
        return nullptr;
    }
    if (fSourceIndex == -1) {
        fSourceIndex = record->GetIndex(fFieldName);
    }
    return fSourceIndex == -1 ? nullptr : record->Get(fSourceIndex);
}

/// Looks the source variable up until it is found.
void TransformVar::FindSourceVar(const ScoreDictionary* dictionary, const ScoreDictionary* transformations) {
    if (fFieldName.empty() || HasSourceVar(dictionary, transformations)) {
        return;
    }
    fSourceVar = nullptr;
    const bool inBoth = fTransExpression != TD::TE_APPLY;
    for (const ScoreDictionary* place : {dictionary, inBoth ? transformations : nullptr}) {
        if (place == nullptr) {
            continue;
        }
        fSourceVar = place->GetVar(fFieldName);
        if (fSourceVar != nullptr) {
            fSourceDictionary = dynamic_cast<const BaseDictionary*>(place);
            fSourceRevision = fSourceDictionary == nullptr ? 0 : fSourceDictionary->GetRevision();
            return;
        }
    }
}

/// Whether the source variable is known. The dictionary that it came from is asked again when its variables have
/// changed, since this one may be gone.
bool TransformVar::HasSourceVar(const ScoreDictionary* dictionary, const ScoreDictionary* transformations) {
    if (fSourceVar == nullptr) {
        return false;
    }
    const bool isHere =
        fSourceDictionary != nullptr && (fSourceDictionary == dictionary || fSourceDictionary == transformations);
    if (!isHere || fSourceDictionary->GetRevision() == fSourceRevision) {
        return true;
    }
    fSourceRevision = fSourceDictionary->GetRevision();
    return fSourceDictionary->GetVar(fFieldName) == fSourceVar;
}

/// The outcome of every kind but continuous normalisation; null leaves the result cleared.
const ScoreValue* TransformVar::EvaluateExpression(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                                   const ScoreDictionary* transformations, const ScoreValue* source) {
    switch (fTransExpression) {
    case TD::TE_FIELD_REF:
        return fRecodeMissValue != nullptr && fSourceVar != nullptr && fSourceVar->IsMissingValue(source)
                   ? fRecodeMissValue.get()
                   : source;
    case TD::TE_NORM_DISCRETE:
        return GetEncodedValue(fSourceVar, source);
    case TD::TE_DISCRETIZE:
        return GetBinningValue(fSourceVar, source);
    case TD::TE_MAP_VALUES:
        return GetMappedValue(record, dictionary, transformations, source);
    case TD::TE_APPLY:
        return EvaluateApply({record, dictionary, transformations});
    case TD::TE_LAG:
        return GetLagValue(record, dictionary, transformations, source);
    default:
        return nullptr;
    }
}

void TransformVar::StoreNormValue(const ScoreValue* source) {
    if (GetVarType() != kNUMERIC_VAR || fSourceVar == nullptr) {
        return;
    }
    auto& result = AsNumber(*fResult);
    if (source != nullptr && !fSourceVar->IsMissingValue(source)) {
        result.SetDoubleValue(GetNormValue(source->GetDouble()));
    } else if (fRecodeMissValue != nullptr) {
        result.SetDoubleValue(fRecodeMissValue->GetDouble());
    }
}

void TransformVar::StoreResult(const ScoreValue& value) {
    // Types are compared for text results alone: those of two kinds are told apart by their names.
    const std::string* text = fResultHoldsText ? StoredText(value) : nullptr;
    if (text != nullptr) {
        AsText(*fResult).SetString(*text);
    } else {
        fResult->SetValue(&value);
    }
}

/// Cuts a text result to the variable's width and takes the width as its length.
void TransformVar::FitResultToWidth() {
    const int width = fResultHoldsText ? GetWidth() : -1;
    if (width < 0) {
        return;
    }
    auto& text = AsText(*fResult);
    if (text.GetText().size() > static_cast<std::size_t>(width)) {
        text.SetString(text.GetText().substr(0, static_cast<std::size_t>(width)));
    }
    text.SetLength(width);
}

/// The scratch value of a type, made missing.
const ScoreValue* TransformVar::ClearScratch(VariableType ownType) {
    if (ownType == kNUMERIC_VAR) {
        NumericScratch().SetDoubleValue(NumericValue::GetSysmisValue());
        return fNumericScratch.get();
    }
    TextScratch().SetString(std::string());
    return fTextScratch.get();
}

/// Makes a value the content of the scratch value of a type.
const ScoreValue* TransformVar::FillScratch(VariableType ownType, const ScoreValue& value) {
    if (ownType == kNUMERIC_VAR) {
        NumericScratch().SetDoubleValue(value.GetDouble());
        return fNumericScratch.get();
    }
    std::string buffer;
    TextScratch().SetString(veltrane::transform::TextOf(value, buffer));
    return fTextScratch.get();
}

NumericValue& TransformVar::NumericScratch() {
    if (fNumericScratch == nullptr) {
        fNumericScratch = std::make_unique<NumericValue>();
    }
    return *fNumericScratch;
}

StringValue& TransformVar::TextScratch() {
    if (fTextScratch == nullptr) {
        fTextScratch = std::make_unique<StringValue>("");
    }
    return *fTextScratch;
}

DateTimeValue& TransformVar::DateTimeScratch() {
    if (fDateTimeScratch == nullptr) {
        fDateTimeScratch = std::make_unique<DateTimeValue>();
    }
    return *fDateTimeScratch;
}

StringValue& TransformVar::SecondTextScratch() {
    if (fSecondTextScratch == nullptr) {
        fSecondTextScratch = std::make_unique<StringValue>("");
    }
    return *fSecondTextScratch;
}

DateTimeValue& TransformVar::SecondDateTimeScratch() {
    if (fSecondDateTimeScratch == nullptr) {
        fSecondDateTimeScratch = std::make_unique<DateTimeValue>();
    }
    return *fSecondDateTimeScratch;
}

} // namespace MCVeltrane_900
