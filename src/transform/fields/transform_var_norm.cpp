#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/TransformVar.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace MCVeltrane_900 {

namespace {

struct OutlierTreatment {
    std::string_view text;
    ScoreDictVar::OutlierHandleMethod method;
};

constexpr OutlierTreatment kOutlierTreatments[] = {
    {"asIs", ScoreDictVar::OUTLIER_AS_IS},
    {"asMissingValues", ScoreDictVar::OUTLIER_AS_MISSING_VALUES},
    {"asExtremeValues", ScoreDictVar::OUTLIER_AS_EXTREME_VALUES},
};

} // namespace

void TransformVar::AddNormInfo(double slope, double intercept) {
    fNormSlopes.push_back(slope);
    fNormIntercepts.push_back(intercept);
}

void TransformVar::AddLinearNorm(double orig, double norm) {
    if (fLinearNormPoints.empty()) {
        fMinPoint = fMaxPoint = orig;
    } else {
        fMinPoint = orig < fMinPoint ? orig : fMinPoint;
        fMaxPoint = orig > fMaxPoint ? orig : fMaxPoint;
        fPointsAscend = fPointsAscend && fLinearNormPoints.back() <= orig;
    }
    fLinearNormPoints.push_back(orig);
    fLinearNormTargets.push_back(norm);
}

void TransformVar::SetOutlierTreatMent(const std::string& treatment) {
    for (const OutlierTreatment& known : kOutlierTreatments) {
        if (known.text == treatment) {
            fOutlierTreatment = known.method;
        }
    }
}

double TransformVar::GetNormValue(double value) {
    if (!IsOutOfContRange(value)) {
        return CalculateNormValue(value);
    }
    // A number beyond the points is extrapolated under asMissingValues as well: it does not become missing.
    return fOutlierTreatment == OUTLIER_AS_EXTREME_VALUES ? CalculateNormAsExtremeValues(value)
                                                          : CalculateNormAsIs(value);
}

bool TransformVar::IsOutOfContRange(double value) const {
    return fLinearNormPoints.size() >= 2 && (value > fMaxPoint || fMinPoint > value);
}

bool TransformVar::HasSegments() const {
    return !fLinearNormPoints.empty() && !fNormSlopes.empty() && fNormSlopes.size() == fNormIntercepts.size();
}

/// The first segment between two neighbouring points that holds the value, both ends included; the number of segments
/// when none does.
std::size_t TransformVar::FindSegment(double value) const {
    const auto first = fLinearNormPoints.begin();
    const auto last = fLinearNormPoints.end();
    if (fPointsAscend) {
        const auto upper = std::lower_bound(first + 1, last, value);
        return upper != last && *(upper - 1) <= value ? static_cast<std::size_t>(upper - 1 - first)
                                                      : fLinearNormPoints.size() - 1;
    }
    std::size_t i = 0;
    while (i + 1 < fLinearNormPoints.size() && !(fLinearNormPoints[i] <= value && value <= fLinearNormPoints[i + 1])) {
        ++i;
    }
    return i;
}

double TransformVar::CalculateNormValue(double value) const {
    if (!HasSegments()) {
        return value;
    }
    const bool several = fLinearNormPoints.size() >= 2 && fNormSlopes.size() >= 2;
    const std::size_t segment = several ? FindSegment(value) : 0;
    return segment < fNormSlopes.size() ? value * fNormSlopes[segment] + fNormIntercepts[segment] : value;
}

/// Whether the value lies farther from the smallest point than from the largest. A tie belongs to the smallest.
bool TransformVar::IsNearerToMax(double value) const {
    return std::fabs(value - fMinPoint) > std::fabs(value - fMaxPoint);
}

double TransformVar::CalculateNormAsIs(double value) const {
    if (!HasSegments()) {
        return value;
    }
    const bool several = fLinearNormPoints.size() >= 2 && fNormSlopes.size() >= 2;
    const std::size_t segment = several && IsNearerToMax(value) ? fNormSlopes.size() - 1 : 0;
    return value * fNormSlopes[segment] + fNormIntercepts[segment];
}

double TransformVar::CalculateNormAsExtremeValues(double value) const {
    if (fLinearNormPoints.empty() || fLinearNormTargets.size() != fLinearNormPoints.size()) {
        return value;
    }
    // By place in the list, although the ends are found by value: points have to ascend.
    return IsNearerToMax(value) ? fLinearNormTargets.back() : fLinearNormTargets.front();
}

double TransformVar::CalculateNormAsMissingValues(double /*value*/) const {
    return fRecodeMissValue == nullptr ? NumericValue::GetSysmisValue() : fRecodeMissValue->GetDouble();
}

} // namespace MCVeltrane_900
