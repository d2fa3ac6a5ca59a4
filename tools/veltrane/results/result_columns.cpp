#include "results/result_columns.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <kit/inputs/host_values.h>
#include <kit/inputs/missing_value.h>
#include <typeinfo>

namespace veltrane::host {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;

DateForm DateFormOf(const ScoreDictVar& variable) {
    switch (DateTimeValue::GetValType(variable.GetDateTimeType())) {
    case DateTimeValue::VAL_DATE:
        return DateForm::DATE;
    case DateTimeValue::VAL_TIME:
        return DateForm::TIME;
    default:
        return DateForm::DATE_TIME;
    }
}

DateForm DateFormOf(veltrane_kit::DataType type) {
    return type == veltrane_kit::DataType::DATE   ? DateForm::DATE
           : type == veltrane_kit::DataType::TIME ? DateForm::TIME
                                                  : DateForm::DATE_TIME;
}

void WriteValue(const veltrane_kit::Value& value, CsvWriter& writer, std::string& scratch) {
    if (value.isMissing) {
        writer.Empty();
    } else if (veltrane_kit::IsNumber(value.type) || veltrane_kit::IsCounting(value.type)) {
        writer.Number(value.number);
    } else if (veltrane_kit::IsMoment(value.type)) {
        scratch.clear();
        AppendDate(scratch, veltrane_kit::MakeMoment(value).GetDoubleValue(ScoreDictVar::DT_DATETIME),
                   DateFormOf(value.type));
        writer.Text(scratch);
    } else {
        writer.Text(veltrane_kit::TextOf(value, scratch));
    }
}

void WriteValue(const ScoreValue* value, DateForm dateForm, CsvWriter& writer, std::string& scratch) {
    if (veltrane_kit::IsMissing(value)) {
        writer.Empty();
        return;
    }
    switch (value->GetType()) {
    case ScoreValue::NUMERIC_VALUE:
        writer.Number(value->GetDouble());
        return;
    case ScoreValue::DATETIME_VALUE:
        if (const auto* dateTime = dynamic_cast<const DateTimeValue*>(value)) {
            scratch.clear();
            AppendDate(scratch, dateTime->GetDoubleValue(ScoreDictVar::DT_DATETIME), dateForm);
            writer.Text(scratch);
            return;
        }
        break;
    case ScoreValue::STRING_VALUE:
        if (typeid(*value) == typeid(StringValue)) {
            writer.Text(static_cast<const StringValue*>(value)->GetText());
            return;
        }
        break;
    }
    writer.Text(value->GetString());
}

ResultColumns::ResultColumns(const MCVeltrane_900::TransformationDictionary& derivedFields) {
    for (const std::string& name : derivedFields.GetDerivedVarNames()) {
        const ScoreDictVar& variable = *derivedFields.GetVar(name);
        fColumns.push_back({name, variable.GetValueIndex(), DateFormOf(variable)});
    }
}

bool ResultColumns::Has(const std::string& name) const {
    return std::any_of(fColumns.begin(), fColumns.end(), [&](const Column& column) { return column.name == name; });
}

void ResultColumns::WriteHeader(CsvWriter& writer) const {
    for (const Column& column : fColumns) {
        writer.Text(column.name);
    }
}

void ResultColumns::WriteCase(const MCVeltrane_900::ScoreCaseRecord& record, CsvWriter& writer) {
    for (const Column& column : fColumns) {
        WriteValue(record.Get(column.index), column.dateForm, writer, fText);
    }
}

} // namespace veltrane::host
