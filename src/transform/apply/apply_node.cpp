#include "transform/apply/apply_node.h"

#include "platform/checked_cast.h"
#include "transform/apply/child_values.h"
#include "transform/derivation/values.h"

#include <MCVeltrane_900/ScoreDictVar.h>

using namespace MCVeltrane_900;

namespace veltrane::transform {

using TD = TransformationDictionary;

ApplyNode::ApplyNode(TransformVar& var, FunctionTree& node, const ApplyCase& oneCase, int& status)
    : fVar(var), fNode(node), fCase(oneCase), fStatus(status), fStats(node.GetNodeStats()),
      fFunction(fStats.GetTransformFunction()), fDispatch(DispatchOf(fFunction)), fFrame(var.Frames().Enter()) {}

ApplyNode::~ApplyNode() {
    fVar.Frames().Leave();
}

const ScoreValue* ApplyNode::Evaluate() {
    const int count = fNode.GetChildCount();
    const ScoreValue* value = nullptr;
    for (int i = 0; i < count; ++i) {
        FunctionTree* child = fNode.GetChildAt(i);
        value = child == nullptr ? nullptr
                                 : fVar.Traverse(child, fCase.record, fCase.dictionary, fCase.transformations, fStatus);
        const ScoreValue* early =
            i == 0 ? (child == nullptr ? nullptr : TakeFirst(value, *child, count)) : TakeLater(value, i);
        if (early != nullptr) {
            return early;
        }
    }
    return Finish(value);
}

const ScoreValue* ApplyNode::TakeFirst(const ScoreValue* value, const FunctionTree& child, int count) {
    switch (fDispatch.gathering) {
    case Gathering::MEMBER:
        if (value != nullptr) {
            fFrame.kept.Take(*value);
        }
        return nullptr;
    case Gathering::TEXT_RESULT:
        TakeFirstText(value);
        return nullptr;
    case Gathering::OWN:
        break;
    default:
        TakeFirstNumber(value, count);
        return nullptr;
    }
    switch (fFunction) {
    case TD::TF_IS_MISSING:
    case TD::TF_IS_NOT_MISSING:
        if (const ScoreValue* answer = TakeMissingTest(value, child)) {
            return answer;
        }
        TakeFirstNumber(value, count);
        return nullptr;
    case TD::TF_OUTLIER_HANDLE:
        TakeFirstNumber(value, count);
        return nullptr;
    default:
        TakeFirstOfOwnRule(value);
        return nullptr;
    }
}

void ApplyNode::TakeFirstOfOwnRule(const ScoreValue* value) {
    switch (fFunction) {
    case TD::TF_IF:
        fCondition = NumericValue::IsEqual(DoubleOf(value), 1.0);
        break;
    case TD::TF_LENGTH:
        fNumber = LengthOf(value);
        break;
    case TD::TF_SYSMIS:
        fNumber = value == nullptr || value->IsSystemMissingValue() ? 1.0 : 0.0;
        break;
    case TD::TF_MATCHES:
        fFrame.texts.push_back(TextOfChild(value));
        break;
    default:
        // The value of the field is picked up at the end; the imputation looks at the second child alone.
        break;
    }
}

/// Only a field can be missing; a constant or a function never is.
const ScoreValue* ApplyNode::TakeMissingTest(const ScoreValue* value, const FunctionTree& child) {
    const ScoreDictVar* variable = child.GetNodeStats().GetVariable();
    if (variable == nullptr) {
        return nullptr;
    }
    const bool answer = variable->IsMissingValue(value) == (fFunction == TD::TF_IS_MISSING);
    return NumberResult(answer ? 1.0 : 0.0);
}

void ApplyNode::TakeFirstNumber(const ScoreValue* value, int count) {
    fAccumulator = DoubleOf(value);
    switch (fDispatch.gathering) {
    case Gathering::ACCUMULATE:
        fFrame.numbers.push_back(fAccumulator);
        return;
    case Gathering::COMPARE:
        fFrame.HoldValue(ValueOrMissing(value));
        return;
    case Gathering::DATE_TIME:
        if (value != nullptr && value->GetType() == ScoreValue::DATETIME_VALUE) {
            fFrame.kept.Take(*value);
        }
        if (count == 1) {
            fNumber = fVar.ApplyDateTimeFunction(fFrame.kept.Get(), 0.0, fFunction);
        }
        return;
    default:
        if (fFunction == TD::TF_OUTLIER_HANDLE) {
            fFrame.numbers.push_back(fAccumulator);
        }
        if (count == 1) {
            fNumber = fVar.ApplyTransFunction(fAccumulator, 0.0, fFunction);
        }
    }
}

void ApplyNode::TakeFirstText(const ScoreValue* value) {
    switch (fFunction) {
    case TD::TF_CONCAT:
        fFrame.widths.push_back(LengthOf(value));
        fFrame.texts.push_back(TextOfChild(value));
        return;
    case TD::TF_REPLACE:
        fFrame.texts.push_back(TextOfChild(value));
        return;
    case TD::TF_SUBSTR:
    case TD::TF_SUBSTRING:
        if (value != nullptr && value->GetType() == ScoreValue::STRING_VALUE) {
            fFrame.kept.Take(*value);
        }
        return;
    default:
        break;
    }
    StringValue buffer("");
    const StringValue& text = StringOf(value, buffer);
    switch (fFunction) {
    case TD::TF_UPPERCASE:
        fText = TD().ToUpperCase(&text, fTextLength);
        return;
    case TD::TF_LTRIM:
        fText = TD::Ltrim(&text, fTextLength);
        return;
    case TD::TF_RTRIM:
        fText = TD::Rtrim(&text, fTextLength);
        return;
    default:
        fText = TD().ToLowerCase(&text, fTextLength);
        return;
    }
}

const ScoreValue* ApplyNode::TakeLater(const ScoreValue* value, int position) {
    switch (fDispatch.gathering) {
    case Gathering::TEXT_RESULT:
        TakeLaterText(value, position);
        return nullptr;
    case Gathering::COMPARE:
    case Gathering::MEMBER:
        fFrame.HoldValue(ValueOrMissing(value));
        return nullptr;
    default:
        break;
    }
    if (fFunction == TD::TF_IF) {
        if (const ScoreValue* outcome = TakeBranch(value, position)) {
            return outcome;
        }
    }
    TakeLaterNumber(value, position);
    return nullptr;
}

/// The second child is evaluated in every case, a third one only when the condition is false.
const ScoreValue* ApplyNode::TakeBranch(const ScoreValue* value, int position) {
    if (position != (fCondition ? 1 : 2)) {
        return nullptr;
    }
    if (value != nullptr && value->GetType() == ScoreValue::STRING_VALUE) {
        return TextResult(TextOfChild(value), fTextLength);
    }
    return NumberResult(DoubleOf(value));
}

void ApplyNode::TakeLaterText(const ScoreValue* value, int position) {
    switch (fFunction) {
    case TD::TF_CONCAT:
        fFrame.widths.push_back(LengthOf(value));
        fFrame.texts.push_back(TextOfChild(value));
        return;
    case TD::TF_REPLACE:
        fFrame.texts.push_back(TextOfChild(value));
        return;
    case TD::TF_SUBSTR:
        // Each later child starts from the subject anew, so the last one decides.
        if (const ScoreValue* subject = fFrame.kept.Get()) {
            StringValue buffer("");
            fText = TD::Substring(&StringOf(subject, buffer), platform::TruncateToInt32(DoubleOf(value)), fTextLength);
        }
        return;
    case TD::TF_SUBSTRING:
        (position == 1 ? fStart : fCount) = platform::TruncateToInt32(DoubleOf(value));
        return;
    default:
        return;
    }
}

void ApplyNode::TakeLaterNumber(const ScoreValue* value, int position) {
    switch (fFunction) {
    case TD::TF_LENGTH:
        return;
    case TD::TF_IMPUTE_CAT_FIELD_MISSING:
        fFrame.numbers.push_back(DoubleOf(value));
        return;
    case TD::TF_MATCHES:
        fFrame.texts.push_back(TextOfChild(value));
        return;
    case TD::TF_OUTLIER_HANDLE:
        if (position == 1) {
            fMethod = value == nullptr ? 0 : value->GetInt();
        } else {
            fFrame.numbers.push_back(DoubleOf(value));
        }
        return;
    default:
        break;
    }
    const double number = DoubleOf(value);
    switch (fDispatch.gathering) {
    case Gathering::ACCUMULATE:
        fFrame.numbers.push_back(number);
        return;
    case Gathering::DATE_TIME:
        fAccumulator = fNumber = fVar.ApplyDateTimeFunction(fFrame.kept.Get(), number, fFunction);
        // A third child finds no date any more.
        fFrame.kept.Clear();
        return;
    default:
        fAccumulator = fNumber = fVar.ApplyTransFunction(fAccumulator, number, fFunction);
    }
}

} // namespace veltrane::transform
