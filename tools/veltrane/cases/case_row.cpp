#include "cases/case_row.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/StringValue.h>

#include <memory>

namespace veltrane::host {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::StringValue;

CaseRow::CaseRow(const MCVeltrane_900::ScoreDictionary& dictionary) : CaseRecord(dictionary.Size()) {
    for (const std::string& name : dictionary.GetVarNames()) {
        AddField(*dictionary.GetVar(name));
    }
}

void CaseRow::AddField(const ScoreDictVar& variable) {
    const Field field{variable.GetName(), variable.GetVarType(), variable.GetDateTimeType(), Size()};
    Slot slot{};
    switch (field.type) {
    case ScoreDictVar::kNUMERIC_VAR:
        slot.number = std::make_unique<NumericValue>().release();
        Add(field.name, slot.number);
        break;
    case ScoreDictVar::STRING_VAR:
        slot.text = std::make_unique<StringValue>("").release();
        Add(field.name, slot.text);
        break;
    case ScoreDictVar::DATETIME_VAR:
        slot.date = std::make_unique<DateTimeValue>().release();
        Add(field.name, slot.date);
        break;
    }
    fSlots.push_back(slot);
    fIsMissingText.push_back(field.type == ScoreDictVar::STRING_VAR);
    fFields.push_back(field);
}

const MCVeltrane_900::ScoreValue* CaseRow::Get(int index) const {
    if (index >= 0 && index < static_cast<int>(fIsMissingText.size()) &&
        fIsMissingText[static_cast<std::size_t>(index)]) {
        return nullptr;
    }
    return CaseRecord::Get(index);
}

void CaseRow::SetNumber(const Field& field, double number) {
    fSlots[static_cast<std::size_t>(field.slot)].number->SetDoubleValue(number);
}

void CaseRow::SetText(const Field& field, std::string_view text) {
    const auto slot = static_cast<std::size_t>(field.slot);
    fText.assign(text);
    fSlots[slot].text->SetString(fText);
    fIsMissingText[slot] = 0;
}

void CaseRow::SetDateNumber(const Field& field, double number) {
    fSlots[static_cast<std::size_t>(field.slot)].date->SetDateTimeValue(number, field.dateTimeType);
}

bool CaseRow::SetDateText(const Field& field, const std::string& text) {
    DateTimeValue& date = *fSlots[static_cast<std::size_t>(field.slot)].date;
    date = DateTimeValue(text, field.dateTimeType);
    return !date.IsSystemMissingValue();
}

void CaseRow::SetMissing(const Field& field) {
    const auto slot = static_cast<std::size_t>(field.slot);
    if (field.type == ScoreDictVar::STRING_VAR) {
        fIsMissingText[slot] = 1;
    } else if (field.type == ScoreDictVar::DATETIME_VAR) {
        fSlots[slot].date->SetDateTimeValue(NumericValue::GetSysmisValue(), DateTimeValue::VAL_DATETIME);
    } else {
        SetMissingValue(field.slot);
    }
}

} // namespace veltrane::host
