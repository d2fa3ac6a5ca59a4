#include "transform/derivation/dictionary_evaluation.h"

#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/CaseRecord.h>

#include <algorithm>
#include <typeinfo>
#include <utility>

using namespace MCVeltrane_900;

namespace veltrane::transform {

DictionaryEvaluation* DictionaryEvaluation::Of(const ApplyCase& oneCase) {
    const ScoreDictionary* place = oneCase.transformations;
    const auto* dictionary = place != nullptr && typeid(*place) == typeid(Dictionary)
                                 ? static_cast<const Dictionary*>(place)
                                 : dynamic_cast<const Dictionary*>(place);
    return dictionary == nullptr ? nullptr : &Of(*dictionary);
}

int DictionaryEvaluation::StoredPosition(const std::string& name) const {
    return fDictionary.fDerivedRecord == nullptr ? -1 : fDictionary.fDerivedRecord->GetIndex(name);
}

const ScoreValue* DictionaryEvaluation::StoredValue(int position) const {
    const ScoreCaseRecord* record = fDictionary.fDerivedRecord;
    return record == nullptr ? nullptr : record->Get(position);
}

const ScoreValue* DictionaryEvaluation::StoredValue(int index, const std::string& name) const {
    const auto position = static_cast<std::size_t>(index);
    if (index >= 0 && position < storedNames.size() && storedNames[position] == name) {
        return StoredValue(index);
    }
    return fDictionary.GetVarValue(name);
}

std::vector<DerivedField>& DictionaryEvaluation::Fields() {
    if (fFieldsFound && fFieldsRevision == Revision()) {
        return fFields;
    }
    fFields.clear();
    for (const std::string& name : fDictionary.fDerivedVarNames) {
        const ScoreDictVar* var = fDictionary.GetVar(name);
        TransformVar* derived = var == nullptr ? nullptr : AsTransformVar(*var);
        if (derived != nullptr) {
            fFields.push_back({derived, &FieldEvaluation::Of(*derived), &name, StoredPosition(name), -1});
        }
    }
    fFieldsRevision = Revision();
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
