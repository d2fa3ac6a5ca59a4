#include "translators/results/target_categories.h"

#include "diagnostics/raise.h"
#include "translators/dictionary/label_checks.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>
#include <MCVeltrane_900/ValueProbability.h>
#include <MCVeltrane_900/ValueProbabilitySet.h>

#include <xercesc/dom/DOMElement.hpp>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::PMMLTranslator;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::ScoreValueProbabilitySet;
using MCVeltrane_900::ValueLabelSet;
using MCVeltrane_900::ValueLbl;
using MCVeltrane_900::ValueProbability;
using MCVeltrane_900::ValueProbabilitySet;
using Tags = MCVeltrane_900::PMMLModelTags;

TargetCategories::TargetCategories(PMMLTranslator& translator, const DocumentText& text, ScoreDictVar& var)
    : fTranslator(translator), fText(text), fVar(var),
      fNewLabels(var.GetValueLabels() == nullptr ? std::make_unique<ValueLabelSet>() : nullptr),
      fLabels(fNewLabels ? *fNewLabels : *var.GetValueLabels()),
      fProbabilities(std::make_unique<ValueProbabilitySet>()) {}

void TargetCategories::Read(const xercesc::DOMElement* targetValue) {
    const std::string text = ReadValue(targetValue);
    std::unique_ptr<ScoreValue> value(fTranslator.CarefullyMakeVarValue(&fVar, text));
    std::unique_ptr<ScoreValue> copy(value ? value->Clone() : nullptr);
    fIsAnyRead = true;

    const XMLCh* display = PMMLTranslator::GetAttribute(targetValue, Tags::XML_ATT_VALUE_DISPLAYVALUE);
    if (fNewLabels || !fLabels.Contains(value.get())) {
        auto valueLabel = std::make_unique<ValueLbl>(value.release(), Equals(display, "") ? text : fText(display));
        fLabels.Add(valueLabel.release());
    }
    const XMLCh* probability = PMMLTranslator::GetAttribute(targetValue, Tags::XML_ATT_PRIORPROBABILITY);
    if (!Equals(probability, "")) {
        const double number = PMMLTranslator::VerifyDouble(probability);
        auto prior = std::make_unique<ValueProbability>(copy.release(), number);
        fProbabilities->Add(prior.release());
    }
}

/// The message for an empty value speaks of a Value, as that of a data field does. Whether a value is empty, and
/// whether it is a number, is asked of the document's own text: in the encoding it may lack characters.
std::string TargetCategories::ReadValue(const xercesc::DOMElement* targetValue) const {
    const XMLCh* text = PMMLTranslator::GetAttributeForced(targetValue, Tags::XML_ATT_VALUE);
    const bool isNumeric = fVar.GetVarType() == ScoreDictVar::kNUMERIC_VAR;
    const bool isString = fVar.GetVarType() == ScoreDictVar::STRING_VAR;
    if (Equals(text, "") && (isNumeric || (isString && !fVar.GetEmptyStringOK()))) {
        Raise<Message::NULL_ATTRIBUTE>(Tags::XML_ATT_VALUE, Tags::XML_ELE_VALUE);
    }
    if (isNumeric) {
        PMMLTranslator::VerifyDouble(text);
    }
    return fText(text);
}

// A setter of the variable overwrites without deleting, so the probabilities of an earlier Target go here.
void TargetCategories::HandOver() {
    if (fIsAnyRead) {
        fVar.SetValueLabels(&fLabels);
        static_cast<void>(fNewLabels.release());
        CheckCategoryCount(fVar);
        CheckLabels(fVar);
    }
    if (fProbabilities->Size() > 0) {
        const std::unique_ptr<ScoreValueProbabilitySet> replaced(fVar.GetValueProbabilities());
        fVar.SetValueProbabilities(fProbabilities.release());
    }
}

} // namespace veltrane::translators
