#ifndef VELTRANE_DATA_LABEL_INDEX_H
#define VELTRANE_DATA_LABEL_INDEX_H

#include "data/sets/kept_index.h"
#include "data/sets/value_index.h"

#include <MCVeltrane_900/ScoreValueLabel.h>

#include <vector>

namespace veltrane::data {

/// Narrows the search in a long list of labelled values for one with a given value.
struct LabelPlaces {
    using List = std::vector<MCVeltrane_900::ScoreValueLabel*>;

    explicit LabelPlaces(const List& labels);

    bool IsTrue(const List& labels) const;

    void Add(MCVeltrane_900::ScoreValueLabel& label);
    /// @return the position that the list has for this place
    int Remove(int place);

    /// Whether so many labels have been taken out that it's time for a new index.
    bool IsWorn(std::size_t size) const { return elements.size() > 2 * size + 64; }

    /// The places in the order of the list.
    std::vector<int> order;
    /// What stands at a place, or stood there: places aren't given twice.
    std::vector<MCVeltrane_900::ScoreValueLabel*> elements;
    ValueIndex values;
};

/// The index of a set of labelled values.
class LabelIndex : public KeptIndex<LabelPlaces> {
public:
    using KeptIndex::KeptIndex;
};

} // namespace veltrane::data

#endif
