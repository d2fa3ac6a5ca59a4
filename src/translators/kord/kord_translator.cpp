#include "diagnostics/raise.h"
#include "translators/dictionary/category_encoder.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/hand_over.h"
#include "translators/kord/kord_variable_reader.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/KORDModelTags.h>
#include <MCVeltrane_900/KORDTranslator.h>

#include <xercesc/dom/DOMElement.hpp>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using veltrane::translators::ChildElements;
using veltrane::translators::DocumentText;
using veltrane::translators::HasTag;

KORDTranslator::KORDTranslator() = default;
KORDTranslator::KORDTranslator(const KORDTranslator& other) = default;
KORDTranslator& KORDTranslator::operator=(const KORDTranslator& other) = default;
KORDTranslator::~KORDTranslator() = default;

ScoreDictionary* KORDTranslator::ParseDictionary(xercesc::DOMElement* dictionary) {
    if (!dictionary) {
        Raise<Message::MISSING_NODE_IN>(KORDModelTags::XML_ELE_DICTIONARY, "kord-ml");
    }
    const DocumentText text(*this, &KORDTranslator::ToString);
    const veltrane::translators::KordVariableReader reader(*this, text);
    auto result = std::make_unique<BaseDictionary>();
    for (const xercesc::DOMElement* child : ChildElements(dictionary)) {
        if (!HasTag(child, KORDModelTags::XML_ELE_VARIABLE)) {
            Raise<Message::UNEXPECTED_NODE_IN>(text.Tag(child), KORDModelTags::XML_ELE_VARIABLE,
                                               KORDModelTags::XML_ELE_DICTIONARY);
        }
        std::unique_ptr<DictVar> var = reader.Read(child, *result);
        if (var->IsString()) {
            SetupCatEncoder(var.get());
        }
        veltrane::translators::AddVar(*result, std::move(var));
    }
    if (result->Size() == 0) {
        Raise<Message::NO_CHILD_ELEMENT>(KORDModelTags::XML_ELE_DICTIONARY);
    }
    return result.release();
}

bool KORDTranslator::SetupCatEncoder(ScoreDictVar* var) {
    return veltrane::translators::SetupCategoryEncoder(var);
}

} // namespace MCVeltrane_900
