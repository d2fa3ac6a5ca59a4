#ifndef VELTRANE_TEXT_REJECT_TABLE_H
#define VELTRANE_TEXT_REJECT_TABLE_H

#include "text/characters/text_unit.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace veltrane::text {

/// The units of a list. The first ones are read at once; the rest of a longer list only when one of them decides, then
/// all together, so that no list is read twice.
/// @tparam Read gives the TextUnit at the start of a text that isn't empty
template <class Read>
class RejectTable {
public:
    RejectTable(std::string_view reject, Read& read) : fRead(read), fRest(reject) {
        for (; fCount < fFirst.size() && !fRest.empty(); ++fCount) {
            fFirst[fCount] = Next();
        }
    }

    bool Holds(std::int32_t value) {
        const auto end = fFirst.begin() + fCount;
        return std::find(fFirst.begin(), end, value) != end || (fCount == fFirst.size() && IsInRest(value));
    }

private:
    std::int32_t Next() {
        const TextUnit unit = fRead(fRest);
        fRest.remove_prefix(static_cast<std::size_t>(unit.length));
        return unit.value;
    }

    bool IsInRest(std::int32_t value) {
        if (!fRest.empty()) {
            while (!fRest.empty()) {
                fSorted.push_back(Next());
            }
            std::sort(fSorted.begin(), fSorted.end());
            fSorted.erase(std::unique(fSorted.begin(), fSorted.end()), fSorted.end());
        }
        return std::binary_search(fSorted.begin(), fSorted.end(), value);
    }

    Read& fRead;
    std::string_view fRest;
    std::array<std::int32_t, 64> fFirst;
    std::size_t fCount = 0;
    std::vector<std::int32_t> fSorted;
};

/// The bytes of the longest start of a text that holds no unit of `reject`.
/// @param read gives the TextUnit at the start of a text that isn't empty
template <class Read>
std::size_t LengthWithout(std::string_view text, std::string_view reject, Read read) {
    RejectTable<Read> table(reject, read);
    std::size_t at = 0;
    while (at < text.size()) {
        const TextUnit unit = read(text.substr(at));
        if (table.Holds(unit.value)) {
            break;
        }
        at += static_cast<std::size_t>(unit.length);
    }
    return at;
}

} // namespace veltrane::text

#endif
