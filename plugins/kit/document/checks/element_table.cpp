#include "kit/document/checks/element_table.h"

#include "kit/document/checks/element_rules.h"

#include <algorithm>
#include <array>

namespace veltrane_kit {

namespace {

using enum AttributeNeed;
using enum AttributeKind;

constexpr ElementRule kNoRule = nullptr;
#define ONE_OF(words) WORD, u"" words

constexpr AttributeRow kAttributes[] = {
#define VELTRANE_ELEMENT(tag, rule, children)
#define VELTRANE_ATTRIBUTE(name, need, ...) {u"" name, need, __VA_ARGS__},
#include "kit/document/checks/Elements.def"
};

/// A line of Elements.def: an element, or one more attribute of the last one.
struct Line {
    const XMLCh* tag; ///< null for an attribute
    ElementRule rule;
    std::u16string_view children;
};

constexpr Line kLines[] = {
#define VELTRANE_ELEMENT(tag, rule, children) {u"" tag, rule, u"" children},
#define VELTRANE_ATTRIBUTE(name, need, ...) {nullptr, nullptr, {}},
#include "kit/document/checks/Elements.def"
};

#undef ONE_OF

/// All rows by the numbers of their tags, and the tags in the order of their texts, which gives the numbers. It is made
/// while this is compiled: a plug-in may be loaded for each document.
class ElementTable {
public:
    consteval ElementTable() {
        NumberTags();
        AddRows();
    }

    constexpr TagNumber NumberOf(std::u16string_view tag) const {
        const auto* const end = fTags.begin() + fCount;
        const auto* const found = std::lower_bound(fTags.begin(), end, tag);
        return found != end && *found == tag ? static_cast<TagNumber>(found - fTags.begin()) : kOtherTag;
    }

    constexpr const ElementRow* RowOf(TagNumber tag) const {
        return tag == kOtherTag || fRows[tag].tag == nullptr ? nullptr : &fRows[tag];
    }

private:
    template <typename Use>
    static constexpr void ForEachWord(std::u16string_view text, Use use) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find(u' '), text.size());
            if (end > 0) {
                use(text.substr(0, end));
            }
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

    constexpr void Insert(std::u16string_view tag) {
        auto* const at = std::lower_bound(fTags.begin(), fTags.begin() + fCount, tag);
        if (at == fTags.begin() + fCount || *at != tag) {
            std::copy_backward(at, fTags.begin() + fCount, fTags.begin() + fCount + 1);
            *at = tag;
            ++fCount;
        }
    }

    constexpr void NumberTags() {
        Insert(u"Extension");
        for (const Line& line : kLines) {
            if (line.tag != nullptr) {
                Insert(line.tag);
                ForEachWord(line.children, [this](std::u16string_view child) { Insert(child); });
            }
        }
    }

    constexpr void AddRows() {
        ElementRow* row = fRows.data(); // the first line is that of an element
        const AttributeRow* attribute = kAttributes;
        for (const Line& line : kLines) {
            if (line.tag != nullptr) {
                row = &fRows[NumberOf(line.tag)];
                row->tag = line.tag;
                row->rule = line.rule;
                row->children.Add(NumberOf(u"Extension"));
                ForEachWord(line.children, [&](std::u16string_view child) { row->children.Add(NumberOf(child)); });
                row->attributes = std::span(attribute, std::size_t(0));
            } else {
                const std::size_t place = row->attributes.size();
                row->attributes = std::span(row->attributes.data(), place + 1);
                row->required |= std::uint32_t(attribute->need == OPTIONAL ? 0 : 1) << place;
                ++attribute;
            }
        }
    }

    std::array<std::u16string_view, kMostTags> fTags{};
    std::size_t fCount = 0;
    std::array<ElementRow, kMostTags> fRows{};
};

constexpr ElementTable kTable;

} // namespace

TagNumber TagNumberOf(std::u16string_view tag) {
    return kTable.NumberOf(tag);
}

const ElementRow* ElementRowOf(TagNumber tag) {
    return kTable.RowOf(tag);
}

} // namespace veltrane_kit
