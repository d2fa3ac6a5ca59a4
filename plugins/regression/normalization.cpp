#include "normalization.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veltrane_regression {

namespace {

/// Without the overflow of exp(-y) for y far below 0.
double Logistic(double y) {
    if (y >= 0) {
        return 1.0 / (1.0 + std::exp(-y));
    }
    const double e = std::exp(y);
    return e / (1.0 + e);
}

bool ShareOut(std::vector<double>& parts) {
    double total = 0.0;
    for (const double part : parts) {
        total += part;
    }
    if (total == 0.0 || !std::isfinite(total)) {
        return false;
    }
    for (double& part : parts) {
        part /= total;
    }
    return true;
}

/// Exponentials relative to the largest, so that none overflows.
bool Softmax(std::vector<double>& sums) {
    const double largest = *std::max_element(sums.begin(), sums.end());
    for (double& sum : sums) {
        sum = std::exp(sum - largest);
    }
    return ShareOut(sums);
}

bool Link(Normalization method, bool isOrdinal, std::vector<double>& sums) {
    double before = 0.0;
    for (std::size_t i = 0; i + 1 < sums.size(); ++i) {
        const double linked = InverseLink(method, sums[i]);
        sums[i] = isOrdinal ? linked - before : linked;
        before = isOrdinal ? linked : before + linked;
    }
    sums.back() = 1.0 - before;
    return std::isfinite(before);
}

} // namespace

double InverseLink(Normalization method, double y) {
    switch (method) {
    case Normalization::SOFTMAX:
    case Normalization::LOGIT:
        return Logistic(y);
    case Normalization::PROBIT:
        return 0.5 * std::erfc(-y / std::numbers::sqrt2);
    case Normalization::CLOGLOG:
        return -std::expm1(-std::exp(y));
    case Normalization::LOGLOG:
        return std::exp(-std::exp(-y));
    case Normalization::CAUCHIT:
        return 0.5 + std::atan(y) * std::numbers::inv_pi;
    case Normalization::EXP:
        return std::exp(y);
    default:
        return y;
    }
}

bool Normalize(Normalization method, bool isOrdinal, std::vector<double>& sums) {
    if (std::any_of(sums.begin(), sums.end(), [](double sum) { return !std::isfinite(sum); })) {
        return false;
    }
    switch (method) {
    case Normalization::SOFTMAX:
        return Softmax(sums);
    case Normalization::SIMPLEMAX:
        return ShareOut(sums);
    default:
        return Link(method, isOrdinal, sums);
    }
}

} // namespace veltrane_regression
