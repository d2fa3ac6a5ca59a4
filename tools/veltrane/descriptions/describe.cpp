#include "descriptions/describe.h"

#include "cases/date_text.h"
#include "descriptions/formula.h"
#include "descriptions/shown_values.h"
#include "files/encoding.h"
#include "results/result_columns.h"
#include "run/table.h"

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
#include <kit/values/data_types.h>

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
/// By the number of `TransExpression`.
constexpr const char* kExpressions[] = {"Constant",   "FieldRef",  "NormContinuous", "NormDiscrete",
                                        "Discretize", "MapValues", "Apply",          "Lag"};

template <std::size_t size>
std::string Word(const char* const (&words)[size], int number) {
    return number >= 0 && number < static_cast<int>(size) ? words[number] : "";
}

/// The types of moments and counts go by the same order in the library and in the kit.
std::string DateTimeWord(ScoreDictVar::DateTimeType type) {
    using veltrane_kit::DataType;
    constexpr int kBeforeDates = static_cast<int>(DataType::DATE) - ScoreDictVar::DT_DATE;
    static_assert(static_cast<int>(DataType::DATE_TIME_SECONDS_SINCE_1980) ==
                  ScoreDictVar::DT_SECONDS_SINCE_1980 + kBeforeDates);
    return type < ScoreDictVar::DT_DATE || type > ScoreDictVar::DT_SECONDS_SINCE_1980
               ? ""
               : std::string(veltrane_kit::WordOf(static_cast<DataType>(type + kBeforeDates)));
}

std::string TypeOf(const ScoreDictVar& variable) {
    switch (variable.GetVarType()) {
    case ScoreDictVar::kNUMERIC_VAR:
        return Word(kNumericTypes, variable.GetNumericDataType());
    case ScoreDictVar::STRING_VAR:
        return "string";
    case ScoreDictVar::DATETIME_VAR:
        return DateTimeWord(variable.GetDateTimeType());
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
        if (variable.GetRoot() != nullptr) {
            result["formula"] = Utf8(Formula(*variable.GetRoot()));
        }
        return result;
    }

private:
    std::string Utf8(std::string_view text) const { return fEncoding.ToUtf8(text); }

    Json Value(const ScoreValue* value, const ScoreDictVar& variable) const {
        if (!value || value->IsSystemMissingValue()) {
            return nullptr;
        }
        if (value->GetType() == ScoreValue::STRING_VALUE) {
            return Utf8(value->GetString());
        }
        const double number = value->GetDouble();
        if (!std::isfinite(number)) {
            return nullptr;
        }
        if (value->GetType() == ScoreValue::NUMERIC_VALUE) {
            return number;
        }
        const auto* dateTime = dynamic_cast<const DateTimeValue*>(value);
        if (!dateTime) {
            return Utf8(value->GetString());
        }
        std::string text;
        AppendDate(text, dateTime->GetDoubleValue(ScoreDictVar::DT_DATETIME), DateFormOf(variable));
        return text;
    }

    Json MissingValues(const ScoreDictVar& variable) const {
        Json result = Json::array();
        if (!variable.GetMissingValues()) {
            return result;
        }
        for (const auto* range : variable.GetMissingValues()->GetMissingValues()) {
            const Json low = Value(range->GetMin(), variable);
            const Json high = Value(range->GetMax(), variable);
            if (low == high && !low.is_null()) {
                result.push_back(low);
            } else {
                result.push_back({{"low", low},
                                  {"lowIncluded", range->GetLowEnd()},
                                  {"high", high},
                                  {"highIncluded", range->GetHighEnd()}});
            }
        }
        return result;
    }

    Json Categories(const ScoreDictVar& variable) const {
        Json result = Json::array();
        if (!variable.GetValueLabels()) {
            return result;
        }
        for (const auto* label : variable.GetValueLabels()->GetAllValueLabels()) {
            result.push_back({{"value", Value(label->GetValue(), variable)}, {"label", Utf8(label->GetLabel())}});
        }
        return result;
    }

    const Encoding& fEncoding;
};

std::vector<std::string> Cells(const Json& field) {
    return {field["name"],
            field["label"],
            field["type"],
            field["level"],
            ListText(field["missingValues"], RangeText),
            ListText(field["categories"], CategoryText)};
}

} // namespace

Json Describe(const ScoreDictionary& fields, const TransformationDictionary* derivedFields, const Encoding& encoding) {
    const Describer describer(encoding);
    Json described = {{"fields", Json::array()}, {"derivedFields", Json::array()}};
    for (const std::string& name : fields.GetVarNames()) {
        described["fields"].push_back(describer.Field(*fields.GetVar(name)));
    }
    if (!derivedFields) {
        return described;
    }
    for (const std::string& name : derivedFields->GetDerivedVarNames()) {
        const auto& variable = static_cast<const TransformVar&>(*derivedFields->GetVar(name));
        described["derivedFields"].push_back(describer.DerivedField(variable));
    }
    return described;
}

std::string DescriptionTables(const Json& description) {
    std::vector<std::string> headings{"name", "label", "type", "level", "missing values", "categories"};
    Table fields(headings);
    for (const Json& field : description["fields"]) {
        fields.AddRow(Cells(field));
    }
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
