#include "kit/document/application.h"

#include <xercesc/dom/DOMDocument.hpp>

namespace veltrane_kit {

std::string ApplicationOf(const Element& element) {
    const Element root(element.Dom()->getOwnerDocument()->getDocumentElement(), element.Reader());
    for (const Element header : root.Children()) {
        if (!header.Is(u"Header")) {
            continue;
        }
        for (const Element child : header.Children()) {
            if (child.Is(u"Application")) {
                return child.TextOr(u"name", "");
            }
        }
    }
    return {};
}

} // namespace veltrane_kit
