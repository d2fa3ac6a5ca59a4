#ifndef VELTRANE_COLUMNS_ARROW_CELLS_H
#define VELTRANE_COLUMNS_ARROW_CELLS_H

#include "columns/arrow/format.h"

#include <veltrane/arrow.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

namespace veltrane::columns {

/// The most rows of a batch, and entries of a dictionary: their places are numbers of 32 bits.
inline constexpr std::int64_t kMostRows = std::numeric_limits<std::int32_t>::max();

/// Which rows have a value, as bits. Without bits all have.
struct Validity {
    const std::uint8_t* bits = nullptr;
    std::size_t first = 0; ///< the place of row 0

    bool Has(std::size_t row) const {
        const std::size_t at = first + row;
        return bits == nullptr || (bits[at / 8] >> (at % 8) & 1U) != 0;
    }
};

/// The rows of a batch within each of its columns.
struct Rows {
    std::size_t first = 0; ///< the place of row 0 among the rows of a column
    std::size_t count = 0;
    Validity validity; ///< a row without it is missing in all columns
};

/// Reads a number from where it may stand at any address.
template <typename Number>
Number Load(const void* numbers, std::size_t at) {
    Number number;
    std::memcpy(&number, static_cast<const char*>(numbers) + at * sizeof(Number), sizeof(Number));
    return number;
}

/// The cells of a column, or the entries of a dictionary, whose buffers are there. Everything is borrowed.
struct Cells {
    ColumnFormat format;
    std::size_t first = 0; ///< the place of row 0 in the buffers
    std::size_t rows = 0;
    Validity own;
    Validity ofRows;
    const void* values = nullptr;        ///< numbers, bits, offsets or views
    const char* bytes = nullptr;         ///< that offsets lead to
    const void* const* blocks = nullptr; ///< that views lead to
    const void* blockSizes = nullptr;
    std::size_t blockCount = 0;

    bool IsNull(std::size_t row) const { return format.family == Family::NULLS || !own.Has(row) || !ofRows.Has(row); }
    bool HasNulls() const { return format.family == Family::NULLS || own.bits != nullptr || ofRows.bits != nullptr; }

    template <typename Number>
    Number At(std::size_t row) const {
        return Load<Number>(values, first + row);
    }

    bool BitAt(std::size_t row) const { return Validity{static_cast<const std::uint8_t*>(values), first}.Has(row); }

    /// The text of a row that isn't null, when CheckTexts has been through.
    std::string_view TextAt(std::size_t row) const;
};

/// Looks at an array as far as its length and its buffers go.
/// @param name of the column, for messages
/// @throws VTException 260346, 260349, 260350 or 260354
Cells CheckCells(const std::string& name, const ArrowArray& array, const ColumnFormat& format, const Rows& rows);

/// Looks at the length, the offset and the number of nulls of an array.
/// @throws VTException 260349
void CheckLength(const std::string& name, const ArrowArray& array, std::int64_t most);

/// Looks at the number of an array's buffers or children.
/// @throws VTException 260350 with what they are
void CheckCount(const std::string& name, const char* what, std::int64_t count, std::int64_t expected);

/// The validity of an array's cells.
/// @throws VTException 260354 where an array that says that it has nulls doesn't say which
Validity ValidityOf(const std::string& name, const ArrowArray& array, std::size_t first);

/// Looks at each text.
/// @throws VTException 260354, 260355 or 260356
void CheckTexts(const std::string& name, const Cells& cells);

/// Whether bytes are UTF-8: no character longer than need be, no surrogate, none above U+10FFFF.
bool IsUtf8Text(std::string_view text);

} // namespace veltrane::columns

#endif
