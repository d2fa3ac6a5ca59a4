#include "kit/values/calendar.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace veltrane_kit {

namespace {

enum class Part { DAY, TIME, MOMENT };

/// What a type measures, and how many days its epoch lies from 1970-01-01.
struct Scale {
    Part part;
    double days;
};

constexpr std::int64_t kDaysOfEra = 146097; // 400 years
constexpr double kMostDays = 1e11;
constexpr std::int64_t kMicrosecondsOfSecond = 1'000'000;
constexpr std::int64_t kMicrosecondsOfDay = static_cast<std::int64_t>(kSecondsOfDay) * kMicrosecondsOfSecond;
constexpr std::int64_t kDaysToYear0OfMarch = 719468;

bool IsLeap(std::int64_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int LengthOf(std::int64_t year, int month) {
    constexpr std::array<int, 12> kLengths{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeap(year) ? 29 : kLengths[static_cast<std::size_t>(month - 1)];
}

std::int64_t Floor(std::int64_t a, std::int64_t b) {
    return a / b - (a % b != 0 && (a % b < 0) != (b < 0) ? 1 : 0);
}

Scale ScaleOf(DataType type) {
    constexpr double kYear0 = -719528.0;
    constexpr double kYear1960 = -3653.0;
    constexpr double kYear1980 = 3652.0;
    switch (type) {
    case DataType::DATE:
    case DataType::DATE_DAYS_SINCE_1970:
        return {Part::DAY, 0.0};
    case DataType::DATE_DAYS_SINCE_0:
        return {Part::DAY, kYear0};
    case DataType::DATE_DAYS_SINCE_1960:
        return {Part::DAY, kYear1960};
    case DataType::DATE_DAYS_SINCE_1980:
        return {Part::DAY, kYear1980};
    case DataType::TIME:
    case DataType::TIME_SECONDS:
        return {Part::TIME, 0.0};
    case DataType::DATE_TIME_SECONDS_SINCE_0:
        return {Part::MOMENT, kYear0};
    case DataType::DATE_TIME_SECONDS_SINCE_1960:
        return {Part::MOMENT, kYear1960};
    case DataType::DATE_TIME_SECONDS_SINCE_1980:
        return {Part::MOMENT, kYear1980};
    default:
        return {Part::MOMENT, 0.0};
    }
}

/// Takes digits off the front of a text.
bool TakeNumber(std::string_view& text, std::size_t mostDigits, int& number) {
    std::size_t digits = 0;
    while (digits < text.size() && digits < mostDigits && text[digits] >= '0' && text[digits] <= '9') {
        ++digits;
    }
    if (digits == 0) {
        return false;
    }
    std::from_chars(text.data(), text.data() + digits, number);
    text.remove_prefix(digits);
    return true;
}

bool TakeSign(std::string_view& text, char sign) {
    if (text.empty() || text.front() != sign) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

bool TakeDay(std::string_view& text, double& days) {
    int year = 0;
    Day day{};
    if (!TakeNumber(text, 4, year) || !TakeSign(text, '-') || !TakeNumber(text, 2, day.month) || !TakeSign(text, '-') ||
        !TakeNumber(text, 2, day.day)) {
        return false;
    }
    day.year = year;
    if (day.month < 1 || day.month > 12 || day.day < 1 || day.day > LengthOf(year, day.month)) {
        return false;
    }
    days = static_cast<double>(DaysOf(day));
    return true;
}

/// Takes a point and digits off the front of a text, if it begins with a point.
bool TakeFraction(std::string_view& text, double& fraction) {
    if (text.empty() || text.front() != '.') {
        return true;
    }
    const std::size_t end = std::min(text.find_first_not_of("0123456789", 1), text.size());
    if (end == 1) {
        return false;
    }
    // One without end is too small for a double, and 0 then.
    std::from_chars(text.data(), text.data() + end, fraction, std::chars_format::fixed);
    text.remove_prefix(end);
    return true;
}

/// @param seconds of the midnight before, to which it is added
bool TakeTime(std::string_view& text, double& seconds) {
    int hour = 0;
    int minute = 0;
    int second = 0;
    double fraction = 0.0;
    if (!TakeNumber(text, 2, hour) || !TakeSign(text, ':') || !TakeNumber(text, 2, minute) || !TakeSign(text, ':') ||
        !TakeNumber(text, 2, second) || !TakeFraction(text, fraction) || hour > 23 || minute > 59 || second > 59) {
        return false;
    }
    seconds += hour * 3600.0 + minute * 60.0 + second;
    seconds += fraction;
    return true;
}

void AppendDay(std::string& text, const Day& day) {
    char part[64];
    const int length = std::snprintf(part, sizeof part, "%s%04lld-%02d-%02d", day.year < 0 ? "-" : "",
                                     static_cast<long long>(std::abs(day.year)), day.month, day.day);
    text.append(part, static_cast<std::size_t>(length));
}

void AppendTime(std::string& text, std::int64_t microsecond) {
    const auto second = static_cast<long>(microsecond / kMicrosecondsOfSecond);
    const auto fraction = static_cast<long>(microsecond % kMicrosecondsOfSecond);
    char part[96];
    const int length = std::snprintf(part, sizeof part, "%02ld:%02ld:%02ld.%06ld", second / 3600, second / 60 % 60,
                                     second % 60, fraction);
    const std::string_view digits(part, static_cast<std::size_t>(length));
    const std::size_t last = digits.find_last_not_of('0');
    text.append(digits.substr(0, fraction == 0 ? digits.find('.') : last + 1));
}

/// Seconds from midnight as one of the types of times: a time of day is one, a count of seconds may be any.
std::optional<double> AsTime(double seconds, DataType to) {
    return to != DataType::TIME || IsTimeOfDay(seconds) ? std::optional<double>(seconds) : std::nullopt;
}

} // namespace

bool IsTimeOfDay(double seconds) {
    return seconds >= 0.0 && seconds < kSecondsOfDay;
}

std::int64_t DaysOf(const Day& day) {
    // Years are counted from March, so that the leap day is the last one.
    const std::int64_t year = day.year - (day.month <= 2 ? 1 : 0);
    const std::int64_t era = Floor(year, 400);
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t month = day.month + (day.month > 2 ? -3 : 9);
    const std::int64_t dayOfYear = (153 * month + 2) / 5 + day.day - 1;
    return era * kDaysOfEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - kDaysToYear0OfMarch;
}

Day DayOf(std::int64_t days) {
    days += kDaysToYear0OfMarch;
    const std::int64_t era = Floor(days, kDaysOfEra);
    const std::int64_t dayOfEra = days - era * kDaysOfEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t month = (5 * dayOfYear + 2) / 153;
    const int ofYear = static_cast<int>(month < 10 ? month + 3 : month - 9);
    return {era * 400 + yearOfEra + (ofYear <= 2 ? 1 : 0), ofYear,
            static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1)};
}

std::optional<double> ReadMoment(std::string_view text, DataType type) {
    double days = 0.0;
    double seconds = 0.0;
    if (type != DataType::TIME && !TakeDay(text, days)) {
        return std::nullopt;
    }
    if (type == DataType::DATE_TIME && !TakeSign(text, 'T') && !TakeSign(text, ' ')) {
        return std::nullopt;
    }
    seconds = days * kSecondsOfDay;
    if (type != DataType::DATE && !TakeTime(text, seconds)) {
        return std::nullopt;
    }
    if (!text.empty() || (type == DataType::TIME && !IsTimeOfDay(seconds))) {
        return std::nullopt;
    }
    return type == DataType::DATE ? days : seconds;
}

NearestMicrosecond MicrosecondOf(double seconds) {
    const double day = std::floor(seconds / kSecondsOfDay);
    NearestMicrosecond moment{static_cast<std::int64_t>(day),
                              std::llround((seconds - day * kSecondsOfDay) * kMicrosecondsOfSecond)};
    if (moment.microsecond >= kMicrosecondsOfDay) {
        ++moment.day;
        moment.microsecond -= kMicrosecondsOfDay;
    }
    return moment;
}

std::string WriteMoment(double number, DataType type) {
    // What lies farther away is written as the end of what has a text.
    const double seconds = std::clamp(type == DataType::DATE ? std::floor(number) * kSecondsOfDay : number,
                                      -kMostDays * kSecondsOfDay, kMostDays * kSecondsOfDay);
    NearestMicrosecond moment = MicrosecondOf(seconds);
    if (type == DataType::TIME && moment.day != 0) {
        moment = {0, kMicrosecondsOfDay - 1}; // a time has no other text behind the last microsecond
    }
    std::string text;
    if (type != DataType::TIME) {
        AppendDay(text, DayOf(moment.day));
    }
    if (type != DataType::DATE) {
        text.append(text.empty() ? "" : "T");
        AppendTime(text, moment.microsecond);
    }
    return text;
}

std::optional<double> ConvertMoment(double number, DataType from, DataType to) {
    const Scale source = ScaleOf(from);
    const Scale target = ScaleOf(to);
    if (source.part == Part::DAY) {
        number += source.days;
        switch (target.part) {
        case Part::DAY:
            return number - target.days;
        case Part::MOMENT:
            return number * kSecondsOfDay - target.days * kSecondsOfDay;
        default:
            return std::nullopt;
        }
    }
    if (source.part == Part::TIME) {
        return target.part == Part::TIME ? AsTime(number, to) : std::nullopt;
    }
    number += source.days * kSecondsOfDay;
    switch (target.part) {
    case Part::DAY:
        return std::floor(number / kSecondsOfDay) - target.days;
    case Part::TIME:
        return AsTime(number - std::floor(number / kSecondsOfDay) * kSecondsOfDay, to);
    default:
        return number - target.days * kSecondsOfDay;
    }
}

/// Times are brought to their seconds, of which there may be more than a day has.
void BringTogether(double& left, DataType leftType, double& right, DataType rightType) {
    for (const DataType scale : {DataType::TIME_SECONDS, DataType::DATE_TIME}) {
        const auto first = ConvertMoment(left, leftType, scale);
        const auto second = ConvertMoment(right, rightType, scale);
        if (first && second) {
            left = *first;
            right = *second;
            return;
        }
    }
}

} // namespace veltrane_kit
