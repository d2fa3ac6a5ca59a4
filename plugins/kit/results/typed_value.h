#ifndef VELTRANE_PLUGINS_KIT_TYPED_VALUE_H
#define VELTRANE_PLUGINS_KIT_TYPED_VALUE_H

#include "kit/values/values.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <string>

/// The library's values as typed ones and back.
namespace veltrane_kit {

/// The text of a value without a copy where it is a StringValue, else through `buffer`.
const std::string& TextOf(const MCVeltrane_900::ScoreValue& value, std::string& buffer);

/// A number is a double, a date-time a date, a time or both, and an empty text is missing.
/// @param buffer keeps the text of a value that is no StringValue
Value TypedValue(const MCVeltrane_900::ScoreValue& value, std::string& buffer);

/// The kind of the library's values for a type.
/// @param natural the kind of a value before it is cast; a boolean stays a text where that is one
MCVeltrane_900::ScoreValue::ValueType KindOf(DataType type, MCVeltrane_900::ScoreValue::ValueType natural);

/// The library's storage type of a type; DT_NONE but for dates, times and both.
MCVeltrane_900::ScoreDictVar::DateTimeType DateTimeTypeOf(DataType type);

} // namespace veltrane_kit

#endif
