#include "platform/platform.h"
#include "stats/numerics/guards.h"
#include "stats/numerics/saddle_point.h"
#include "stats/numerics/steps.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>

/// ln Gamma and the binomial coefficient.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// C(n, k) as a product over i of (n - i) / (m - i), with m the smaller of k and n - k.
double BinomialProduct(double n, double k) {
    const double m = std::min(k, n - k);
    double product = 1;
    for (double i = 0; i < m; ++i) {
        CountStep();
        product *= (n - i) / (m - i);
    }
    return product;
}

} // namespace

double MCDistFun::dnlgam(double x) {
    if (!(x > 0)) {
        return Missing();
    }
    if (x == 1 || x == 2) {
        return 0.0;
    }
    const double value = veltrane::platform::LogGamma(x);
    return FiniteOrMissing(value);
}

double MCDistFun::dnlbnc(double n, double k, long& code) {
    code = SUCCESS;
    if (!(n >= 0 && k >= 0 && n >= k)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (k == 0 || k == n) {
        return 0.0;
    }
    if (n <= kLargestProduct && std::floor(n) == n && std::floor(k) == k) {
        return std::log(BinomialProduct(n, k));
    }
    const double value = LogChoose(n, k);
    return std::isfinite(value) ? std::max(value, 0.0) : Fail(code, FAILED);
}

double MCDistFun::korddnlgam(double x) {
    return dnlgam(x);
}

} // namespace MCMath_900
