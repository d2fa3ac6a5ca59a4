#include "formulas/expression_text.h"

#include "formulas/formula_parts.h"
#include "formulas/result_types.h"
#include "formulas/stated_values.h"
#include "formulas/text_index_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace veltrane::host {
namespace {

constexpr std::string_view kOperators = "+-*/";
constexpr std::string_view kMissing = "missing";
constexpr std::string_view kNumber = "double";
constexpr std::string_view kString = "string";

/// What an expression is written by.
struct Scope {
    const StatedTypes& types;
    std::string_view type; ///< of the field whose whole expression it is; empty inside of others

    Scope Inside() const { return {types, {}}; }

    /// The type of the values that an expression of tables states, else that of its field.
    std::string_view TypeOfValues(const XmlNode& expression) const {
        return expression.Has("dataType") ? std::string_view(expression["dataType"]) : type;
    }
};

std::string Text(const XmlNode& expression, const Scope& scope, bool isOperand);

std::string ConstantText(const XmlNode& constant, const Scope& scope) {
    return IsTrue(constant["missing"]) ? std::string(kMissing)
                                       : StatedText(constant.text, scope.TypeOfValues(constant));
}

/// What an expression gives in the place of a missing value, by one of its attributes.
void AddElse(std::string& text, const XmlNode& expression, const char* attribute, std::string_view word,
             std::string_view type) {
    if (expression.Has(attribute)) {
        text += fmt::format("; {} {}", word, StatedText(expression[attribute], type));
    }
}

std::string IntervalText(const XmlNode& interval) {
    const std::string& closure = interval["closure"];
    const bool leftOpen = closure.starts_with("open");
    const bool rightOpen = closure.ends_with("Open");
    if (!interval.Has("leftMargin")) {
        return fmt::format("{} {}", rightOpen ? "<" : "<=", interval["rightMargin"]);
    }
    if (!interval.Has("rightMargin")) {
        return fmt::format("{} {}", leftOpen ? ">" : ">=", interval["leftMargin"]);
    }
    return fmt::format("{}{}, {}{}", leftOpen ? '(' : '[', interval["leftMargin"], interval["rightMargin"],
                       rightOpen ? ')' : ']');
}

std::string FieldRefText(const XmlNode& expression, const Scope& scope) {
    if (!expression.Has("mapMissingTo")) {
        return expression["field"];
    }
    return fmt::format("ifMissing({}, {})", expression["field"],
                       StatedText(expression["mapMissingTo"], scope.types.OfField(expression["field"])));
}

std::string NormContinuousText(const XmlNode& expression, const Scope&) {
    Entries points;
    for (const XmlNode* point : expression.Children("LinearNorm")) {
        points.Add((*point)["orig"] + " -> " + (*point)["norm"]);
    }
    std::string text = fmt::format("linear({}: {}", expression["field"], points.Text());
    AddElse(text, expression, "mapMissingTo", kMissing, kNumber);
    if (expression.Has("outliers")) {
        text += "; outliers " + expression["outliers"];
    }
    return text + ")";
}

/// A value beside a field counts as the field's type: where that is a number, it stands without quotes.
std::string NormDiscreteText(const XmlNode& expression, const Scope& scope) {
    const std::string_view type = scope.types.OfField(expression["field"]);
    std::string text = fmt::format("indicator({} = {}", expression["field"],
                                   StatedText(expression["value"], type.empty() ? kString : type));
    AddElse(text, expression, "mapMissingTo", kMissing, kNumber);
    return text + ")";
}

std::string DiscretizeText(const XmlNode& expression, const Scope& scope) {
    const std::string_view type = scope.TypeOfValues(expression);
    Entries bins;
    for (const XmlNode* bin : expression.Children("DiscretizeBin")) {
        bins.Add(IntervalText(bin->Child("Interval")) + " -> " + StatedText((*bin)["binValue"], type));
    }
    std::string text = fmt::format("bins({}: {}", expression["field"], bins.Text());
    AddElse(text, expression, "defaultValue", "else", type);
    AddElse(text, expression, "mapMissingTo", kMissing, type);
    return text + ")";
}

std::string CellText(const XmlNode& row, const std::string& column, std::string_view type) {
    const XmlNode* cell = CellOf(row, column);
    return cell == nullptr ? std::string(kMissing) : StatedText(cell->text, type);
}

std::string MapValuesText(const XmlNode& expression, const Scope& scope) {
    const std::string_view type = scope.TypeOfValues(expression);
    Entries fields;
    const std::vector<const XmlNode*> pairs = expression.Children("FieldColumnPair");
    for (const XmlNode* pair : pairs) {
        fields.Add((*pair)["field"]);
    }
    Entries rows;
    for (const XmlNode* row : expression.Child("InlineTable").Children("row")) {
        if (!rows.IsShown()) {
            rows.AddUnshown();
            continue;
        }
        Entries keys;
        for (const XmlNode* pair : pairs) {
            keys.Add(CellText(*row, (*pair)["column"], scope.types.OfField((*pair)["field"])));
        }
        rows.Add(keys.Text() + " -> " + CellText(*row, expression["outputColumn"], type));
    }
    std::string text = fmt::format("map({}: {}", fields.Text(), rows.Text());
    AddElse(text, expression, "defaultValue", "else", type);
    AddElse(text, expression, "mapMissingTo", kMissing, type);
    return text + ")";
}

std::string LagText(const XmlNode& expression, const Scope&) {
    std::string text = fmt::format("lag({}, {}", expression["field"], expression.Has("n") ? expression["n"] : "1");
    if (expression.Has("aggregate") && expression["aggregate"] != "none") {
        text += ", " + expression["aggregate"];
    }
    for (const XmlNode* block : expression.Children("BlockIndicator")) {
        text += " within " + (*block)["field"];
    }
    return text + ")";
}

std::string AggregateText(const XmlNode& expression, const Scope&) {
    std::string text = fmt::format("{}({}", expression["function"], expression["field"]);
    if (expression.Has("groupField")) {
        text += " by " + expression["groupField"];
    }
    return text + ")";
}

std::string TextIndexText(const XmlNode& expression, const Scope& scope) {
    const XmlNode& term = ExpressionOf(expression);
    return fmt::format("textIndex({}, {}{})", expression["textField"],
                       term.name.empty() ? "" : Text(term, {scope.types, kString}, false),
                       TextIndexSettings(expression));
}

/// A replacement of missing arguments stands within the function, which isn't applied then; one of a missing result
/// stands around it.
std::string ApplyText(const XmlNode& expression, const Scope& scope, bool isOperand) {
    std::vector<const XmlNode*> arguments;
    for (const XmlNode& child : expression.children) {
        if (child.name != "Extension") {
            arguments.push_back(&child);
        }
    }
    const std::string& function = expression["function"];
    const bool isOperator =
        function.size() == 1 && kOperators.find(function) != kOperators.npos && arguments.size() == 2;
    std::string text;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        text += (at == 0      ? ""
                 : isOperator ? " " + function + " "
                              : ", ") +
                Text(*arguments[at], scope.Inside(), isOperator);
    }
    std::string type = TypeOfCall(expression, scope.types);
    type = type.empty() ? scope.type : type;
    AddElse(text, expression, "mapMissingTo", kMissing, TypeOfReplacement(expression["mapMissingTo"], type));
    const bool hasElse = expression.Has("defaultValue");
    const bool isBare = isOperator && !expression.Has("mapMissingTo") && (hasElse || !isOperand);
    text = isBare ? text : fmt::format("{}({})", isOperator ? "" : function, text);
    if (!hasElse) {
        return text;
    }
    const std::string& other = expression["defaultValue"];
    return fmt::format("ifMissing({}, {})", text, StatedText(other, TypeOfReplacement(other, type)));
}

/// How an element is written out.
struct Writer {
    std::string_view element;
    std::string (*text)(const XmlNode&, const Scope&);
};

constexpr Writer kWriters[] = {
    {"Constant", ConstantText},
    {"FieldRef", FieldRefText},
    {"NormContinuous", NormContinuousText},
    {"NormDiscrete", NormDiscreteText},
    {"Discretize", DiscretizeText},
    {"MapValues", MapValuesText},
    {"TextIndex", TextIndexText},
    {"Lag", LagText},
    {"Aggregate", AggregateText},
};

/// The reader of documents bounds how deep an expression is.
std::string Text(const XmlNode& expression, const Scope& scope, bool isOperand) {
    if (expression.name == "Apply") {
        return ApplyText(expression, scope, isOperand);
    }
    for (const Writer& writer : kWriters) {
        if (writer.element == expression.name) {
            return writer.text(expression, scope);
        }
    }
    return expression.name + "(...)";
}

} // namespace

std::string_view StatedTypes::OfField(const std::string& name) const {
    const auto found = fields.find(name);
    return found == fields.end() ? std::string_view() : found->second;
}

const std::string& StatedType(const XmlNode& field) {
    return field[field.Has("dataType") ? "dataType" : "x-storageType"];
}

const XmlNode& ExpressionOf(const XmlNode& field) {
    static const XmlNode kNone;
    for (const XmlNode& child : field.children) {
        const bool isKnown = std::any_of(std::begin(kWriters), std::end(kWriters),
                                         [&](const Writer& writer) { return writer.element == child.name; });
        if (isKnown || child.name == "Apply") {
            return child;
        }
    }
    return kNone;
}

std::string SourceOf(const XmlNode& expression) {
    if (expression.name == "Constant") {
        return expression.text;
    }
    for (const char* attribute : {"field", "textField"}) {
        if (expression.Has(attribute)) {
            return expression[attribute];
        }
    }
    return expression.Child("FieldColumnPair")["field"];
}

std::string ExpressionText(const XmlNode& expression, const StatedTypes& types, std::string_view type) {
    return expression.name.empty() ? "" : Text(expression, {types, type}, false);
}

} // namespace veltrane::host
