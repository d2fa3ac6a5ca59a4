#include "cases/case_row.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <memory>

namespace veltrane::host {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::StringValue;

CaseRow::CaseRow(const MCVeltrane_900::ScoreDictionary& dictionary, const std::vector<std::string>& computed)
    : CaseRecord(dictionary.Size()) {
    for (const std::string& name : dictionary.GetVarNames()) {
        const ScoreDictVar& variable = *dictionary.GetVar(name);
        AddField({variable.GetName(), variable.GetVarType(), variable.GetDateTimeType(), 0});
        if (std::find(computed.begin(), computed.end(), name) != computed.end()) {
            fFields.pop_back();
            fState.back() = State::COMPUTED;
        }
    }
}

CaseRow::CaseRow(const std::vector<Field>& fields) : CaseRecord(static_cast<int>(fields.size())) {
    for (const Field& field : fields) {
        AddField(field);
    }
}

void CaseRow::AddField(Field field) {
    field.slot = Size();
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
    fState.push_back(field.type == ScoreDictVar::STRING_VAR ? State::MISSING_TEXT : State::READ);
    fUnreadable.emplace_back();
    fCounts.emplace_back();
    fComputed.push_back(nullptr);
    fFields.push_back(field);
}

const MCVeltrane_900::ScoreValue* CaseRow::Get(int index) const {
    const auto slot = static_cast<std::size_t>(index);
    if (index >= 0 && slot < fState.size() && fState[slot] != State::READ) {
        return fState[slot] == State::UNREADABLE ? fUnreadable[slot].get()
               : fState[slot] == State::COUNT    ? fCounts[slot].get()
                                                 : Readable(index);
    }
    return CaseRecord::Get(index);
}

const MCVeltrane_900::ScoreValue* CaseRow::Readable(int index) const {
    const auto slot = static_cast<std::size_t>(index);
    if (index < 0 || slot >= fState.size()) {
        return nullptr;
    }
    switch (fState[slot]) {
    case State::MISSING_TEXT:
        return nullptr;
    case State::COMPUTED:
        return fComputed[slot];
    default:
        return CaseRecord::Get(index);
    }
}

void CaseRow::SetComputed(int slot, const MCVeltrane_900::ScoreValue* value) {
    fComputed[static_cast<std::size_t>(slot)] = value;
}

void CaseRow::SetNumber(const Field& field, double number) {
    const auto slot = static_cast<std::size_t>(field.slot);
    fSlots[slot].number->SetDoubleValue(number);
    fState[slot] = State::READ;
}

void CaseRow::SetText(const Field& field, std::string_view text) {
    const auto slot = static_cast<std::size_t>(field.slot);
    fText.assign(text);
    fSlots[slot].text->SetString(fText);
    fState[slot] = State::READ;
}

void CaseRow::SetDateNumber(const Field& field, double number) {
    const auto slot = static_cast<std::size_t>(field.slot);
    DateTimeValue& date = *fSlots[slot].date;
    date.SetDateTimeValue(number, field.dateTimeType);
    fState[slot] = State::READ;
    if (!fKeepsUnreadable || date.GetDoubleValue(field.dateTimeType) == number) {
        return;
    }
    if (fCounts[slot] == nullptr) {
        fCounts[slot] = std::make_unique<NumericValue>();
    }
    fCounts[slot]->SetDoubleValue(number);
    fState[slot] = State::COUNT;
}

bool CaseRow::SetDateText(const Field& field, const std::string& text, double fraction) {
    const auto slot = static_cast<std::size_t>(field.slot);
    DateTimeValue& date = *fSlots[slot].date;
    fState[slot] = State::READ;
    date = DateTimeValue(text, field.dateTimeType);
    if (date.IsSystemMissingValue()) {
        return false;
    }
    if (fraction == 0) {
        return true;
    }
    // So many digits that the nearest number is the end of the day are no time.
    date.SetDateTimeValue(date.GetDouble() + fraction, field.dateTimeType);
    return field.dateTimeType != ScoreDictVar::DT_TIME || date.GetDouble() < DateTimeValue::SECONDS_PER_DAY;
}

void CaseRow::SetMissing(const Field& field) {
    const auto slot = static_cast<std::size_t>(field.slot);
    fState[slot] = State::READ;
    if (field.type == ScoreDictVar::STRING_VAR) {
        fState[slot] = State::MISSING_TEXT;
    } else if (field.type == ScoreDictVar::DATETIME_VAR) {
        fSlots[slot].date->SetDateTimeValue(NumericValue::GetSysmisValue(), DateTimeValue::VAL_DATETIME);
    } else {
        SetMissingValue(field.slot);
    }
}

void CaseRow::SetMissingTexts(const std::map<std::string, std::vector<std::string>>& texts) {
    for (Field& field : fFields) {
        const auto found = texts.find(field.name);
        if (found != texts.end() && field.type != ScoreDictVar::STRING_VAR) {
            field.missingTexts = found->second;
        }
    }
}

void CaseRow::SetUnreadable(const Field& field, std::string_view text) {
    SetMissing(field);
    const auto slot = static_cast<std::size_t>(field.slot);
    if (!fKeepsUnreadable || field.type == ScoreDictVar::STRING_VAR) {
        return;
    }
    if (fUnreadable[slot] == nullptr) {
        fUnreadable[slot] = std::make_unique<StringValue>("");
    }
    fText.assign(text);
    fUnreadable[slot]->SetString(fText);
    fState[slot] = State::UNREADABLE;
}

} // namespace veltrane::host
