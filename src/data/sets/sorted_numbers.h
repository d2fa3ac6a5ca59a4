#ifndef VELTRANE_DATA_SORTED_NUMBERS_H
#define VELTRANE_DATA_SORTED_NUMBERS_H

#include <cstddef>
#include <vector>

namespace veltrane::data {

/// Numbers in order that come and go one by one, some of them often, and are counted up to any other number. None may
/// be a NaN.
class SortedNumbers {
public:
    void Add(double number);
    /// Takes out one number that is equal to the given one.
    void Remove(double number);

    std::size_t CountBelow(double number) const;
    std::size_t CountUpTo(double number) const;

private:
    using Block = std::vector<double>;

    void Renumber();

    /// Sorted, and so is each of them; none is empty.
    std::vector<Block> fBlocks;
    /// How many numbers stand before each block.
    std::vector<std::size_t> fBefore;
};

} // namespace veltrane::data

#endif
