#include "cases/cell_parser.h"

#include "cases/date_text.h"

#include <MCVeltrane_900/NumericValue.h>

#include <algorithm>
#include <charconv>

namespace veltrane::host {
namespace {

using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreDictVar;

constexpr const char* kNotANumber = "is not a number";
constexpr const char* kOutOfRange = "is out of the range of numbers";
constexpr const char* kHoldsNul = "holds a NUL character";

struct TextualDate {
    ScoreDictVar::DateTimeType type;
    DateForm form;
    const char* problem;
};
constexpr TextualDate kTextualDates[] = {
    {ScoreDictVar::DT_DATE, DateForm::DATE, "is not a date"},
    {ScoreDictVar::DT_TIME, DateForm::TIME, "is not a time"},
    {ScoreDictVar::DT_DATETIME, DateForm::DATE_TIME, "is not a date-time"},
};

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == text.npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// A sign, then a digit or a point: the words for infinity and for no number are read by `std::from_chars` too.
bool BeginsLikeANumber(std::string_view text) {
    if (text.starts_with('-')) {
        text.remove_prefix(1);
    }
    return !text.empty() && ((text.front() >= '0' && text.front() <= '9') || text.front() == '.');
}

bool IsListed(std::string_view content, const std::vector<std::string>& texts) {
    return std::find(texts.begin(), texts.end(), content) != texts.end();
}

/// Beyond the range of doubles the library has its own answers: infinity upwards, no number downwards.
const char* ReadExtremeNumber(std::string_view text, double& number) {
    const NumericValue value{std::string(text)};
    if (value.IsSystemMissingValue()) {
        return kOutOfRange;
    }
    number = value.GetDouble();
    return nullptr;
}

} // namespace

const char* ReadNumber(std::string_view text, double& number) {
    const std::string_view whole = text;
    if (text.starts_with('+') && !text.substr(1).starts_with('-')) {
        text.remove_prefix(1);
    }
    if (!BeginsLikeANumber(text)) {
        return kNotANumber;
    }
    double read;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
    if (error == std::errc::invalid_argument || end != text.data() + text.size()) {
        return kNotANumber;
    }
    if (error == std::errc::result_out_of_range) {
        return ReadExtremeNumber(whole, number);
    }
    number = read;
    return nullptr;
}

std::string_view CellContent(std::string_view cell, const CaseRow::Field& field) {
    return field.type == ScoreDictVar::STRING_VAR ? cell : WithoutBlanks(cell);
}

bool CellParser::IsMissing(std::string_view content) const {
    return content.empty() || IsListed(content, fMissingTokens);
}

const char* CellParser::ProblemOfText(std::string_view content) const {
    if (content.find('\0') != content.npos) {
        return kHoldsNul;
    }
    return fEncoding && !fEncoding->Holds(content) ? fEncoding->Problem() : nullptr;
}

const char* CellParser::Read(std::string_view cell, const CaseRow::Field& field, CaseRow& row) {
    const bool text = field.type == ScoreDictVar::STRING_VAR;
    const std::string_view content = CellContent(cell, field);
    if (IsMissing(content)) {
        row.SetMissing(field);
        return nullptr;
    }
    const char* problem = nullptr;
    if (text) {
        problem = ProblemOfText(content);
        if (!problem) {
            row.SetText(field, content);
        }
    } else if (content.find('\0') != content.npos) {
        problem = kHoldsNul;
    } else if (field.type == ScoreDictVar::DATETIME_VAR) {
        problem = ReadDate(content, field, row);
    } else {
        double number = 0;
        problem = ReadNumber(content, number);
        if (!problem) {
            row.SetNumber(field, number);
        }
    }
    if (problem && IsListed(content, field.missingTexts)) {
        row.SetMissing(field);
        return nullptr;
    }
    if (problem) {
        row.SetUnreadable(field, content);
    }
    return problem;
}

const char* CellParser::ReadDate(std::string_view cell, const CaseRow::Field& field, CaseRow& row) {
    for (const TextualDate& date : kTextualDates) {
        if (date.type != field.dateTimeType) {
            continue;
        }
        if (!HasDateForm(cell, date.form)) {
            return date.problem;
        }
        const std::size_t point = std::min(cell.find('.'), cell.size());
        double fraction = 0;
        std::from_chars(cell.data() + point, cell.data() + cell.size(), fraction, std::chars_format::fixed);
        fText.assign(cell.substr(0, point));
        std::replace(fText.begin(), fText.end(), ' ', 'T');
        return row.SetDateText(field, fText, fraction) ? nullptr : date.problem;
    }
    double number = 0;
    const char* problem = ReadNumber(cell, number);
    if (!problem) {
        row.SetDateNumber(field, number);
    }
    return problem;
}

} // namespace veltrane::host
