#ifndef VELTRANE_TESTS_TEXT_CONVERSION_REFERENCE_H
#define VELTRANE_TESTS_TEXT_CONVERSION_REFERENCE_H

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the conversions must give, character by character, as plainly as it can be written.
namespace veltrane::tests {

/// Stands for what isn't a character.
constexpr char32_t kBad = 0xFFFFFFFF;

/// The characters of a text; kBad once for each of the longest starts of a character that don't go on to be one.
std::vector<char32_t> Characters(std::string_view utf8);
std::vector<char32_t> Characters(std::u16string_view utf16);

std::string InUtf8(char32_t character);
std::u16string InUtf16(char32_t character);

/// One code page, by single steps of ICU's own converter, without this library's callbacks.
class CodePageTable {
public:
    explicit CodePageTable(const char* name);
    ~CodePageTable();
    CodePageTable(const CodePageTable&) = delete;
    CodePageTable& operator=(const CodePageTable&) = delete;

    /// The bytes of a character, nothing when the code page doesn't have it.
    std::optional<std::string> Bytes(char32_t character);
    std::vector<char32_t> Characters(std::string_view bytes);

private:
    void* fConverter;
    std::vector<std::optional<std::optional<std::string>>> fKnown;
};

/// Whether a character that a code page doesn't have is left out of it, rather than replaced.
bool IsInvisible(char32_t character);

/// A converted text before it is put into a field: each character by itself.
template <class Unit>
struct Pieces {
    std::vector<std::basic_string<Unit>> pieces;
    bool failed = false;

    void Add(const std::optional<std::basic_string<Unit>>& piece, bool invisible = false) {
        failed = failed || !piece;
        pieces.push_back(piece ? *piece : invisible ? std::basic_string<Unit>() : std::basic_string<Unit>(1, '?'));
    }

    std::basic_string<Unit> Whole() const {
        std::basic_string<Unit> whole;
        for (const auto& piece : pieces) {
            whole += piece;
        }
        return whole;
    }
};

/// What is in a field after a conversion.
template <class Unit>
struct Field {
    std::basic_string<Unit> field;
    int written;
    int status;
};

template <class Unit>
Field<Unit> Put(const Pieces<Unit>& text, bool terminated, int size) {
    std::basic_string<Unit> field(static_cast<std::size_t>(size), '#');
    const std::size_t room = field.size() - (terminated && size > 0 ? 1 : 0);
    std::basic_string<Unit> fitting;
    bool cut = false;
    for (const auto& piece : text.pieces) {
        cut = cut || fitting.size() + piece.size() > room;
        if (!cut) {
            fitting += piece;
        }
    }
    std::basic_string<Unit> shown = fitting;
    if (cut) {
        shown.resize(room, ' ');
    } else if (!terminated && shown.size() < room) {
        shown += ' ';
    }
    if (terminated && size > 0) {
        shown += Unit(0);
    }
    field.replace(0, shown.size(), shown);
    return {field, static_cast<int>(fitting.size()), cut ? 1 : text.failed ? 3 : 0};
}

} // namespace veltrane::tests

#endif
