#include "kit/functions/moments.h"

#include "kit/values/calendar.h"
#include "kit/values/values.h"

#include <cmath>

namespace veltrane_kit::standard {

namespace {

using veltrane::FunctionCall;

constexpr double kMostYears = 999999999.0;

/// A moment as one of another type without its fraction; not a number where there is none.
double WholeMoment(const Value& value, DataType type) {
    if (!IsMoment(value.type) && !IsCounting(value.type)) {
        return kMissing;
    }
    return std::floor(ConvertMoment(value.number, value.type, type).value_or(kMissing));
}

/// Days from 1970 to the first day of the year that a value tells.
double FirstDay(const Value& value) {
    const double year = std::trunc(NumberOf(value));
    return std::fabs(year) <= kMostYears ? static_cast<double>(DaysOf({static_cast<std::int64_t>(year), 1, 1}))
                                         : kMissing;
}

} // namespace

Value DaysSinceYear(FunctionCall& call) {
    return MakeNumber(WholeMoment(call.arguments[0], DataType::DATE) - FirstDay(call.arguments[1]), DataType::INTEGER);
}

Value SecondsSinceYear(FunctionCall& call) {
    return MakeNumber(WholeMoment(call.arguments[0], DataType::DATE_TIME) - FirstDay(call.arguments[1]) * kSecondsOfDay,
                      DataType::INTEGER);
}

Value SecondsSinceMidnight(FunctionCall& call) {
    return MakeNumber(WholeMoment(call.arguments[0], DataType::TIME), DataType::INTEGER);
}

} // namespace veltrane_kit::standard
