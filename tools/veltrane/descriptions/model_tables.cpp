#include "descriptions/field_tables.h"
#include "descriptions/model_description.h"
#include "descriptions/shown_values.h"
#include "run/table.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;

/// The kind of values of which "as it is" goes without saying.
constexpr std::string_view kMissing = "missing";

std::string TextOf(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() ? "" : ValueText(*found);
}

std::string SizeText(const Json& size) {
    std::vector<std::string> parts;
    for (const auto& [key, count] : size.items()) {
        parts.push_back(key + ": " + ValueText(count));
    }
    return Joined(parts, ", ");
}

std::string AttributesText(const Json& attributes) {
    std::vector<std::string> parts;
    for (const auto& [name, value] : attributes.items()) {
        parts.push_back(name + "=" + value.get<std::string>());
    }
    return Joined(parts, ", ");
}

std::string OriginText(const Json& document) {
    return Joined({document["format"].get<std::string>() + " " + document["version"].get<std::string>(),
                   document["producer"], document["timestamp"]},
                  ", ");
}

Table ModelTable(const Json& description) {
    const Json& model = description["model"];
    const Json& document = description["document"];
    Table table({"property", "value"});
    const std::pair<const char*, std::string> rows[] = {
        {"kind", model["kind"]},
        {"name", model["name"]},
        {"number",
         description["models"].size() > 1
             ? fmt::format("{} of {} in the document", model["number"].get<int>(), description["models"].size())
             : ""},
        {"function", model["function"]},
        {"algorithm", model["algorithm"]},
        {"attributes", AttributesText(model["attributes"])},
        {"size", SizeText(model["size"])},
        {"document", OriginText(document)},
        {"description", document["description"]},
        {"copyright", document["copyright"]},
        {"model version", document["modelVersion"]},
    };
    for (const auto& [property, value] : rows) {
        if (!value.empty()) {
            table.AddRow({property, value});
        }
    }
    return table;
}

Table ModelsTable(const Json& models) {
    Table table({"number", "kind", "name", "scorable"});
    for (const Json& model : models) {
        table.AddRow(
            {ValueText(model["number"]), model["kind"], model["name"], model["isScorable"].get<bool>() ? "yes" : "no"});
    }
    return table;
}

/// What is done with one kind of values: `missing -> 40 (asMean)`.
std::string TreatmentText(const Json& treatments, std::string_view kind) {
    if (!treatments.contains(kind)) {
        return {};
    }
    const Json& treatment = treatments[kind];
    if (treatment.size() == 1 && treatment.contains("treatment") && treatment["treatment"] == "asIs" &&
        kind == kMissing) {
        return {};
    }
    std::string text(kind);
    if (treatment.contains("replacement")) {
        text += " -> " + ValueText(treatment["replacement"]);
    }
    if (treatment.contains("treatment")) {
        text += treatment.contains("replacement") ? " (" + ValueText(treatment["treatment"]) + ")"
                                                  : " " + ValueText(treatment["treatment"]);
    }
    if (treatment.contains("low") || treatment.contains("high")) {
        text += fmt::format(" [{}, {}]", TextOf(treatment, "low"), TextOf(treatment, "high"));
    }
    return text;
}

/// That invalid values are refused is told of fields that say which these are.
std::string TreatmentsText(const Json& field) {
    if (!field.contains("treatments")) {
        return {};
    }
    const Json& treatments = field["treatments"];
    const bool declares = !field["categories"].empty() || !field["ranges"].empty() || !field["invalidValues"].empty();
    const bool isUsual = treatments["invalid"]["treatment"] == "returnInvalid";
    return Joined({TreatmentText(treatments, kMissing),
                   declares || !isUsual ? TreatmentText(treatments, "invalid") : "",
                   TreatmentText(treatments, "outliers")},
                  "; ");
}

Table InputsTable(const Json& inputs) {
    FieldsTable table(inputs, {"role", "values", "treatments"});
    for (const Json& field : inputs) {
        table.Add(field, {field["role"], ValuesText(field), TreatmentsText(field)});
    }
    return table.Get();
}

std::string TargetValueText(const Json& value) {
    return Joined({TextOf(value, "value"),
                   value.contains("displayValue") ? "shown as " + TextOf(value, "displayValue") : "",
                   value.contains("priorProbability") ? "prior " + TextOf(value, "priorProbability") : "",
                   value.contains("defaultValue") ? "default " + TextOf(value, "defaultValue") : ""},
                  " ");
}

Table TargetTable(const Json& target) {
    std::vector<std::string> adjustments;
    for (const char* attribute : {"min", "max", "rescaleFactor", "rescaleConstant", "castInteger"}) {
        if (target.contains(attribute)) {
            adjustments.push_back(std::string(attribute) + "=" + TextOf(target, attribute));
        }
    }
    if (target.contains("targetValues")) {
        adjustments.push_back(ListText(target["targetValues"], TargetValueText));
    }
    FieldsTable table(Json::array({target}), {"values", "adjustment"});
    table.Add(target, {ValuesText(target), Joined(adjustments, ", ")});
    return table.Get();
}

Table OutputsTable(const Json& outputs) {
    Table table({"column", "output field", "type", "level", "feature", "value"});
    for (const Json& output : outputs) {
        const std::string value = TextOf(output, output.contains("formula") ? "formula" : "value");
        table.AddRow({output["column"].is_null() ? "-" : ValueText(output["column"]), TextOf(output, "name"),
                      TextOf(output, "type"), TextOf(output, "level"), TextOf(output, "feature"), value});
    }
    return table;
}

} // namespace

std::string ModelTables(const Json& description) {
    std::string text = Section("Model", ModelTable(description));
    if (description["models"].size() > 1) {
        text += Section("Models", ModelsTable(description["models"]));
    }
    text += Section("Inputs", InputsTable(description["inputs"]));
    if (!description["target"].is_null()) {
        text += Section("Target", TargetTable(description["target"]));
    }
    if (!description["outputs"].empty()) {
        text += Section("Outputs", OutputsTable(description["outputs"]));
    }
    if (!description["derivedFields"].empty()) {
        text += Section("Derived fields", DerivedTable(description["derivedFields"]));
    }
    if (!description["functions"].empty()) {
        text += Section("Functions", FunctionsTable(description["functions"]));
    }
    text.pop_back();
    return text;
}

} // namespace veltrane::host
