#include "translators/kord/kord_variable_reader.h"

#include "diagnostics/raise.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/KORDModelTags.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <xercesc/dom/DOMElement.hpp>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::DictVar;
using MCVeltrane_900::ScoreDictionary;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::ScoreValueLabel;
using Tags = MCVeltrane_900::KORDModelTags;

namespace {

struct LevelWord {
    const char* text;
    ScoreDictVar::MeasureLevel level;
};

constexpr LevelWord kLevelWords[] = {
    {Tags::XML_VAL_CONTINUOUS, ScoreDictVar::LEVEL_CONTINUOUS},
    {Tags::XML_VAL_NOMINAL, ScoreDictVar::LEVEL_NOMINAL},
    {Tags::XML_VAL_ORDINAL, ScoreDictVar::LEVEL_ORDINAL},
};

const XMLCh* CheckFilled(const XMLCh* text, const char* name) {
    if (Equals(text, "")) {
        Raise<Message::NULL_ATTRIBUTE>(name, Tags::XML_ELE_VARIABLE);
    }
    return text;
}

/// Whether a value that has a label is missing. The label of a number wins over a missing range, so ranges aren't
/// asked.
bool IsMissing(const DictVar& var, const ScoreValue& labelled) {
    return var.IsString() ? var.IsMissingValue(&labelled) : labelled.IsSystemMissingValue();
}

/// Finds a label whose value is missing too.
void CheckLabels(const DictVar& var) {
    if (!var.GetValueLabels() || !var.GetMissingValues()) {
        return;
    }
    if (var.GetValueLabels()->Size() == 0) {
        Raise<Message::MISSING_VALUE_LIST>(var.GetName());
    }
    int index = 0;
    for (const ScoreValueLabel* label : var.GetValueLabels()->GetAllValueLabels()) {
        if (IsMissing(var, *label->GetValue())) {
            Raise<Message::NTH_VALUE_INTERSECTS>(std::to_string(index), var.GetName());
        }
        ++index;
    }
}

} // namespace

const KordVariableReader::ChildRule KordVariableReader::kChildRules[] = {
    {Tags::XML_ELE_CATEGORIES, &KordVariableReader::ReadCategories},
    {Tags::XML_ELE_MISSING_VALUES, &KordVariableReader::ReadMissingValues},
    {Tags::XML_ELE_VAR_STATS, &KordVariableReader::ReadStatistics},
    {Tags::XML_ELE_FORMAT_SPEC, &KordVariableReader::ReadFormat},
};

std::unique_ptr<DictVar> KordVariableReader::Read(const xercesc::DOMElement* variable,
                                                  const ScoreDictionary& dictionary) const {
    std::unique_ptr<DictVar> var = MakeVar(variable, dictionary);
    SetLevel(variable, *var);
    for (const xercesc::DOMElement* child : ChildElements(variable)) {
        ReadChild(child, *var);
    }
    CheckLabels(*var);
    return var;
}

std::unique_ptr<DictVar> KordVariableReader::MakeVar(const xercesc::DOMElement* variable,
                                                     const ScoreDictionary& dictionary) const {
    const XMLCh* nameText = BaseTranslator::GetAttributeForced(variable, Tags::XML_ATT_NAME);
    const XMLCh* storage = BaseTranslator::GetAttributeForced(variable, Tags::XML_ATT_STORAGE_TYPE);
    const std::string name = fText(CheckFilled(nameText, Tags::XML_ATT_NAME));
    const bool isString = Equals(CheckFilled(storage, Tags::XML_ATT_STORAGE_TYPE), Tags::XML_VAL_STRING);
    auto var = std::make_unique<DictVar>(name, isString ? ScoreDictVar::STRING_VAR : ScoreDictVar::kNUMERIC_VAR);
    if (dictionary.GetVar(name)) {
        Raise<Message::DUPLICATE_VARIABLE_IN>(name, Tags::XML_ELE_DICTIONARY);
    }
    const XMLCh* label = BaseTranslator::GetAttribute(variable, Tags::XML_ATT_LABEL);
    var->SetLabel(Equals(label, "") ? name : fText(label));
    return var;
}

void KordVariableReader::SetLevel(const xercesc::DOMElement* variable, DictVar& var) const {
    const XMLCh* text = CheckFilled(BaseTranslator::GetAttributeForced(variable, Tags::XML_ATT_MEASUREMENT_LEVEL),
                                    Tags::XML_ATT_MEASUREMENT_LEVEL);
    if (var.IsString() && Equals(text, Tags::XML_VAL_CONTINUOUS)) {
        Raise<Message::CONFLICTING_VALUES>(Tags::XML_VAL_CONTINUOUS, Tags::XML_ATT_MEASUREMENT_LEVEL,
                                           Tags::XML_VAL_STRING, Tags::XML_ATT_STORAGE_TYPE);
    }
    for (const LevelWord& word : kLevelWords) {
        if (Equals(text, word.text)) {
            var.SetMLevel(word.level);
            return;
        }
    }
    Raise<Message::INVALID_ATTRIBUTE_VALUE>(fText(text), Tags::XML_ATT_MEASUREMENT_LEVEL);
}

void KordVariableReader::ReadChild(const xercesc::DOMElement* child, DictVar& var) const {
    for (const ChildRule& rule : kChildRules) {
        if (HasTag(child, rule.tag)) {
            (this->*rule.read)(child, var);
            return;
        }
    }
    Raise<Message::INVALID_TAG>(fText.Tag(child));
}

} // namespace veltrane::translators
