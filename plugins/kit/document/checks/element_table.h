#ifndef VELTRANE_PLUGINS_KIT_ELEMENT_TABLE_H
#define VELTRANE_PLUGINS_KIT_ELEMENT_TABLE_H

#include "kit/document/element.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace veltrane_kit {

/// The kinds of attribute of Elements.def.
enum class AttributeKind { TEXT, NAME, NUMBER, WHOLE, POSITIVE, FRACTION, FLAG, WORD };

/// Which documents have to have an attribute.
enum class AttributeNeed { OPTIONAL, REQUIRED, SINCE_3 };

/// A row of Elements.def about an attribute.
struct AttributeRow {
    const XMLCh* name;
    AttributeNeed need;
    AttributeKind kind;
    std::u16string_view words = {}; ///< of a WORD, with a blank between two
};

/// What an element has to fulfil beyond its attributes, each alone; throws a VTException where it doesn't.
using ElementRule = void (*)(const Element&);

/// A number for each name of an element that Elements.def mentions.
using TagNumber = std::size_t;
constexpr TagNumber kMostTags = 256;
constexpr TagNumber kOtherTag = kMostTags;

/// A set of tags.
class TagSet {
public:
    constexpr void Add(TagNumber tag) { fBits[tag / 64] |= std::uint64_t(1) << tag % 64; }

    /// False for kOtherTag.
    constexpr bool Has(TagNumber tag) const { return tag != kOtherTag && (fBits[tag / 64] >> tag % 64 & 1) != 0; }

private:
    std::uint64_t fBits[kMostTags / 64] = {};
};

/// A row of Elements.def with the rows of its attributes.
struct ElementRow {
    const XMLCh* tag = nullptr; ///< null where an element has no row
    ElementRule rule = nullptr; ///< null for none
    TagSet children;
    std::span<const AttributeRow> attributes; ///< 32 at most
    std::uint32_t required = 0;               ///< a bit for each attribute that isn't optional, by its place
};

/// @return kOtherTag for a name that the table doesn't have
TagNumber TagNumberOf(std::u16string_view tag);

/// @return null for an element that is passed over
const ElementRow* ElementRowOf(TagNumber tag);

} // namespace veltrane_kit

#endif
