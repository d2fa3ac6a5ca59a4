#ifndef VELTRANE_TEXT_REJECT_TABLE_H
#define VELTRANE_TEXT_REJECT_TABLE_H

#include "text/text_unit.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace veltrane::text {

/// The bytes of the longest start of a text that holds no unit of `reject`.
/// @param read gives the TextUnit at the start of a text that isn't empty
template <class Read>
std::size_t LengthWithout(std::string_view text, std::string_view reject, Read read) {
    // The first units of `reject` are read once; those of a longer one anew for each unit of the text.
    std::array<std::int32_t, 64> table;
    std::size_t count = 0;
    for (; count < table.size() && !reject.empty(); ++count) {
        const TextUnit unit = read(reject);
        table[count] = unit.value;
        reject.remove_prefix(static_cast<std::size_t>(unit.length));
    }
    auto rejected = [&](std::int32_t value) {
        if (std::find(table.begin(), table.begin() + count, value) != table.begin() + count) {
            return true;
        }
        for (std::string_view rest = reject; !rest.empty();) {
            const TextUnit unit = read(rest);
            if (unit.value == value) {
                return true;
            }
            rest.remove_prefix(static_cast<std::size_t>(unit.length));
        }
        return false;
    };
    std::size_t at = 0;
    while (at < text.size()) {
        const TextUnit unit = read(text.substr(at));
        if (rejected(unit.value)) {
            break;
        }
        at += static_cast<std::size_t>(unit.length);
    }
    return at;
}

} // namespace veltrane::text

#endif
