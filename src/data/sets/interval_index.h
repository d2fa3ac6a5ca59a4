#ifndef VELTRANE_DATA_INTERVAL_INDEX_H
#define VELTRANE_DATA_INTERVAL_INDEX_H

#include "data/sets/sorted_numbers.h"

#include <map>

namespace veltrane::data {

/// Many intervals of numbers as one: answers whether any of them holds a number as Range does, by plain comparison on
/// the inside and with the tolerance of numeric equality at the ends that are included.
class IntervalIndex {
public:
    /// Adds an interval; one without an inside has its included ends alone.
    void Add(double low, double high, bool lowIncluded, bool highIncluded);

    /// Takes out one interval that was added like this.
    void Remove(double low, double high, bool lowIncluded, bool highIncluded);

    bool Holds(double number) const;

private:
    void AddEnd(double end);
    void RemoveEnd(double end);

    /// The ends of the insides. An inside that lies below a number begins below it too, so the number is in as many as
    /// begin below it and don't end up to it.
    SortedNumbers fLows;
    SortedNumbers fHighs;
    /// How many included ends are at a number.
    std::map<double, int> fIncludedEnds;
};

} // namespace veltrane::data

#endif
