#include "diagnostics/raise.h"
#include "translators/dictionary/measure_levels.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ResultVar.h>
#include <MCVeltrane_900/StringValue.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using Tags = PMMLModelTags;
using xercesc::DOMElement;

namespace {

struct FeatureWord {
    const char* text;
    ScoreResultField::ResultFeature feature;
};

/// "categorical" asks for the display value of the predicted category, as an older spelling of it.
constexpr FeatureWord kFeatureWords[] = {
    {Tags::XML_ATT_VAL_MINING_PREDICTEDVALUE, ScoreResultField::RF_PREDICTED_VALUE},
    {Tags::XML_ATT_VAL_MINING_PREDICTEDDispVALUE, ScoreResultField::RF_PREDICTED_DISPLAY_VALUE},
    {Tags::XML_ATT_VAL_MINING_PROBABILITY, ScoreResultField::RF_PROBABILITY},
    {Tags::XML_ATT_VAL_MINING_RESIDUAL, ScoreResultField::RF_RESIDUAL},
    {Tags::XML_ATT_VAL_MINING_STANDARDERROR, ScoreResultField::RF_STANDARD_ERROR},
    {Tags::XML_ATT_VAL_MINING_CLUSTERID, ScoreResultField::RF_CLUSTER_ID},
    {Tags::XML_ATT_VAL_MINING_CLUSTERAFFINITY, ScoreResultField::RF_CLUSTER_AFFINITY},
    {Tags::XML_VAL_OT_CATEGORICAL, ScoreResultField::RF_PREDICTED_DISPLAY_VALUE},
    {Tags::XML_ATT_VAL_MINING_ENTITYID, ScoreResultField::RF_ENTITY_ID},
    {Tags::XML_ATT_VAL_MINING_ENTITYIDAFFINITY, ScoreResultField::RF_ENTITY_AFFINITY},
    {Tags::XML_ATT_VAL_MINING_WARNING, ScoreResultField::RF_WARNING},
    {Tags::XML_ATT_VAL_MINING_RULEVALUE, ScoreResultField::RF_RULE_VALUE},
    {Tags::XML_ATT_VAL_MINING_STANDARDDEVIATION, ScoreResultField::RF_STANDARD_DEVIATION},
    {"", ScoreResultField::RF_NONE},
};

ScoreResultField::ResultFeature ReadFeature(const DOMElement* field, const DocumentText& text) {
    const XMLCh* feature = BaseTranslator::GetAttributeForced(field, Tags::XML_ATT_VAL_MINING_FEATURE);
    for (const FeatureWord& word : kFeatureWords) {
        if (Equals(feature, word.text)) {
            return word.feature;
        }
    }
    Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(text(feature), Tags::XML_ATT_VAL_MINING_FEATURE,
                                               Tags::XML_ELE_VAL_RESULTFIELD);
}

void SetLevel(const DOMElement* field, const DocumentText& text, ResultVar& var) {
    const XMLCh* word = BaseTranslator::GetAttribute(field, Tags::XML_ATT_VAL_MINING_OPTYPE);
    if (const auto level = ReadMeasureLevel(word)) {
        var.SetMLevel(*level);
    } else if (!Equals(word, "")) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE>(text(word), Tags::XML_ATT_VAL_MINING_OPTYPE);
    }
}

/// An attribute is empty or not as it stands in the document: characters that the encoding lacks are no part of its
/// text here, and still make it one.
std::unique_ptr<ResultVar> ReadResultField(const DOMElement* field, const DocumentText& text) {
    const XMLCh* nameText = BaseTranslator::GetAttributeForced(field, Tags::XML_ATT_VAL_MINING_NAME);
    if (Equals(nameText, "")) {
        Raise<Message::NULL_ATTRIBUTE>(Tags::XML_ATT_VAL_MINING_NAME, Tags::XML_ELE_VAL_RESULTFIELD);
    }
    const std::string name = text(nameText);
    auto var = std::make_unique<ResultVar>(name, ScoreDictVar::kNUMERIC_VAR);
    const XMLCh* display = BaseTranslator::GetAttribute(field, Tags::XML_ATT_DATAFIELD_DISPLAYNAME);
    var->SetLabel(Equals(display, "") ? name : text(display));
    SetLevel(field, text, *var);
    if (Equals(BaseTranslator::GetAttribute(field, Tags::XML_ATT_DATATYPE), Tags::XML_VAL_STRING)) {
        var->SetVarType(ScoreDictVar::STRING_VAR);
    }
    var->SetFeature(ReadFeature(field, text));
    const XMLCh* value = BaseTranslator::GetAttribute(field, Tags::XML_ATT_VALUE);
    if (!Equals(value, "")) {
        var->SetDefValue(new StringValue(text(value)));
    }
    return var;
}

} // namespace

// A variable joins the dictionary when it is complete, so that a failure leaves it to one owner. Under a name that is
// taken the dictionary lists the name again, keeps the variable that it has, and leaves the new one to us.
ScoreDictionary* PMMLTranslator::ParseResultDictionary(xercesc::DOMNode* parent) {
    if (parent == nullptr || parent->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
        Raise<Message::MISSING_NODE>(Tags::XML_ELE_VAL_RESULTFIELD);
    }
    DescendantsByTag fields(static_cast<const DOMElement*>(parent), Tags::XML_ELE_VAL_RESULTFIELD);
    const DOMElement* field = fields.Next();
    if (field == nullptr) {
        return nullptr;
    }
    const DocumentText text(*this, &PMMLTranslator::ToString);
    auto dictionary = std::make_unique<BaseDictionary>();
    for (; field != nullptr; field = fields.Next()) {
        std::unique_ptr<ResultVar> var = ReadResultField(field, text);
        dictionary->AddVar(var->GetName(), var.get());
        if (dictionary->GetVar(var->GetName()) == var.get()) {
            static_cast<void>(var.release());
        }
    }
    return dictionary.release();
}

} // namespace MCVeltrane_900
