#ifndef MCCOMMON_900_MCMV_H
#define MCCOMMON_900_MCMV_H

#include <veltrane_export.h>

namespace MCCommon_900 {

/// The numeric missing value of the statistical functions, the same number as NumericValue::SYSMIS.
class VELTRANE_API MCMV {
public:
    /// -1.7976931348623157e+308.
    static double Missing();

    /// Exact equality with Missing(); a NaN is not missing.
    static bool IsMissing(double value);
};

} // namespace MCCommon_900

#endif
