#include "translators/dictionary/range_overlap.h"

#include <algorithm>
#include <set>
#include <utility>

// Each of the conditions asks whether a bound of one range is among certain numbers that another range gives, so each
// is answered for all pairs by searching the sorted bounds. A range never meets a condition with itself by mistake: a
// bound of its own is not strictly between its bounds, and where equality counts, its own entry is told apart by
// number.
namespace veltrane::translators {

namespace {

bool SameBounds(const std::vector<BinRange>& ranges) {
    std::vector<std::pair<double, double>> bounds;
    bounds.reserve(ranges.size());
    for (const BinRange& range : ranges) {
        bounds.emplace_back(range.low, range.high);
    }
    std::sort(bounds.begin(), bounds.end());
    return std::adjacent_find(bounds.begin(), bounds.end()) != bounds.end();
}

bool LowEndInside(const std::vector<BinRange>& ranges) {
    std::vector<double> lows;
    lows.reserve(ranges.size());
    for (const BinRange& range : ranges) {
        lows.push_back(range.low);
    }
    std::sort(lows.begin(), lows.end());
    return std::any_of(ranges.begin(), ranges.end(), [&lows](const BinRange& range) {
        const auto next = std::upper_bound(lows.begin(), lows.end(), range.low);
        return next != lows.end() && *next < range.high;
    });
}

bool EarlierHighEndInside(const std::vector<BinRange>& ranges) {
    std::set<double> highs;
    for (const BinRange& range : ranges) {
        const auto next = highs.upper_bound(range.low);
        if (next != highs.end() && *next < range.high) {
            return true;
        }
        highs.insert(range.high);
    }
    return false;
}

bool IncludedEndsTouch(const std::vector<BinRange>& ranges) {
    std::vector<double> highs;
    for (const BinRange& range : ranges) {
        if (range.highIncluded) {
            highs.push_back(range.high);
        }
    }
    std::sort(highs.begin(), highs.end());
    return std::any_of(ranges.begin(), ranges.end(), [&highs](const BinRange& range) {
        if (!range.lowIncluded) {
            return false;
        }
        const auto [first, last] = std::equal_range(highs.begin(), highs.end(), range.low);
        const bool ownIsAmongThem = range.highIncluded && range.high == range.low;
        return last - first > (ownIsAmongThem ? 1 : 0);
    });
}

} // namespace

bool AnyIntersect(const std::vector<BinRange>& ranges) {
    return SameBounds(ranges) || LowEndInside(ranges) || EarlierHighEndInside(ranges) || IncludedEndsTouch(ranges);
}

} // namespace veltrane::translators
