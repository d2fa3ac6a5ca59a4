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

/// The links of an ordinal target go up from category to category: one that falls adds nothing. Sums without a link
/// are taken as they are.
void LinkOrdinal(Normalization method, std::vector<double>& sums) {
    double before = 0.0;
    for (std::size_t i = 0; i + 1 < sums.size(); ++i) {
        const double linked = method == Normalization::NONE ? sums[i] : std::max(InverseLink(method, sums[i]), before);
        sums[i] = linked - before;
        before = linked;
    }
    sums.back() = 1.0 - before;
}

/// The last category has the rest. Where the others leave none, they share the whole out.
bool Link(Normalization method, std::vector<double>& sums) {
    double before = 0.0;
    for (std::size_t i = 0; i + 1 < sums.size(); ++i) {
        sums[i] = InverseLink(method, sums[i]);
        before += sums[i];
    }
    if (method != Normalization::NONE && before > 1.0) {
        sums.back() = 0.0;
        return ShareOut(sums);
    }
    sums.back() = 1.0 - before;
    return std::isfinite(before);
}

/// Of two categories the first one's sum is its probability, held within 0 and 1.
void BoundTwo(std::vector<double>& sums) {
    sums.front() = std::clamp(sums.front(), 0.0, 1.0);
    sums.back() = 1.0 - sums.front();
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
        break;
    }
    if (method == Normalization::NONE && sums.size() == 2) {
        BoundTwo(sums);
        return true;
    }
    if (isOrdinal) {
        LinkOrdinal(method, sums);
        return true;
    }
    return Link(method, sums);
}

} // namespace veltrane_regression
