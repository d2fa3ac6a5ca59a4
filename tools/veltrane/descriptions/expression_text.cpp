#include "descriptions/expression_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>

namespace veltrane::host {
namespace {

/// A table is shown with this many entries.
constexpr std::size_t kShownEntries = 6;

constexpr std::string_view kOperators = "+-*/";

bool IsNumber(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && error != std::errc::invalid_argument && end == text.data() + text.size();
}

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

/// A value of which the document doesn't say whether it is a text.
std::string ValueText(const std::string& text) {
    return IsNumber(text) ? text : Quoted(text);
}

std::string ConstantText(const XmlNode& constant) {
    if (constant["missing"] == "true") {
        return "missing";
    }
    const std::string& type = constant["dataType"];
    if (type.empty()) {
        return ValueText(constant.text);
    }
    return type == "string" || !IsNumber(constant.text) ? Quoted(constant.text) : constant.text;
}

/// Entries behind one another, cut where there are many.
class Entries {
public:
    void Add(const std::string& entry) {
        if (++fCount <= kShownEntries) {
            fText += (fText.empty() ? "" : ", ") + entry;
        }
    }

    std::string Text() const { return fCount <= kShownEntries ? fText : fmt::format("{}, ... ({})", fText, fCount); }

private:
    std::string fText;
    std::size_t fCount = 0;
};

/// What an expression gives in the place of a missing value, by one of its attributes.
void AddElse(std::string& text, const XmlNode& expression, const char* attribute, const char* word) {
    if (expression.Has(attribute)) {
        text += fmt::format("; {} {}", word, ValueText(expression[attribute]));
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

std::string FieldRefText(const XmlNode& expression) {
    if (!expression.Has("mapMissingTo")) {
        return expression["field"];
    }
    return fmt::format("ifMissing({}, {})", expression["field"], ValueText(expression["mapMissingTo"]));
}

std::string NormContinuousText(const XmlNode& expression) {
    Entries points;
    for (const XmlNode* point : expression.Children("LinearNorm")) {
        points.Add((*point)["orig"] + " -> " + (*point)["norm"]);
    }
    std::string text = fmt::format("linear({}: {}", expression["field"], points.Text());
    AddElse(text, expression, "mapMissingTo", "missing");
    if (expression.Has("outliers")) {
        text += "; outliers " + expression["outliers"];
    }
    return text + ")";
}

std::string NormDiscreteText(const XmlNode& expression) {
    std::string text = fmt::format("indicator({} = {}", expression["field"], Quoted(expression["value"]));
    AddElse(text, expression, "mapMissingTo", "missing");
    return text + ")";
}

std::string DiscretizeText(const XmlNode& expression) {
    Entries bins;
    for (const XmlNode* bin : expression.Children("DiscretizeBin")) {
        bins.Add(IntervalText(bin->Child("Interval")) + " -> " + Quoted((*bin)["binValue"]));
    }
    std::string text = fmt::format("bins({}: {}", expression["field"], bins.Text());
    AddElse(text, expression, "defaultValue", "else");
    AddElse(text, expression, "mapMissingTo", "missing");
    return text + ")";
}

/// A cell of a row, by the name of its column, which may have a prefix in the table.
std::string CellText(const XmlNode& row, const std::string& column) {
    for (const XmlNode& cell : row.children) {
        if (cell.name == column || cell.name.ends_with(":" + column)) {
            return cell.text;
        }
    }
    return {};
}

std::string MapValuesText(const XmlNode& expression) {
    Entries fields;
    const std::vector<const XmlNode*> pairs = expression.Children("FieldColumnPair");
    for (const XmlNode* pair : pairs) {
        fields.Add((*pair)["field"]);
    }
    Entries rows;
    for (const XmlNode* row : expression.Child("InlineTable").Children("row")) {
        Entries keys;
        for (const XmlNode* pair : pairs) {
            keys.Add(ValueText(CellText(*row, (*pair)["column"])));
        }
        rows.Add(keys.Text() + " -> " + ValueText(CellText(*row, expression["outputColumn"])));
    }
    std::string text = fmt::format("map({}: {}", fields.Text(), rows.Text());
    AddElse(text, expression, "defaultValue", "else");
    AddElse(text, expression, "mapMissingTo", "missing");
    return text + ")";
}

std::string LagText(const XmlNode& expression) {
    std::string text = fmt::format("lag({}, {}", expression["field"], expression.Has("n") ? expression["n"] : "1");
    if (expression.Has("aggregate") && expression["aggregate"] != "none") {
        text += ", " + expression["aggregate"];
    }
    for (const XmlNode* block : expression.Children("BlockIndicator")) {
        text += " within " + (*block)["field"];
    }
    return text + ")";
}

std::string AggregateText(const XmlNode& expression) {
    std::string text = fmt::format("{}({}", expression["function"], expression["field"]);
    if (expression.Has("groupField")) {
        text += " by " + expression["groupField"];
    }
    return text + ")";
}

std::string Text(const XmlNode& expression, bool isOperand);

bool IsArgument(const XmlNode& node) {
    return node.name != "Extension";
}

std::string ApplyText(const XmlNode& expression, bool isOperand) {
    std::vector<const XmlNode*> arguments;
    for (const XmlNode& child : expression.children) {
        if (IsArgument(child)) {
            arguments.push_back(&child);
        }
    }
    const std::string& function = expression["function"];
    const bool isOperator =
        function.size() == 1 && kOperators.find(function) != kOperators.npos && arguments.size() == 2;
    std::string text;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        text += (at == 0 ? "" : isOperator ? " " + function + " " : ", ") + Text(*arguments[at], isOperator);
    }
    const bool isBare = isOperator && !isOperand && !expression.Has("mapMissingTo") && !expression.Has("defaultValue");
    text = isBare ? text : fmt::format("{}({})", isOperator ? "" : function, text);
    for (const char* attribute : {"mapMissingTo", "defaultValue"}) {
        if (expression.Has(attribute)) {
            text = fmt::format("ifMissing({}, {})", text, ValueText(expression[attribute]));
        }
    }
    return text;
}

/// How an element is written out.
struct Writer {
    std::string_view element;
    std::string (*text)(const XmlNode&);
};

constexpr Writer kWriters[] = {
    {"Constant", ConstantText},
    {"FieldRef", FieldRefText},
    {"NormContinuous", NormContinuousText},
    {"NormDiscrete", NormDiscreteText},
    {"Discretize", DiscretizeText},
    {"MapValues", MapValuesText},
    {"Lag", LagText},
    {"Aggregate", AggregateText},
};

/// The reader of documents bounds how deep an expression is.
std::string Text(const XmlNode& expression, bool isOperand) {
    if (expression.name == "Apply") {
        return ApplyText(expression, isOperand);
    }
    for (const Writer& writer : kWriters) {
        if (writer.element == expression.name) {
            return writer.text(expression);
        }
    }
    return expression.name + "(...)";
}

} // namespace

const XmlNode& ExpressionOf(const XmlNode& field) {
    static const XmlNode kNone;
    for (const XmlNode& child : field.children) {
        const bool isKnown = std::any_of(std::begin(kWriters), std::end(kWriters),
                                         [&](const Writer& writer) { return writer.element == child.name; });
        if (isKnown || child.name == "Apply" || child.name == "TextIndex") {
            return child;
        }
    }
    return kNone;
}

std::string SourceOf(const XmlNode& expression) {
    if (expression.name == "Constant") {
        return expression.text;
    }
    if (expression.Has("field")) {
        return expression["field"];
    }
    return expression.Child("FieldColumnPair")["field"];
}

std::string ExpressionText(const XmlNode& expression) {
    return expression.name.empty() ? "" : Text(expression, false);
}

} // namespace veltrane::host
