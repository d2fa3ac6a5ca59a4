#include "commands/verification_report.h"

#include "cases/cell_parser.h"
#include "cases/date_text.h"
#include "files/csv_writer.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <algorithm>
#include <cmath>
#include <kit/inputs/missing_value.h>

namespace veltrane::host {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;

void VerifiedField::Compare(const std::optional<std::string>& expected, const ScoreValue* value) {
    const bool isMissing =
        veltrane_kit::IsMissing(value) || (value->GetType() == ScoreValue::STRING_VALUE && value->GetString().empty());
    const bool agrees = isMissing || !expected ? isMissing && !expected : Agrees(*expected, *value);
    ++fRecords;
    fAgreeing += agrees ? 1 : 0;
}

bool VerifiedField::Agrees(const std::string& expected, const ScoreValue& value) {
    double number = 0;
    switch (value.GetType()) {
    case ScoreValue::NUMERIC_VALUE:
        if (ReadNumber(expected, number) != nullptr) {
            return false;
        }
        fLargestDifference = std::max(fLargestDifference.value_or(0), std::abs(number - value.GetDouble()));
        return fField.Agrees(number, value.GetDouble());
    case ScoreValue::DATETIME_VALUE: {
        const auto* dateTime = dynamic_cast<const DateTimeValue*>(&value);
        if (dateTime == nullptr) {
            return value.GetString() == expected;
        }
        const double seconds = dateTime->GetDoubleValue(ScoreDictVar::DT_DATETIME);
        for (const DateForm form : {DateForm::DATE, DateForm::TIME, DateForm::DATE_TIME}) {
            std::string text;
            AppendDate(text, seconds, form);
            if (text == expected) {
                return true;
            }
        }
        return false;
    }
    default:
        return value.GetString() == expected;
    }
}

std::vector<std::string> VerifiedField::Cells() const {
    std::string difference = "-";
    if (fLargestDifference) {
        difference.clear();
        AppendNumber(difference, *fLargestDifference);
    }
    return {fField.field, std::to_string(fRecords), std::to_string(fAgreeing), difference};
}

} // namespace veltrane::host
