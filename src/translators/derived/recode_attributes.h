#ifndef VELTRANE_TRANSLATORS_RECODE_ATTRIBUTES_H
#define VELTRANE_TRANSLATORS_RECODE_ATTRIBUTES_H

#include "translators/frame/document_text.h"

namespace MCVeltrane_900 {
class PMMLTranslator;
class TransformVar;
} // namespace MCVeltrane_900

namespace veltrane::translators {

/// Takes "mapMissingTo" of an expression as what replaces a missing value; an empty one counts as absent.
/// @return the attribute's text
/// @throws VTException 260151 when it is no value of the field's type
std::string ReadMapMissingTo(MCVeltrane_900::PMMLTranslator& translator, const DocumentText& text,
                             const xercesc::DOMElement* expression, MCVeltrane_900::TransformVar& var);

/// The same with "defaultValue", for a value that nothing matched.
std::string ReadDefaultValue(MCVeltrane_900::PMMLTranslator& translator, const DocumentText& text,
                             const xercesc::DOMElement* expression, MCVeltrane_900::TransformVar& var);

} // namespace veltrane::translators

#endif
