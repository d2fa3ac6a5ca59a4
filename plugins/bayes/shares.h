#ifndef VELTRANE_PLUGINS_BAYES_SHARES_H
#define VELTRANE_PLUGINS_BAYES_SHARES_H

#include <algorithm>
#include <cmath>
#include <vector>

namespace veltrane_bayes {

/// Makes of logarithms the shares of their numbers in the sum of all, in place. They are taken relative to the largest,
/// so that none overflows and not all vanish.
/// @return false where all are those of 0, or one is no number
inline bool ShareOut(std::vector<double>& logs) {
    const double largest = *std::max_element(logs.begin(), logs.end());
    if (!std::isfinite(largest)) {
        return false;
    }
    double total = 0.0;
    for (double& log : logs) {
        log = std::exp(log - largest);
        total += log;
    }
    if (!std::isfinite(total)) {
        return false;
    }
    for (double& log : logs) {
        log /= total;
    }
    return true;
}

} // namespace veltrane_bayes

#endif
