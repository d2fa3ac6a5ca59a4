#ifndef VELTRANE_PLUGINS_KIT_TEXT_ARENA_H
#define VELTRANE_PLUGINS_KIT_TEXT_ARENA_H

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace veltrane_kit {

/// How many bytes the texts of a thread may take in all: documents can make texts that double with every field, and
/// columns hold those of many rows.
class TextBudget {
public:
    explicit TextBudget(std::size_t bytes) : fLeft(bytes) {}

    bool Spend(std::size_t bytes) {
        if (bytes > fLeft) {
            return false;
        }
        fLeft -= bytes;
        return true;
    }

private:
    std::size_t fLeft;
};

/// Room for texts that stay until all of them are forgotten at once; what it took stays for the next ones.
class TextArena {
public:
    /// @param budget borrowed; null for none
    explicit TextArena(TextBudget* budget = nullptr) : fBudget(budget) {}

    /// Room for so many bytes; null when the budget is used up.
    char* Take(std::size_t size) {
        if (size > fLeft && !Grow(size)) {
            return nullptr;
        }
        char* const place = fNext;
        fNext += size;
        fLeft -= size;
        return place;
    }

    /// @return null data when the budget is used up
    std::string_view Keep(std::string_view text);

    void Forget();

private:
    static constexpr std::size_t kPiece = 1 << 15;

    bool Grow(std::size_t size);

    struct Piece {
        std::unique_ptr<char[]> bytes; // NOLINT(modernize-avoid-c-arrays): bytes that nobody initialises
        std::size_t size;
    };
    TextBudget* fBudget;
    std::vector<Piece> fPieces;
    std::size_t fUsed = 0; ///< of the pieces
    char* fNext = nullptr;
    std::size_t fLeft = 0;
};

} // namespace veltrane_kit

#endif
