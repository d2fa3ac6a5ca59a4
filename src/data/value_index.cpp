#include "data/value_index.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <typeinfo>

namespace veltrane::data {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::StringValue;

bool AgreesWithIndex(const MCVeltrane_900::ScoreValue& value) {
    const std::type_info& type = typeid(value);
    return type == typeid(NumericValue) || type == typeid(StringValue) || type == typeid(DateTimeValue);
}

void ValueIndex::Add(int position, const MCVeltrane_900::ScoreValue* value) {
    if (!value) {
        return;
    }
    const std::type_info& type = typeid(*value);
    if (type == typeid(NumericValue)) {
        fHoldsNumbers = true;
        const double number = value->GetDouble();
        if (!std::isnan(number)) { // equal to nothing, and no key
            fNumbers.emplace(number, position);
        }
    } else if (type == typeid(DateTimeValue)) {
        fHoldsNumbers = true;
        const double seconds = SecondsOf(static_cast<const DateTimeValue&>(*value));
        if (!std::isnan(seconds)) {
            fDateTimes.emplace(seconds, position);
        }
    } else if (type == typeid(StringValue)) {
        fTexts.emplace(Key(ValueText(*value).View()), position);
    } else {
        AddOther(position);
    }
}

} // namespace veltrane::data
