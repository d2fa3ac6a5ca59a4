#include "columns/rows/row_results.h"

#include "columns/fields/field_types.h"
#include "diagnostics/raise.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreRegResult.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <charconv>
#include <limits>

namespace veltrane::columns {

namespace {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreClsResult;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreRegResult;
using MCVeltrane_900::ScoreResult;
using MCVeltrane_900::ScoreResultField;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
constexpr int kRegressionKind = 1; ///< see ScoreResult::GetResultKind

bool IsOfItsKind(ScoreResult& result) {
    const int kind = result.GetResultKind();
    if (kind < 0 || kind > ScoreResult::LAST_KIND) {
        return false;
    }
    if (ScoreResult::HasCategories(kind)) {
        return dynamic_cast<ScoreClsResult*>(&result) != nullptr;
    }
    return kind != kRegressionKind || dynamic_cast<ScoreRegResult*>(&result) != nullptr;
}

DataType TypeOf(const ScoreValue* value) {
    switch (value == nullptr ? ScoreValue::STRING_VALUE : value->GetType()) {
    case ScoreValue::NUMERIC_VALUE:
        return DataType::DOUBLE;
    case ScoreValue::DATETIME_VALUE:
        return DataType::DATE_TIME;
    default:
        return DataType::STRING;
    }
}

ColumnField Field(std::string name, DataType type) {
    return {std::move(name), type, false, {}};
}

std::vector<ColumnField> OutputFieldsOf(const ScoreModel& model, ScoreResult& emptyResult) {
    std::vector<ColumnField> fields;
    if (const auto* dictionary = model.GetResultDictionary()) {
        for (const std::string& name : dictionary->GetVarNames()) {
            const ScoreDictVar* variable = dictionary->GetVar(name);
            fields.push_back(Field(name, variable == nullptr ? DataType::STRING : columns::TypeOf(*variable)));
        }
    } else if (const ScoreResultField* results = emptyResult.GetResultFields()) {
        for (const std::string& name : results->GetResultFields()) {
            fields.push_back(Field(name, TypeOf(results->GetResultValue(name))));
        }
    }
    return fields;
}

/// A copy of a missing date has divided the missing number by the seconds of a day.
bool IsMissingMoment(double seconds) {
    constexpr double kEarliestMoment = -1e19;
    for (double missing = NumericValue::GetSysmisValue(); seconds < kEarliestMoment && missing <= seconds;
         missing /= kSecondsOfDay) {
        if (missing == seconds) {
            return true;
        }
    }
    return false;
}

bool IsMissing(const ScoreValue* value) {
    if (value == nullptr || value->IsSystemMissingValue()) {
        return true;
    }
    const auto* moment = dynamic_cast<const DateTimeValue*>(value);
    return moment != nullptr && IsMissingMoment(moment->NumericValue::GetDouble());
}

double NumberIn(const std::string& text) {
    double number = kMissing;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? number : kMissing;
}

double NumberOf(const ScoreValue& value, DataType type) {
    if (value.GetType() == ScoreValue::STRING_VALUE) {
        return NumberIn(value.GetString());
    }
    const auto* moment = dynamic_cast<const DateTimeValue*>(&value);
    if (moment == nullptr || IsNumber(type)) {
        return value.GetDouble();
    }
    if (IsCounting(type)) {
        return moment->GetDoubleValue(DateTimeTypeOf(type));
    }
    const double seconds = moment->GetDoubleValue(ScoreDictVar::DT_SECONDS_SINCE_1970);
    return type == DataType::DATE ? seconds / kSecondsOfDay : seconds;
}

/// A number by the fewest digits that read back.
void PutText(const ScoreValue& value, std::string& text) {
    if (value.GetType() != ScoreValue::NUMERIC_VALUE) {
        text = value.GetString();
        return;
    }
    constexpr std::size_t kLongest = 32;
    char digits[kLongest];
    const auto written = std::to_chars(digits, digits + kLongest, value.GetDouble());
    text.assign(digits, written.ptr);
}

} // namespace

std::unique_ptr<ScoreResult> MakeResult(const ScoreModel& model) {
    std::unique_ptr<ScoreResult> result(model.CreateResult());
    if (result == nullptr || !IsOfItsKind(*result)) {
        Raise<Message::CANNOT_BUILD_MODEL>();
    }
    return result;
}

std::vector<ColumnField> ResultColumnsOf(const ScoreModel& model, ScoreResult& emptyResult) {
    std::vector<ColumnField> fields = OutputFieldsOf(model, emptyResult);
    const ScoreDictVar* target = model.GetTargetVar();
    ColumnField predicted = Field(
        "prediction", ScoreResult::HasCategories(emptyResult.GetResultKind()) ? DataType::STRING : DataType::DOUBLE);
    if (target != nullptr) {
        predicted = Field(target->GetName(), columns::TypeOf(*target));
    }
    const auto isTaken = [&fields](const std::string& name) {
        return std::any_of(fields.begin(), fields.end(),
                           [&name](const ColumnField& each) { return each.name == name; });
    };
    while (isTaken(predicted.name)) {
        predicted.name = "predicted " + predicted.name;
    }
    fields.insert(fields.begin(), std::move(predicted));
    return fields;
}

std::string& TextStore::Next() {
    if (fCount == fTexts.size()) {
        fTexts.emplace_back();
    }
    return fTexts[fCount++];
}

void WriteValue(const ScoreValue* value, DataType type, const OutputColumn& column, std::size_t row, TextStore& texts) {
    const bool isMissing = IsMissing(value);
    if (column.numbers != nullptr) {
        column.numbers[row] = isMissing ? kMissing : NumberOf(*value, type);
    } else if (column.texts != nullptr) {
        column.texts[row] = std::string_view();
        if (!isMissing) {
            std::string& text = texts.Next();
            PutText(*value, text);
            column.texts[row] = text;
        }
    }
}

} // namespace veltrane::columns
