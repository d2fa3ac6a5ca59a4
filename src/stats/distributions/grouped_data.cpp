#include "stats/numerics/guards.h"
#include "stats/numerics/steps.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <iterator>
#include <numeric>

/// Percentiles of grouped data, and confidence limits of a median.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// How the classes of grouped data are given.
enum GroupingMode {
    MIDPOINTS = 1, ///< each value is the midpoint of its class; interpolation runs from midpoint to midpoint
    WIDTHS = 2,    ///< each value is the midpoint of its class, which reaches half its width to either side
    LIMITS = 3,    ///< each value is the upper limit of its class
};

enum PercentileCode : long {
    FOUND = 0,
    BELOW_FIRST = 1,
    ABOVE_LAST = 2,
    TOO_FEW_CLASSES = -1,
};

GroupingMode ModeOf(int mode) {
    return mode < 1 ? MIDPOINTS : mode == 1 ? WIDTHS : LIMITS;
}

/// A stretch of the scale with the cumulative frequency at its ends.
struct Stretch {
    double from, to;
    double cumulativeFrom, cumulativeTo;

    double At(double target) const {
        if (cumulativeTo == cumulativeFrom) {
            return to;
        }
        return from + (to - from) * ((target - cumulativeFrom) / (cumulativeTo - cumulativeFrom));
    }
};

/// The classes as stretches that follow each other. A mode that knows points only has one stretch less.
class Classes {
public:
    Classes(int n, const double* values, const double* freqs, const double* widths, GroupingMode mode)
        : fCount(n), fValues(values), fFreqs(freqs), fWidths(widths), fMode(mode) {}

    int First() const { return fMode == WIDTHS ? 0 : 1; }

    /// The stretch that ends with class i.
    /// @param before the cumulative frequency before class i
    Stretch Ending(int i, double before) const {
        switch (fMode) {
        case MIDPOINTS:
            return {fValues[i - 1], fValues[i], before - fFreqs[i - 1] / 2, before + fFreqs[i] / 2};
        case WIDTHS:
            return {fValues[i] - fWidths[i] / 2, fValues[i] + fWidths[i] / 2, before, before + fFreqs[i]};
        default:
            return {fValues[i - 1], fValues[i], before, before + fFreqs[i]};
        }
    }

    /// The percentile at a cumulative frequency.
    double Find(double target, long& code) const {
        double before = First() == 1 ? fFreqs[0] : 0;
        if (target < Ending(First(), before).cumulativeFrom) {
            code = BELOW_FIRST;
            return Missing();
        }
        for (int i = First(); i < fCount; ++i) {
            CountStep();
            const Stretch stretch = Ending(i, before);
            if (target <= stretch.cumulativeTo) {
                return stretch.At(target);
            }
            before += fFreqs[i];
        }
        code = ABOVE_LAST;
        return Missing();
    }

private:
    int fCount;
    const double* fValues;
    const double* fFreqs;
    const double* fWidths;
    GroupingMode fMode;
};

/// The value at a rank, counted along a range of values with frequencies; the last one when they end before it.
template <class Value, class Frequency>
double ValueAtRank(Value value, Value last, Frequency frequency, double rank) {
    double cumulative = *frequency;
    while (cumulative < rank && std::next(value) != last) {
        CountStep();
        ++value;
        cumulative += *++frequency;
    }
    return *value;
}

} // namespace

void MCDistFun::GPTile(int n, double pct, const double* values, const double* freqs, const double* widths, int mode,
                       double& out, long& code) {
    out = Missing();
    code = TOO_FEW_CLASSES;
    if (n < 2) {
        return;
    }
    code = FOUND;
    const double target = std::accumulate(freqs, freqs + n, 0.0) * pct / 100;
    out = Classes(n, values, freqs, widths, ModeOf(mode)).Find(target, code);
}

void MCDistFun::Mednci(int n, const double* values, const double* freqs, double count, double level, bool exact,
                       double& lower, double& upper, double& coverage) {
    lower = upper = coverage = Missing();
    if (n < 1 || !(count >= 2)) {
        return;
    }
    long code = SUCCESS;
    const double r = count == 2 ? -1 : IdfBin(0.5 - level / 200, count, 0.5, code);
    if (code != SUCCESS) {
        return;
    }
    if (r < 0) {
        lower = values[0];
        upper = values[n - 1];
        coverage = 100;
        return;
    }
    const double* end = values + n;
    lower = ValueAtRank(values, end, freqs, r + 1);
    upper = ValueAtRank(std::make_reverse_iterator(end), std::make_reverse_iterator(values),
                        std::make_reverse_iterator(freqs + n), r + 1);
    if (!exact) {
        return;
    }
    const double ratio = cdfbet(0.5, std::min(r + 1, count), std::max(count - r, 1.0), code);
    coverage = code == SUCCESS ? std::max((ratio - 0.5) * 200, 0.0) : Missing();
}

} // namespace MCMath_900
