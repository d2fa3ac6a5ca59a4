#include "amount.h"

#include "kit/document/raise.h"

namespace veltrane_general {

using veltrane_kit::Element;
using veltrane_kit::Inputs;
using veltrane_kit::Message;
using veltrane_kit::Narrow;
using veltrane_kit::RaiseAt;

int RequireNumber(const Element& element, const XMLCh* attribute, Inputs& inputs) {
    return RequireNumber(element, attribute, inputs.RequireSlot(element, attribute), inputs);
}

int RequireNumber(const Element& element, const XMLCh* attribute, int slot, const Inputs& inputs) {
    if (!inputs.IsNumeric(slot)) {
        RaiseAt<Message::REQUIRES_NUMERIC>(element.Tag(), Narrow(attribute).c_str(), element.Text(attribute));
    }
    return slot;
}

Amount ReadAmount(const Element& element, const XMLCh* value, const XMLCh* variable, double usual, Inputs& inputs) {
    if (element.Has(value) && element.Has(variable)) {
        RaiseAt<Message::CONFLICTING_ATTRIBUTES>(element.Tag(), nullptr, Narrow(value), Narrow(variable));
    }
    if (element.Has(variable)) {
        return {usual, RequireNumber(element, variable, inputs)};
    }
    return {element.NumberOr(value, usual)};
}

} // namespace veltrane_general
