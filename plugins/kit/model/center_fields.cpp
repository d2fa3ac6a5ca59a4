#include "kit/model/center_fields.h"

#include <xercesc/dom/DOMDocument.hpp>

namespace veltrane_kit {

using xercesc::DOMElement;

namespace {

DOMElement* MakeElement(const Element& model, const XMLCh* tag) {
    return model.Dom()->getOwnerDocument()->createElement(tag);
}

/// The LocalTransformations of a model, which may be new.
DOMElement* LocalTransformationsOf(const Element& model) {
    if (const Element local = model.Child(u"LocalTransformations")) {
        return local.Dom();
    }
    DOMElement* local = MakeElement(model, u"LocalTransformations");
    model.Dom()->appendChild(local);
    return local;
}

} // namespace

void ShareCenterFields(const Element& model) {
    const Element centers = model.Is(u"ClusteringModel") ? model.Child(u"CenterFields") : Element();
    for (Element field = centers ? centers.FirstChild() : Element(); field;) {
        const Element next = field.NextSibling();
        if (field.Is(u"DerivedField")) {
            DOMElement* reference = MakeElement(model, u"FieldRef");
            reference->setAttribute(u"field", field.Raw(u"name"));
            centers.Dom()->replaceChild(reference, field.Dom());
            LocalTransformationsOf(model)->appendChild(field.Dom());
        }
        field = next;
    }
}

} // namespace veltrane_kit
