#include "diagnostics/raise.h"
#include "translators/document_text.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

// No function is read yet, so every one is refused as an unknown one is.
FunctionTree* PMMLTranslator::HandleApply(xercesc::DOMElement* apply, const ScoreDictVar*, FunctionTree*,
                                          const ScoreDictionary*, const ScoreDictionary*) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    Raise(260303, text.Forced(apply, PMMLModelTags::XML_ATT_APPLY_FUNCTION), PMMLModelTags::XML_ATT_APPLY_FUNCTION);
}

} // namespace MCVeltrane_900
