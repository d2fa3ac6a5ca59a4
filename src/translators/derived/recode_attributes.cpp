#include "translators/derived/recode_attributes.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>

namespace veltrane::translators {

using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::PMMLTranslator;
using MCVeltrane_900::TransformVar;

std::string ReadMapMissingTo(PMMLTranslator& translator, const DocumentText& text,
                             const xercesc::DOMElement* expression, TransformVar& var) {
    std::string value = text.Attribute(expression, PMMLModelTags::XML_ATT_MISSREPVALUE);
    if (!value.empty()) {
        var.SetRecodeMissValueTo(translator.CarefullyMakeVarValue(&var, value));
    }
    return value;
}

std::string ReadDefaultValue(PMMLTranslator& translator, const DocumentText& text,
                             const xercesc::DOMElement* expression, TransformVar& var) {
    std::string value = text.Attribute(expression, PMMLModelTags::XML_ATT_DEFAULTVALUE);
    if (!value.empty()) {
        var.SetRecodeDefaultValue(translator.CarefullyMakeVarValue(&var, value));
    }
    return value;
}

} // namespace veltrane::translators
