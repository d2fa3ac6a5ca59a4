#ifndef VELTRANE_COLUMNS_ARROW_NUMBERS_H
#define VELTRANE_COLUMNS_ARROW_NUMBERS_H

#include "columns/arrow/cells.h"

#include <veltrane/value.h>

#include <cstddef>

namespace veltrane::columns {

/// The cells as they stand in memory, where they are what a field keeps: float64 without a null, at an address for
/// doubles, in a field that doesn't count days or seconds otherwise.
/// @return the number of row 0; null where they have to be read
const double* NumbersInPlace(const Cells& cells);

/// Reads cells as the numbers that a field keeps.
/// @param type    of the field, which takes the cells' format and isn't STRING
/// @param row     the first one
/// @param count   of rows
/// @param numbers receives as many; not a number for a null
void ReadNumbers(const Cells& cells, DataType type, std::size_t row, std::size_t count, double* numbers);

/// The same for places in a dictionary: int32 without a null.
const std::int32_t* CodesInPlace(const Cells& cells);

/// The first row whose place in a dictionary isn't below `size`; the number of rows for none. Nulls have no place.
std::size_t FindBadIndex(const Cells& cells, std::int64_t size);

/// A place in a dictionary as it stands, for a message.
std::string IndexText(const Cells& cells, std::size_t row);

/// Reads places that all lie within a dictionary, and looks each up.
/// @param looked  by place
/// @param nothing for a null
template <typename Value>
void LookUp(const Cells& cells, std::size_t row, std::size_t count, const Value* looked, Value nothing, Value* found);

} // namespace veltrane::columns

#endif
