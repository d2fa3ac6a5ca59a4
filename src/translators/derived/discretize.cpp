#include "diagnostics/raise.h"
#include "translators/derived/discretize_reader.h"
#include "translators/derived/recode_attributes.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>

#include <xercesc/dom/DOMElement.hpp>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

std::string PMMLTranslator::HandleDiscritize(xercesc::DOMElement* element, ScoreDictVar* var,
                                             const ScoreDictionary* dictionary, const ScoreDictionary* derived) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    std::string source = text.Forced(element, PMMLModelTags::XML_ATT_FIELD);
    FieldLookup(dictionary, derived).Require(source);
    TransformVar& target = AsTransformVar(var);
    ReadMapMissingTo(*this, text, element, target);
    ReadDefaultValue(*this, text, element, target);
    if (!HasDescendants(element, PMMLModelTags::XML_ELE_DISCRETIZEBIN, 1)) {
        Raise<Message::MISSING_NODE_IN>(PMMLModelTags::XML_ELE_DISCRETIZEBIN, PMMLModelTags::XML_ELE_DERIVEDFIELD);
    }
    DiscretizeReader reader(*this, text, target);
    reader.Read(element);
    reader.GiveBins(source);
    return source;
}

} // namespace MCVeltrane_900
