#include "data/values/number_text.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <algorithm>

/// The textual forms of dates, times and plain numbers. The parsers are lenient in ways that documents rely on; the
/// suite KeptDateTimeText pins them.
namespace MCVeltrane_900 {

namespace {

using Position = std::string_view::size_type;

constexpr long long kNotRead = -1;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// First and last position of a character, -1 when it is absent. Positions are 32-bit numbers.
struct Occurrence {
    int first;
    int last;
};

Occurrence Find(std::string_view text, char c) {
    return {static_cast<int>(text.find(c)), static_cast<int>(text.rfind(c))};
}

/// What decides whether a text is a plain decimal number: where its special characters stand.
struct NumberShape {
    explicit NumberShape(std::string_view text)
        : size(static_cast<int>(text.size())), lower(Find(text, 'e')), upper(Find(text, 'E')), minus(Find(text, '-')),
          plus(Find(text, '+')), point(Find(text, '.')) {}

    bool HasExponent() const { return lower.first != -1 || upper.first != -1; }

    int size;
    Occurrence lower, upper, minus, plus, point;
};

bool ExponentFits(const NumberShape& shape, const Occurrence& mark) {
    if (mark.first == 0 || mark.first == shape.size - 1) {
        return false;
    }
    return mark.first < 0 || mark.first == mark.last;
}

bool SignFits(const NumberShape& shape, const Occurrence& sign) {
    if (!shape.HasExponent() && sign.first != -1 && (sign.first != 0 || sign.last != 0)) {
        return false;
    }
    if (sign.last == shape.size - 1) {
        return false;
    }
    return sign.last <= 0 || sign.last == shape.lower.first + 1 || sign.last == shape.upper.first + 1;
}

bool PointFits(const NumberShape& shape) {
    if (shape.point.first != shape.point.last || shape.point.last == shape.size - 1) {
        return false;
    }
    for (const int exponent : {shape.lower.first, shape.upper.first}) {
        if (exponent > 0 && (shape.point.last > exponent || shape.point.last == exponent - 1)) {
            return false;
        }
    }
    return true;
}

bool IsPlainNumber(std::string_view text) {
    if (text.empty()) {
        return false;
    }
    const NumberShape shape(text);
    if (!ExponentFits(shape, shape.lower) || !ExponentFits(shape, shape.upper)) {
        return false;
    }
    if (shape.upper.first > 0 && shape.lower.first > 0) {
        return false;
    }
    if (!SignFits(shape, shape.minus) || !SignFits(shape, shape.plus)) {
        return false;
    }
    if (!shape.HasExponent() && shape.minus.first != -1 && shape.plus.first != -1) {
        return false;
    }
    if (!PointFits(shape)) {
        return false;
    }
    return std::all_of(text.begin(), text.end(), [](char c) {
        return IsDigit(c) || std::string_view(".eE-+").find(c) != std::string_view::npos;
    });
}

/// The three numbers of a date or a time, in their order in the text. Each starts unread.
struct Triple {
    long long part[3] = {kNotRead, kNotRead, kNotRead};

    /// Stores a number in the first part that is still unread; a number too many is dropped.
    void Store(long long number) {
        for (long long& place : part) {
            if (place < 0) {
                place = number;
                return;
            }
        }
    }
};

std::string_view Trimmed(std::string_view text, char blank) {
    const Position first = text.find_first_not_of(blank);
    if (first == std::string_view::npos) {
        return text;
    }
    return text.substr(first, text.find_last_not_of(blank) - first + 1);
}

bool ParseTriple(std::string_view text, char separator, long long& a, long long& b, long long& c) {
    Triple numbers;
    bool clean = true;
    Position start = 0;
    for (Position i = 0; i < text.size() && clean; ++i) {
        const bool separates = text[i] == separator;
        if (separates || i == text.size() - 1) {
            const Position end = separates ? i : i + 1;
            numbers.Store(veltrane::data::ReadInteger(Trimmed(text.substr(start, end - start), ' ')));
            start = i + 1;
        } else {
            clean = text[i] == ' ' || IsDigit(text[i]);
        }
    }
    a = numbers.part[0];
    b = numbers.part[1];
    c = numbers.part[2];
    return clean;
}

} // namespace

std::string_view DateTimeValue::TrimString(std::string_view text, char blank) {
    return Trimmed(text, blank);
}

bool DateTimeValue::ParseDate(std::string_view text, long long& year, long long& month, long long& day) {
    return text.empty() || (ParseTriple(text, '-', year, month, day) && IsValidDate(year, month, day));
}

// Minute and second may stay unread: "12:30" is accepted with second -1, and its value counts that second.
bool DateTimeValue::ParseTime(std::string_view text, long long& hour, long long& minute, long long& second) {
    return text.empty() || (ParseTriple(text, ':', hour, minute, second) && hour <= 23 && minute <= 59 && second < 60);
}

bool DateTimeValue::ParseDateTime(std::string_view text, long long& year, long long& month, long long& day,
                                  long long& hour, long long& minute, long long& second) {
    if (text.empty()) {
        return true;
    }
    year = month = day = hour = minute = second = 0;
    const Position split = text.find('T');
    return split != std::string_view::npos && ParseDate(text.substr(0, split), year, month, day) &&
           ParseTime(text.substr(split + 1), hour, minute, second);
}

bool DateTimeValue::ParseDouble(const std::string& text, double& out) {
    if (!IsPlainNumber(text)) {
        return false;
    }
    out = NumericValue(text).GetDouble();
    return true;
}

bool DateTimeValue::IsValidDateTime(const std::string& text, ScoreDictVar::DateTimeType type) {
    long long part[6] = {};
    switch (type) {
    case ScoreDictVar::DT_DATE:
        return ParseDate(text, part[0], part[1], part[2]);
    case ScoreDictVar::DT_TIME:
        return ParseTime(text, part[0], part[1], part[2]);
    case ScoreDictVar::DT_DATETIME:
        return ParseDateTime(text, part[0], part[1], part[2], part[3], part[4], part[5]);
    default:
        break;
    }
    double number = 0;
    return type < ScoreDictVar::DT_DAYS_SINCE_0 || type > ScoreDictVar::DT_SECONDS_SINCE_1980 ||
           ParseDouble(text, number);
}

} // namespace MCVeltrane_900
