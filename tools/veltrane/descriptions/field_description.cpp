#include "descriptions/field_description.h"

#include "formulas/expression_text.h"
#include "formulas/stated_values.h"

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;

Json ValueOf(const std::string& text, const std::string& type) {
    return HoldsTexts(type) ? Json(text) : NumberOrText(text);
}

const std::string& LabelOf(const XmlNode& field) {
    return field[field.Has("displayName") ? "displayName" : "name"];
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
    const std::string& type = StatedType(field);
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

Json DescribeDataField(const XmlNode& field) {
    Json described = {{"name", field["name"]},          {"label", LabelOf(field)},        {"type", StatedType(field)},
                      {"level", field["optype"]},       {"missingValues", Json::array()}, {"categories", Json::array()},
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
        described["treatments"] = DescribeTreatments(mining, StatedType(field));
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
            one["value"] = ValueOf((*value)["value"], StatedType(field));
        }
        for (const char* attribute : {"displayValue", "priorProbability", "defaultValue"}) {
            AddAttribute(*value, attribute, attribute, one);
        }
        described["targetValues"].push_back(one);
    }
    return described;
}

Json DescribeDerivedField(const XmlNode& field, bool isLocal, const StatedTypes& types) {
    Json described = DescribeDataField(field);
    const XmlNode& expression = ExpressionOf(field);
    described["expression"] = expression.name;
    described["source"] = SourceOf(expression);
    described["formula"] = ExpressionText(expression, types, StatedType(field));
    described["local"] = isLocal;
    return described;
}

Json DescribeFunction(const XmlNode& function, StatedTypes types) {
    types.fields.clear();
    Json parameters = Json::array();
    for (const XmlNode* parameter : function.Children("ParameterField")) {
        parameters.push_back({{"name", (*parameter)["name"]},
                              {"label", LabelOf(*parameter)},
                              {"type", StatedType(*parameter)},
                              {"level", (*parameter)["optype"]}});
        types.fields.emplace((*parameter)["name"], StatedType(*parameter));
    }
    return {{"name", function["name"]},
            {"type", StatedType(function)},
            {"level", function["optype"]},
            {"parameters", parameters},
            {"formula", ExpressionText(ExpressionOf(function), types, StatedType(function))}};
}

} // namespace veltrane::host
