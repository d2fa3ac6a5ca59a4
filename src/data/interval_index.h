#ifndef VELTRANE_DATA_INTERVAL_INDEX_H
#define VELTRANE_DATA_INTERVAL_INDEX_H

#include <map>
#include <set>

namespace veltrane::data {

/// Many intervals of numbers as one: answers whether any of them holds a number as Range does, by plain comparison on
/// the inside and with the tolerance of numeric equality at the ends that are included.
class IntervalIndex {
public:
    /// Adds an interval; one without an inside has its included ends alone.
    void Add(double low, double high, bool lowIncluded, bool highIncluded);

    bool Holds(double number) const;

private:
    void AddInside(double low, double high);
    void AddEnd(double end);

    /// The union of the open insides: low to high, none of them touching another but at an end.
    std::map<double, double> fInsides;
    std::set<double> fIncludedEnds;
};

} // namespace veltrane::data

#endif
