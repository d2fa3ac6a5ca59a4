#include "diagnostics/raise.h"
#include "translators/derived/recode_attributes.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>

#include <xercesc/dom/DOMElement.hpp>

#include <vector>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using xercesc::DOMElement;

namespace {

struct NormPoint {
    double orig;
    double norm;
};

// Every child counts as a point, whatever its tag: one that lacks the attributes is refused.
std::vector<NormPoint> ReadPoints(const DocumentText& text, const DOMElement* element) {
    std::vector<NormPoint> points;
    for (DOMElement* child : ChildElements(element)) {
        const double orig = BaseTranslator::VerifyDouble(text.Forced(child, PMMLModelTags::XML_ATT_ORIG));
        const double norm = BaseTranslator::VerifyDouble(text.Forced(child, PMMLModelTags::XML_ATT_NORM));
        points.push_back({orig, norm});
    }
    return points;
}

// The line through two neighbours. The points need not ascend; two at one place give the identity.
void AddSegment(TransformVar& var, const NormPoint& left, const NormPoint& right) {
    if (left.orig == right.orig) {
        var.AddNormInfo(1.0, 0.0);
        return;
    }
    const double width = right.orig - left.orig;
    var.AddNormInfo((right.norm - left.norm) / width, (right.orig * left.norm - left.orig * right.norm) / width);
}

} // namespace

std::string PMMLTranslator::HandleNormContinuous(DOMElement* element, ScoreDictVar* var,
                                                 const ScoreDictionary* dictionary, const ScoreDictionary* derived) {
    if (!HasDescendants(element, PMMLModelTags::XML_ELE_LINEARNORM, 2)) {
        Raise<Message::REQUIRES_MORE_THAN_ONE>(PMMLModelTags::XML_ELE_LINEARNORM, PMMLModelTags::XML_ELE_DERIVEDFIELD);
    }
    const DocumentText text(*this, &PMMLTranslator::ToString);
    std::string source = text.Forced(element, PMMLModelTags::XML_ATT_FIELD);
    if (FieldLookup(dictionary, derived).Require(source).GetMLevel() != ScoreDictVar::LEVEL_CONTINUOUS) {
        Raise<Message::REQUIRES_VALUE_IN>(PMMLModelTags::XML_VAL_OT_CONTINUOUS, PMMLModelTags::XML_ATT_DATAFIELD_OPTYPE,
                                          source);
    }
    TransformVar& target = AsTransformVar(var);
    const std::vector<NormPoint> points = ReadPoints(text, element);
    for (const NormPoint& point : points) {
        target.AddLinearNorm(point.orig, point.norm);
    }
    for (std::size_t i = 1; i < points.size(); ++i) {
        AddSegment(target, points[i - 1], points[i]);
    }
    ReadMapMissingTo(*this, text, element, target);
    target.SetOutlierTreatMent(text.Attribute(element, PMMLModelTags::XML_ATT_MININGFIELD_OUTLIERS));
    return source;
}

} // namespace MCVeltrane_900
