#include "columns/arrow/cells.h"
#include "diagnostics/raise.h"

#include <algorithm>

namespace veltrane::columns {

namespace {

using diagnostics::Message;
using diagnostics::Raise;

/// A text of up to 12 bytes stands in its view, behind its length; of a longer one the block and the place there.
struct View {
    static constexpr std::int32_t kMostInline = 12;
    static constexpr std::size_t kSize = 16;

    std::int32_t length = 0;
    std::int32_t block = 0;
    std::int32_t place = 0;
    const char* own = nullptr;

    View(const Cells& cells, std::size_t row) {
        const char* const start = static_cast<const char*>(cells.values) + (cells.first + row) * kSize;
        length = Load<std::int32_t>(start, 0);
        own = start + sizeof(length);
        block = Load<std::int32_t>(start, 2);
        place = Load<std::int32_t>(start, 3);
    }

    bool IsInline() const { return length <= kMostInline; }

    bool LiesWithin(const Cells& cells) const {
        if (length < 0 || IsInline()) {
            return length >= 0;
        }
        if (block < 0 || static_cast<std::size_t>(block) >= cells.blockCount || cells.blocks[block] == nullptr) {
            return false;
        }
        const auto size = Load<std::int64_t>(cells.blockSizes, static_cast<std::size_t>(block));
        return place >= 0 && static_cast<std::int64_t>(place) + length <= size;
    }
};

template <typename Offset>
std::string_view TextByOffsets(const Cells& cells, std::size_t row) {
    const auto start = cells.At<Offset>(row);
    const auto size = static_cast<std::size_t>(cells.At<Offset>(row + 1) - start);
    return size == 0 ? std::string_view("") : std::string_view(cells.bytes + start, size);
}

/// Offsets may not go down, whether there is a value or not.
template <typename Offset>
void CheckOffsets(const std::string& name, const Cells& cells) {
    Offset last = cells.At<Offset>(0);
    for (std::size_t row = 0; row < cells.rows; ++row) {
        const auto next = cells.At<Offset>(row + 1);
        if (last < 0 || next < last) {
            Raise<Message::BAD_COLUMN_OFFSET>(name, std::to_string(row));
        }
        last = next;
    }
    if (cells.bytes == nullptr && last > cells.At<Offset>(0)) {
        Raise<Message::MISSING_PART>(name, "bytes");
    }
}

void CheckViews(const std::string& name, const Cells& cells) {
    for (std::size_t row = 0; row < cells.rows; ++row) {
        if (!cells.IsNull(row) && !View(cells, row).LiesWithin(cells)) {
            Raise<Message::BAD_COLUMN_OFFSET>(name, std::to_string(row));
        }
    }
}

bool IsAscii(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    const char* at = text.data();
    std::size_t left = text.size();
    std::uint64_t bits = 0;
    for (; left >= sizeof(bits); at += sizeof(bits), left -= sizeof(bits)) {
        bits |= Load<std::uint64_t>(at, 0);
    }
    for (; left > 0; ++at, --left) {
        bits |= static_cast<unsigned char>(*at);
    }
    return (bits & kHighBits) == 0;
}

/// What the bytes of a character may be, by the first: how many follow, and the bounds of the next.
struct Lead {
    unsigned char first, last;
    int following;
    unsigned char low, high;
};
constexpr Lead kLeads[] = {
    {0x00, 0x7F, 0, 0x80, 0xBF}, {0xC2, 0xDF, 1, 0x80, 0xBF}, {0xE0, 0xE0, 2, 0xA0, 0xBF},
    {0xE1, 0xEC, 2, 0x80, 0xBF}, {0xED, 0xED, 2, 0x80, 0x9F}, {0xEE, 0xEF, 2, 0x80, 0xBF},
    {0xF0, 0xF0, 3, 0x90, 0xBF}, {0xF1, 0xF3, 3, 0x80, 0xBF}, {0xF4, 0xF4, 3, 0x80, 0x8F},
};

/// The bytes of the character that a text begins with; 0 where it begins with none.
std::size_t CharacterSize(std::string_view text) {
    const auto byte = [&text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const auto* lead = std::find_if(std::begin(kLeads), std::end(kLeads), [&byte](const Lead& each) {
        return byte(0) >= each.first && byte(0) <= each.last;
    });
    if (lead == std::end(kLeads) || text.size() <= static_cast<std::size_t>(lead->following)) {
        return 0;
    }
    const auto size = static_cast<std::size_t>(lead->following) + 1;
    for (std::size_t at = 1; at < size; ++at) {
        const bool isFirst = at == 1;
        if (byte(at) < (isFirst ? lead->low : 0x80) || byte(at) > (isFirst ? lead->high : 0xBF)) {
            return 0;
        }
    }
    return size;
}

/// All bytes between the first text and the last are looked at in one go; they are seldom other than ASCII.
bool IsAsciiInAll(const Cells& cells) {
    if (cells.format.storage != Storage::VIEWS && cells.bytes == nullptr) {
        return true; // there are none
    }
    if (cells.format.storage == Storage::OFFSETS32) {
        const auto start = cells.At<std::int32_t>(0);
        return IsAscii({cells.bytes + start, static_cast<std::size_t>(cells.At<std::int32_t>(cells.rows) - start)});
    }
    if (cells.format.storage == Storage::OFFSETS64) {
        const auto start = cells.At<std::int64_t>(0);
        return IsAscii({cells.bytes + start, static_cast<std::size_t>(cells.At<std::int64_t>(cells.rows) - start)});
    }
    return false;
}

} // namespace

bool IsUtf8Text(std::string_view text) {
    if (IsAscii(text)) {
        return true;
    }
    while (!text.empty()) {
        const std::size_t size = CharacterSize(text);
        if (size == 0) {
            return false;
        }
        text.remove_prefix(size);
    }
    return true;
}

std::string_view Cells::TextAt(std::size_t row) const {
    switch (format.storage) {
    case Storage::OFFSETS32:
        return TextByOffsets<std::int32_t>(*this, row);
    case Storage::OFFSETS64:
        return TextByOffsets<std::int64_t>(*this, row);
    default: {
        const View view(*this, row);
        const char* const start =
            view.IsInline() ? view.own : static_cast<const char*>(blocks[view.block]) + view.place;
        return {start, static_cast<std::size_t>(view.length)};
    }
    }
}

void CheckTexts(const std::string& name, const Cells& cells) {
    if (cells.rows == 0) {
        return;
    }
    if (cells.format.storage == Storage::OFFSETS32) {
        CheckOffsets<std::int32_t>(name, cells);
    } else if (cells.format.storage == Storage::OFFSETS64) {
        CheckOffsets<std::int64_t>(name, cells);
    } else {
        CheckViews(name, cells);
    }
    if (cells.format.family != Family::TEXT || IsAsciiInAll(cells)) {
        return;
    }
    for (std::size_t row = 0; row < cells.rows; ++row) {
        if (!cells.IsNull(row) && !IsUtf8Text(cells.TextAt(row))) {
            Raise<Message::BAD_COLUMN_TEXT>(name, std::to_string(row));
        }
    }
}

} // namespace veltrane::columns
