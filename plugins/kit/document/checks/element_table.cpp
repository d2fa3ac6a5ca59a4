#include "kit/document/checks/element_table.h"

#include "kit/document/checks/element_rules.h"

#include <algorithm>
#include <stdexcept>

namespace veltrane_kit {

namespace {

/// The words of a text that blanks part.
std::vector<std::u16string_view> WordsOf(std::u16string_view text) {
    std::vector<std::u16string_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u' '), text.size());
        if (end > 0) {
            words.push_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

constexpr ElementRule kNoRule = nullptr;

} // namespace

ElementTable::ElementTable() {
    fRows.resize(kMostTags);
    using enum AttributeNeed;
    using enum AttributeKind;
#define ONE_OF(words) WORD, u"" words
#define VELTRANE_ELEMENT(tag, rule, children) AddElement(u"" tag, rule, u"" children);
#define VELTRANE_ATTRIBUTE(name, need, ...) AddAttribute(u"" name, need, __VA_ARGS__);
#include "kit/document/checks/Elements.def"
#undef ONE_OF
}

const ElementTable& ElementTable::Instance() {
    static const ElementTable table;
    return table;
}

TagNumber ElementTable::Number(std::u16string_view tag) {
    const auto [found, isNew] = fNumbers.emplace(tag, fNumbers.size());
    if (isNew && found->second >= kMostTags) {
        throw std::logic_error("Elements.def has too many elements");
    }
    return found->second;
}

void ElementTable::AddElement(const XMLCh* tag, ElementRule rule, std::u16string_view children) {
    fLast = Number(tag);
    ElementRow& row = fRows[fLast];
    row.tag = tag;
    row.rule = rule;
    row.children.set(Number(u"Extension"));
    for (const std::u16string_view child : WordsOf(children)) {
        row.children.set(Number(child));
    }
}

void ElementTable::AddAttribute(const XMLCh* name, AttributeNeed need, AttributeKind kind, std::u16string_view words) {
    ElementRow& row = fRows[fLast];
    row.required |= std::uint32_t(need == AttributeNeed::OPTIONAL ? 0 : 1) << row.attributes.size();
    row.attributes.push_back({name, need, kind, WordsOf(words)});
}

TagNumber ElementTable::NumberOf(std::u16string_view tag) const {
    const auto found = fNumbers.find(tag);
    return found == fNumbers.end() ? kOtherTag : found->second;
}

const ElementRow* ElementTable::RowOf(TagNumber tag) const {
    return tag == kOtherTag || fRows[tag].tag == nullptr ? nullptr : &fRows[tag];
}

} // namespace veltrane_kit
