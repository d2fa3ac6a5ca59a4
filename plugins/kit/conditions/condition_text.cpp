#include "kit/conditions/condition_text.h"

#include "kit/conditions/condition_reader.h"
#include "kit/document/array_words.h"

namespace veltrane_kit {

namespace {

constexpr Word<const char*> kOperators[] = {
    {u"equal", " = "},
    {u"notEqual", " <> "},
    {u"lessThan", " < "},
    {u"lessOrEqual", " <= "},
    {u"greaterThan", " > "},
    {u"greaterOrEqual", " >= "},
    {u"isMissing", " is missing"},
    {u"isNotMissing", " is not missing"},
};

void AppendText(const Element& predicate, std::string& text);

void AppendSimple(const Element& predicate, std::string& text) {
    text += predicate.Text(u"field") + predicate.OneOf(u"operator", kOperators) + predicate.TextOr(u"value", "");
}

void AppendSet(const Element& predicate, std::string& text) {
    text += predicate.Text(u"field");
    text += Same(predicate.Raw(u"booleanOperator"), u"isIn") ? " in {" : " not in {";
    const char* separator = "";
    for (const std::string& word : ArrayWords(predicate.RequireChild(u"Array"))) {
        const bool hasBlank = word.empty() || word.find_first_of(" \t\r\n") != std::string::npos;
        const char* const quote = hasBlank ? "\"" : "";
        text.append(separator).append(quote).append(word).append(quote);
        separator = ", ";
    }
    text += "}";
}

void AppendCompound(const Element& predicate, std::string& text) {
    std::string separator(" ");
    separator.append(predicate.Text(u"booleanOperator")).append(" ");
    bool isFirst = true;
    for (const Element child : predicate.Children()) {
        if (ConditionReader::IsPredicate(child)) {
            text += isFirst ? "(" : separator;
            AppendText(child, text);
            isFirst = false;
        }
    }
    text += ")";
}

void AppendText(const Element& predicate, std::string& text) {
    if (predicate.Is(u"SimplePredicate")) {
        AppendSimple(predicate, text);
    } else if (predicate.Is(u"SimpleSetPredicate")) {
        AppendSet(predicate, text);
    } else if (predicate.Is(u"CompoundPredicate")) {
        AppendCompound(predicate, text);
    } else {
        text += predicate.Is(u"True") ? "true" : "false";
    }
}

} // namespace

std::string ConditionText(const Element& predicate) {
    std::string text;
    AppendText(predicate, text);
    return text;
}

} // namespace veltrane_kit
