#include "translators/conditions/plain_conditions.h"

#include <algorithm>

namespace veltrane::tests {
namespace {

using Fields = std::vector<PlainField>;

std::string Attribute(const std::string& name, const std::string& value) {
    return " " + name + "='" + value + "'";
}

Truth TruthOf(bool holds) {
    return holds ? Truth::IS_TRUE : Truth::IS_FALSE;
}

double Place(const PlainField& field, const std::string& value) {
    return static_cast<double>(std::find(field.categories.begin(), field.categories.end(), value) -
                               field.categories.begin());
}

bool Compare(double a, const std::string& op, double b) {
    if (op == "equal") {
        return a == b;
    }
    if (op == "notEqual") {
        return a != b;
    }
    if (op == "lessThan") {
        return a < b;
    }
    if (op == "lessOrEqual") {
        return a <= b;
    }
    if (op == "greaterThan") {
        return a > b;
    }
    return a >= b;
}

Truth Compare(const PlainCondition& condition, const PlainField& field, const std::optional<std::string>& value,
              bool ordinalAsScale) {
    if (condition.op == "isMissing") {
        return TruthOf(!value);
    }
    if (condition.op == "isNotMissing") {
        return TruthOf(value.has_value());
    }
    if (!value) {
        return Truth::UNKNOWN;
    }
    const std::string& operand = condition.values.front();
    const bool isScale = field.kind == FieldKind::SCALE || (field.kind == FieldKind::ORDINAL_NUMBER && ordinalAsScale);
    if (isScale) {
        return TruthOf(Compare(std::stod(*value), condition.op, std::stod(operand)));
    }
    return TruthOf(Compare(Place(field, *value), condition.op, Place(field, operand)));
}

Truth IsIn(const PlainCondition& condition, const std::optional<std::string>& value) {
    if (!value) {
        return Truth::UNKNOWN;
    }
    const auto& values = condition.values;
    const bool isIn = std::find(values.begin(), values.end(), *value) != values.end();
    return TruthOf(isIn == (condition.op == "isIn"));
}

Truth Combine(const std::string& op, const std::vector<Truth>& truths) {
    const auto has = [&](Truth truth) { return std::find(truths.begin(), truths.end(), truth) != truths.end(); };
    if (op == "and") {
        return has(Truth::IS_FALSE) ? Truth::IS_FALSE : has(Truth::UNKNOWN) ? Truth::UNKNOWN : Truth::IS_TRUE;
    }
    if (op == "or") {
        return has(Truth::IS_TRUE) ? Truth::IS_TRUE : has(Truth::UNKNOWN) ? Truth::UNKNOWN : Truth::IS_FALSE;
    }
    if (op == "xor") {
        return has(Truth::UNKNOWN) ? Truth::UNKNOWN
                                   : TruthOf(std::count(truths.begin(), truths.end(), Truth::IS_TRUE) % 2 == 1);
    }
    for (std::size_t i = 0; i < truths.size(); ++i) {
        if (truths[i] != Truth::UNKNOWN) {
            return truths[i] == Truth::IS_TRUE && i > 0 ? Truth::TRUE_BY_SURROGATE : truths[i];
        }
    }
    return Truth::UNKNOWN;
}

} // namespace

std::string ToXml(const PlainCondition& condition, const Fields& fields) {
    std::string content;
    switch (condition.kind) {
    case PlainCondition::Kind::IS_TRUE:
        return "<True/>";
    case PlainCondition::Kind::IS_FALSE:
        return "<False/>";
    case PlainCondition::Kind::COMPARISON:
        return "<SimplePredicate" + Attribute("field", fields[condition.field].name) +
               Attribute("operator", condition.op) +
               (condition.values.empty() ? "" : Attribute("value", condition.values.front())) + "/>";
    case PlainCondition::Kind::SET:
        for (const std::string& value : condition.values) {
            content += (content.empty() ? "" : " ") + value;
        }
        return "<SimpleSetPredicate" + Attribute("field", fields[condition.field].name) +
               Attribute("booleanOperator", condition.op) + "><Array" +
               Attribute("type", fields[condition.field].IsText() ? "string" : "real") + ">" + content +
               "</Array></SimpleSetPredicate>";
    case PlainCondition::Kind::COMPOUND:
        for (const PlainCondition& child : condition.children) {
            content += ToXml(child, fields);
        }
        return "<CompoundPredicate" + Attribute("booleanOperator", condition.op) + ">" + content +
               "</CompoundPredicate>";
    }
    return content;
}

std::string ToXml(const Fields& fields) {
    std::string text = "<DataDictionary" + Attribute("numberOfFields", std::to_string(fields.size())) + ">";
    for (const PlainField& field : fields) {
        const char* optype =
            field.kind == FieldKind::SCALE ? "continuous" : (field.IsOrdinal() ? "ordinal" : "categorical");
        text += "<DataField" + Attribute("name", field.name) + Attribute("optype", optype) +
                Attribute("dataType", field.IsText() ? "string" : "double") + ">";
        for (const std::string& category : field.categories) {
            text += "<Value" + Attribute("value", category) + "/>";
        }
        text += "</DataField>";
    }
    return text + "</DataDictionary>";
}

Truth Evaluate(const PlainCondition& condition, const Fields& fields, const PlainCase& values, bool ordinalAsScale) {
    switch (condition.kind) {
    case PlainCondition::Kind::IS_TRUE:
        return Truth::IS_TRUE;
    case PlainCondition::Kind::IS_FALSE:
        return Truth::IS_FALSE;
    case PlainCondition::Kind::COMPARISON:
        return Compare(condition, fields[condition.field], values[condition.field], ordinalAsScale);
    case PlainCondition::Kind::SET:
        return IsIn(condition, values[condition.field]);
    case PlainCondition::Kind::COMPOUND:
        break;
    }
    std::vector<Truth> truths;
    for (const PlainCondition& child : condition.children) {
        truths.push_back(Evaluate(child, fields, values, ordinalAsScale));
    }
    return Combine(condition.op, truths);
}

} // namespace veltrane::tests
