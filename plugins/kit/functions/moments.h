#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_MOMENTS_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_MOMENTS_H

#include <veltrane/functions.h>

/// Functions of dates, times and the types that count; whatever else they are given, the result is missing.
namespace veltrane_kit::standard {

// Whole days and seconds from the first moment of a year of at most nine digits.
veltrane::Value DaysSinceYear(veltrane::FunctionCall& call);
veltrane::Value SecondsSinceYear(veltrane::FunctionCall& call);

veltrane::Value SecondsSinceMidnight(veltrane::FunctionCall& call);

/// By the conversions of strftime under the C locale, without those of time zones. One that isn't known, and a moment
/// more than 10 to the power of 15 seconds away from 1970, give a missing result.
veltrane::Value FormatDatetime(veltrane::FunctionCall& call);

} // namespace veltrane_kit::standard

#endif
