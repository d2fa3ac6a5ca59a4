#include "descriptions/field_tables.h"

#include "descriptions/shown_values.h"

#include <fmt/format.h>

#include <algorithm>

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;

std::string PrefixedList(const char* prefix, const Json& list) {
    return list.empty() ? "" : prefix + ListText(list, RangeText);
}

bool HaveLabels(const Json& fields) {
    return std::any_of(fields.begin(), fields.end(), [](const Json& field) { return field["label"] != field["name"]; });
}

std::vector<std::string> Headings(bool hasLabels, const std::vector<std::string>& more) {
    std::vector<std::string> headings{"name"};
    if (hasLabels) {
        headings.emplace_back("label");
    }
    headings.insert(headings.end(), {"type", "level"});
    headings.insert(headings.end(), more.begin(), more.end());
    return headings;
}

/// A parameter and its type, where it has one: `x double`.
std::string ParameterText(const Json& parameter) {
    return Joined({parameter["name"], parameter["type"]}, " ");
}

} // namespace

std::string Joined(const std::vector<std::string>& texts, const char* separator) {
    std::string joined;
    for (const std::string& text : texts) {
        if (!text.empty()) {
            joined += (joined.empty() ? "" : separator) + text;
        }
    }
    return joined;
}

std::string ValuesText(const Json& field) {
    return Joined({ListText(field["categories"], CategoryText), ListText(field["ranges"], RangeText),
                   PrefixedList("missing: ", field["missingValues"]),
                   PrefixedList("invalid: ", field["invalidValues"])},
                  "; ");
}

FieldsTable::FieldsTable(const Json& fields, const std::vector<std::string>& more)
    : fHasLabels(HaveLabels(fields)), fTable(Headings(fHasLabels, more)) {}

void FieldsTable::Add(const Json& field, const std::vector<std::string>& more) {
    std::vector<std::string> cells{field["name"]};
    if (fHasLabels) {
        cells.push_back(field["label"]);
    }
    cells.insert(cells.end(), {field["type"], field["level"]});
    cells.insert(cells.end(), more.begin(), more.end());
    fTable.AddRow(std::move(cells));
}

Table DataTable(const Json& fields) {
    FieldsTable table(fields, {"values"});
    for (const Json& field : fields) {
        table.Add(field, {ValuesText(field)});
    }
    return table.Get();
}

Table DerivedTable(const Json& derivedFields) {
    FieldsTable table(derivedFields, {"values", "formula"});
    for (const Json& field : derivedFields) {
        table.Add(field, {ValuesText(field), field["formula"]});
    }
    return table.Get();
}

Table ExpressionsTable(const Json& derivedFields) {
    FieldsTable table(derivedFields, {"values", "expression", "formula"});
    for (const Json& field : derivedFields) {
        table.Add(field, {ValuesText(field), field["expression"], field["formula"]});
    }
    return table.Get();
}

Table FunctionsTable(const Json& functions) {
    Table table({"name", "parameters", "type", "level", "formula"});
    for (const Json& function : functions) {
        std::vector<std::string> parameters;
        for (const Json& parameter : function["parameters"]) {
            parameters.push_back(ParameterText(parameter));
        }
        table.AddRow(
            {function["name"], Joined(parameters, ", "), function["type"], function["level"], function["formula"]});
    }
    return table;
}

std::string Section(const char* title, const Table& table) {
    return fmt::format("{}\n\n{}\n", title, table.Text());
}

} // namespace veltrane::host
