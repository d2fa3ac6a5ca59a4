#include "transform/derivation/derivation.h"
#include "transform/derivation/values.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>

namespace MCVeltrane_900 {

namespace {

constexpr int kRecordCapacity = 10;

/// Adds a value in place of the one that stands under the name already, which the record itself would not delete.
void PutValue(ScoreCaseRecord& record, const std::string& name, std::unique_ptr<ScoreValue> value) {
    record.Remove(name);
    record.Add(name, value.release());
}

} // namespace

TransformationDictionary::TransformationDictionary()
    : fDerivation(std::make_unique<veltrane::transform::Derivation>()) {}

TransformationDictionary::TransformationDictionary(const TransformationDictionary& other)
    : BaseDictionary(other), fComputedFlags(other.fComputedFlags), fDerivedVarNames(other.fDerivedVarNames),
      fSetUp(other.fSetUp), fDerivation(std::make_unique<veltrane::transform::Derivation>()),
      fStoredNames(other.fStoredNames) {
    fDerivedRecord = CopyRecord(other.fDerivedRecord);
    fInitialRecord = CopyRecord(other.fInitialRecord);
}

TransformationDictionary& TransformationDictionary::operator=(const TransformationDictionary& other) {
    if (this == &other) {
        return *this;
    }
    BaseDictionary::operator=(other);
    fComputedFlags = other.fComputedFlags;
    fDerivedVarNames = other.fDerivedVarNames;
    fSetUp = other.fSetUp;
    ShareRecords(other);
    fDerivedRecord = other.fDerivedRecord;
    fInitialRecord = other.fInitialRecord;
    fStoredNames = other.fStoredNames;
    fFieldsFound = false;
    return *this;
}

TransformationDictionary::~TransformationDictionary() = default;

/// A copy of another dictionary's record, kept alive by this one; null for null.
ScoreCaseRecord* TransformationDictionary::CopyRecord(const ScoreCaseRecord* record) {
    return record == nullptr ? nullptr
                             : KeepRecord(std::make_shared<CaseRecord>(static_cast<const CaseRecord&>(*record)));
}

ScoreCaseRecord* TransformationDictionary::KeepRecord(std::shared_ptr<ScoreCaseRecord> record) {
    fRecords.push_back(std::move(record));
    return fRecords.back().get();
}

/// Keeps the records that another dictionary uses now alive for as long as this one lives.
void TransformationDictionary::ShareRecords(const TransformationDictionary& other) {
    for (const auto& record : other.fRecords) {
        const bool inUse = record.get() == other.fDerivedRecord || record.get() == other.fInitialRecord;
        if (inUse && std::find(fRecords.begin(), fRecords.end(), record) == fRecords.end()) {
            fRecords.push_back(record);
        }
    }
}

void TransformationDictionary::AddDerievedVarName(const std::string& name) {
    fDerivedVarNames.push_back(name);
    fFieldsFound = false;
}

std::vector<std::string> TransformationDictionary::GetDerivedVarNames() const {
    return fDerivedVarNames;
}

void TransformationDictionary::SetUpDerivedCaseRecord() {
    if (fSetUp) {
        return;
    }
    fDerivedRecord = KeepRecord(std::make_shared<CaseRecord>(kRecordCapacity));
    fDerivedRecord->SetUpNameIndexMap(GetScoreDictVars());
    fInitialRecord = KeepRecord(std::make_shared<CaseRecord>(kRecordCapacity));
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
    fStoredNames = fDerivedRecord->GetVarNames(true);
    fSetUp = true;
    fFieldsFound = false;
}

void TransformationDictionary::Reset() {
    fComputedFlags.assign(fDerivedVarNames.size(), false);
}

/// Looks up the fields of the derived names and their positions. Names without a derived field are left out.
void TransformationDictionary::FindDerivedFields() {
    if (fFieldsFound && fFieldsRevision == GetRevision()) {
        return;
    }
    fDerivedFields.clear();
    for (const std::string& name : fDerivedVarNames) {
        const ScoreDictVar* var = GetVar(name);
        TransformVar* derived = var == nullptr ? nullptr : veltrane::transform::AsTransformVar(*var);
        if (derived != nullptr) {
            const int position = fDerivedRecord == nullptr ? -1 : fDerivedRecord->GetIndex(name);
            fDerivedFields.push_back({derived, &name, position, -1});
        }
    }
    fFieldsRevision = GetRevision();
    fFieldsFound = true;
}

const ScoreCaseRecord* TransformationDictionary::GetValuesForDerivedVars(const ScoreCaseRecord* record,
                                                                         const ScoreDictionary* dictionary) {
    if (record == nullptr) {
        return fDerivedRecord;
    }
    Reset();
    FindDerivedFields();
    const veltrane::transform::CaseEvaluation evaluation(*fDerivation, {record, dictionary, this});
    for (DerivedField& field : fDerivedFields) {
        field.flag = field.var->GetValueIndex();
        if (!IsComputed(field.flag)) {
            fDerivation->NextTurn();
            AddVarCaseValue(field, field.var->Evaluate(*fDerivation));
        }
    }
    return fDerivedRecord;
}

bool TransformationDictionary::IsVarValueComputed(const ScoreDictVar* var) const {
    return var != nullptr && IsComputed(var->GetValueIndex());
}

const ScoreValue* TransformationDictionary::GetVarValue(const std::string& name) const {
    return fDerivedRecord == nullptr ? nullptr : std::as_const(*fDerivedRecord).Get(name);
}

/// The position of a name in the derived record, which stays for as long as the revision of the variables does; -1 for
/// none so far.
int TransformationDictionary::StoredPosition(const std::string& name) const {
    return fDerivedRecord == nullptr ? -1 : fDerivedRecord->GetIndex(name);
}

const ScoreValue* TransformationDictionary::StoredValue(int position) const {
    return fDerivedRecord == nullptr ? nullptr : std::as_const(*fDerivedRecord).Get(position);
}

/// The value of a field in the derived record, which is read by its name. Its value index, which anyone can set, is
/// where the name is looked for first: positions in the record never change.
const ScoreValue* TransformationDictionary::StoredValue(int index, const std::string& name) const {
    const auto position = static_cast<std::size_t>(index);
    if (index >= 0 && position < fStoredNames.size() && fStoredNames[position] == name) {
        return StoredValue(index);
    }
    return GetVarValue(name);
}

void TransformationDictionary::AddVarCaseValue(const DerivedField& field, const ScoreValue* value) {
    if (value == nullptr) {
        if (fDerivedRecord != nullptr) {
            PutValue(*fDerivedRecord, *field.name, nullptr);
            fFieldsFound = false;
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
        AddVarCaseValue(field, veltrane::transform::TextOf(*value, fText));
    }
}

void TransformationDictionary::AddVarCaseValue(const DerivedField& field, double value) {
    SetComputed(field, fDerivedRecord != nullptr && fDerivedRecord->SetValue(field.position, value));
}

void TransformationDictionary::AddVarCaseValue(const DerivedField& field, double value,
                                               DateTimeValue::DateTimeValType type) {
    SetComputed(field, fDerivedRecord != nullptr &&
                           fDerivedRecord->SetValue(field.position, value, DateTimeValue::GetDateTimeType(type)));
}

void TransformationDictionary::AddVarCaseValue(const DerivedField& field, const std::string& value) {
    SetComputed(field, fDerivedRecord != nullptr && fSetUp && fDerivedRecord->SetValue(field.position, value));
}

void TransformationDictionary::SetComputed(const DerivedField& field, bool stored) {
    if (stored && field.flag >= 0 && static_cast<std::size_t>(field.flag) < fComputedFlags.size()) {
        fComputedFlags[static_cast<std::size_t>(field.flag)] = true;
    }
}

} // namespace MCVeltrane_900
