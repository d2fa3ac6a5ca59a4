#ifndef VELTRANE_COLUMNS_ARROW_FORMAT_H
#define VELTRANE_COLUMNS_ARROW_FORMAT_H

#include <veltrane/value.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Columns of the Arrow C data interface.
namespace veltrane::columns {

/// What the values of a column are.
enum class Family : std::uint8_t {
    NULLS,      ///< none at all
    BOOLEAN,    ///
    NUMBER,     ///< whole or not
    TEXT,       ///< in UTF-8
    BYTES,      ///< of any encoding
    DATE,       ///< days, or milliseconds at the start of a day, since 1970-01-01
    TIME,       ///< since midnight
    TIMESTAMP,  ///< since 1970-01-01 00:00:00
    UNSUPPORTED ///
};

/// How they are stored.
enum class Storage : std::uint8_t {
    NONE,
    BITS,
    INT8,
    UINT8,
    INT16,
    UINT16,
    INT32,
    UINT32,
    INT64,
    UINT64,
    FLOAT16,
    FLOAT32,
    FLOAT64,
    OFFSETS32, ///< of bytes in a buffer of their own
    OFFSETS64,
    VIEWS ///< of bytes in the view itself, or in one of several buffers
};

/// The format of a column, as a schema tells it.
struct ColumnFormat {
    Family family = Family::UNSUPPORTED;
    Storage storage = Storage::NONE;
    std::int64_t unitsPerSecond = 1; ///< of times and timestamps; of dates, units in a day

    bool IsText() const { return family == Family::TEXT || family == Family::BYTES; }

    /// Whether its values can be the places in a dictionary.
    bool IsWhole() const { return family == Family::NUMBER && storage >= Storage::INT8 && storage <= Storage::UINT64; }
};

/// @param text of a schema; null for none
ColumnFormat ReadFormat(const char* text);

/// Whether a field takes columns of a format.
/// @param isUtf8 whether the texts of fields are UTF-8
bool Takes(DataType type, const ColumnFormat& format, bool isUtf8);

/// The format in which a field's columns need no conversion.
const char* FormatOf(DataType type, bool isUtf8);

} // namespace veltrane::columns

#endif
