#ifndef VELTRANE_TRANSLATORS_INVALID_RANGE_H
#define VELTRANE_TRANSLATORS_INVALID_RANGE_H

#include <MCVeltrane_900/NumericValue.h>

namespace veltrane::translators {

/// The range of invalid values whose bounds come in extensions, as PMMLTranslator::HandleKORDMissingInterval takes it.
struct InvalidRange {
    /// What each bound adds to the count.
    static constexpr int kLowerCame = 1;
    static constexpr int kUpperCame = 10;

    void SetLower(double bound) {
        lower = bound;
        count += kLowerCame;
    }
    void SetUpper(double bound) {
        upper = bound;
        count += kUpperCame;
    }

    /// Whether a count that isn't 0 says that no bound came twice.
    static constexpr bool IsUnambiguous(int aCount) {
        return aCount == kLowerCame || aCount == kUpperCame || aCount == kLowerCame + kUpperCame;
    }

    int count = 0;
    double lower = -MCVeltrane_900::NumericValue::GetInfinity();
    double upper = MCVeltrane_900::NumericValue::GetInfinity();
};

} // namespace veltrane::translators

#endif
