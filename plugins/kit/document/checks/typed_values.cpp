#include "kit/document/checks/typed_values.h"

#include "kit/document/checks/element_rules.h"

namespace veltrane_kit {

namespace {

constexpr const XMLCh* kType = u"dataType";

/// The type that an expression says its values have, or the field whose expression it is.
const XMLCh* TypeOf(const Element& expression) {
    if (expression.Has(kType)) {
        return expression.Raw(kType);
    }
    const Element field(static_cast<xercesc::DOMElement*>(expression.Dom()->getParentNode()), expression.Reader());
    return field.Is(u"DerivedField") ? field.Raw(kType) : u"";
}

bool IsNumber(const XMLCh* text) {
    double number = 0.0;
    return ReadNumber(text, number);
}

/// A replacement may be empty, and then there is none.
void CheckReplacement(const Element& expression, const XMLCh* attribute) {
    if (*expression.Raw(attribute) != 0 && !IsNumber(expression.Raw(attribute))) {
        expression.RaiseInvalid(attribute);
    }
}

} // namespace

bool IsNumberType(const XMLCh* type) {
    return Same(type, u"integer") || Same(type, u"float") || Same(type, u"double");
}

void CheckReplacements(const Element& expression) {
    CheckReplacement(expression, u"mapMissingTo");
    CheckReplacement(expression, u"defaultValue");
}

bool GivesNumbers(const Element& expression) {
    return IsNumberType(TypeOf(expression));
}

void CheckBinValues(const Element& discretize) {
    if (!GivesNumbers(discretize)) {
        return;
    }
    CheckReplacements(discretize);
    for (const Element bin : discretize.Children()) {
        if (bin.Is(u"DiscretizeBin") && !IsNumber(bin.Raw(u"binValue"))) {
            bin.RaiseInvalid(u"binValue");
        }
    }
}

void CheckResult(const Element& apply) {
    if (GivesNumbers(apply)) {
        CheckReplacement(apply, u"mapMissingTo");
        CheckReplacement(apply, u"defaultValue");
    }
}

} // namespace veltrane_kit
