#include "diagnostics/raise.h"
#include "translators/derived/derived_field_reader.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

// A failure in any field ends the reading, and the fields read so far go with it: the owner here deletes the
// dictionary while the exception passes.
TransformationDictionary* PMMLTranslator::HandleTransformationDictionary(xercesc::DOMElement* element,
                                                                         const ScoreDictionary* dictionary) {
    fNodeCounter = 0;
    InitFunctionMap();
    if (element == nullptr) {
        Raise<Message::MISSING_NODE>(PMMLModelTags::XML_ELE_DERIVEDFIELD);
    }
    DescendantsByTag fields(element, PMMLModelTags::XML_ELE_DERIVEDFIELD);
    xercesc::DOMElement* field = fields.Next();
    if (field == nullptr) {
        return nullptr;
    }
    auto derived = std::make_unique<TransformationDictionary>();
    DerivedFieldReader reader(*this, DocumentText(*this, &PMMLTranslator::ToString), dictionary, *derived);
    for (; field != nullptr; field = fields.Next()) {
        reader.Read(field);
    }
    return derived.release();
}

} // namespace MCVeltrane_900
