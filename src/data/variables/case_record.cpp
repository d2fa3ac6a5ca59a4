#include "data/values/value_cast.h"

#include <MCVeltrane_900/CaseRecord.h>

#include <algorithm>

namespace MCVeltrane_900 {

using veltrane::data::IsDateTime;
using veltrane::data::IsNumber;
using veltrane::data::PutDateTime;
using veltrane::data::PutNumber;
using veltrane::data::PutText;

namespace {

bool HasIndex(const OwnedVector<ScoreValue>& values, int index) {
    return index >= 0 && index < values.Size();
}

} // namespace

CaseRecord::CaseRecord(int capacity) {
    fValues.Items().reserve(std::max(capacity, 0));
}
CaseRecord::CaseRecord(const CaseRecord& other) = default;
CaseRecord& CaseRecord::operator=(const CaseRecord& other) = default;
CaseRecord::~CaseRecord() = default;

void CaseRecord::Add(const std::string& name, ScoreValue* value) {
    const auto [entry, isNew] = fNameIndexMap.try_emplace(name, fValues.Size());
    if (isNew) {
        fValues.Items().push_back(value);
    } else {
        fValues.Items()[entry->second] = value;
    }
}

bool CaseRecord::SetValue(int index, const std::string& text) {
    if (!HasIndex(fValues, index)) {
        return false;
    }
    ScoreValue*& slot = fValues.Items()[index];
    if (!slot) {
        slot = new StringValue(text);
        return true;
    }
    return PutText(*slot, text);
}

bool CaseRecord::SetValue(int index, double value, ScoreDictVar::DateTimeType type) {
    if (!HasIndex(fValues, index)) {
        return false;
    }
    ScoreValue*& slot = fValues.Items()[index];
    if (!slot) {
        slot = new DateTimeValue(value, type);
        return true;
    }
    return PutDateTime(*slot, value, type);
}

bool CaseRecord::SetValue(int index, double value) {
    if (!HasIndex(fValues, index)) {
        return false;
    }
    ScoreValue*& slot = fValues.Items()[index];
    if (!slot) {
        slot = new NumericValue(value);
        return true;
    }
    return PutNumber(*slot, value);
}

bool CaseRecord::SetValue(const std::string& name, const std::string& text) {
    return SetValue(GetIndex(name), text);
}
bool CaseRecord::SetValue(const std::string& name, double value) {
    return SetValue(GetIndex(name), value);
}

bool CaseRecord::SetValue(const std::string& name, double value, ScoreDictVar::DateTimeType type) {
    return SetValue(GetIndex(name), value, type);
}

bool CaseRecord::SetMissingValue(int index) {
    if (!HasIndex(fValues, index) || !fValues.Items()[index]) {
        return false;
    }
    ScoreValue& value = *fValues.Items()[index];
    if (IsNumber(value) || IsDateTime(value)) {
        veltrane::data::ReplaceNumber(value, NumericValue::GetSysmisValue());
    } else {
        veltrane::data::ReplaceText(value, std::string());
    }
    return true;
}

bool CaseRecord::SetMissingValue(const std::string& name) {
    return SetMissingValue(GetIndex(name));
}

void CaseRecord::Remove(const std::string& name) {
    const auto found = fNameIndexMap.find(name);
    if (found != fNameIndexMap.end()) {
        ScoreValue*& slot = fValues.Items()[found->second];
        delete slot;
        slot = nullptr;
    }
}

const ScoreValue* CaseRecord::Get(int index) const {
    return HasIndex(fValues, index) ? fValues.Items()[index] : nullptr;
}
const ScoreValue* CaseRecord::Get(const std::string& name) const {
    return Get(GetIndex(name));
}

// Both only make room: positions are given out by Add, in the order in which values come.
void CaseRecord::SetUpNameIndexMap(const std::vector<std::string>& names) {
    fValues.Items().reserve(names.size());
}
void CaseRecord::SetUpNameIndexMap(const std::vector<ScoreDictVar*>& vars) {
    fValues.Items().reserve(vars.size());
}

bool CaseRecord::HasMap() const {
    return true;
}

int CaseRecord::GetIndex(const std::string& name) const {
    const auto found = fNameIndexMap.find(name);
    return found == fNameIndexMap.end() ? -1 : found->second;
}

int CaseRecord::Size() const {
    return fValues.Size();
}

std::vector<std::string> CaseRecord::GetVarNames(bool byIndex) const {
    std::vector<std::string> names(fValues.Items().size());
    int next = 0;
    for (const auto& [name, position] : fNameIndexMap) {
        const int index = byIndex ? position : next++;
        if (HasIndex(fValues, index)) {
            names[index] = name;
        }
    }
    return names;
}

const std::vector<ScoreValue*>& CaseRecord::GetAllValues() const {
    return fValues.Items();
}

void CaseRecord::Display(std::ostream& out) const {
    out << "Start ScoreCaseRecord Display:\n";
    for (const auto& [name, position] : fNameIndexMap) {
        out << "Var Name: " << name;
        if (const ScoreValue* value = Get(position)) {
            out << "; Var Value: " << value->GetString();
        }
        out << "\n";
    }
    out << "End of ScoreCaseRecord Display.\n\n";
}

} // namespace MCVeltrane_900
