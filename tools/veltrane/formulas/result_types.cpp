#include "formulas/result_types.h"

#include "formulas/formula_parts.h"

#include <kit/functions/standard_functions.h>
#include <kit/values/values.h>
#include <optional>
#include <utility>

namespace veltrane::host {
namespace {

constexpr const char* kType = "dataType";
constexpr const char* kNumber = "double";
constexpr const char* kReplacements[] = {"mapMissingTo", "defaultValue"};

std::string TypeOfText(const std::string& text) {
    return veltrane_kit::NumberIn(text) ? kNumber : "string";
}

bool IsNumberType(const std::string& type) {
    return type == "integer" || type == "float" || type == kNumber;
}

/// The type that all of several have; empty where they have none in common, or where there is none.
class SharedType {
public:
    void Add(const std::string& type) {
        const std::string known = IsNumberType(type) ? kNumber : type;
        fType = !fType || *fType == known ? known : "";
    }
    std::string Get() const { return fType.value_or(""); }

private:
    std::optional<std::string> fType;
};

/// Of the texts that an expression of tables has for its values, unless it states it.
std::string TypeOfTable(const XmlNode& expression, SharedType type) {
    if (expression.Has(kType)) {
        return expression[kType];
    }
    for (const char* attribute : kReplacements) {
        if (expression.Has(attribute)) {
            type.Add(TypeOfText(expression[attribute]));
        }
    }
    return type.Get();
}

std::string TypeOfMap(const XmlNode& expression) {
    SharedType type;
    for (const XmlNode* row : expression.Child("InlineTable").Children("row")) {
        if (const XmlNode* cell = CellOf(*row, expression["outputColumn"])) {
            type.Add(TypeOfText(cell->text));
        }
    }
    return TypeOfTable(expression, type);
}

std::string TypeOfBins(const XmlNode& expression) {
    SharedType type;
    for (const XmlNode* bin : expression.Children("DiscretizeBin")) {
        type.Add(TypeOfText((*bin)["binValue"]));
    }
    return TypeOfTable(expression, type);
}

/// That of its branches; a missing constant has none.
std::string TypeOfBranches(const XmlNode& apply, const StatedTypes& types) {
    SharedType type;
    int place = 0;
    for (const XmlNode& child : apply.children) {
        if (child.name == "Extension" || place++ == 0 || (child.name == "Constant" && IsTrue(child["missing"]))) {
            continue;
        }
        type.Add(TypeOfExpression(child, types));
    }
    return type.Get();
}

std::string TypeOfApply(const XmlNode& apply, const StatedTypes& types) {
    const std::string called = TypeOfCall(apply, types);
    SharedType type;
    type.Add(called);
    for (const char* attribute : kReplacements) {
        if (apply.Has(attribute)) {
            const std::string own = TypeOfReplacement(apply[attribute], called);
            type.Add(own.empty() ? TypeOfText(apply[attribute]) : own);
        }
    }
    return type.Get();
}

} // namespace

std::string TypeOfCall(const XmlNode& apply, const StatedTypes& types) {
    using Result = veltrane::Function::Result;
    const std::string& name = apply["function"];
    if (const auto own = types.functions.find(name); own != types.functions.end()) {
        return own->second;
    }
    if (name == "if") {
        return TypeOfBranches(apply, types);
    }
    const veltrane::Function* function = veltrane_kit::StandardFunctions().Find(name);
    if (function == nullptr) {
        return "";
    }
    return function->result == Result::TEXT ? "string" : function->result == Result::TRUTH ? "boolean" : kNumber;
}

std::string TypeOfReplacement(const std::string& text, const std::string& type) {
    using veltrane_kit::DataType;
    constexpr std::pair<const char*, DataType> kTypes[] = {{"boolean", DataType::BOOLEAN},
                                                           {"date", DataType::DATE},
                                                           {"time", DataType::TIME},
                                                           {"dateTime", DataType::DATE_TIME},
                                                           {kNumber, DataType::DOUBLE}};
    for (const auto& [word, known] : kTypes) {
        if (type == word && veltrane_kit::ReadValue(text, known).isMissing) {
            return "";
        }
    }
    return type;
}

std::string TypeOfExpression(const XmlNode& expression, const StatedTypes& types) {
    const std::string& name = expression.name;
    if (name == "Apply") {
        return TypeOfApply(expression, types);
    }
    if (name == "Constant") {
        return expression.Has(kType) ? expression[kType] : TypeOfText(expression.text);
    }
    if (name == "MapValues") {
        return TypeOfMap(expression);
    }
    if (name == "Discretize") {
        return TypeOfBins(expression);
    }
    const bool isAggregated = expression.Has("aggregate") && expression["aggregate"] != "none";
    const bool isOfField = name == "FieldRef" || (name == "Lag" && !isAggregated) ||
                           (name == "Aggregate" && expression["function"] != "count");
    return isOfField ? std::string(types.OfField(expression["field"])) : kNumber;
}

} // namespace veltrane::host
