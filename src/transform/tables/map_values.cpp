#include "transform/derivation/derivation.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/TransformVar.h>

namespace MCVeltrane_900 {

namespace {

/// The value of a field, or what stands for a missing one.
const ScoreValue* ValueOrMissing(const ScoreDictVar* field, const veltrane::transform::ApplyCase& oneCase,
                                 const ScoreValue* missing) {
    if (field == nullptr) {
        return missing;
    }
    const bool byPosition = oneCase.record != nullptr && !field->IsDerivedVariable() && field->GetValueIndex() >= 0;
    const ScoreValue* value =
        byPosition ? oneCase.record->Get(field->GetValueIndex()) : veltrane::transform::ReadField(*field, oneCase);
    return value == nullptr || field->IsMissingValue(value) ? missing : value;
}

} // namespace

MapValues::MapValues(TransformVar* owner) : fOwner(owner) {}

MapValues::~MapValues() = default;

void MapValues::SetMapMissingValue(ScoreValue* value) {
    fMapMissingValue.reset(value);
}

void MapValues::SetDefaultValue(ScoreValue* value) {
    fDefaultValue.reset(value);
}

void MapValues::SetTable(InlineTable* table) {
    static_cast<void>(fTable.release());
    fTable.reset(table);
}

void MapValues::AddFieldColumnPair(const std::string& fieldName, const std::string& column) {
    fColumnFields.emplace(column, fieldName);
}

void MapValues::AddInputField(const ScoreDictVar* field) {
    fInputFields.push_back(field);
}

const ScoreValue* MapValues::Evaluate(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                      const ScoreDictionary* transformations) {
    if (fTable == nullptr) {
        switch (fInputFields.size()) {
        case 0:
            return fMapMissingValue != nullptr ? fMapMissingValue.get() : fDefaultValue.get();
        case 1:
            return ValueOrMissing(fInputFields.front(), {record, dictionary, transformations}, fMapMissingValue.get());
        default:
            return nullptr;
        }
    }
    const ScoreValue* output = fTable->getValue(record, dictionary, transformations, fColumnFields);
    switch (fTable->GetInfoCode()) {
    case InlineTable::OK:
        return output;
    case InlineTable::InputMissing:
        return fMapMissingValue.get();
    case InlineTable::NoMatches:
        break;
    default:
        return nullptr;
    }
    if (fOwner == nullptr || !fOwner->IsRecodeElseCopy()) {
        return fDefaultValue.get();
    }
    const bool readable = record != nullptr && !fColumnFields.empty();
    return readable ? record->Get(fColumnFields.begin()->second) : nullptr;
}

} // namespace MCVeltrane_900
