#include "inversion.h"

#include <algorithm>
#include <limits>

namespace veltrane_network {

using veltrane_kit::Element;
using veltrane_kit::Word;

Inversion::Inversion(const Element& normContinuous) {
    static constexpr Word<Outliers> kOutliers[] = {{u"asIs", Outliers::AS_IS},
                                                   {u"asMissingValues", Outliers::AS_MISSING},
                                                   {u"asExtremeValues", Outliers::AS_EXTREME}};
    fOutliers = normContinuous.OneOfOr(u"outliers", kOutliers, Outliers::AS_IS);
    bool goesDown = false;
    for (const Element child : normContinuous.Children()) {
        if (!child.Is(u"LinearNorm")) {
            continue;
        }
        const Point point{child.Number(u"norm"), child.Number(u"orig")};
        if (fPoints.size() == 1) {
            goesDown = point.norm < fPoints.back().norm;
        }
        if (!fPoints.empty() && !(goesDown ? point.norm < fPoints.back().norm : point.norm > fPoints.back().norm)) {
            child.RaiseInvalid(u"norm");
        }
        fPoints.push_back(point);
    }
    if (goesDown) {
        std::reverse(fPoints.begin(), fPoints.end());
    }
}

double Inversion::Of(double norm) const {
    const bool isBelow = norm < fPoints.front().norm;
    if (isBelow || norm > fPoints.back().norm) {
        if (fOutliers == Outliers::AS_MISSING) {
            return std::numeric_limits<double>::quiet_NaN();
        }
        if (fOutliers == Outliers::AS_EXTREME) {
            return isBelow ? fPoints.front().orig : fPoints.back().orig;
        }
    }
    const auto above = std::upper_bound(fPoints.begin() + 1, fPoints.end() - 1, norm,
                                        [](double number, const Point& point) { return number < point.norm; });
    const Point& from = *(above - 1);
    return from.orig + (norm - from.norm) / (above->norm - from.norm) * (above->orig - from.orig);
}

} // namespace veltrane_network
