#include "diagnostics/raise.h"
#include "translators/derived/recode_attributes.h"
#include "translators/frame/document_text.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

namespace {

// Whether a text that is not empty is a category of the field. A field that lists no categories takes the text as one
// more: it is the one thing that reading the derived fields changes in the data dictionary.
bool IsCategory(PMMLTranslator& translator, ScoreDictVar& field, const std::string& text) {
    if (field.IsEmptyCateValues()) {
        ScoreValue* category = translator.CarefullyMakeVarValue(&field, text);
        if (category == nullptr) {
            return false;
        }
        field.AddScoreValueLabel(category, text);
        return true;
    }
    const std::unique_ptr<ScoreValue> value(field.ToMyValue(text));
    return field.IsValidValue(value.get());
}

} // namespace

// The indicator is fixed here for all cases: it becomes the default value, and no pair of values is stored. The
// attribute "method" has no effect.
std::string PMMLTranslator::HandleNormDiscrete(xercesc::DOMElement* element, ScoreDictVar* var,
                                               const ScoreDictionary* dictionary, const ScoreDictionary* derived) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    std::string source = text.Forced(element, PMMLModelTags::XML_ATT_FIELD);
    const ScoreDictVar& field = FieldLookup(dictionary, derived).Require(source);
    if (field.GetMLevel() == ScoreDictVar::LEVEL_CONTINUOUS) {
        Raise<Message::CONFLICTING_VALUES_IN>(PMMLModelTags::XML_VAL_OT_CONTINUOUS,
                                              PMMLModelTags::XML_ATT_DATAFIELD_OPTYPE, source,
                                              PMMLModelTags::XML_ELE_NORMDISCRETE, PMMLModelTags::XML_ATT_NAME, source);
    }
    TransformVar& target = AsTransformVar(var);
    const std::string category = text.Forced(element, PMMLModelTags::XML_ATT_VALUE);
    if (!category.empty()) {
        const bool known = IsCategory(*this, const_cast<ScoreDictVar&>(field), category);
        target.SetRecodeDefaultValue(new NumericValue(known ? 1.0 : 0.0));
    }
    ReadMapMissingTo(*this, text, element, target);
    return source;
}

} // namespace MCVeltrane_900
