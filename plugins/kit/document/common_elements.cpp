#include "kit/document/common_elements.h"

namespace veltrane_kit {

void RequireCommonElement(const Element& child) {
    static constexpr const XMLCh* kTags[] = {u"Extension",
                                             u"MiningSchema",
                                             u"Output",
                                             u"ModelStats",
                                             u"ModelExplanation",
                                             u"Targets",
                                             u"LocalTransformations",
                                             u"ModelVerification",
                                             u"TransformationDictionary",
                                             u"ResultField"};
    for (const XMLCh* tag : kTags) {
        if (child.Is(tag)) {
            return;
        }
    }
    child.RaiseMisplaced();
}

} // namespace veltrane_kit
