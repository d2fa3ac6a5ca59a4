#ifndef VELTRANE_PLUGINS_KIT_KNOWN_TEXTS_H
#define VELTRANE_PLUGINS_KIT_KNOWN_TEXTS_H

#include <xercesc/util/XercesDefs.hpp>

#include <array>
#include <cstddef>
#include <cstdint>

namespace veltrane_kit {

/// What texts of a document mean to one reader, by the places where they stand; `kPlaces` of them at most.
///
/// Among records equal short texts mostly stand in one place, so that a name or a word is looked up once for nearly all
/// nodes of a tree. In the DOM each has a place of its own, and nothing is gained. A text stays where it is while the
/// document is read; a reader asks for as long as the meaning of its texts doesn't change.
template <typename Meaning, std::size_t kPlaces>
class KnownTexts {
public:
    /// @return null for a text that isn't known
    const Meaning* Find(const XMLCh* text) const {
        const Known& known = fKnown[PlaceOf(text)];
        return known.text == text ? &known.meaning : nullptr;
    }

    /// Takes the place of another one, if need be.
    const Meaning& Keep(const XMLCh* text, const Meaning& meaning) {
        Known& known = fKnown[PlaceOf(text)];
        known = {text, meaning};
        return known.meaning;
    }

private:
    struct Known {
        const XMLCh* text = nullptr;
        Meaning meaning{};
    };

    static std::size_t PlaceOf(const XMLCh* text) {
        constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>(reinterpret_cast<std::uintptr_t>(text) * kFactor >> 32U) % kPlaces;
    }

    std::array<Known, kPlaces> fKnown{};
};

} // namespace veltrane_kit

#endif
