#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/NumericValue.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace MCVeltrane_900 {

namespace {

using veltrane::transform::FieldEvaluation;

struct OutlierTreatment {
    std::string_view text;
    ScoreDictVar::OutlierHandleMethod method;
};

constexpr OutlierTreatment kOutlierTreatments[] = {
    {"asIs", ScoreDictVar::OUTLIER_AS_IS},
    {"asMissingValues", ScoreDictVar::OUTLIER_AS_MISSING_VALUES},
    {"asExtremeValues", ScoreDictVar::OUTLIER_AS_EXTREME_VALUES},
};

/// Whether there are segments to go by, as many slopes as intercepts.
bool HasSegments(const std::vector<double>& points, const std::vector<double>& slopes,
                 const std::vector<double>& intercepts) {
    return !points.empty() && !slopes.empty() && slopes.size() == intercepts.size();
}

/// The first segment between two neighbouring points that holds the value, both ends included; the number of segments
/// when none does.
std::size_t FindSegment(const std::vector<double>& points, bool ascend, double value) {
    if (ascend) {
        const auto upper = std::lower_bound(points.begin() + 1, points.end(), value);
        return upper != points.end() && *(upper - 1) <= value ? static_cast<std::size_t>(upper - 1 - points.begin())
                                                              : points.size() - 1;
    }
    std::size_t i = 0;
    while (i + 1 < points.size() && !(points[i] <= value && value <= points[i + 1])) {
        ++i;
    }
    return i;
}

/// Whether the value lies farther from the smallest point than from the largest. A tie belongs to the smallest.
bool IsNearerToMax(const FieldEvaluation& field, double value) {
    return std::fabs(value - field.minPoint) > std::fabs(value - field.maxPoint);
}

} // namespace

void TransformVar::AddNormInfo(double slope, double intercept) {
    fNormSlopes.push_back(slope);
    fNormIntercepts.push_back(intercept);
}

void TransformVar::AddLinearNorm(double orig, double norm) {
    FieldEvaluation& field = *fEvaluation;
    if (fLinearNormPoints.empty()) {
        field.minPoint = field.maxPoint = orig;
    } else {
        field.minPoint = orig < field.minPoint ? orig : field.minPoint;
        field.maxPoint = orig > field.maxPoint ? orig : field.maxPoint;
        field.pointsAscend = field.pointsAscend && fLinearNormPoints.back() <= orig;
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
    return fLinearNormPoints.size() >= 2 && (value > fEvaluation->maxPoint || fEvaluation->minPoint > value);
}

double TransformVar::CalculateNormValue(double value) const {
    if (!HasSegments(fLinearNormPoints, fNormSlopes, fNormIntercepts)) {
        return value;
    }
    const bool several = fLinearNormPoints.size() >= 2 && fNormSlopes.size() >= 2;
    const std::size_t segment = several ? FindSegment(fLinearNormPoints, fEvaluation->pointsAscend, value) : 0;
    return segment < fNormSlopes.size() ? value * fNormSlopes[segment] + fNormIntercepts[segment] : value;
}

double TransformVar::CalculateNormAsIs(double value) const {
    if (!HasSegments(fLinearNormPoints, fNormSlopes, fNormIntercepts)) {
        return value;
    }
    const bool several = fLinearNormPoints.size() >= 2 && fNormSlopes.size() >= 2;
    const std::size_t segment = several && IsNearerToMax(*fEvaluation, value) ? fNormSlopes.size() - 1 : 0;
    return value * fNormSlopes[segment] + fNormIntercepts[segment];
}

double TransformVar::CalculateNormAsExtremeValues(double value) const {
    if (fLinearNormPoints.empty() || fLinearNormTargets.size() != fLinearNormPoints.size()) {
        return value;
    }
    // By place in the list, although the ends are found by value: points have to ascend.
    return IsNearerToMax(*fEvaluation, value) ? fLinearNormTargets.back() : fLinearNormTargets.front();
}

double TransformVar::CalculateNormAsMissingValues(double /*value*/) const {
    return fRecodeMissValue == nullptr ? NumericValue::GetSysmisValue() : fRecodeMissValue->GetDouble();
}

} // namespace MCVeltrane_900
