#include "kit/document/checks/element_rules.h"

#include "kit/document/checks/typed_values.h"
#include "kit/document/raise.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <string_view>

namespace veltrane_kit {

namespace {

/// The text with its small ASCII letters alone, without white space around.
std::u16string Lowered(const XMLCh* text) {
    std::u16string_view view(text);
    constexpr std::u16string_view kSpaces = u" \t\r\n";
    view.remove_prefix(std::min(view.find_first_not_of(kSpaces), view.size()));
    view = view.substr(0, view.find_last_not_of(kSpaces) + 1);
    std::u16string lowered(view);
    for (char16_t& c : lowered) {
        c = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
    }
    return lowered;
}

bool IsTruthValue(const XMLCh* text) {
    const std::u16string word = Lowered(text);
    return word == u"true" || word == u"false" || word == u"1" || word == u"0";
}

bool IsExpression(const Element& element) {
    static constexpr const XMLCh* kTags[] = {u"Constant",   u"FieldRef",  u"NormContinuous", u"NormDiscrete",
                                             u"Discretize", u"MapValues", u"TextIndex",      u"Apply",
                                             u"Aggregate",  u"Lag"};
    return std::any_of(std::begin(kTags), std::end(kTags), [&](const XMLCh* tag) { return element.Is(tag); });
}

/// How many expressions stand in an element, and the failure where there are two.
int CountExpressions(const Element& element, const XMLCh* name) {
    int count = 0;
    for (const Element child : element.Children()) {
        count += IsExpression(child) ? 1 : 0;
    }
    if (count > 1) {
        Raise<Message::MORE_THAN_ONE_EXPRESSION_IN>(element.Tag(), element.TextOr(name, ""));
    }
    return count;
}

void RequireOneExpression(const Element& element, const XMLCh* name) {
    if (CountExpressions(element, name) == 0) {
        Raise<Message::MISSING_DEFINITION_OF>("EXPRESSION", element.TextOr(name, ""), element.Tag());
    }
}

void CheckOrder(const Element& element, const XMLCh* low, const XMLCh* high) {
    if (element.Has(low) && element.Has(high) && element.Number(low) > element.Number(high)) {
        Raise<Message::VALUE_ABOVE_OTHER>(element.Text(low), Narrow(low), element.Text(high), Narrow(high),
                                          element.Tag());
    }
}

/// Priors are shares of one whole. Rounded to two places they may come to a little more.
void CheckPriors(const Element& target) {
    constexpr double kMostOfAll = 1.01;
    constexpr double kRounding = 1e-9; // of the sum
    double sum = 0.0;
    for (const Element value : target.Children()) {
        sum += value.Is(u"TargetValue") ? value.NumberOr(u"priorProbability", 0.0) : 0.0;
        if (sum > kMostOfAll + kRounding) {
            value.RaiseInvalid(u"priorProbability");
        }
    }
}

} // namespace

void CheckListedNumbers(const Element& dataField) {
    if (!IsNumberType(dataField.Raw(u"dataType")) || Same(dataField.Raw(u"x-storageType"), u"string")) {
        return;
    }
    for (const Element child : dataField.Children()) {
        const XMLCh* property = child.Raw(u"property");
        double number = 0.0;
        if (child.Is(u"Value") && (*property == 0 || Same(property, u"valid")) &&
            !ReadNumber(child.Raw(u"value"), number)) {
            child.RaiseInvalid(u"value");
        }
    }
}

void CheckMargins(const Element& interval) {
    if (!interval.Has(u"leftMargin") && !interval.Has(u"rightMargin")) {
        Raise<Message::MISSING_VALUES_OF_BOTH>("leftMargin", "rightMargin", interval.Tag());
    }
    CheckOrder(interval, u"leftMargin", u"rightMargin");
}

void CheckOneExpression(const Element& field) {
    RequireOneExpression(field, u"name");
}

void CheckAnyExpression(const Element& field) {
    CountExpressions(field, u"name");
}

void CheckOneTerm(const Element& textIndex) {
    RequireOneExpression(textIndex, u"textField");
}

void CheckFunction(const Element& defineFunction) {
    CheckOneExpression(defineFunction);
    std::set<std::string> names;
    for (const Element child : defineFunction.Children()) {
        if (child.Is(u"ParameterField") && !names.insert(child.Text(u"name")).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.Text(u"name"), defineFunction.Tag());
        }
    }
}

void CheckContent(const Element& constant) {
    const XMLCh* type = constant.Raw(u"dataType");
    const bool isTruthValue = Same(type, u"boolean");
    if ((!isTruthValue && !IsNumberType(type)) || constant.FlagOr(u"missing", false)) {
        return;
    }
    const XMLCh* text = constant.Dom()->getTextContent();
    double number = 0.0;
    if (*text != 0 && !(isTruthValue ? IsTruthValue(text) : ReadNumber(text, number))) {
        Raise<Message::INVALID_CONTENT>(constant.Content(), constant.Tag());
    }
}

void CheckPoints(const Element& normContinuous) {
    Element before;
    int count = 0;
    for (const Element point : normContinuous.Children()) {
        if (!point.Is(u"LinearNorm")) {
            continue;
        }
        if (before && !(point.Number(u"orig") > before.Number(u"orig"))) {
            Raise<Message::VALUE_NOT_ASCENDING>(point.Text(u"orig"), "orig", point.Tag(), before.Text(u"orig"));
        }
        before = point;
        ++count;
    }
    if (count < 2) {
        Raise<Message::REQUIRES_MORE_THAN_ONE>("LinearNorm", normContinuous.Tag());
    }
}

void CheckBin(const Element& bin) {
    static_cast<void>(bin.RequireChild(u"Interval"));
}

void CheckOutlierBounds(const Element& miningField) {
    CheckOrder(miningField, u"lowValue", u"highValue");
}

void CheckTarget(const Element& target) {
    CheckOrder(target, u"min", u"max");
    CheckPriors(target);
}

} // namespace veltrane_kit
