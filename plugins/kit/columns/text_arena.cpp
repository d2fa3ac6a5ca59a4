#include "kit/columns/text_arena.h"

#include <algorithm>
#include <cstring>

namespace veltrane_kit {

std::string_view TextArena::Keep(std::string_view text) {
    char* const place = Take(text.size() + 1); // one more, so that the empty text has a place too
    if (place == nullptr) {
        return {};
    }
    if (!text.empty()) {
        std::memcpy(place, text.data(), text.size());
    }
    return {place, text.size()};
}

void TextArena::Forget() {
    fUsed = 0;
    fNext = nullptr;
    fLeft = 0;
}

/// Goes on in the next piece that has the room.
bool TextArena::Grow(std::size_t size) {
    std::size_t next = fUsed;
    while (next < fPieces.size() && fPieces[next].size < size) {
        ++next;
    }
    if (next == fPieces.size()) {
        const std::size_t bytes = std::max(size, kPiece);
        if (fBudget != nullptr && !fBudget->Spend(bytes)) {
            return false;
        }
        fPieces.push_back({std::make_unique_for_overwrite<char[]>(bytes), bytes});
    }
    fNext = fPieces[next].bytes.get();
    fLeft = fPieces[next].size;
    fUsed = next + 1;
    return true;
}

} // namespace veltrane_kit
