#include "kit/functions/moments.h"
#include "kit/functions/texts/bounds.h"
#include "kit/values/calendar.h"
#include "kit/values/values.h"

#include <array>
#include <cmath>
#include <cstdlib>

namespace veltrane_kit::standard {

namespace {

constexpr double kMostSeconds = 1e15;
constexpr int kDaysOfWeek = 7;
constexpr std::array<std::string_view, 12> kMonths{"January",   "February", "March",    "April",
                                                   "May",       "June",     "July",     "August",
                                                   "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays{"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                    "Friday", "Saturday", "Sunday"};
constexpr std::size_t kShort = 3;

/// A moment by the parts that conversions show.
struct Parts {
    Day day;
    int hour;
    int minute;
    int second;
    int dayOfYear; ///< from 0
    int weekday;   ///< from Monday
    std::int64_t weekYear;
    int week; ///< of that year, by ISO 8601
};

Parts PartsOf(double moment) {
    const double days = std::floor(moment / kSecondsOfDay);
    const auto count = static_cast<std::int64_t>(days);
    const auto second = static_cast<int>(moment - days * kSecondsOfDay);
    Parts parts{};
    parts.day = DayOf(count);
    parts.hour = second / 3600;
    parts.minute = second / 60 % 60;
    parts.second = second % 60;
    parts.dayOfYear = static_cast<int>(count - DaysOf({parts.day.year, 1, 1}));
    // 1970-01-01 was a Thursday.
    parts.weekday = static_cast<int>(((count + 3) % kDaysOfWeek + kDaysOfWeek) % kDaysOfWeek);
    // A week belongs to the year of its Thursday.
    const std::int64_t thursday = count - parts.weekday + 3;
    parts.weekYear = DayOf(thursday).year;
    parts.week = static_cast<int>((thursday - DaysOf({parts.weekYear, 1, 1})) / kDaysOfWeek) + 1;
    return parts;
}

std::int64_t YearOfCentury(std::int64_t year) {
    return (year % 100 + 100) % 100;
}

std::int64_t CenturyOf(std::int64_t year) {
    return (year - YearOfCentury(year)) / 100;
}

/// A number as a conversion shows it.
struct Shown {
    std::int64_t number;
    std::size_t width = 2; ///< at least, with the sign
    char fill = '0';
};

void AppendNumber(std::string& text, const Shown& shown) {
    const std::string digits = std::to_string(std::abs(shown.number));
    const std::size_t length = digits.size() + (shown.number < 0 ? 1 : 0);
    text.append(shown.number < 0 ? "-" : "");
    text.append(shown.width > length ? shown.width - length : 0, shown.fill);
    text.append(digits);
}

/// The pattern that a conversion stands for; empty for one that shows something itself.
std::string_view Joined(char conversion) {
    switch (conversion) {
    case 'c':
        return "%a %b %e %H:%M:%S %Y";
    case 'D':
    case 'x':
        return "%m/%d/%y";
    case 'F':
        return "%Y-%m-%d";
    case 'h':
        return "%b";
    case 'r':
        return "%I:%M:%S %p";
    case 'R':
        return "%H:%M";
    case 'T':
    case 'X':
        return "%H:%M:%S";
    default:
        return {};
    }
}

bool AppendWord(std::string& text, char conversion, const Parts& parts) {
    const std::string_view month = kMonths[static_cast<std::size_t>(parts.day.month - 1)];
    const std::string_view weekday = kWeekdays[static_cast<std::size_t>(parts.weekday)];
    switch (conversion) {
    case 'B':
        text += month;
        return true;
    case 'b':
        text += month.substr(0, kShort);
        return true;
    case 'A':
        text += weekday;
        return true;
    case 'a':
        text += weekday.substr(0, kShort);
        return true;
    case 'p':
        text += parts.hour < 12 ? "AM" : "PM";
        return true;
    case 'n':
        text += '\n';
        return true;
    case 't':
        text += '\t';
        return true;
    case '%':
        text += '%';
        return true;
    default:
        return false;
    }
}

std::optional<Shown> ShownTime(char conversion, const Parts& parts) {
    switch (conversion) {
    case 'H':
        return Shown{parts.hour};
    case 'I':
        return Shown{parts.hour % 12 == 0 ? 12 : parts.hour % 12};
    case 'M':
        return Shown{parts.minute};
    case 'S':
        return Shown{parts.second};
    default:
        return std::nullopt;
    }
}

std::optional<Shown> ShownDay(char conversion, const Parts& parts) {
    const int fromSunday = (parts.weekday + 1) % kDaysOfWeek;
    switch (conversion) {
    case 'Y':
        return Shown{parts.day.year, 4};
    case 'y':
        return Shown{YearOfCentury(parts.day.year)};
    case 'C':
        return Shown{CenturyOf(parts.day.year)};
    case 'm':
        return Shown{parts.day.month};
    case 'd':
        return Shown{parts.day.day};
    case 'e':
        return Shown{parts.day.day, 2, ' '};
    case 'j':
        return Shown{parts.dayOfYear + 1, 3};
    case 'u':
        return Shown{parts.weekday + 1, 1};
    case 'w':
        return Shown{fromSunday, 1};
    case 'U':
        return Shown{(parts.dayOfYear + kDaysOfWeek - fromSunday) / kDaysOfWeek};
    case 'W':
        return Shown{(parts.dayOfYear + kDaysOfWeek - parts.weekday) / kDaysOfWeek};
    case 'G':
        return Shown{parts.weekYear, 4};
    case 'g':
        return Shown{YearOfCentury(parts.weekYear)};
    case 'V':
        return Shown{parts.week};
    default:
        return ShownTime(conversion, parts);
    }
}

/// @return false for a conversion that isn't known
bool AppendFormatted(std::string& text, std::string_view pattern, const Parts& parts) {
    for (std::size_t at = 0; at < pattern.size() && text.size() <= kLongestText; ++at) {
        if (pattern[at] != '%' || at + 1 == pattern.size()) {
            text += pattern[at];
            continue;
        }
        ++at;
        // Other forms of the same, which the C locale has none of.
        at += (pattern[at] == 'E' || pattern[at] == 'O') && at + 1 < pattern.size() ? 1 : 0;
        const std::string_view joined = Joined(pattern[at]);
        if (!joined.empty()) {
            AppendFormatted(text, joined, parts);
        } else if (!AppendWord(text, pattern[at], parts)) {
            const std::optional<Shown> shown = ShownDay(pattern[at], parts);
            if (!shown) {
                return false;
            }
            AppendNumber(text, *shown);
        }
    }
    return true;
}

/// Seconds from 1970, or from midnight.
std::optional<double> SecondsOf(const Value& value) {
    if (!IsMoment(value.type) && !IsCounting(value.type)) {
        return std::nullopt;
    }
    const bool isTime = value.type == DataType::TIME || value.type == DataType::TIME_SECONDS;
    return ConvertMoment(value.number, value.type, isTime ? DataType::TIME : DataType::DATE_TIME);
}

} // namespace

Value FormatDatetime(veltrane::FunctionCall& call) {
    const std::optional<double> seconds = SecondsOf(call.arguments[0]);
    if (!seconds || !(std::fabs(*seconds) <= kMostSeconds)) {
        return MakeMissing(DataType::STRING);
    }
    std::string buffer;
    const std::string_view pattern = TextOf(call.arguments[1], buffer);
    call.text.clear();
    if (!AppendFormatted(call.text, pattern, PartsOf(*seconds)) || call.text.size() > kLongestText) {
        return MakeMissing(DataType::STRING);
    }
    return MakeText(call.text);
}

} // namespace veltrane_kit::standard
