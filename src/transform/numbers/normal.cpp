#include "stats/numerics/half_square_exp.h"
#include "transform/numbers/missing.h"

#include <MCMath_900/MCDistFun.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <cmath>

namespace MCVeltrane_900 {

using MCMath_900::MCDistFun;
using veltrane::functions::IsMissing;
using veltrane::functions::kMissing;
using veltrane::stats::HalfSquareExp;

namespace {

constexpr double kTwoPi = 6.283185307179586;

// The standard normal density has its own, shorter constant; documents were validated against its results.
constexpr double kShortTwoPi = 6.2831853;

// Beyond this many standard deviations the density is 0.
constexpr double kDensityReach = 37.61;

bool ArePresent(const std::vector<double>& values, std::size_t count) {
    return values.size() == count && std::none_of(values.begin(), values.end(), IsMissing);
}

} // namespace

double TransformationDictionary::CdfNormal(const std::vector<double>& values) {
    if (!ArePresent(values, 3) || !(values[2] > 0.0)) {
        return kMissing;
    }
    return MCDistFun::CdfStdNorm((values[0] - values[1]) / values[2]);
}

double TransformationDictionary::PdfNormal(const std::vector<double>& values) {
    if (!ArePresent(values, 3) || !(values[2] > 0.0)) {
        return kMissing;
    }
    const double z = (values[0] - values[1]) / values[2];
    if (z == 0.0) {
        return (1.0 / std::sqrt(kTwoPi)) / values[2];
    }
    return std::fabs(z) <= kDensityReach ? HalfSquareExp(z) / std::sqrt(kTwoPi) / values[2] : 0.0;
}

double TransformationDictionary::IdfNormal(const std::vector<double>& values) {
    return ArePresent(values, 3) ? MCDistFun::IdfNorm(values[0], values[1], values[2]) : kMissing;
}

double TransformationDictionary::stdNormalCDF(const std::vector<double>& values) {
    return ArePresent(values, 1) ? MCDistFun::CdfStdNorm(values[0]) : kMissing;
}

double TransformationDictionary::stdNormalPDF(const std::vector<double>& values) {
    if (!ArePresent(values, 1)) {
        return kMissing;
    }
    const double x = values[0];
    return std::isnan(x) ? x : HalfSquareExp(x) / std::sqrt(kShortTwoPi);
}

double TransformationDictionary::stdNormalIDF(const std::vector<double>& values) {
    if (!ArePresent(values, 1) || !(values[0] > 0.0 && values[0] < 1.0)) {
        return kMissing;
    }
    return MCDistFun::IdfStdNorm(values[0]);
}

double TransformationDictionary::Erf(const std::vector<double>& values) {
    return ArePresent(values, 1) ? 2.0 * MCDistFun::CdfStdNorm(std::sqrt(2.0) * values[0]) - 1.0 : kMissing;
}

} // namespace MCVeltrane_900
