#include "diagnostics/raise.h"
#include "translators/conditions/predicate_operand.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScaleSplit.h>

#include <xercesc/dom/DOMElement.hpp>

#include <limits>
#include <memory>

// From an operator and a number to the ranges in which the condition holds.

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

namespace {

using Tags = PMMLModelTags;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The bounds that an operator makes of its number.
struct ScaleOperator {
    const char* text;
    bool hasLow;
    bool hasHigh;
    bool included;
};

constexpr ScaleOperator kScaleOperators[] = {
    {Tags::XML_VAL_OPERATOR_GREATERTHAN, true, false, false},
    {Tags::XML_VAL_OPERATOR_GREATEROREQUAL, true, false, true},
    {Tags::XML_VAL_OPERATOR_LESSTHAN, false, true, false},
    {Tags::XML_VAL_OPERATOR_LESSOREQUAL, false, true, true},
    {Tags::XML_VAL_OPERATOR_EQUAL, true, true, true},
    {Tags::XML_VAL_OPERATOR_NOTEQUAL, true, true, false},
};

void PutRange(ScaleSplit& split, double low, double high, bool lowIncluded, bool highIncluded) {
    split.PutSplit(new Range(low, high, lowIncluded, highIncluded), kOnlyChild);
}

/// Two equal bounds that aren't included stand for all but the one number. Without a bound at either end nothing is
/// put: "lessThan" a number that has overflowed holds for no value.
void PutBounds(ScaleSplit& split, double low, double high, bool included) {
    if (high < low) {
        Raise<Message::INVALID_VALUE_RANGE>(split.GetSplitName());
    }
    const bool hasLow = low > -kInfinity;
    const bool hasHigh = high < kInfinity;
    if (low == high && !included && hasLow && hasHigh) {
        PutRange(split, -kInfinity, low, false, false);
        PutRange(split, high, kInfinity, false, false);
    } else if (hasLow || hasHigh) {
        PutRange(split, low, high, hasLow && included, hasHigh && included);
    }
}

} // namespace

ScaleSplit* PMMLTranslator::HandleNodeScaleSplit(xercesc::DOMNode* node, const ScoreDictVar* var, std::string& op,
                                                 bool& isMissing, std::string& value) {
    isMissing = false;
    auto split = std::make_unique<ScaleSplit>(var);
    const xercesc::DOMElement* element = AsElement(node, PMMLModelTags::XML_ELE_PREDICATE);
    if (element == nullptr) {
        PutRange(*split, -kInfinity, kInfinity, false, false);
        return split.release();
    }
    const DocumentText text(*this, &PMMLTranslator::ToString);
    const PredicateOperand operand = ReadOperand(text, element, op, value);
    switch (operand.form) {
    case OperandForm::IS_MISSING:
    case OperandForm::EMPTY:
        split->SetMissvalMap(kOnlyChild);
        isMissing = true;
        break;
    case OperandForm::IS_NOT_MISSING:
        PutRange(*split, -kInfinity, kInfinity, false, false);
        break;
    case OperandForm::COMPARISON: {
        double low = -kInfinity;
        double high = kInfinity;
        bool included = false;
        GetScaleSplitValue(operand.value, operand.op, low, high, included);
        PutBounds(*split, low, high, included);
        break;
    }
    }
    return split.release();
}

void PMMLTranslator::GetScaleSplitValue(const XMLCh* value, const XMLCh* op, double& low, double& high,
                                        bool& included) {
    if (value == nullptr) {
        Raise<Message::MISSING_ATTRIBUTE>(PMMLModelTags::XML_ATT_VALUE);
    }
    const double number = VerifyDouble(value);
    for (const ScaleOperator& candidate : kScaleOperators) {
        if (Equals(op, candidate.text)) {
            low = candidate.hasLow ? number : -kInfinity;
            high = candidate.hasHigh ? number : kInfinity;
            included = candidate.included;
            return;
        }
    }
    Raise<Message::UNSUPPORTED_VALUE>(ToString(op), PMMLModelTags::XML_ATT_OPERATOR);
}

} // namespace MCVeltrane_900
