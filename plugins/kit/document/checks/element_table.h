#ifndef VELTRANE_PLUGINS_KIT_ELEMENT_TABLE_H
#define VELTRANE_PLUGINS_KIT_ELEMENT_TABLE_H

#include "kit/document/element.h"

#include <bitset>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

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
    std::vector<std::u16string_view> words; ///< of a WORD
};

/// What an element has to fulfil beyond its attributes, each alone; throws a VTException where it doesn't.
using ElementRule = void (*)(const Element&);

/// A number for each name of an element that Elements.def mentions.
using TagNumber = std::size_t;
constexpr TagNumber kMostTags = 128;
constexpr TagNumber kOtherTag = kMostTags;

/// A row of Elements.def with the rows of its attributes.
struct ElementRow {
    const XMLCh* tag = nullptr; ///< null where an element has no row
    ElementRule rule = nullptr; ///< null for none
    std::bitset<kMostTags> children;
    std::vector<AttributeRow> attributes; ///< 32 at most
    std::uint32_t required = 0;           ///< a bit for each attribute that isn't optional, by its place
};

/// Elements.def, made up for looking up.
class ElementTable {
public:
    static const ElementTable& Instance();

    /// @return kOtherTag for a name that the table doesn't have
    TagNumber NumberOf(std::u16string_view tag) const;

    /// @return null for an element that is passed over
    const ElementRow* RowOf(TagNumber tag) const;

private:
    ElementTable();
    void AddElement(const XMLCh* tag, ElementRule rule, std::u16string_view children);
    void AddAttribute(const XMLCh* name, AttributeNeed need, AttributeKind kind, std::u16string_view words = {});
    TagNumber Number(std::u16string_view tag);

    std::unordered_map<std::u16string_view, TagNumber> fNumbers;
    std::vector<ElementRow> fRows; ///< by number
    TagNumber fLast = kOtherTag;   ///< the element whose attributes are added
};

} // namespace veltrane_kit

#endif
