#include "kit/inputs/expression_completion.h"

#include "kit/inputs/dictionary_completion.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <map>
#include <string>

namespace veltrane_kit {

namespace {

using xercesc::DOMElement;

enum class FieldType { NUMBER, TEXT, BOOLEAN_TEXT };

/// Completes expressions one derived field after the other; a field can refer to the data and to the fields before it.
class ExpressionCompleter {
public:
    explicit ExpressionCompleter(const Element& dictionary);

    void CompleteField(const Element& field);

private:
    static FieldType TypeOfField(const Element& field);
    FieldType TypeOf(const Element& reference) const;
    const XMLCh* TrueTextOf(const XMLCh* field) const;
    void CompleteType(const Element& field);
    void Complete(const Element& expression, bool standsByText);
    void CompleteConstant(const Element& constant, bool standsByText);
    void CompleteConditions(const Element& apply);
    void CompleteOrder(const Element& apply);
    void MakeIndicator(const Element& normDiscrete);
    bool RefersToText(const Element& apply) const;

    static DOMElement* Make(const Element& at, const XMLCh* tag);
    static DOMElement* MakeApply(const Element& at, const XMLCh* function);
    static DOMElement* MakeConstant(const Element& at, const XMLCh* type, const XMLCh* text);
    static DOMElement* MakeReference(const Element& at, const XMLCh* field);

    std::map<std::u16string, FieldType> fTypes;
    std::map<std::u16string, std::u16string> fTrueTexts; ///< of boolean fields
};

ExpressionCompleter::ExpressionCompleter(const Element& dictionary) {
    for (const Element field : dictionary.Children()) {
        if (!field.Is(u"DataField")) {
            continue;
        }
        fTypes[field.Raw(u"name")] = TypeOfField(field);
        for (const Element value : field.Children()) {
            if (IsCompletedBoolean(field) && value.Is(u"Value") && TruthOf(value.TextOr(u"value", "")) == 1.0) {
                fTrueTexts[field.Raw(u"name")] = value.Raw(u"value");
            }
        }
    }
}

/// The type of a completed field.
FieldType ExpressionCompleter::TypeOfField(const Element& field) {
    return !HoldsText(field)           ? FieldType::NUMBER
           : IsCompletedBoolean(field) ? FieldType::BOOLEAN_TEXT
                                       : FieldType::TEXT;
}

/// How a boolean field spells what is true.
const XMLCh* ExpressionCompleter::TrueTextOf(const XMLCh* field) const {
    const auto found = fTrueTexts.find(field);
    return found == fTrueTexts.end() ? u"true" : found->second.c_str();
}

FieldType ExpressionCompleter::TypeOf(const Element& reference) const {
    const auto found = fTypes.find(reference.Raw(u"field"));
    return found == fTypes.end() ? FieldType::NUMBER : found->second;
}

void ExpressionCompleter::CompleteField(const Element& field) {
    CompleteType(field);
    for (Element child = field.FirstChild(); child;) {
        const Element next = child.NextSibling();
        Complete(child, HoldsText(field));
        child = next;
    }
    fTypes[field.Raw(u"name")] = TypeOfField(field);
}

/// A boolean derived field holds 1 or 0 where a function computes it, and the text of its source otherwise.
void ExpressionCompleter::CompleteType(const Element& field) {
    if (!IsBoolean(field)) {
        return;
    }
    for (const Element child : field.Children()) {
        const bool isNumber = child.Is(u"Apply") || (child.Is(u"FieldRef") && TypeOf(child) == FieldType::NUMBER);
        if (!child.Is(u"Extension") && !child.Is(u"Decisions") && !child.Is(u"Value")) {
            field.Dom()->setAttribute(u"dataType", isNumber ? u"double" : u"string");
        }
        if (child.Is(u"FieldRef")) {
            fTrueTexts[field.Raw(u"name")] = TrueTextOf(child.Raw(u"field"));
        }
    }
    if (HoldsText(field)) {
        MarkBoolean(field);
    }
}

/// @param standsByText whether a constant is compared with a text field, or is the value of one
void ExpressionCompleter::Complete(const Element& expression, bool standsByText) {
    if (expression.Is(u"Constant")) {
        CompleteConstant(expression, standsByText);
    } else if (expression.Is(u"NormDiscrete")) {
        MakeIndicator(expression);
    } else if (expression.Is(u"Apply")) {
        CompleteOrder(expression);
        const bool refersToText = RefersToText(expression);
        CompleteConditions(expression);
        for (Element child = expression.FirstChild(); child;) {
            const Element next = child.NextSibling();
            Complete(child, refersToText);
            child = next;
        }
    }
}

/// Whether a text field is among the arguments.
bool ExpressionCompleter::RefersToText(const Element& apply) const {
    for (const Element argument : apply.Children()) {
        if (argument.Is(u"FieldRef") && TypeOf(argument) != FieldType::NUMBER) {
            return true;
        }
    }
    return false;
}

void ExpressionCompleter::CompleteConstant(const Element& constant, bool standsByText) {
    DOMElement* dom = constant.Dom();
    const XMLCh* text = dom->getTextContent();
    double number = 0.0;
    if (!constant.Has(u"dataType")) {
        if (!ReadNumber(text, number) && *text != 0) {
            dom->setAttribute(u"dataType", u"string");
        }
    } else if (IsBoolean(constant) && (Same(text, u"true") || Same(text, u"false"))) {
        dom->setAttribute(u"dataType", standsByText ? u"string" : u"double");
        if (!standsByText) {
            dom->setTextContent(Same(text, u"true") ? u"1" : u"0");
        }
    }
}

/// A boolean text can't be a condition: what is one is compared with "true".
void ExpressionCompleter::CompleteConditions(const Element& apply) {
    const XMLCh* function = apply.Raw(u"function");
    const bool isIf = Same(function, u"if");
    if (!isIf && !Same(function, u"and") && !Same(function, u"or") && !Same(function, u"not")) {
        return;
    }
    for (Element child = apply.FirstChild(); child;) {
        const Element next = isIf ? Element() : child.NextSibling();
        if (child.Is(u"FieldRef") && TypeOf(child) == FieldType::BOOLEAN_TEXT) {
            DOMElement* equal = MakeApply(apply, u"equal");
            apply.Dom()->replaceChild(equal, child.Dom());
            equal->appendChild(child.Dom());
            equal->appendChild(MakeConstant(apply, u"string", TrueTextOf(child.Raw(u"field"))));
        }
        child = next;
    }
}

/// A boolean text has no order: in a comparison by one it counts as the number that it stands for.
void ExpressionCompleter::CompleteOrder(const Element& apply) {
    const XMLCh* function = apply.Raw(u"function");
    if (!Same(function, u"lessThan") && !Same(function, u"lessOrEqual") && !Same(function, u"greaterThan") &&
        !Same(function, u"greaterOrEqual")) {
        return;
    }
    for (Element child = apply.FirstChild(); child;) {
        const Element next = child.NextSibling();
        if (child.Is(u"FieldRef") && TypeOf(child) == FieldType::BOOLEAN_TEXT) {
            DOMElement* indicator = Make(apply, u"NormDiscrete");
            indicator->setAttribute(u"field", child.Raw(u"field"));
            indicator->setAttribute(u"value", TrueTextOf(child.Raw(u"field")));
            if (const auto truth = TruthOf(child.TextOr(u"mapMissingTo", ""))) {
                indicator->setAttribute(u"mapMissingTo", *truth == 1.0 ? u"1" : u"0");
            }
            apply.Dom()->replaceChild(indicator, child.Dom());
        }
        child = next;
    }
}

/// Puts if(isMissing(field), missing, equal(field, value)) in the place of a NormDiscrete.
void ExpressionCompleter::MakeIndicator(const Element& normDiscrete) {
    if (!normDiscrete.Has(u"field") || !normDiscrete.Has(u"value")) {
        return;
    }
    const XMLCh* field = normDiscrete.Raw(u"field");
    const bool isText = TypeOf(normDiscrete) != FieldType::NUMBER;

    DOMElement* isMissing = MakeApply(normDiscrete, u"isMissing");
    isMissing->appendChild(MakeReference(normDiscrete, field));

    DOMElement* missing = nullptr;
    if (const XMLCh* replacement = normDiscrete.Raw(u"mapMissingTo"); *replacement != 0) {
        missing = MakeConstant(normDiscrete, u"double", replacement);
    } else {
        // There is no constant for the missing number; a quotient by 0 is one.
        missing = MakeApply(normDiscrete, u"/");
        missing->appendChild(MakeConstant(normDiscrete, u"double", u"1"));
        missing->appendChild(MakeConstant(normDiscrete, u"double", u"0"));
    }

    DOMElement* equal = MakeApply(normDiscrete, u"equal");
    equal->appendChild(MakeReference(normDiscrete, field));
    equal->appendChild(MakeConstant(normDiscrete, isText ? u"string" : u"double", normDiscrete.Raw(u"value")));

    DOMElement* choice = MakeApply(normDiscrete, u"if");
    choice->appendChild(isMissing);
    choice->appendChild(missing);
    choice->appendChild(equal);
    normDiscrete.Dom()->getParentNode()->replaceChild(choice, normDiscrete.Dom());
}

DOMElement* ExpressionCompleter::Make(const Element& at, const XMLCh* tag) {
    return at.Dom()->getOwnerDocument()->createElement(tag);
}

DOMElement* ExpressionCompleter::MakeApply(const Element& at, const XMLCh* function) {
    DOMElement* apply = Make(at, u"Apply");
    apply->setAttribute(u"function", function);
    return apply;
}

DOMElement* ExpressionCompleter::MakeConstant(const Element& at, const XMLCh* type, const XMLCh* text) {
    DOMElement* constant = Make(at, u"Constant");
    constant->setAttribute(u"dataType", type);
    constant->appendChild(at.Dom()->getOwnerDocument()->createTextNode(text));
    return constant;
}

DOMElement* ExpressionCompleter::MakeReference(const Element& at, const XMLCh* field) {
    DOMElement* reference = Make(at, u"FieldRef");
    reference->setAttribute(u"field", field);
    return reference;
}

} // namespace

void CompleteExpressions(const Element& dictionary, const Element& derivedFields, const Element& output) {
    ExpressionCompleter completer(dictionary);
    for (const Element field : derivedFields.Children()) {
        completer.CompleteField(field);
    }
    if (!output) {
        return;
    }
    for (const Element field : output.Children()) {
        if (field.Is(u"OutputField")) {
            completer.CompleteField(field);
        }
    }
}

} // namespace veltrane_kit
