#ifndef VELTRANE_PLUGINS_KIT_HOST_VALUES_H
#define VELTRANE_PLUGINS_KIT_HOST_VALUES_H

#include "kit/values/values.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <memory>

/// Between the values of the kit and those that hosts give and get.
namespace veltrane_kit {

/// The value that a host gives for a field.
/// @param raw of any kind; null for none
/// @return a missing value of the field's type for a missing one, and with `isInvalid` for one that can't be read as
/// the
///         type; its text is borrowed from `raw`
Value FromHost(const MCVeltrane_900::ScoreValue* raw, DataType type);

/// The kind of the values that a host gets for values of a type: texts, booleans as "true" and "false" too; date-times
/// for dates and times; numbers, also for what counts days or seconds.
MCVeltrane_900::ScoreValue::ValueType HostKindOf(DataType type);

/// A date, a time or both as a host gets it.
MCVeltrane_900::DateTimeValue MakeMoment(const Value& value);

/// A value as a host gets it.
/// @return null for a missing one
std::unique_ptr<MCVeltrane_900::ScoreValue> ToHost(const Value& value);

} // namespace veltrane_kit

#endif
