#include "diagnostics/raise.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/hand_over.h"
#include "translators/frame/invalid_range.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>

#include <xercesc/dom/DOM.hpp>

#include <cmath>
#include <memory>

namespace MCVeltrane_900 {
namespace {

using veltrane::translators::AddRange;

/// How far a closed bound moves out, relative to itself, so that the bound stays on the valid side of a complement.
constexpr double kBoundStep = 1e-15;

struct Closure {
    const char* text;
    bool leftClosed;
    bool rightClosed;
};

const Closure kClosures[] = {
    {PMMLModelTags::XML_VAL_CLOSURE_CLOSEDCLOSED, true, true},
    {PMMLModelTags::XML_VAL_CLOSURE_CLOSEDOPEN, true, false},
    {PMMLModelTags::XML_VAL_CLOSURE_OPENCLOSED, false, true},
};
constexpr Closure kOpen{"", false, false};

double Infinity() {
    return NumericValue::GetInfinity();
}

/// The attributes of an Interval. A margin that is not there is infinite.
struct Margins {
    double left, right;
    bool leftClosed, rightClosed;
};

double ReadMargin(const xercesc::DOMElement* interval, const char* name, double absent) {
    const XMLCh* text = BaseTranslator::GetAttribute(interval, name);
    return text && *text ? BaseTranslator::VerifyDouble(text) : absent;
}

Closure ReadClosure(const xercesc::DOMElement* interval) {
    const XMLCh* text = BaseTranslator::GetAttribute(interval, PMMLModelTags::XML_ATT_INTERVAL_CLOSURE);
    for (const Closure& closure : kClosures) {
        if (veltrane::translators::Equals(text, closure.text)) {
            return closure;
        }
    }
    return kOpen;
}

Margins ReadMargins(const xercesc::DOMNode* node) {
    const auto* interval = static_cast<const xercesc::DOMElement*>(node);
    const double left = ReadMargin(interval, PMMLModelTags::XML_ATT_INTERVAL_LEFTMARGIN, -Infinity());
    const double right = ReadMargin(interval, PMMLModelTags::XML_ATT_INTERVAL_RIGHTMARGIN, Infinity());
    const Closure closure = ReadClosure(interval);
    return {left, right, closure.leftClosed, closure.rightClosed};
}

/// An infinite margin has nowhere to go: moved by a part of itself it would be no number.
double MoveOut(double margin, bool isClosed, double step) {
    return isClosed && std::isfinite(margin) ? margin + std::abs(margin) * step : margin;
}

void AddRangeOfValues(ScoreMissingValueSet* missing, double min, double max, bool lowEnd, bool highEnd) {
    auto minValue = std::make_unique<NumericValue>(min);
    auto maxValue = std::make_unique<NumericValue>(max);
    AddRange(*missing, std::make_unique<Range>(minValue.release(), maxValue.release(), lowEnd, highEnd));
}

} // namespace

void PMMLTranslator::handleInterval(ScoreDictVar*, xercesc::DOMNode* interval, ScoreMissingValueSet* missing, int) {
    const Margins margins = ReadMargins(interval);
    const bool leftOpen = !margins.leftClosed;
    const bool rightOpen = !margins.rightClosed;
    const bool hasLeft = margins.left != -Infinity();
    const bool hasRight = margins.right != Infinity();
    const double left = MoveOut(margins.left, margins.leftClosed, -kBoundStep);
    const double right = MoveOut(margins.right, margins.rightClosed, kBoundStep);

    // With the left margin alone the range carries the right one's flag: documents are scored by it.
    if (hasLeft && hasRight) {
        AddRangeOfValues(missing, -Infinity(), left, true, leftOpen);
    } else if (hasLeft) {
        AddRangeOfValues(missing, -Infinity(), left, rightOpen, true);
    }
    if (!hasLeft || hasRight) {
        AddRangeOfValues(missing, right, Infinity(), rightOpen, true);
    }
}

void PMMLTranslator::handleTreeInterval(xercesc::DOMNode* interval, ScoreMissingValueSet* missing) {
    const Margins margins = ReadMargins(interval);
    AddRange(*missing, std::make_unique<Range>(margins.left, margins.right, margins.leftClosed, margins.rightClosed));
}

bool PMMLTranslator::HandleKORDMissingInterval(ScoreMissingValueSet* missing, int count, double lower, double upper) {
    if (count == 0) {
        return false;
    }
    if (!veltrane::translators::InvalidRange::IsUnambiguous(count)) {
        veltrane::diagnostics::Raise<veltrane::diagnostics::Message::MORE_THAN_ONE>(
            "invalidRangeLower, invalidRangeUpper", "Value");
    }
    AddRange(*missing, std::make_unique<Range>(lower, upper, true, true));
    return true;
}

} // namespace MCVeltrane_900
