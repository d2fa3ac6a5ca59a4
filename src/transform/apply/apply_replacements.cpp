#include "transform/numbers/missing.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformVar.h>

#include <algorithm>

namespace MCVeltrane_900 {

using veltrane::functions::kMissing;
using TD = TransformationDictionary;

bool TransformVar::HandleMissingAndInvalidOfApply(const std::vector<double>& arguments, TD::TransformFunction,
                                                  ScoreValue* result, const ApplyNodeStats& stats, bool resultIsSysmis,
                                                  bool resultIsInvalid) {
    // One argument alone never counts as a missing one, nor do those of functions that gather no numbers.
    const bool hasMissingArgument =
        resultIsSysmis && arguments.size() >= 2 &&
        std::any_of(arguments.begin(), arguments.end(), [](double x) { return NumericValue::IsSystemMissingValue(x); });
    if (hasMissingArgument) {
        const ScoreValue* replacement = stats.GetRecodeMissValueRep();
        if (replacement != nullptr && !replacement->IsSystemMissingValue()) {
            result->SetValue(replacement);
            return true;
        }
        if (stats.GetDefaultValue() != nullptr) {
            result->SetValue(stats.GetDefaultValue());
            return true;
        }
    }
    if (!resultIsInvalid) {
        return true;
    }
    if (stats.GetInvalidValueTreatmentMethod() != ApplyNodeStats::IV_AS_MISSING) {
        return false;
    }
    if (stats.GetDefaultValue() != nullptr) {
        result->SetValue(stats.GetDefaultValue());
    } else if (auto* number = dynamic_cast<NumericValue*>(result)) {
        number->SetDoubleValue(kMissing);
    } else if (auto* text = dynamic_cast<StringValue*>(result)) {
        text->SetLength(0);
        text->SetString(std::string());
    }
    return true;
}

} // namespace MCVeltrane_900
