#include "diagnostics/raise.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/Range.h>

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <iterator>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using xercesc::DOMElement;

namespace {

struct Closure {
    const char* word;
    bool lowIncluded;
    bool highIncluded;
};
constexpr Closure kClosures[] = {
    {PMMLModelTags::XML_VAL_CLOSURE_CLOSEDCLOSED, true, true},
    {PMMLModelTags::XML_VAL_CLOSURE_CLOSEDOPEN, true, false},
    {PMMLModelTags::XML_VAL_CLOSURE_OPENCLOSED, false, true},
    {PMMLModelTags::XML_VAL_CLOSURE_OPENOPEN, false, false},
};

/// The last bin, counted from 0, that may be unbounded on both sides.
constexpr int kLastUnboundedBin = 1;

const Closure& ReadClosure(const DocumentText& text, const DOMElement* interval) {
    const XMLCh* word = BaseTranslator::GetAttributeForced(interval, PMMLModelTags::XML_ATT_INTERVAL_CLOSURE);
    const auto* found = std::find_if(std::begin(kClosures), std::end(kClosures),
                                     [word](const Closure& closure) { return Equals(word, closure.word); });
    if (found == std::end(kClosures)) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(text(word), PMMLModelTags::XML_ATT_INTERVAL_CLOSURE,
                                                   PMMLModelTags::XML_ELE_INTERVAL);
    }
    return *found;
}

} // namespace

ScoreValueRange* PMMLTranslator::HandleDiscretizeBinInterVal(DOMElement* interval, int binIndex) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    const Closure& closure = ReadClosure(text, interval);
    const std::string left = text.Attribute(interval, PMMLModelTags::XML_ATT_INTERVAL_LEFTMARGIN);
    const std::string right = text.Attribute(interval, PMMLModelTags::XML_ATT_INTERVAL_RIGHTMARGIN);
    const double low = left.empty() ? -NumericValue::GetInfinity() : VerifyDouble(left);
    const double high = right.empty() ? NumericValue::GetInfinity() : VerifyDouble(right);
    if (binIndex > kLastUnboundedBin && left.empty() && right.empty()) {
        Raise<Message::REQUIRES_ONE_OF>(PMMLModelTags::XML_ATT_INTERVAL_RIGHTMARGIN,
                                        PMMLModelTags::XML_ATT_INTERVAL_LEFTMARGIN);
    }
    return new Range(new NumericValue(low), new NumericValue(high), closure.lowIncluded, closure.highIncluded);
}

} // namespace MCVeltrane_900
