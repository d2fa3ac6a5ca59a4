#ifndef VELTRANE_PLUGINS_NETWORK_INVERSION_H
#define VELTRANE_PLUGINS_NETWORK_INVERSION_H

#include "kit/document/element.h"

#include <vector>

namespace veltrane_network {

/// A NormContinuous backwards: from the number of a neuron to that of the field which was normalised for training.
class Inversion {
public:
    /// @throws VTException 260120, 260285, 260153 for attributes, the latter also for a `norm` that neither goes up
    ///         from point to point nor down: no number would come from it alone
    explicit Inversion(const veltrane_kit::Element& normContinuous);

    /// Beyond the outermost points the lines go on, or end as `outliers` says.
    /// @return not a number for an outlier that is to be missing
    double Of(double norm) const;

private:
    enum class Outliers { AS_IS, AS_MISSING, AS_EXTREME };
    struct Point {
        double norm;
        double orig;
    };

    Outliers fOutliers;
    std::vector<Point> fPoints; ///< `norm` ascending
};

} // namespace veltrane_network

#endif
