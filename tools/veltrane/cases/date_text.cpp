#include "cases/date_text.h"

#include "files/csv_writer.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <kit/values/calendar.h>

namespace veltrane::host {
namespace {

constexpr std::string_view kDatePattern = "yyyy-dd-dd";
constexpr std::string_view kTimePattern = "dd:dd:ddf";
constexpr std::string_view kDateTimePattern = "yyyy-dd-ddTdd:dd:ddf";

constexpr std::int64_t kMicrosecond = 1'000'000;
constexpr std::int64_t kFirstDay = -719528;     ///< 0000-01-01
constexpr std::int64_t kDays = 2932897;         ///< 10000-01-01, the first that is too late
constexpr double kFirstSecond = -62167219200.0; ///< 0000-01-01T00:00:00
constexpr double kLastSecond = 253402300800.0;  ///< 10000-01-01T00:00:00, the first that is too late

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsFraction(std::string_view text) {
    return text.size() > 1 && text.front() == '.' && std::all_of(text.begin() + 1, text.end(), IsDigit);
}

/// A run of y or d in the pattern stands for one to that many digits, T for itself or a blank, f at its end for a
/// fraction or nothing, anything else for itself.
bool Matches(std::string_view text, std::string_view pattern) {
    while (!pattern.empty()) {
        const char letter = pattern.front();
        if (letter == 'f') {
            return text.empty() || IsFraction(text);
        }
        if (letter != 'y' && letter != 'd') {
            if (!text.starts_with(letter) && !(letter == 'T' && text.starts_with(' '))) {
                return false;
            }
            text.remove_prefix(1);
            pattern.remove_prefix(1);
            continue;
        }
        if (text.empty() || !IsDigit(text.front())) {
            return false;
        }
        for (; pattern.starts_with(letter); pattern.remove_prefix(1)) {
            if (!text.empty() && IsDigit(text.front())) {
                text.remove_prefix(1);
            }
        }
    }
    return text.empty();
}

/// Appends a number with leading zeros up to the width.
void AppendDigits(std::string& text, std::int64_t number, int width) {
    const std::size_t start = text.size();
    text.resize(start + static_cast<std::size_t>(width));
    for (std::size_t at = text.size(); at > start; number /= 10) {
        text[--at] = static_cast<char>('0' + number % 10);
    }
}

void AppendDay(std::string& text, std::int64_t day) {
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day}}};
    AppendDigits(text, static_cast<int>(date.year()), 4);
    text.push_back('-');
    AppendDigits(text, static_cast<unsigned>(date.month()), 2);
    text.push_back('-');
    AppendDigits(text, static_cast<unsigned>(date.day()), 2);
}

void AppendTime(std::string& text, std::int64_t second, std::int64_t microsecond) {
    AppendDigits(text, second / MCVeltrane_900::DateTimeValue::SECONDS_PER_HOUR, 2);
    text.push_back(':');
    AppendDigits(text, second / 60 % 60, 2);
    text.push_back(':');
    AppendDigits(text, second % 60, 2);
    if (microsecond == 0) {
        return;
    }
    text.push_back('.');
    AppendDigits(text, microsecond, 6);
    text.erase(text.find_last_not_of('0') + 1);
}

} // namespace

bool HasDateForm(std::string_view text, DateForm form) {
    switch (form) {
    case DateForm::DATE:
        return Matches(text, kDatePattern);
    case DateForm::TIME:
        return Matches(text, kTimePattern);
    case DateForm::DATE_TIME:
        return Matches(text, kDateTimePattern);
    }
    return false;
}

void AppendDate(std::string& text, double seconds, DateForm form) {
    const bool time = form == DateForm::TIME;
    const bool isNear = seconds > kFirstSecond - 1 && seconds < kLastSecond;
    const auto moment = isNear ? veltrane_kit::MicrosecondOf(seconds) : veltrane_kit::NearestMicrosecond{kDays, 0};
    if (moment.day < (time ? 0 : kFirstDay) || moment.day >= (time ? 1 : kDays)) {
        AppendNumber(text, seconds);
        return;
    }
    if (!time) {
        AppendDay(text, moment.day);
    }
    if (form == DateForm::DATE_TIME) {
        text.push_back('T');
    }
    if (form != DateForm::DATE) {
        AppendTime(text, moment.microsecond / kMicrosecond, moment.microsecond % kMicrosecond);
    }
}

} // namespace veltrane::host
