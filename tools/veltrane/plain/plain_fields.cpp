#include "plain/plain_fields.h"

#include "cases/case_row.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <kit/document/field_references.h>
#include <kit/inputs/missing_value.h>
#include <kit/values/values.h>

namespace veltrane::host {

using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;

namespace {

/// A boolean is a text in a case, and to the library a number.
double NumberOf(const ScoreValue& text) {
    using namespace veltrane_kit;
    const std::string word = text.GetString();
    const Value truth = ReadValue(word, DataType::BOOLEAN);
    return truth.isMissing ? NumericValue::GetSysmisValue() : truth.number;
}

} // namespace

/// The case as the library reads it: the fields in the order of its dictionary, and a cell that can't be read is
/// missing.
class PlainFields::Case : public MCVeltrane_900::CaseRecord {
public:
    Case(const MCVeltrane_900::ScoreDictionary& fields, const CaseRow& row) : CaseRecord(fields.Size()), fRow(row) {
        for (const std::string& name : fields.GetVarNames()) {
            auto number = std::make_unique<NumericValue>();
            fSlots.push_back({row.GetIndex(name), fields.GetVar(name)->GetVarType(), number.get()});
            Add(name, number.release());
        }
    }

    const ScoreValue* Get(int index) const override {
        if (index < 0 || static_cast<std::size_t>(index) >= fSlots.size()) {
            return nullptr;
        }
        const Slot& slot = fSlots[static_cast<std::size_t>(index)];
        const ScoreValue* value = slot.place < 0 ? nullptr : fRow.Readable(slot.place);
        if (slot.type != ScoreDictVar::kNUMERIC_VAR || (value != nullptr && !IsText(*value))) {
            return value;
        }
        slot.number->SetDoubleValue(value == nullptr ? NumericValue::GetSysmisValue() : NumberOf(*value));
        return slot.number;
    }

    const ScoreValue* Get(const std::string& name) const override { return Get(GetIndex(name)); }

private:
    struct Slot {
        int place; ///< in the row; -1 where it has no such field
        ScoreDictVar::VariableType type;
        NumericValue* number; ///< of a boolean
    };

    static bool IsText(const ScoreValue& value) { return value.GetType() == ScoreValue::STRING_VALUE; }

    const CaseRow& fRow;
    std::vector<Slot> fSlots;
};

PlainFields::PlainFields(const MCVeltrane_900::ScoreDictionary& fields,
                         MCVeltrane_900::TransformationDictionary& derivedFields, const std::vector<std::string>& names,
                         CaseRow& row)
    : fFields(fields), fDerivedFields(derivedFields), fRow(row), fCase(std::make_unique<Case>(fields, row)) {
    for (const std::string& name : names) {
        const ScoreDictVar* variable = derivedFields.GetVar(name);
        const int slot = row.GetIndex(name); // none where a plug-in leaves the field out of its dictionary
        if (variable != nullptr && slot >= 0) {
            fWanted.push_back({slot, variable->GetValueIndex()});
        }
    }
}

PlainFields::~PlainFields() = default;

std::vector<std::string> PlainFields::CaseFieldsOf(const std::vector<std::string>& names) const {
    return veltrane_kit::CaseFieldsOf(names, fDerivedFields);
}

void PlainFields::Compute() {
    const MCVeltrane_900::ScoreCaseRecord& values = *fDerivedFields.GetValuesForDerivedVars(fCase.get(), &fFields);
    for (const Wanted& wanted : fWanted) {
        const ScoreValue* value = values.Get(wanted.position);
        fRow.SetComputed(wanted.slot, veltrane_kit::IsMissing(value) ? nullptr : value);
    }
}

} // namespace veltrane::host
