#include "transform/derivation/dictionary_evaluation.h"

#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/CaseRecord.h>

#include <algorithm>
#include <typeinfo>
#include <utility>

using namespace MCVeltrane_900;

namespace veltrane::transform {

const TransformationDictionary* DictionaryEvaluation::DictionaryOf(const ApplyCase& oneCase) {
    const ScoreDictionary* place = oneCase.transformations;
    return place != nullptr && typeid(*place) == typeid(Dictionary) ? static_cast<const Dictionary*>(place)
                                                                    : dynamic_cast<const Dictionary*>(place);
}

int DictionaryEvaluation::StoredPosition(const Dictionary& dictionary, const std::string& name) {
    return dictionary.fDerivedRecord == nullptr ? -1 : dictionary.fDerivedRecord->GetIndex(name);
}

const ScoreValue* DictionaryEvaluation::StoredValue(const Dictionary& dictionary, int position) {
    const ScoreCaseRecord* record = dictionary.fDerivedRecord;
    return record == nullptr ? nullptr : record->Get(position);
}

void DictionaryEvaluation::FindStoredValues(const Dictionary& dictionary, StoredValues& stored) {
    stored.record = dictionary.fDerivedRecord;
    const auto* own = stored.record != nullptr && typeid(*stored.record) == typeid(CaseRecord)
                          ? static_cast<const CaseRecord*>(stored.record)
                          : nullptr;
    stored.values = own == nullptr ? nullptr : &own->GetAllValues();
}

const ScoreValue* DictionaryEvaluation::StoredValue(const Dictionary& dictionary, int index, const std::string& name) {
    const std::vector<std::string>& names = Of(dictionary).storedNames;
    const auto position = static_cast<std::size_t>(index);
    if (index >= 0 && position < names.size() && names[position] == name) {
        return StoredValue(dictionary, index);
    }
    return dictionary.GetVarValue(name);
}

std::vector<DerivedField>& DictionaryEvaluation::Fields() {
    if (fFieldsFound && fFieldsRevision == fDictionary.GetRevision()) {
        return fFields;
    }
    fFields.clear();
    for (const std::string& name : fDictionary.fDerivedVarNames) {
        const ScoreDictVar* var = fDictionary.GetVar(name);
        TransformVar* derived = var == nullptr ? nullptr : AsTransformVar(*var);
        if (derived != nullptr) {
            fFields.push_back({derived, &FieldEvaluation::Of(*derived), &name, StoredPosition(fDictionary, name), -1});
        }
    }
    fFieldsRevision = fDictionary.GetRevision();
    fFieldsFound = true;
    return fFields;
}

void DictionaryEvaluation::SetComputed(const DerivedField& field, bool stored) {
    std::vector<bool>& flags = fDictionary.fComputedFlags;
    if (stored && field.flag >= 0 && static_cast<std::size_t>(field.flag) < flags.size()) {
        flags[static_cast<std::size_t>(field.flag)] = true;
    }
}

ScoreCaseRecord* DictionaryEvaluation::CopyRecord(const ScoreCaseRecord* record) {
    return record == nullptr ? nullptr
                             : KeepRecord(std::make_shared<CaseRecord>(static_cast<const CaseRecord&>(*record)));
}

ScoreCaseRecord* DictionaryEvaluation::KeepRecord(std::shared_ptr<ScoreCaseRecord> record) {
    fRecords.push_back(std::move(record));
    return fRecords.back().get();
}

void DictionaryEvaluation::ShareRecords(const TransformationDictionary& other) {
    for (const auto& record : other.fEvaluation->fRecords) {
        const bool inUse = record.get() == other.fDerivedRecord || record.get() == other.fInitialRecord;
        if (inUse && std::find(fRecords.begin(), fRecords.end(), record) == fRecords.end()) {
            fRecords.push_back(record);
        }
    }
}

} // namespace veltrane::transform
