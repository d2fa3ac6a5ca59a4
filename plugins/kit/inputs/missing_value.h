#ifndef VELTRANE_PLUGINS_KIT_MISSING_VALUE_H
#define VELTRANE_PLUGINS_KIT_MISSING_VALUE_H

#include <MCVeltrane_900/ScoreValue.h>

#include <memory>

namespace veltrane_kit {

/// Whether a number is the missing one, or what copying has made of it. A date that is set from a date divides its
/// number by the seconds of a day, a missing one too; no moment in time lies where the first such copies of the missing
/// number do, and each has exactly the number that the divisions give.
bool IsMissingMoment(double seconds);

/// Whether a computed value is missing: null, a system-missing number or date-time, or a copy of a missing date. A text
/// is never missing here.
bool IsMissing(const MCVeltrane_900::ScoreValue* value);

/// A new missing value of a kind: SYSMIS, or the empty text.
std::unique_ptr<MCVeltrane_900::ScoreValue> MakeMissing(MCVeltrane_900::ScoreValue::ValueType kind);

} // namespace veltrane_kit

#endif
