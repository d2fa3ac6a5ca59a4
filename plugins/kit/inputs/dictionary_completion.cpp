#include "kit/inputs/dictionary_completion.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <string>

namespace veltrane_kit {

namespace {

/// An attribute that no document has, left on boolean fields for the expressions that refer to them.
constexpr const XMLCh* kBooleanMark = u"veltrane-boolean";

void Remove(const Element& element) {
    element.Dom()->getParentNode()->removeChild(element.Dom())->release();
}

void AddValue(const Element& field, const XMLCh* value, const XMLCh* property) {
    xercesc::DOMElement* child = field.Dom()->getOwnerDocument()->createElement(u"Value");
    child->setAttribute(u"value", value);
    if (*property != 0) {
        child->setAttribute(u"property", property);
    }
    field.Dom()->appendChild(child);
}

bool IsContinuous(const Element& field) {
    return Same(field.Raw(u"optype"), u"continuous");
}

bool HasValue(const Element& field, const XMLCh* value) {
    for (const Element child : field.Children()) {
        if (child.Is(u"Value") && Same(child.Raw(u"value"), value)) {
            return true;
        }
    }
    return false;
}

bool ListsValues(const Element& field) {
    for (const Element child : field.Children()) {
        if (child.Is(u"Value") && !Same(child.Raw(u"property"), u"missing")) {
            return true;
        }
    }
    return false;
}

void CompleteBoolean(const Element& field) {
    if (!IsBoolean(field)) {
        return;
    }
    field.Dom()->setAttribute(u"dataType", u"string");
    MarkBoolean(field);
    if (IsContinuous(field)) {
        field.Dom()->setAttribute(u"optype", u"categorical");
    }
    if (!ListsValues(field)) {
        AddValue(field, u"true", u"");
        AddValue(field, u"false", u"");
    }
}

/// Takes the intervals and the invalid values out of a field, which the dictionary would make missing values of.
void DropValidity(const Element& field) {
    for (Element child = field.FirstChild(); child;) {
        const Element next = child.NextSibling();
        const bool isInterval = child.Is(u"Interval") && IsContinuous(field);
        if (isInterval || (child.Is(u"Value") && Same(child.Raw(u"property"), u"invalid"))) {
            Remove(child);
        }
        child = next;
    }
}

} // namespace

bool IsBoolean(const Element& element) {
    return Same(element.Raw(u"dataType"), u"boolean");
}

bool IsCompletedBoolean(const Element& field) {
    return field.Has(kBooleanMark);
}

void MarkBoolean(const Element& field) {
    field.Dom()->setAttribute(kBooleanMark, u"true");
}

std::optional<double> TruthOf(const std::string& text) {
    std::string word = text;
    for (char& c : word) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    if (word == "true" || word == "1") {
        return 1.0;
    }
    return word == "false" || word == "0" ? std::optional<double>(0.0) : std::nullopt;
}

bool HoldsText(const Element& field) {
    return Same(field.Raw(u"dataType"), u"string") || Same(field.Raw(u"x-storageType"), u"string");
}

DeclaredValidities CompleteDictionary(const Element& dictionary) {
    DeclaredValidities validities;
    int count = 0;
    for (Element child = dictionary.FirstChild(); child;) {
        const Element next = child.NextSibling();
        if (child.Is(u"Taxonomy")) {
            Remove(child);
        } else if (child.Is(u"DataField")) {
            ++count;
            CompleteBoolean(child);
            validities[child.TextOr(u"name", "")] = ReadValidity(child);
            DropValidity(child);
            if (HoldsText(child) && !IsContinuous(child) && !HasValue(child, u"")) {
                AddValue(child, u"", u"missing");
            }
        }
        child = next;
    }
    if (!dictionary.Has(u"numberOfFields")) {
        dictionary.Dom()->setAttribute(u"numberOfFields", Widen(std::to_string(count)).c_str());
    }
    return validities;
}

} // namespace veltrane_kit
