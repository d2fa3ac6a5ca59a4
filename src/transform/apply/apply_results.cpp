#include "transform/apply/apply_node.h"
#include "transform/apply/child_values.h"
#include "transform/functions/kernels.h"

#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <algorithm>
#include <typeinfo>

using namespace MCVeltrane_900;

namespace veltrane::transform {

using TD = TransformationDictionary;

/// What stands behind the last child. Texts, passed values and imputed ones go out as they are; numbers pass by the
/// replacements for missing and invalid results.
const ScoreValue* ApplyNode::Finish(const ScoreValue* last) {
    switch (fDispatch.gathering) {
    case Gathering::ACCUMULATE:
        fNumber = fFunction == TD::TF_MEDIAN ? functions::MedianInPlace(fFrame.numbers)
                                             : fVar.ApplyAccumulateFunction(fFrame.numbers, fFunction);
        break;
    case Gathering::TEXT_RESULT:
        return FinishText();
    case Gathering::COMPARE:
        fNumber = AreTwoEqual() == (fFunction == TD::TF_EQUAL) ? 1.0 : 0.0;
        break;
    case Gathering::MEMBER:
        fNumber = IsMember() == (fFunction == TD::TF_IS_IN) ? 1.0 : 0.0;
        break;
    case Gathering::OWN:
        if (const ScoreValue* result = FinishOwnRule(last)) {
            return result;
        }
        break;
    default:
        break;
    }
    return FinishNumber();
}

const ScoreValue* ApplyNode::FinishOwnRule(const ScoreValue* last) {
    switch (fFunction) {
    case TD::TF_OUTLIER_HANDLE:
        fNumber = HandleOutlier();
        return nullptr;
    case TD::TF_VALUE:
    case TD::TF_RECAST_TO_ORDINAL:
    case TD::TF_RECAST_TO_SCALE:
        return last != nullptr ? PassOn(*last) : nullptr;
    case TD::TF_IMPUTE_CAT_FIELD_MISSING:
        return Impute();
    case TD::TF_MATCHES:
        fNumber = TD::Matches(fFrame.texts);
        return nullptr;
    default:
        return nullptr;
    }
}

const ScoreValue* ApplyNode::FinishText() {
    int length = fTextLength;
    switch (fFunction) {
    case TD::TF_CONCAT:
        fText = TD::Concat(fFrame.texts, fFrame.widths, length);
        break;
    case TD::TF_REPLACE:
        fText = TD::Replace(fFrame.texts, length);
        break;
    case TD::TF_SUBSTRING:
        if (const ScoreValue* subject = fFrame.kept.Get()) {
            StringValue buffer("");
            fText = TD::Substring_unicode(&StringOf(subject, buffer), fStart, fCount, length);
        }
        break;
    default:
        break;
    }
    return TextResult(fText, length);
}

const ScoreValue* ApplyNode::FinishNumber() {
    NumericValue& result = fVar.NumericScratch();
    result.SetDoubleValue(fNumber);
    // Only a field's own test can refuse the result, and only one treatment minds. The library's own test is asked for
    // that one alone; that of a derived class, which may do more than answer, every time.
    const bool isAsked = typeid(fVar) != typeid(TransformVar) ||
                         fStats.GetInvalidValueTreatmentMethod() == ApplyNodeStats::IV_AS_MISSING;
    const bool isInvalid = isAsked && !fVar.IsValidValue(&result);
    const bool isMissing = functions::IsMissing(fNumber);
    if (isInvalid || isMissing) {
        fVar.HandleMissingAndInvalidOfApply(fFrame.numbers, fFunction, &result, fStats, isMissing, isInvalid);
    }
    return &result;
}

/// A number as a number; anything else, a date too, as its text.
const ScoreValue* ApplyNode::PassOn(const ScoreValue& last) {
    return last.GetType() == ScoreValue::NUMERIC_VALUE ? NumberResult(last.GetDouble())
                                                       : TextResult(TextOfChild(&last), LengthOf(&last));
}

/// Made whether or not the field is missing: the first child is evaluated and not looked at.
const ScoreValue* ApplyNode::Impute() {
    constexpr int kMeans = 0;
    constexpr int kVariances = 1;
    if (fFrame.numbers.empty() || fStats.GetNumberOfArray() <= kVariances) {
        return nullptr;
    }
    static const std::vector<ScoreValueLabel*> kNoLabels;
    const ScoreValueLabelSet* labels = fVar.GetValueLabels();
    return TD::ImputeCatFieldMissingAgainstConTargetHandle(fFrame.numbers[0],
                                                           labels != nullptr ? labels->GetAllValueLabels() : kNoLabels,
                                                           fStats.GetArray(kMeans), fStats.GetArray(kVariances));
}

double ApplyNode::HandleOutlier() const {
    const std::vector<double>& numbers = fFrame.numbers;
    if (numbers.size() != 5) {
        return functions::kMissing;
    }
    return TD::OutlierHandle(numbers[0], fMethod, numbers[1], numbers[2], numbers[3], numbers[4]);
}

bool ApplyNode::AreTwoEqual() const {
    if (fFrame.valueCount != 2) {
        return false;
    }
    const ScoreValue& first = *fFrame.values[0]->Get();
    const ScoreValue& second = *fFrame.values[1]->Get();
    return first.GetType() == second.GetType() && first == second;
}

bool ApplyNode::IsMember() const {
    const ScoreValue* tested = fFrame.kept.Get();
    const auto end = fFrame.values.begin() + static_cast<std::ptrdiff_t>(fFrame.valueCount);
    return tested != nullptr &&
           std::any_of(fFrame.values.begin(), end, [tested](const auto& value) { return *tested == *value->Get(); });
}

const ScoreValue* ApplyNode::NumberResult(double number) {
    NumericValue& result = fVar.NumericScratch();
    result.SetDoubleValue(number);
    return &result;
}

const ScoreValue* ApplyNode::TextResult(const std::string& text, int length) {
    StringValue& result = fVar.TextScratch();
    result.SetString(text);
    result.SetLength(length);
    return &result;
}

} // namespace veltrane::transform
