#include "kit/inputs/borrowed_record.h"

#include <MCVeltrane_900/ScoreValue.h>

#include <memory>

namespace veltrane_kit {

using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;

int BorrowedRecord::AddField(const std::string& name) {
    const auto [entry, isNew] = fPositions.try_emplace(name, Size());
    if (isNew) {
        fValues.push_back(nullptr);
    }
    return entry->second;
}

// The values are others', so nothing can be stored: a value that would become the record's ends here.
void BorrowedRecord::Add(const std::string&, ScoreValue* value) {
    delete value;
}
bool BorrowedRecord::SetValue(int, const std::string&) {
    return false;
}
bool BorrowedRecord::SetValue(const std::string&, const std::string&) {
    return false;
}
bool BorrowedRecord::SetValue(int, double, ScoreDictVar::DateTimeType) {
    return false;
}
bool BorrowedRecord::SetValue(const std::string&, double, ScoreDictVar::DateTimeType) {
    return false;
}
bool BorrowedRecord::SetValue(int, double) {
    return false;
}
bool BorrowedRecord::SetValue(const std::string&, double) {
    return false;
}
bool BorrowedRecord::SetMissingValue(int) {
    return false;
}
bool BorrowedRecord::SetMissingValue(const std::string&) {
    return false;
}
void BorrowedRecord::Remove(const std::string&) {}
void BorrowedRecord::SetUpNameIndexMap(const std::vector<std::string>&) {}
void BorrowedRecord::SetUpNameIndexMap(const std::vector<ScoreDictVar*>&) {}

const ScoreValue* BorrowedRecord::Get(int index) const {
    return index >= 0 && index < Size() ? fValues[static_cast<std::size_t>(index)] : nullptr;
}

const ScoreValue* BorrowedRecord::Get(const std::string& name) const {
    return Get(GetIndex(name));
}

bool BorrowedRecord::HasMap() const {
    return true;
}

int BorrowedRecord::GetIndex(const std::string& name) const {
    const auto found = fPositions.find(name);
    return found == fPositions.end() ? -1 : found->second;
}

int BorrowedRecord::Size() const {
    return static_cast<int>(fValues.size());
}

std::vector<std::string> BorrowedRecord::GetVarNames(bool byIndex) const {
    std::vector<std::string> names(fValues.size());
    std::size_t next = 0;
    for (const auto& [name, position] : fPositions) {
        names[byIndex ? static_cast<std::size_t>(position) : next++] = name;
    }
    return names;
}

const std::vector<ScoreValue*>& BorrowedRecord::GetAllValues() const {
    return fValues;
}

void BorrowedRecord::Display(std::ostream& out) const {
    for (const auto& [name, position] : fPositions) {
        const ScoreValue* value = Get(position);
        out << name << ": " << (value == nullptr ? "none" : value->GetString()) << "\n";
    }
}

} // namespace veltrane_kit
