#include "stats/numerics/guards.h"
#include "transform/numbers/missing.h"

#include <MCMath_900/MCDistFun.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <cmath>

namespace MCVeltrane_900 {

using veltrane::functions::FitsInt32;
using veltrane::functions::IsMissing;
using veltrane::functions::kMissing;
using veltrane::stats::kMaxExponent;
using veltrane::stats::kMinExponent;

namespace {

// Pow() takes a base below this one to the power 0 for granted, without asking whether it is missing.
constexpr double kPowZeroBound = 1e-14;

/// The part before the decimal point, as an integer would hold it: there is no -0.
double Whole(double x) {
    return std::trunc(x) + 0.0;
}

} // namespace

double TransformationDictionary::Plus(double a, double b) {
    return IsMissing(a) || IsMissing(b) ? kMissing : a + b;
}

double TransformationDictionary::Abs(double x) {
    return IsMissing(x) ? kMissing : std::fabs(x);
}

double TransformationDictionary::Exp(double x) {
    if (IsMissing(x) || x > kMaxExponent) {
        return kMissing;
    }
    return x > kMinExponent ? std::exp(x) : 0.0;
}

double TransformationDictionary::Log10(double x) {
    return x > 0.0 ? std::log10(x) : kMissing;
}

double TransformationDictionary::Ln(double x) {
    return x > 0.0 ? std::log(x) : kMissing;
}

double TransformationDictionary::Sqrt(double x) {
    return x >= 0.0 ? std::sqrt(x) : kMissing;
}

double TransformationDictionary::Trunc(double x) {
    return FitsInt32(x) ? Whole(x) : kMissing;
}

double TransformationDictionary::Floor(double x) {
    return std::floor(x);
}

double TransformationDictionary::Ceil(double x) {
    return std::ceil(x);
}

double TransformationDictionary::Rnd(double x) {
    if (!FitsInt32(x)) {
        return kMissing;
    }
    const double whole = Whole(x);
    const bool away = std::fabs(x) - std::fabs(whole) >= 0.5;
    if (!away) {
        return whole;
    }
    return x > 0.0 ? whole + 1.0 : whole - 1.0;
}

double TransformationDictionary::Mod(double a, double b) {
    if (b == 0.0 || IsMissing(a) || IsMissing(b)) {
        return kMissing;
    }
    const double quotient = a / b;
    return FitsInt32(quotient) ? a - std::trunc(quotient) * b : kMissing;
}

double TransformationDictionary::Threshold(double x, double threshold) {
    return x > threshold ? 1.0 : 0.0;
}

double TransformationDictionary::CdfNorm(double x) {
    return IsMissing(x) ? kMissing : MCMath_900::MCDistFun::CdfStdNorm(x);
}

double TransformationDictionary::Pow(double x, int n) {
    if (n == 0 && x < kPowZeroBound) {
        return 1.0;
    }
    if (IsMissing(x)) {
        return kMissing;
    }
    double result = 1.0;
    double square = x;
    for (unsigned int rest = n < 0 ? 0U - static_cast<unsigned int>(n) : static_cast<unsigned int>(n); rest != 0;
         rest >>= 1U) {
        if ((rest & 1U) != 0) {
            result *= square;
        }
        square *= square;
    }
    return n < 0 ? 1.0 / result : result;
}

} // namespace MCVeltrane_900
