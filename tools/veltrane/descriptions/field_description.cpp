#include "descriptions/field_description.h"

#include "descriptions/expression_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;

/// Up to here every whole number is a double.
constexpr double kWholeNumbers = 9007199254740992.0;

constexpr std::string_view kTextTypes[] = {"string", "boolean", "date", "time", "dateTime"};

bool HoldsTexts(const std::string& type) {
    return std::find(std::begin(kTextTypes), std::end(kTextTypes), type) != std::end(kTextTypes);
}

Json ValueOf(const std::string& text, const std::string& type) {
    return HoldsTexts(type) ? Json(text) : NumberOrText(text);
}

Json BoundOf(const XmlNode& interval, const char* attribute) {
    return interval.Has(attribute) ? NumberOrText(interval[attribute]) : Json(nullptr);
}

Json DescribeInterval(const XmlNode& interval) {
    const std::string& closure = interval["closure"];
    return {{"low", BoundOf(interval, "leftMargin")},
            {"lowIncluded", !closure.starts_with("open")},
            {"high", BoundOf(interval, "rightMargin")},
            {"highIncluded", !closure.ends_with("Open")}};
}

void AddValues(const XmlNode& field, Json& described) {
    const std::string& type = field["dataType"];
    for (const XmlNode* value : field.Children("Value")) {
        const Json content = ValueOf((*value)["value"], type);
        const std::string& property = (*value)["property"];
        if (property == "missing") {
            described["missingValues"].push_back(content);
        } else if (property == "invalid") {
            described["invalidValues"].push_back(content);
        } else {
            const bool hasLabel = value->Has("displayValue");
            described["categories"].push_back(
                {{"value", content}, {"label", hasLabel ? (*value)["displayValue"] : (*value)["value"]}});
        }
    }
    for (const XmlNode* interval : field.Children("Interval")) {
        described["ranges"].push_back(DescribeInterval(*interval));
    }
}

/// Adds an attribute of an element under a key where it is there.
void AddAttribute(const XmlNode& node, const char* attribute, const char* key, Json& described) {
    if (node.Has(attribute)) {
        described[key] = NumberOrText(node[attribute]);
    }
}

/// What is done with values that are missing, invalid or outlying.
Json DescribeTreatments(const XmlNode& mining, const std::string& type) {
    Json treatments = Json::object();
    if (mining.Has("missingValueReplacement")) {
        treatments["missing"]["replacement"] = ValueOf(mining["missingValueReplacement"], type);
    }
    AddAttribute(mining, "missingValueTreatment", "treatment", treatments["missing"]);
    const bool hasInvalid = mining.Has("invalidValueTreatment");
    treatments["invalid"] = {{"treatment", hasInvalid ? mining["invalidValueTreatment"] : "returnInvalid"}};
    if (mining.Has("invalidValueReplacement")) {
        treatments["invalid"]["replacement"] = ValueOf(mining["invalidValueReplacement"], type);
    }
    if (mining.Has("outliers") && mining["outliers"] != "asIs") {
        Json& outliers = treatments["outliers"];
        outliers["treatment"] = mining["outliers"];
        AddAttribute(mining, "lowValue", "low", outliers);
        AddAttribute(mining, "highValue", "high", outliers);
    }
    if (treatments["missing"].is_null()) {
        treatments.erase("missing");
    }
    return treatments;
}

std::string RoleOf(const XmlNode& mining, const std::string& otherRole) {
    const std::string& role = mining["usageType"];
    return role.empty() ? otherRole : role == "predicted" ? "target" : role;
}

} // namespace

Json NumberOrText(const std::string& text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) {
        return text;
    }
    const bool isWhole = std::abs(number) < kWholeNumbers && number == std::trunc(number);
    return isWhole ? Json(static_cast<std::int64_t>(number)) : Json(number);
}

Json DescribeDataField(const XmlNode& field) {
    Json described = {
        {"name", field["name"]},          {"label", field.Has("displayName") ? field["displayName"] : field["name"]},
        {"type", field["dataType"]},      {"level", field["optype"]},
        {"missingValues", Json::array()}, {"categories", Json::array()},
        {"invalidValues", Json::array()}, {"ranges", Json::array()}};
    AddValues(field, described);
    return described;
}

Json DescribeInput(const XmlNode& field, const XmlNode& mining, const std::string& otherRole) {
    Json described = DescribeDataField(field);
    if (field.name.empty()) {
        described["name"] = described["label"] = mining["name"];
    }
    if (mining.Has("optype")) {
        described["level"] = mining["optype"];
    }
    described["role"] = RoleOf(mining, otherRole);
    if (!mining.name.empty()) {
        described["treatments"] = DescribeTreatments(mining, field["dataType"]);
    }
    AddAttribute(mining, "importance", "importance", described);
    return described;
}

Json DescribeTarget(const XmlNode& field, const XmlNode& mining, const XmlNode& target) {
    Json described = DescribeInput(field, mining, "target");
    described["role"] = "target";
    for (const char* attribute : {"min", "max", "rescaleFactor", "rescaleConstant", "castInteger"}) {
        AddAttribute(target, attribute, attribute, described);
    }
    for (const XmlNode* value : target.Children("TargetValue")) {
        Json one = Json::object();
        if (value->Has("value")) {
            one["value"] = ValueOf((*value)["value"], field["dataType"]);
        }
        for (const char* attribute : {"displayValue", "priorProbability", "defaultValue"}) {
            AddAttribute(*value, attribute, attribute, one);
        }
        described["targetValues"].push_back(one);
    }
    return described;
}

Json DescribeDerivedField(const XmlNode& field, bool isLocal) {
    Json described = DescribeDataField(field);
    const XmlNode& expression = ExpressionOf(field);
    described["expression"] = expression.name;
    described["source"] = SourceOf(expression);
    described["formula"] = ExpressionText(expression);
    described["local"] = isLocal;
    return described;
}

} // namespace veltrane::host
