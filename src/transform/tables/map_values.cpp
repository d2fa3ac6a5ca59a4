#include "transform/derivation/derivation.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/TransformVar.h>

namespace MCVeltrane_900 {

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
    if (fTable != nullptr) {
        return EvaluateTable(record, dictionary, transformations);
    }
    switch (fInputFields.size()) {
    case 0:
        return fMapMissingValue != nullptr ? fMapMissingValue.get() : fDefaultValue.get();
    case 1:
        return EvaluateSingleField(record, dictionary, transformations);
    default:
        return nullptr;
    }
}

const ScoreValue* MapValues::EvaluateTable(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                           const ScoreDictionary* transformations) {
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

const ScoreValue* MapValues::EvaluateSingleField(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                                 const ScoreDictionary* transformations) const {
    const ScoreDictVar* field = fInputFields.front();
    if (field == nullptr) {
        return fMapMissingValue.get();
    }
    const bool byPosition = record != nullptr && !field->IsDerivedVariable() && field->GetValueIndex() >= 0;
    const ScoreValue* value = byPosition ? record->Get(field->GetValueIndex())
                                         : veltrane::transform::ReadField(*field, record, dictionary, transformations);
    return value == nullptr || field->IsMissingValue(value) ? fMapMissingValue.get() : value;
}

} // namespace MCVeltrane_900
