#ifndef VELTRANE_TRANSFORM_TABLE_ROWS_H
#define VELTRANE_TRANSFORM_TABLE_ROWS_H

#include <MCVeltrane_900/ScoreValue.h>

#include <cstddef>
#include <vector>

namespace veltrane::transform {

/// The input values of a row or of a lookup, in column order; borrowed.
using TableKey = std::vector<MCVeltrane_900::ScoreValue*>;

/// Whether the left key comes before the right one: element by element, by the ordering operators of the left element
/// when it is a number or a text; elements of any other kind, and elements without a value, count as equal.
/// @throws std::out_of_range when the right key ends before the two have differed
bool ComesBefore(const TableKey& left, const TableKey& right);

/// The rows of an inline table in key order.
///
/// The order of keys is none that a sorted container may rest on: numbers have a tolerance, a missing one equals every
/// other, blank texts come before nothing and are still not the last, a number orders against the number of a text. So
/// rows are kept by their positions alone, and every comparison decides only about the row that it looks at: whatever
/// the comparisons say, a row goes to one place and stays there, and a search ends.
class TableRows {
public:
    struct Row {
        TableKey inputs;
        MCVeltrane_900::ScoreValue* output; ///< borrowed
    };

    /// Adds a row ahead of the first one that doesn't come before it, unless that one has an equal key.
    /// @return whether the row was added
    /// @throws std::out_of_range as ComesBefore(); nothing is added then
    bool Add(TableKey inputs, MCVeltrane_900::ScoreValue* output);

    /// The first row that doesn't come before the inputs, if these don't come before it either; null otherwise.
    ///
    /// The search halves the rows until eight of them are left and takes these in their order. In a table whose keys
    /// contradict each other it is this walk that decides which row is found.
    /// @throws std::out_of_range as ComesBefore()
    const Row* Find(const TableKey& inputs) const;

private:
    /// Neighbours, so that a new row moves the rows of one block and not of the table. No block is empty.
    using Block = std::vector<Row>;
    struct Place {
        std::size_t block;
        std::size_t row; ///< the size of the block for a place behind its last row
    };

    Place FirstNotBefore(const TableKey& inputs) const;
    void Insert(Place place, Row row);
    bool IsRow(Place place) const;

    std::vector<Block> fBlocks;
};

} // namespace veltrane::transform

#endif
