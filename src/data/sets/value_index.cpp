#include "data/sets/value_index.h"

namespace veltrane::data {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;

bool AgreesWithIndex(const ScoreValue& value) {
    return IsPlain<NumericValue>(value) || IsPlain<StringValue>(value) || IsPlain<DateTimeValue>(value);
}

template <typename Change>
bool ValueIndex::ChangeKey(const ScoreValue& value, Change change) {
    if (IsPlain<NumericValue>(value)) {
        const double number = value.GetDouble();
        if (std::isnan(number)) { // equal to nothing, and no key
            fHoldsNaN = true;
        } else {
            change(fNumbers, number);
        }
    } else if (IsPlain<DateTimeValue>(value)) {
        const Moment moment = MomentOf(static_cast<const DateTimeValue&>(value));
        if (std::isnan(moment.seconds)) {
            fHoldsNaN = true;
        } else {
            change(fDateTimes, moment);
        }
    } else if (IsPlain<StringValue>(value)) {
        change(fTexts, SeenText(ValueText(value).View()));
    } else {
        return false;
    }
    return true;
}

void ValueIndex::Add(int place, const ScoreValue* value) {
    const auto add = [place](auto& places, const auto& key) { places.Add(key, place); };
    if (value && !ChangeKey(*value, add)) {
        AddOther(place);
    }
}

void ValueIndex::Remove(int place, const ScoreValue* value) {
    const auto remove = [place](auto& places, const auto& key) { places.Remove(key, place); };
    if (value && !ChangeKey(*value, remove)) {
        RemoveOther(place);
    }
}

} // namespace veltrane::data
