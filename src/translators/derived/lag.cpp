#include "diagnostics/raise.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>

#include <xercesc/dom/DOMElement.hpp>

#include <utility>
#include <vector>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using xercesc::DOMElement;

namespace {

int ReadLagCount(const DocumentText& text, const DOMElement* lag) {
    const std::string count = text.Attribute(lag, PMMLModelTags::XML_ATT_N);
    if (count.empty()) {
        return 1;
    }
    const int n = BaseTranslator::VerifyInt(count);
    if (n < 1) {
        Raise<Message::INVALID_VALUE_OF_TYPE>(count, "positiveInteger");
    }
    return n;
}

} // namespace

std::string PMMLTranslator::HandleLag(DOMElement* lag, ScoreDictVar* var, const ScoreDictionary* dictionary,
                                      const ScoreDictionary* derived) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    const FieldLookup fields(dictionary, derived);
    std::string source = text.Forced(lag, PMMLModelTags::XML_ATT_FIELD);
    fields.Require(source);
    const int n = ReadLagCount(text, lag);
    std::vector<const ScoreDictVar*> blocks;
    for (DOMElement* child : ChildElements(lag)) {
        blocks.push_back(&fields.Require(text.Attribute(child, PMMLModelTags::XML_ATT_FIELD)));
    }
    AsTransformVar(var).SetLags(n, std::move(blocks));
    return source;
}

} // namespace MCVeltrane_900
