#include "transform/apply/apply_node.h"

#include "transform/numbers/missing.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <typeinfo>

using namespace MCVeltrane_900;

namespace veltrane::transform {

ApplyNode::ApplyNode(TransformVar& var, FunctionTree& node, const ApplyCase& oneCase, int& status)
    : fVar(var), fField(FieldEvaluation::Of(var)), fNode(node), fCase(oneCase), fStatus(status),
      fStats(node.GetNodeStats()), fFunction(fStats.GetTransformFunction()), fDispatch(DispatchOf(fFunction)),
      fFrame(fField.Frames().Enter()) {}

ApplyNode::~ApplyNode() {
    fField.Frames().Leave();
}

void ApplyNode::Arguments::Iterator::Evaluate() {
    FunctionTree* child = fCount > 0 ? fNode.fNode.GetChildAt(fArgument.position) : nullptr;
    if (child == nullptr && fArgument.position == 0) {
        ++*this;
        return;
    }
    fArgument.node = child;
    fArgument.value = child != nullptr ? fNode.fField.Traverse(*child, fNode.fCase, fNode.fStatus) : nullptr;
}

double ApplyNode::Fold(double a, double b) const {
    return FieldEvaluation::Fold(a, b, fFunction);
}

double ApplyNode::Accumulate() const {
    return FieldEvaluation::Accumulate(fFrame.numbers, fFunction);
}

double ApplyNode::OfDate(const ScoreValue* date, double b) const {
    return FieldEvaluation::OfDate(date, b, fFunction);
}

const ScoreValue* ApplyNode::Result(double number) {
    NumericValue& result = fField.NumericScratch();
    result.SetDoubleValue(number);
    // Only a field's own test can refuse the result, and only one treatment minds. The library's own test is asked for
    // that one alone; that of a derived class, which may do more than answer, every time.
    const bool isAsked = typeid(fVar) != typeid(TransformVar) ||
                         fStats.GetInvalidValueTreatmentMethod() == ApplyNodeStats::IV_AS_MISSING;
    const bool isInvalid = isAsked && !fVar.IsValidValue(&result);
    const bool isMissing = functions::IsMissing(number);
    if (isInvalid || isMissing) {
        FieldEvaluation::ReplaceResult(fFrame.numbers, fFunction, result, fStats, isMissing, isInvalid);
    }
    return &result;
}

const ScoreValue* ApplyNode::PlainNumber(double number) {
    NumericValue& result = fField.NumericScratch();
    result.SetDoubleValue(number);
    return &result;
}

const ScoreValue* ApplyNode::Text(const std::string& text, int length) {
    StringValue& result = fField.TextScratch();
    result.SetString(text);
    result.SetLength(length);
    return &result;
}

} // namespace veltrane::transform
