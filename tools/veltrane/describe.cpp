#include "describe.h"

#include "date_text.h"
#include "document.h"
#include "encoding.h"
#include "formula.h"
#include "result_columns.h"
#include "table.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <fmt/format.h>

#include <cmath>

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;
using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::ScoreDictionary;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::TransformationDictionary;
using MCVeltrane_900::TransformVar;

constexpr const char* kLevels[] = {"continuous", "ordinal", "categorical"};
constexpr const char* kNumericTypes[] = {"number", "integer", "double"};
constexpr const char* kDateTimeTypes[] = {"",
                                          "date",
                                          "time",
                                          "dateTime",
                                          "dateDaysSince[0]",
                                          "dateDaysSince[1960]",
                                          "dateDaysSince[1970]",
                                          "dateDaysSince[1980]",
                                          "timeSeconds",
                                          "dateTimeSecondsSince[0]",
                                          "dateTimeSecondsSince[1960]",
                                          "dateTimeSecondsSince[1970]",
                                          "dateTimeSecondsSince[1980]"};
/// By the number of `TransExpression`.
constexpr const char* kExpressions[] = {"Constant",   "FieldRef",  "NormContinuous", "NormDiscrete",
                                        "Discretize", "MapValues", "Apply",          "Lag"};

/// The table shows this many values of a list.
constexpr std::size_t kShownValues = 6;

template <std::size_t size>
std::string Word(const char* const (&words)[size], int number) {
    return number >= 0 && number < static_cast<int>(size) ? words[number] : "";
}

std::string TypeOf(const ScoreDictVar& variable) {
    switch (variable.GetVarType()) {
    case ScoreDictVar::kNUMERIC_VAR:
        return Word(kNumericTypes, variable.GetNumericDataType());
    case ScoreDictVar::STRING_VAR:
        return "string";
    case ScoreDictVar::DATETIME_VAR:
        return Word(kDateTimeTypes, variable.GetDateTimeType());
    }
    return "";
}

/// Describes the variables of one document.
class Describer {
public:
    explicit Describer(const Encoding& encoding) : fEncoding(encoding) {}

    Json Field(const ScoreDictVar& variable) const {
        return {{"name", Utf8(variable.GetName())},
                {"label", Utf8(variable.GetLabel())},
                {"type", TypeOf(variable)},
                {"level", Word(kLevels, variable.GetMLevel())},
                {"missingValues", MissingValues(variable)},
                {"categories", Categories(variable)}};
    }

    Json DerivedField(const TransformVar& variable) const {
        Json result = Field(variable);
        const int expression = variable.GetTransExpression();
        result["expression"] = Word(kExpressions, expression);
        const bool constant = expression == TransformationDictionary::TE_CONSTANT;
        result["source"] = Utf8(constant ? variable.GetConstString() : variable.GetFieldName());
        if (variable.GetRoot() != nullptr)
            result["formula"] = Utf8(Formula(*variable.GetRoot()));
        return result;
    }

private:
    std::string Utf8(std::string_view text) const { return fEncoding.ToUtf8(text); }

    Json Value(const ScoreValue* value, const ScoreDictVar& variable) const {
        if (!value || value->IsSystemMissingValue())
            return nullptr;
        if (value->GetType() == ScoreValue::STRING_VALUE)
            return Utf8(value->GetString());
        const double number = value->GetDouble();
        if (!std::isfinite(number))
            return nullptr;
        if (value->GetType() == ScoreValue::NUMERIC_VALUE)
            return number;
        std::string text;
        AppendDate(text, static_cast<const DateTimeValue*>(value)->GetDoubleValue(ScoreDictVar::DT_DATETIME),
                   DateFormOf(variable));
        return text;
    }

    Json MissingValues(const ScoreDictVar& variable) const {
        Json result = Json::array();
        if (!variable.GetMissingValues())
            return result;
        for (const auto* range : variable.GetMissingValues()->GetMissingValues()) {
            const Json low = Value(range->GetMin(), variable);
            const Json high = Value(range->GetMax(), variable);
            if (low == high && !low.is_null())
                result.push_back(low);
            else
                result.push_back({{"low", low},
                                  {"lowIncluded", range->GetLowEnd()},
                                  {"high", high},
                                  {"highIncluded", range->GetHighEnd()}});
        }
        return result;
    }

    Json Categories(const ScoreDictVar& variable) const {
        Json result = Json::array();
        if (!variable.GetValueLabels())
            return result;
        for (const auto* label : variable.GetValueLabels()->GetAllValueLabels())
            result.push_back({{"value", Value(label->GetValue(), variable)}, {"label", Utf8(label->GetLabel())}});
        return result;
    }

    const Encoding& fEncoding;
};

/// Numbers are rounded to 15 digits: a bound that stands a step of the last digit beside a round number reads as that.
std::string ValueText(const Json& value) {
    if (!value.is_number())
        return value.is_string() ? value.get<std::string>() : "";
    return fmt::format("{:.15g}", value.get<double>());
}

std::string RangeText(const Json& range) {
    if (!range.is_object())
        return ValueText(range);
    const Json& low = range["low"];
    const Json& high = range["high"];
    const bool lowIncluded = range["lowIncluded"];
    const bool highIncluded = range["highIncluded"];
    if (low.is_null() && high.is_null())
        return "all";
    if (low.is_null())
        return (highIncluded ? "<= " : "< ") + ValueText(high);
    if (high.is_null())
        return (lowIncluded ? ">= " : "> ") + ValueText(low);
    return fmt::format("{}{}, {}{}", lowIncluded ? '[' : '(', ValueText(low), ValueText(high),
                       highIncluded ? ']' : ')');
}

std::string CategoryText(const Json& category) {
    const std::string value = ValueText(category["value"]);
    const auto& label = category["label"].get_ref<const std::string&>();
    return label == value ? value : value + "=" + label;
}

std::string ListText(const Json& list, std::string (*textOf)(const Json&)) {
    std::string text;
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (at > 0)
            text += ", ";
        if (at == kShownValues)
            return text + "... (" + std::to_string(list.size()) + ")";
        text += textOf(list[at]);
    }
    return text;
}

std::vector<std::string> Cells(const Json& field) {
    return {field["name"],
            field["label"],
            field["type"],
            field["level"],
            ListText(field["missingValues"], RangeText),
            ListText(field["categories"], CategoryText)};
}

} // namespace

Json Describe(const Document& document, const Encoding& encoding) {
    const Describer describer(encoding);
    Json fields = Json::array();
    const ScoreDictionary& dictionary = *document.fields;
    for (const std::string& name : dictionary.GetVarNames())
        fields.push_back(describer.Field(*dictionary.GetVar(name)));
    Json derivedFields = Json::array();
    if (const TransformationDictionary* derived = document.derivedFields.get()) {
        for (const std::string& name : derived->GetDerivedVarNames())
            derivedFields.push_back(describer.DerivedField(static_cast<const TransformVar&>(*derived->GetVar(name))));
    }
    return {{"fields", fields}, {"derivedFields", derivedFields}};
}

std::string DescriptionTables(const Json& description) {
    std::vector<std::string> headings{"name", "label", "type", "level", "missing values", "categories"};
    Table fields(headings);
    for (const Json& field : description["fields"])
        fields.AddRow(Cells(field));
    headings.insert(headings.end(), {"expression", "source"});
    Table derivedFields(headings);
    for (const Json& field : description["derivedFields"]) {
        std::vector<std::string> cells = Cells(field);
        cells.insert(cells.end(),
                     {field["expression"], field.contains("formula") ? field["formula"] : field["source"]});
        derivedFields.AddRow(std::move(cells));
    }
    return "Fields\n\n" + fields.Text() + "\nDerived fields\n\n" + derivedFields.Text();
}

} // namespace veltrane::host
