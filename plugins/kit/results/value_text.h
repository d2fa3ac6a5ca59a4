#ifndef VELTRANE_PLUGINS_KIT_VALUE_TEXT_H
#define VELTRANE_PLUGINS_KIT_VALUE_TEXT_H

#include <MCVeltrane_900/ScoreValue.h>

#include <string>

namespace veltrane_kit {

/// A number as a text, with the fewest digits that read back as the same number: a whole one without a point, and one
/// below 0.0001 or from 1e16 on with an exponent.
std::string NumberText(double number);

/// A value as a text from which the same value is read: a number with all its digits, a date-time as ISO 8601 writes
/// it, a text as it is.
std::string ValueText(const MCVeltrane_900::ScoreValue& value);

} // namespace veltrane_kit

#endif
