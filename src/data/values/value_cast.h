#ifndef VELTRANE_DATA_VALUE_CAST_H
#define VELTRANE_DATA_VALUE_CAST_H

#include "data/values/number_tests.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <string>
#include <type_traits>
#include <typeinfo>

/// From a value to its concrete class. The kind that a value reports tells how it is compared, not which class it is
/// of: a host may bring classes of its own. So As() looks at the object, and what the library writes into a value of an
/// unknown class goes through the value's own SetValue().
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

/// Whether a value is of exactly this class. Nearly always the addresses tell.
template <typename Class>
bool IsPlain(const MCVeltrane_900::ScoreValue& value) {
    const std::type_info& type = typeid(value);
    return &type == &typeid(Class) || type == typeid(Class);
}

/// The value as one of its base classes; null when it isn't derived from that. The library's own class is found
/// without a walk over the class tree.
template <typename Class, typename Value>
auto* As(Value& value) {
    using Result = std::conditional_t<std::is_const_v<Value>, const Class, Class>;
    return IsPlain<Class>(value) ? static_cast<Result*>(&value) : dynamic_cast<Result*>(&value);
}

/// A value that reports DATETIME_VALUE and is a DateTimeValue; null for any other.
inline const MCVeltrane_900::DateTimeValue* FindDateTime(const MCVeltrane_900::ScoreValue& value) {
    if (IsPlain<MCVeltrane_900::DateTimeValue>(value)) {
        return static_cast<const MCVeltrane_900::DateTimeValue*>(&value);
    }
    return IsDateTime(value) ? dynamic_cast<const MCVeltrane_900::DateTimeValue*>(&value) : nullptr;
}

/// Replaces the number of a value that reports NUMERIC_VALUE or DATETIME_VALUE, the stored one where it is ours.
inline void ReplaceNumber(MCVeltrane_900::ScoreValue& value, double number) {
    if (auto* own = As<MCVeltrane_900::NumericValue>(value)) {
        own->SetDoubleValue(number);
    } else if (IsDateTime(value)) {
        const MCVeltrane_900::DateTimeValue source(number, MCVeltrane_900::DateTimeValue::VAL_DATETIME);
        value.SetValue(&source);
    } else {
        const MCVeltrane_900::NumericValue source(number);
        value.SetValue(&source);
    }
}

/// Replaces the text of a value; the stored length of a StringValue stays.
inline void ReplaceText(MCVeltrane_900::ScoreValue& value, const std::string& text) {
    if (auto* own = As<MCVeltrane_900::StringValue>(value)) {
        own->SetString(text);
    } else {
        const MCVeltrane_900::StringValue source(text);
        value.SetValue(&source);
    }
}

/// Replaces the number of a value that reports NUMERIC_VALUE.
/// @return false, and no change, for a value of another kind
inline bool PutNumber(MCVeltrane_900::ScoreValue& value, double number) {
    if (IsPlain<MCVeltrane_900::NumericValue>(value)) {
        static_cast<MCVeltrane_900::NumericValue&>(value).SetDoubleValue(number);
        return true;
    }
    const bool isNumber = IsNumber(value);
    if (isNumber) {
        ReplaceNumber(value, number);
    }
    return isNumber;
}

/// The same of a value that reports STRING_VALUE.
inline bool PutText(MCVeltrane_900::ScoreValue& value, const std::string& text) {
    if (IsPlain<MCVeltrane_900::StringValue>(value)) {
        static_cast<MCVeltrane_900::StringValue&>(value).SetString(text);
        return true;
    }
    const bool isText = IsText(value);
    if (isText) {
        ReplaceText(value, text);
    }
    return isText;
}

/// The same of a value that reports DATETIME_VALUE, by a number of the given storage type.
inline bool PutDateTime(MCVeltrane_900::ScoreValue& value, double number,
                        MCVeltrane_900::ScoreDictVar::DateTimeType type) {
    if (!IsDateTime(value)) {
        return false;
    }
    if (auto* own = As<MCVeltrane_900::DateTimeValue>(value)) {
        own->SetDateTimeValue(number, type);
    } else {
        const MCVeltrane_900::DateTimeValue source(number, type);
        value.SetValue(&source);
    }
    return true;
}

/// Casts without a look at the object, for values that the library made itself.
inline MCVeltrane_900::NumericValue& AsNumber(MCVeltrane_900::ScoreValue& own) {
    return static_cast<MCVeltrane_900::NumericValue&>(own);
}

inline MCVeltrane_900::StringValue& AsText(MCVeltrane_900::ScoreValue& own) {
    return static_cast<MCVeltrane_900::StringValue&>(own);
}

inline MCVeltrane_900::DateTimeValue& AsDateTime(MCVeltrane_900::ScoreValue& own) {
    return static_cast<MCVeltrane_900::DateTimeValue&>(own);
}

/// The text of a plain StringValue, the same as its GetString() without the copy; null for any other class.
inline const std::string* StoredText(const MCVeltrane_900::ScoreValue& value) {
    return IsPlain<MCVeltrane_900::StringValue>(value)
               ? &static_cast<const MCVeltrane_900::StringValue&>(value).GetText()
               : nullptr;
}

} // namespace veltrane::data

#endif
