#include "parameters.h"

#include "kit/document/raise.h"

namespace veltrane_general {

using veltrane_kit::Element;
using veltrane_kit::Message;

Parameters::Parameters(const Element& list) {
    for (const Element child : list.Children()) {
        if (!child.Is(u"Parameter")) {
            child.RaiseMisplaced();
        }
        const std::string name = child.Text(u"name");
        if (!fPlaces.emplace(name, fReferencePoints.size()).second) {
            veltrane_kit::Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), name, list.Tag());
        }
        fReferencePoints.push_back(child.NumberOr(u"referencePoint", 0.0));
    }
}

std::size_t Parameters::Require(const Element& element, const XMLCh* attribute) const {
    const auto place = fPlaces.find(element.Text(attribute));
    if (place == fPlaces.end()) {
        element.RaiseInvalid(attribute);
    }
    return place->second;
}

} // namespace veltrane_general
