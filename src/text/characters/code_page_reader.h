#ifndef VELTRANE_TEXT_CODE_PAGE_READER_H
#define VELTRANE_TEXT_CODE_PAGE_READER_H

#include "text/characters/text_unit.h"
#include "text/converters/converter_callbacks.h"
#include "text/converters/converter_clone.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace veltrane::text {

/// What the default converter makes of each byte that is a character by itself whatever stands around it. It spares
/// most text the way through the converter.
struct SingleBytes {
    static constexpr std::int32_t kNone = -1; ///< not a character by itself
    std::array<std::int32_t, 256> value;      ///< the code point
    std::array<std::int32_t, 256> folded;     ///< the code point folded by u_tolower
};

/// The table of the default converter, which is made with it and stays to the end of the process.
const SingleBytes& DefaultSingleBytes();

/// Decodes texts of the code page on a private clone of the default converter, made when a text first needs it.
class CodePageReader {
public:
    /// The unit at the start of a text that isn't empty, read from a fresh state.
    TextUnit ReadFirst(std::string_view text);

    /// The next unit of a text, read from the state that the one before it left, so that a converter may keep a shift
    /// state, or deliver a character whose bytes it has taken already: its length is 0.
    /// @return nothing when the text is empty and the converter delivers no more
    std::optional<TextUnit> ReadNext(std::string_view text);

private:
    UConverter* Converter();

    std::optional<ConverterClone> fClone;
    SubstitutionWatch fWatch; ///< new after each substitution
};

} // namespace veltrane::text

#endif
