#ifndef VELTRANE_PLUGINS_KIT_TEXT_CODES_H
#define VELTRANE_PLUGINS_KIT_TEXT_CODES_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane_kit {

/// Dense codes of texts from 0, in the order of addition, for as many texts as fields usually list: a text of up to 16
/// bytes is found by its bytes as two numbers. Documents could choose texts that all fall together, so it takes few.
class TextCodes {
public:
    static constexpr int kUnknown = -1;
    static constexpr std::size_t kMost = 4096;

    std::size_t Size() const { return fTexts.size(); }

    /// @param text one that isn't there; there are fewer than kMost
    void Add(std::string_view text) {
        fTexts.emplace_back(text);
        if (2 * fTexts.size() > fCells.size()) {
            Grow();
        } else {
            Put(static_cast<std::int32_t>(fTexts.size()) - 1);
        }
    }

    /// The code of a text, or kUnknown.
    int Find(std::string_view text) const {
        if (fCells.empty()) {
            return kUnknown;
        }
        const Key key = KeyOf(text);
        for (std::size_t at = HashOf(key) & fMask; fCells[at].code != kUnknown; at = (at + 1) & fMask) {
            const Cell& cell = fCells[at];
            if (cell.key.first == key.first && cell.key.last == key.last && cell.key.size == key.size &&
                (key.size <= kShort || fTexts[static_cast<std::size_t>(cell.code)] == text)) {
                return cell.code;
            }
        }
        return kUnknown;
    }

private:
    static constexpr std::size_t kShort = 16;
    static constexpr std::size_t kFewestCells = 8;

    /// Tells short texts apart.
    struct Key {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        std::size_t size = 0;
    };
    struct Cell {
        Key key;
        std::int32_t code = kUnknown;
    };

    template <typename T>
    static std::uint64_t BytesAt(const char* place) {
        T bytes;
        std::memcpy(&bytes, place, sizeof(T));
        return bytes;
    }

    static Key KeyOf(std::string_view text) {
        const char* const begin = text.data();
        const std::size_t size = text.size();
        if (size > kShort) {
            return {std::hash<std::string_view>()(text), 0, size};
        }
        if (size >= 8) {
            return {BytesAt<std::uint64_t>(begin), BytesAt<std::uint64_t>(begin + size - 8), size};
        }
        if (size >= 4) {
            return {BytesAt<std::uint32_t>(begin), BytesAt<std::uint32_t>(begin + size - 4), size};
        }
        if (size == 0) {
            return {};
        }
        // The first byte, the one in the middle and the last one are all there are.
        return {BytesAt<std::uint8_t>(begin),
                BytesAt<std::uint8_t>(begin + size / 2) << 8U | BytesAt<std::uint8_t>(begin + size - 1), size};
    }

    static std::size_t HashOf(const Key& key) {
        constexpr std::uint64_t kFirst = 0x9E3779B97F4A7C15;
        constexpr std::uint64_t kLast = 0xC2B2AE3D27D4EB4F;
        const std::uint64_t mixed = (key.first ^ key.size) * kFirst ^ key.last * kLast;
        return static_cast<std::size_t>(mixed ^ mixed >> 29U ^ mixed >> 47U);
    }

    void Put(std::int32_t code) {
        const Key key = KeyOf(fTexts[static_cast<std::size_t>(code)]);
        std::size_t at = HashOf(key) & fMask;
        while (fCells[at].code != kUnknown) {
            at = (at + 1) & fMask;
        }
        fCells[at] = {key, code};
    }

    void Grow() {
        const std::size_t cells = fCells.empty() ? kFewestCells : 2 * fCells.size();
        fMask = cells - 1;
        fCells.assign(cells, Cell());
        for (std::size_t code = 0; code < fTexts.size(); ++code) {
            Put(static_cast<std::int32_t>(code));
        }
    }

    std::vector<std::string> fTexts;
    std::vector<Cell> fCells;
    std::size_t fMask = 0;
};

} // namespace veltrane_kit

#endif
