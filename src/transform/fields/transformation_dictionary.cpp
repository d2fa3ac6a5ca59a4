#include "transform/derivation/dictionary_evaluation.h"
#include "transform/derivation/field_evaluation.h"
#include "transform/derivation/values.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>

namespace MCVeltrane_900 {

namespace {

using veltrane::transform::CaseEvaluation;
using veltrane::transform::Derivation;
using veltrane::transform::DerivedField;
using veltrane::transform::DictionaryEvaluation;
using veltrane::transform::TextOf;

constexpr int kRecordCapacity = 10;

/// Adds a value in place of the one that stands under the name already, which the record itself would not delete.
void PutValue(ScoreCaseRecord& record, const std::string& name, std::unique_ptr<ScoreValue> value) {
    record.Remove(name);
    record.Add(name, value.release());
}

} // namespace

TransformationDictionary::TransformationDictionary() : fEvaluation(std::make_unique<DictionaryEvaluation>(*this)) {}

TransformationDictionary::TransformationDictionary(const TransformationDictionary& other)
    : BaseDictionary(other), fComputedFlags(other.fComputedFlags), fDerivedVarNames(other.fDerivedVarNames),
      fSetUp(other.fSetUp), fEvaluation(std::make_unique<DictionaryEvaluation>(*this)) {
    fEvaluation->storedNames = other.fEvaluation->storedNames;
    fDerivedRecord = fEvaluation->CopyRecord(other.fDerivedRecord);
    fInitialRecord = fEvaluation->CopyRecord(other.fInitialRecord);
}

TransformationDictionary& TransformationDictionary::operator=(const TransformationDictionary& other) {
    if (this == &other) {
        return *this;
    }
    BaseDictionary::operator=(other);
    fComputedFlags = other.fComputedFlags;
    fDerivedVarNames = other.fDerivedVarNames;
    fSetUp = other.fSetUp;
    fEvaluation->ShareRecords(other);
    fDerivedRecord = other.fDerivedRecord;
    fInitialRecord = other.fInitialRecord;
    fEvaluation->storedNames = other.fEvaluation->storedNames;
    fEvaluation->ForgetFields();
    return *this;
}

TransformationDictionary::~TransformationDictionary() = default;

void TransformationDictionary::AddDerievedVarName(const std::string& name) {
    fDerivedVarNames.push_back(name);
    fEvaluation->ForgetFields();
}

std::vector<std::string> TransformationDictionary::GetDerivedVarNames() const {
    return fDerivedVarNames;
}

void TransformationDictionary::SetUpDerivedCaseRecord() {
    if (fSetUp) {
        return;
    }
    fDerivedRecord = fEvaluation->KeepRecord(std::make_shared<CaseRecord>(kRecordCapacity));
    fDerivedRecord->SetUpNameIndexMap(GetScoreDictVars());
    fInitialRecord = fEvaluation->KeepRecord(std::make_shared<CaseRecord>(kRecordCapacity));
    Reset();
    for (const std::string& name : fDerivedVarNames) {
        ScoreDictVar* var = GetVar(name);
        if (var == nullptr) {
            continue;
        }
        auto value = veltrane::transform::MissingValueOf(var->GetVarType());
        PutValue(*fInitialRecord, name, std::unique_ptr<ScoreValue>(value->Clone()));
        PutValue(*fDerivedRecord, name, std::move(value));
        var->SetValueIndex(fDerivedRecord->GetIndex(name));
    }
    fEvaluation->storedNames = fDerivedRecord->GetVarNames(true);
    fSetUp = true;
    fEvaluation->ForgetFields();
}

void TransformationDictionary::Reset() {
    fComputedFlags.assign(fDerivedVarNames.size(), false);
}

const ScoreCaseRecord* TransformationDictionary::GetValuesForDerivedVars(const ScoreCaseRecord* record,
                                                                         const ScoreDictionary* dictionary) {
    if (record == nullptr) {
        return fDerivedRecord;
    }
    Reset();
    std::vector<DerivedField>& fields = fEvaluation->Fields();
    Derivation& derivation = fEvaluation->derivation;
    const CaseEvaluation evaluation(derivation, {record, dictionary, this});
    for (DerivedField& field : fields) {
        field.flag = field.var->GetValueIndex();
        if (!DictionaryEvaluation::IsComputed(*this, field.flag)) {
            derivation.NextTurn();
            AddVarCaseValue(field, field.evaluation->Evaluate(derivation));
        }
    }
    return fDerivedRecord;
}

bool TransformationDictionary::IsVarValueComputed(const ScoreDictVar* var) const {
    return var != nullptr && DictionaryEvaluation::IsComputed(*this, var->GetValueIndex());
}

const ScoreValue* TransformationDictionary::GetVarValue(const std::string& name) const {
    return fDerivedRecord == nullptr ? nullptr : std::as_const(*fDerivedRecord).Get(name);
}

void TransformationDictionary::AddVarCaseValue(const DerivedField& field, const ScoreValue* value) {
    if (value == nullptr) {
        if (fDerivedRecord != nullptr) {
            PutValue(*fDerivedRecord, *field.name, nullptr);
            fEvaluation->ForgetFields();
        }
        return;
    }
    switch (value->GetType()) {
    case ScoreValue::NUMERIC_VALUE:
        AddVarCaseValue(field, value->GetDouble());
        break;
    case ScoreValue::DATETIME_VALUE:
        AddVarCaseValue(field, value->GetDouble(), static_cast<const DateTimeValue*>(value)->GetDateTimeType());
        break;
    default:
        AddVarCaseValue(field, TextOf(*value, fEvaluation->text));
    }
}

void TransformationDictionary::AddVarCaseValue(const DerivedField& field, double value) {
    fEvaluation->SetComputed(field, fDerivedRecord != nullptr && fDerivedRecord->SetValue(field.position, value));
}

void TransformationDictionary::AddVarCaseValue(const DerivedField& field, double value,
                                               DateTimeValue::DateTimeValType type) {
    fEvaluation->SetComputed(field,
                             fDerivedRecord != nullptr &&
                                 fDerivedRecord->SetValue(field.position, value, DateTimeValue::GetDateTimeType(type)));
}

void TransformationDictionary::AddVarCaseValue(const DerivedField& field, const std::string& value) {
    fEvaluation->SetComputed(field,
                             fDerivedRecord != nullptr && fSetUp && fDerivedRecord->SetValue(field.position, value));
}

} // namespace MCVeltrane_900
