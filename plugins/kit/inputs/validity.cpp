#include "kit/inputs/validity.h"

#include "kit/document/raise.h"

namespace veltrane_kit {

namespace {

struct Closure {
    bool leftOpen;
    bool rightOpen;
};

constexpr Word<Closure> kClosures[] = {
    {u"closedClosed", {false, false}},
    {u"closedOpen", {false, true}},
    {u"openClosed", {true, false}},
    {u"openOpen", {true, true}},
};

ValidInterval ReadInterval(const Element& element) {
    if (!element.Has(u"leftMargin") && !element.Has(u"rightMargin")) {
        Raise<Message::REQUIRES_ONE_OF>("rightMargin", "leftMargin");
    }
    const Closure closure = element.OneOf(u"closure", kClosures);
    return {element.NumberOr(u"leftMargin", -kInfinity), element.NumberOr(u"rightMargin", kInfinity), closure.leftOpen,
            closure.rightOpen};
}

} // namespace

DeclaredValidity ReadValidity(const Element& dataField) {
    DeclaredValidity validity;
    for (const Element child : dataField.Children()) {
        if (child.Is(u"Interval")) {
            validity.intervals.push_back(ReadInterval(child));
        } else if (child.Is(u"Value")) {
            const XMLCh* property = child.Raw(u"property");
            if (Same(property, u"invalid")) {
                validity.invalidTexts.push_back(child.AnyText(u"value"));
            } else if (Same(property, u"") || Same(property, u"valid")) {
                validity.validTexts.push_back(child.AnyText(u"value"));
            }
        }
    }
    return validity;
}

} // namespace veltrane_kit
