#include "columns/arrow/cells.h"

#include "diagnostics/raise.h"

#include <algorithm>

namespace veltrane::columns {

namespace {

using diagnostics::Message;
using diagnostics::Raise;

/// Validity, values; of texts their bytes; of views their sizes, behind any number of blocks.
std::int64_t BufferCount(const ColumnFormat& format) {
    if (format.family == Family::NULLS) {
        return 0;
    }
    return format.IsText() ? 3 : 2;
}

const void* Buffer(const std::string& name, const ArrowArray& array, std::int64_t at, const char* what) {
    const void* buffer = array.buffers[at];
    if (buffer == nullptr) {
        Raise<Message::MISSING_PART>(name, what);
    }
    return buffer;
}

void CheckBufferCount(const std::string& name, const ArrowArray& array, const ColumnFormat& format) {
    const std::int64_t expected = BufferCount(format);
    if (format.storage != Storage::VIEWS || array.n_buffers < expected || array.n_buffers > kMostRows) {
        CheckCount(name, "buffers", array.n_buffers, expected);
    }
}

void RequireBuffers(const std::string& name, const ArrowArray& array) {
    if (array.buffers == nullptr) {
        Raise<Message::MISSING_PART>(name, "buffers");
    }
}

/// Views come before their blocks, and behind these comes how long each is.
void TakeBlocks(const std::string& name, const ArrowArray& array, Cells& cells) {
    cells.blockCount = static_cast<std::size_t>(array.n_buffers - BufferCount(cells.format));
    cells.blocks = array.buffers + 2;
    if (cells.blockCount > 0) {
        cells.blockSizes = Buffer(name, array, array.n_buffers - 1, "sizes");
    }
}

} // namespace

void CheckCount(const std::string& name, const char* what, std::int64_t count, std::int64_t expected) {
    if (count != expected) {
        Raise<Message::WRONG_PART_COUNT>(what, name, std::to_string(count), std::to_string(expected));
    }
}

void CheckLength(const std::string& name, const ArrowArray& array, std::int64_t most) {
    const auto check = [&name](const char* what, std::int64_t number, std::int64_t least, std::int64_t greatest) {
        if (number < least || number > greatest) {
            Raise<Message::BAD_COLUMN_LENGTH>(what, name, std::to_string(number), std::to_string(least),
                                              std::to_string(greatest));
        }
    };
    check("length", array.length, 0, most);
    // In bits, and in views of 16 bytes, a place has to be a number of 64 bits still.
    constexpr std::int64_t kGreatestPlace = std::numeric_limits<std::int64_t>::max() / 16;
    check("offset", array.offset, 0, kGreatestPlace - std::min(array.length, kGreatestPlace));
    check("null_count", array.null_count, -1, array.length);
}

Validity ValidityOf(const std::string& name, const ArrowArray& array, std::size_t first) {
    Validity validity;
    if (array.null_count != 0 && array.length > 0) {
        validity.bits = static_cast<const std::uint8_t*>(array.buffers[0]);
        validity.first = first;
    }
    if (array.null_count > 0 && validity.bits == nullptr) {
        Raise<Message::MISSING_PART>(name, "validity bitmap");
    }
    return validity;
}

Cells CheckCells(const std::string& name, const ArrowArray& array, const ColumnFormat& format, const Rows& rows) {
    if (array.release == nullptr) {
        Raise<Message::RELEASED_STRUCT>("array", name);
    }
    CheckLength(name, array, std::numeric_limits<std::int64_t>::max());
    const auto end = static_cast<std::int64_t>(rows.first + rows.count);
    if (array.length < end) {
        Raise<Message::BAD_COLUMN_LENGTH>("length", name, std::to_string(array.length), std::to_string(end),
                                          std::to_string(std::numeric_limits<std::int64_t>::max()));
    }
    CheckCount(name, "children", array.n_children, 0);
    CheckBufferCount(name, array, format);
    Cells cells;
    cells.format = format;
    cells.first = static_cast<std::size_t>(array.offset) + rows.first;
    cells.rows = rows.count;
    cells.ofRows = rows.validity;
    if (format.family == Family::NULLS || rows.count == 0) {
        return cells; // an array of no rows may have no buffers
    }
    RequireBuffers(name, array);
    cells.own = ValidityOf(name, array, cells.first);
    cells.values = Buffer(name, array, 1, format.IsText() ? "offsets" : "values");
    if (format.storage == Storage::VIEWS) {
        TakeBlocks(name, array, cells);
    } else if (format.IsText()) {
        cells.bytes = static_cast<const char*>(array.buffers[2]);
    }
    return cells;
}

} // namespace veltrane::columns
