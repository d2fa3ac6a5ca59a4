#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/TransformVar.h>

namespace MCVeltrane_900 {

namespace {

/// One end of an interval as text.
struct End {
    bool finite;
    bool included;
    std::string text;
};

End EndOf(const ScoreValue* bound, bool included, double infinity) {
    const bool finite = bound != nullptr && bound->GetDouble() != infinity;
    return {finite, included, finite ? bound->GetString() : std::string()};
}

/// As 1<=age<5; an infinite end is left out.
std::string FieldForm(const End& low, const End& high, const std::string& fieldName) {
    std::string text;
    if (low.finite) {
        text += low.text + (low.included ? "<=" : "<");
    }
    text += fieldName;
    if (high.finite) {
        text += (high.included ? "<=" : "<") + high.text;
    }
    return text;
}

/// As [1,5), or <5, or >=1; the field form when both ends are infinite.
std::string BracketForm(const End& low, const End& high, const std::string& fieldForm) {
    if (low.finite && high.finite) {
        return (low.included ? "[" : "(") + low.text + "," + high.text + (high.included ? "]" : ")");
    }
    if (high.finite) {
        return (high.included ? "<=" : "<") + high.text;
    }
    if (low.finite) {
        return (low.included ? ">=" : ">") + low.text;
    }
    return fieldForm;
}

} // namespace

void TransformVar::AddBinningValue(ScoreValueRange* range, ScoreValue* value, const std::string& fieldName) {
    fBins.emplace_back(range, value);
    if (range == nullptr || value == nullptr) {
        return;
    }
    const double infinity = NumericValue::GetInfinity();
    const End low = EndOf(range->GetMin(), range->GetLowEnd(), -infinity);
    const End high = EndOf(range->GetMax(), range->GetHighEnd(), infinity);
    const std::string bin = value->GetString();
    const std::string fieldForm = FieldForm(low, high, fieldName);
    fIntervalsFieldForm.emplace(bin, fieldForm);
    fIntervalsBracketForm.emplace(bin, BracketForm(low, high, fieldForm));
}

std::string TransformVar::GetOrigIntervalForBinningValue(const std::string& bin, bool fieldForm) const {
    const auto& intervals = fieldForm ? fIntervalsFieldForm : fIntervalsBracketForm;
    const auto found = intervals.find(bin);
    return found == intervals.end() ? bin : found->second;
}

} // namespace MCVeltrane_900
