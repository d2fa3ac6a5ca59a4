#include "diagnostics/raise.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/hand_over.h"
#include "translators/kord/kord_variable_reader.h"

#include <MCVeltrane_900/KORDModelTags.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>
#include <MCVeltrane_900/VarStats.h>

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/internal/MemoryManagerImpl.hpp>
#include <xercesc/util/XMLString.hpp>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::DictVar;
using MCVeltrane_900::ScoreMissingValueSet;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::ScoreValueLabelSet;
using Tags = MCVeltrane_900::KORDModelTags;

namespace {

double ReadStatistic(const xercesc::DOMElement* statistics, const char* name) {
    const XMLCh* text = BaseTranslator::GetAttribute(statistics, name);
    return Equals(text, "") ? MCVeltrane_900::NumericValue::GetSysmisValue() : BaseTranslator::VerifyDouble(text);
}

/// A failure goes to the host as the XML library's own exception, which has its text in memory of this manager: the
/// host may look at it when the factory has ended the XML platform, and the platform's memory with it.
int ReadFormatNumber(const xercesc::DOMElement* format, const char* name) {
    static auto* const manager = new xercesc::MemoryManagerImpl;
    return xercesc::XMLString::parseInt(BaseTranslator::GetAttribute(format, name), manager);
}

/// The text of one end of a missing range.
const XMLCh* BoundText(const xercesc::DOMElement* bound) {
    const XMLCh* text = BaseTranslator::GetAttribute(bound, Tags::XML_ATT_VALUE);
    if (Equals(text, "")) {
        Raise<Message::MISSING_ATTRIBUTE_OF>(Tags::XML_ATT_VALUE, Tags::XML_ELE_CATEGORY);
    }
    return text;
}

} // namespace

std::unique_ptr<ScoreValue> KordVariableReader::MakeValue(const DictVar& var, const XMLCh* text) const {
    return std::unique_ptr<ScoreValue>(fTranslator.CarefullyMakeVarValue(&var, text));
}

// The setters leave what was there before to whoever knows it, so a second element of a kind frees the first one's set.

void KordVariableReader::ReadCategories(const xercesc::DOMElement* categories, DictVar& var) const {
    std::unique_ptr<ScoreValueLabelSet> labels = std::make_unique<MCVeltrane_900::ValueLabelSet>();
    for (const xercesc::DOMElement* child : ChildElements(categories)) {
        if (!HasTag(child, Tags::XML_ELE_CATEGORY)) {
            Raise<Message::INVALID_ATTRIBUTE_VALUE>(fText.Tag(child), Tags::XML_ELE_CATEGORY);
        }
        AddCategory(child, var, *labels);
    }
    const std::unique_ptr<ScoreValueLabelSet> before(var.GetValueLabels());
    var.SetValueLabels(labels.release());
}

void KordVariableReader::AddCategory(const xercesc::DOMElement* category, const DictVar& var,
                                     ScoreValueLabelSet& labels) const {
    const XMLCh* text = BaseTranslator::GetAttributeForced(category, Tags::XML_ATT_VALUE);
    std::unique_ptr<ScoreValue> value = MakeValue(var, text);
    const XMLCh* display = BaseTranslator::GetAttribute(category, Tags::XML_ATT_DISPLAY_VALUE);
    const std::string label = fText(Equals(display, "") ? text : display);
    auto valueLabel = std::make_unique<MCVeltrane_900::ValueLbl>(value.release(), label);
    labels.Add(valueLabel.release());
}

void KordVariableReader::ReadMissingValues(const xercesc::DOMElement* missingValues, DictVar& var) const {
    std::unique_ptr<ScoreMissingValueSet> missing = std::make_unique<MCVeltrane_900::MissingValueSet>();
    for (const xercesc::DOMElement* child : ChildElements(missingValues)) {
        if (HasTag(child, Tags::XML_ELE_CATEGORY)) {
            AddMissingCategory(child, var, *missing);
        } else if (HasTag(child, Tags::XML_ELE_RANGE)) {
            AddMissingRange(child, var, *missing);
        }
    }
    const std::unique_ptr<ScoreMissingValueSet> before(var.GetMissingValues());
    var.SetMissingValues(missing.release());
}

void KordVariableReader::AddMissingCategory(const xercesc::DOMElement* category, const DictVar& var,
                                            ScoreMissingValueSet& missing) const {
    const XMLCh* text = BaseTranslator::GetAttribute(category, Tags::XML_ATT_VALUE);
    if (Equals(text, "")) {
        Raise<Message::NULL_ATTRIBUTE>(Tags::XML_ATT_VALUE, Tags::XML_ELE_CATEGORY);
    }
    AddRange(missing, std::make_unique<MCVeltrane_900::Range>(MakeValue(var, text).release()));
}

void KordVariableReader::AddMissingRange(const xercesc::DOMElement* range, const DictVar& var,
                                         ScoreMissingValueSet& missing) const {
    const xercesc::DOMElement* first = FirstChildElement(range);
    if (!first) {
        Raise<Message::MISSING_MINIMUM>(Tags::XML_ELE_CATEGORY, Tags::XML_ELE_RANGE);
    }
    const xercesc::DOMElement* second = NextElement(first);
    if (!second) {
        Raise<Message::MISSING_MAXIMUM>(Tags::XML_ELE_CATEGORY, Tags::XML_ELE_RANGE);
    }
    // Both have to be there before either is read.
    const XMLCh* lowerText = BoundText(first);
    const XMLCh* upperText = BoundText(second);
    std::unique_ptr<ScoreValue> lower = MakeValue(var, lowerText);
    std::unique_ptr<ScoreValue> upper = MakeValue(var, upperText);
    AddRange(missing, std::make_unique<MCVeltrane_900::Range>(lower.release(), upper.release(), true, true));
}

void KordVariableReader::ReadStatistics(const xercesc::DOMElement* statistics, DictVar& var) const {
    const double minimum = ReadStatistic(statistics, Tags::XML_ATT_MINIMUM);
    const double maximum = ReadStatistic(statistics, Tags::XML_ATT_MAXIMUM);
    const double mean = ReadStatistic(statistics, Tags::XML_ATT_MEAN);
    const double deviation = ReadStatistic(statistics, Tags::XML_ATT_STANDARD_DEVIATION);
    const std::unique_ptr<MCVeltrane_900::ScoreVarStats> before(var.GetVarStats());
    var.SetVarStats(new MCVeltrane_900::VarStats(minimum, maximum, mean, deviation));
}

void KordVariableReader::ReadFormat(const xercesc::DOMElement* format, DictVar& var) const {
    var.SetDecimal(ReadFormatNumber(format, Tags::XML_ATT_DECIMALS));
    var.SetWidth(ReadFormatNumber(format, Tags::XML_ATT_WIDTH));
}

} // namespace veltrane::translators
