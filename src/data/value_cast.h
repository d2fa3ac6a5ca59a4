#ifndef VELTRANE_DATA_VALUE_CAST_H
#define VELTRANE_DATA_VALUE_CAST_H

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <string>
#include <typeinfo>

/// From a value to its concrete class, by the type that it reports. A value that reports NUMERIC_VALUE is a
/// NumericValue, one that reports DATETIME_VALUE a DateTimeValue (and thus a NumericValue too), and one that reports
/// STRING_VALUE a StringValue.
namespace veltrane::data {

inline bool IsNumber(const MCVeltrane_900::ScoreValue& value) {
    return value.GetType() == MCVeltrane_900::ScoreValue::NUMERIC_VALUE;
}

inline bool IsText(const MCVeltrane_900::ScoreValue& value) {
    return value.GetType() == MCVeltrane_900::ScoreValue::STRING_VALUE;
}

inline bool IsDateTime(const MCVeltrane_900::ScoreValue& value) {
    return value.GetType() == MCVeltrane_900::ScoreValue::DATETIME_VALUE;
}

/// For a value of type NUMERIC_VALUE or DATETIME_VALUE.
inline MCVeltrane_900::NumericValue& AsNumber(MCVeltrane_900::ScoreValue& value) {
    return static_cast<MCVeltrane_900::NumericValue&>(value);
}

/// For a value of type STRING_VALUE.
inline MCVeltrane_900::StringValue& AsText(MCVeltrane_900::ScoreValue& value) {
    return static_cast<MCVeltrane_900::StringValue&>(value);
}

/// For a value of type DATETIME_VALUE.
inline MCVeltrane_900::DateTimeValue& AsDateTime(MCVeltrane_900::ScoreValue& value) {
    return static_cast<MCVeltrane_900::DateTimeValue&>(value);
}

/// The number of a plain NumericValue, the same as its GetDouble() without the call.
struct StoredNumber {
    static double Of(const MCVeltrane_900::NumericValue& value) { return value.fValue; }
};

/// The text of a plain StringValue, the same as its GetString() without the copy; null for any other class.
inline const std::string* StoredText(const MCVeltrane_900::ScoreValue& value) {
    return typeid(value) == typeid(MCVeltrane_900::StringValue)
               ? &static_cast<const MCVeltrane_900::StringValue&>(value).GetText()
               : nullptr;
}

} // namespace veltrane::data

#endif
