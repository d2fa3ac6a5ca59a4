#include "columns/rows/case_row.h"

#include "columns/fields/field_types.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>

#include <cmath>
#include <memory>

namespace veltrane::columns {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;

CaseRow::CaseRow(const std::vector<ColumnField>& fields, bool keepsUnreadable)
    : CaseRecord(static_cast<int>(fields.size())), fFields(fields), fSlots(fields.size()),
      fKeepsUnreadable(keepsUnreadable) {
    for (std::size_t field = 0; field < fields.size(); ++field) {
        Slot& slot = fSlots[field];
        const DataType type = fields[field].type;
        if (type == DataType::STRING) {
            slot.text = std::make_unique<StringValue>("").release();
            Add(fields[field].name, slot.text);
        } else if (IsNumber(type) || type == DataType::BOOLEAN) {
            slot.number = std::make_unique<NumericValue>().release();
            Add(fields[field].name, slot.number);
        } else {
            slot.date = std::make_unique<DateTimeValue>().release();
            Add(fields[field].name, slot.date);
        }
    }
}

const ScoreValue* CaseRow::Get(int index) const {
    const auto field = static_cast<std::size_t>(index);
    return index >= 0 && field < fSlots.size() ? fSlots[field].given : nullptr;
}

void CaseRow::Begin(const InputColumn* columns) {
    fColumns = columns;
    for (Slot& slot : fSlots) {
        slot.nextUnreadable = 0;
    }
}

void CaseRow::Take(std::size_t row) {
    for (std::size_t field = 0; field < fFields.size(); ++field) {
        const InputColumn& column = fColumns[field];
        if (fFields[field].type != DataType::STRING) {
            if (!TakeUnreadable(field, row)) {
                TakeNumber(field, column.numbers == nullptr ? NAN : column.numbers[row]);
            }
        } else if (column.codes != nullptr) {
            const std::int32_t code = column.codes[row];
            TakeText(field, code < 0 ? std::string_view() : column.dictionary[code]);
        } else {
            TakeText(field, column.texts == nullptr ? std::string_view() : column.texts[row]);
        }
    }
}

/// A missing moment is no date: those divide their number by the seconds of a day, and it would not be missing any
/// more.
void CaseRow::TakeNumber(std::size_t field, double number) {
    Slot& slot = fSlots[field];
    if (slot.number != nullptr) {
        slot.number->SetDoubleValue(std::isnan(number) ? NumericValue::GetSysmisValue() : number);
        slot.given = slot.number;
        return;
    }
    slot.given = slot.date;
    if (std::isnan(number)) {
        slot.date->SetDateTimeValue(NumericValue::GetSysmisValue(), DateTimeValue::VAL_DATETIME);
    } else if (fFields[field].type == DataType::DATE) {
        slot.date->SetDateTimeValue(number * kSecondsOfDay, DateTimeValue::VAL_DATE);
    } else {
        slot.date->SetDateTimeValue(number, DateTimeTypeOf(fFields[field].type));
    }
}

void CaseRow::TakeText(std::size_t field, std::string_view text) {
    Slot& slot = fSlots[field];
    slot.given = nullptr;
    if (text.data() != nullptr) {
        fText.assign(text);
        slot.text->SetString(fText);
        slot.text->SetLength(static_cast<int>(text.size()));
        slot.given = slot.text;
    }
}

bool CaseRow::TakeUnreadable(std::size_t field, std::size_t row) {
    Slot& slot = fSlots[field];
    const InputColumn& column = fColumns[field];
    std::size_t& next = slot.nextUnreadable;
    while (next < column.unreadableCount && column.unreadable[next].row < row) {
        ++next;
    }
    if (!fKeepsUnreadable || next >= column.unreadableCount || column.unreadable[next].row != row) {
        return false;
    }
    fText.assign(column.unreadable[next].text);
    slot.unreadable.SetString(fText);
    slot.unreadable.SetLength(static_cast<int>(fText.size()));
    slot.given = &slot.unreadable;
    return true;
}

} // namespace veltrane::columns
