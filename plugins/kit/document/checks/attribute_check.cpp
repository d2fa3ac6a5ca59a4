#include "kit/document/checks/attribute_check.h"

#include "kit/document/raise.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <algorithm>
#include <cmath>

namespace veltrane_kit {

namespace {

/// Whether a document is of a version before 3.0; one that doesn't tell is new.
bool IsOld(const Element& root) {
    const XMLCh* version = root.Raw(u"version");
    return (*version == u'1' || *version == u'2') && version[1] == u'.';
}

bool IsDigit(XMLCh c) {
    return c >= u'0' && c <= u'9';
}

/// Whether a text is a number with so few digits that a double holds it, and without an exponent: nearly all are, and
/// so needn't be converted to know.
bool IsPlainNumber(const XMLCh* text) {
    constexpr std::ptrdiff_t kDigits = 300;
    const XMLCh* at = *text == u'-' ? text + 1 : text;
    const XMLCh* const start = at;
    while (IsDigit(*at)) {
        ++at;
    }
    if (at == start) {
        return false;
    }
    if (*at == u'.') {
        ++at;
        while (IsDigit(*at)) {
            ++at;
        }
    }
    return *at == 0 && at - start < kDigits;
}

/// Whether a text is one of the words with blanks between them.
bool IsWord(const XMLCh* text, std::u16string_view words) {
    const std::u16string_view word(text);
    for (std::size_t at = words.find(word); at != std::u16string_view::npos; at = words.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || words[at - 1] == u' ') && (end == words.size() || words[end] == u' ')) {
            return word.find(u' ') == std::u16string_view::npos;
        }
    }
    return false;
}

bool IsFlag(const XMLCh* text) {
    return Same(text, u"true") || Same(text, u"false") || Same(text, u"1") || Same(text, u"0");
}

/// Whether a text is a number that also is whole, or lies in bounds.
bool IsNumberOf(AttributeKind kind, const XMLCh* text) {
    double number = 0.0;
    if (!ReadNumber(text, number)) {
        return false;
    }
    switch (kind) {
    case AttributeKind::WHOLE:
        return number == std::floor(number);
    case AttributeKind::POSITIVE:
        return number == std::floor(number) && number >= 1.0;
    case AttributeKind::FRACTION:
        return number >= 0.0 && number <= 1.0;
    default:
        return true;
    }
}

bool IsOfKind(const AttributeRow& row, const XMLCh* text) {
    switch (row.kind) {
    case AttributeKind::TEXT:
    case AttributeKind::NAME:
        return true;
    case AttributeKind::WORD:
        return IsWord(text, row.words);
    case AttributeKind::FLAG:
        return IsFlag(text);
    case AttributeKind::NUMBER:
        return IsPlainNumber(text) || IsNumberOf(row.kind, text);
    default:
        return IsNumberOf(row.kind, text);
    }
}

bool IsWrong(const AttributeRow& row, const XMLCh* text) {
    return *text == 0 || !IsOfKind(row, text);
}

[[noreturn]] void RaiseWrong(const Element& element, const XMLCh* name) {
    if (*element.Raw(name) == 0) {
        Raise<Message::NULL_ATTRIBUTE>(Narrow(name), element.Tag());
    }
    element.RaiseInvalid(name);
}

} // namespace

AttributeCheck::AttributeCheck(const Element& root) : fIsOld(IsOld(root)) {}

void AttributeCheck::Check(const Element& element, const ElementRow& row) {
    const std::uint32_t seen = element.Record() == nullptr ? CheckInTree(element, row) : CheckRecorded(element, row);
    if ((row.required & ~seen) != 0) {
        CheckLacking(row, seen);
    }
}

/// @return a bit for each attribute of the row that is there, by its place
std::uint32_t AttributeCheck::CheckInTree(const Element& element, const ElementRow& row) {
    const xercesc::DOMNamedNodeMap* attributes = element.Dom()->getAttributes();
    std::uint32_t seen = 0;
    for (XMLSize_t i = 0, count = attributes->getLength(); i < count; ++i) {
        const auto& attribute = *static_cast<const xercesc::DOMAttr*>(attributes->item(i));
        const std::size_t place = PlaceOf(attribute.getName(), row);
        if (place == kNoRow) {
            continue;
        }
        seen |= std::uint32_t(1) << place;
        const AttributeRow& about = row.attributes[place];
        if (about.kind != AttributeKind::TEXT && IsWrong(about, ValueOf(attribute))) {
            RaiseWrong(element, attribute.getName());
        }
    }
    return seen;
}

/// The tree has attributes in the order of their names, so of several that are wrong it is the first by name that a
/// document is refused for.
std::uint32_t AttributeCheck::CheckRecorded(const Element& element, const ElementRow& row) {
    const veltrane::SubtreeRecords& records = *element.Records();
    const veltrane::SubtreeAttribute* at = records.attributes + element.Record()->first;
    const veltrane::SubtreeAttribute* const end = at + element.Record()->attributeCount;
    const XMLCh* wrong = nullptr;
    std::uint32_t seen = 0;
    for (; at != end; ++at) {
        const XMLCh* name = records.names[at->name];
        const std::size_t place = PlaceOf(name, row);
        if (place == kNoRow) {
            continue;
        }
        seen |= std::uint32_t(1) << place;
        const AttributeRow& about = row.attributes[place];
        if (about.kind != AttributeKind::TEXT && IsWrongRecord(about, records.texts + at->value) &&
            (wrong == nullptr || std::u16string_view(name) < std::u16string_view(wrong))) {
            wrong = name;
        }
    }
    if (wrong != nullptr) {
        RaiseWrong(element, wrong);
    }
    return seen;
}

/// The few words of a vocabulary come again and again, each in one place.
bool AttributeCheck::IsWrongRecord(const AttributeRow& row, const XMLCh* text) {
    if (row.kind != AttributeKind::WORD && row.kind != AttributeKind::FLAG) {
        return IsWrong(row, text);
    }
    const AttributeRow* const* const known = fRight.Find(text);
    if (known != nullptr && *known == &row) {
        return false;
    }
    const bool isWrong = IsWrong(row, text);
    if (!isWrong) {
        fRight.Keep(text, &row);
    }
    return isWrong;
}

std::size_t AttributeCheck::PlaceOf(const XMLCh* name, const ElementRow& row) {
    const std::uintptr_t mixed = reinterpret_cast<std::uintptr_t>(name) / sizeof(void*) +
                                 reinterpret_cast<std::uintptr_t>(&row) / sizeof(ElementRow);
    Known& known = fKnown[mixed % kKnown];
    if (known.name != name || known.row != &row) {
        known = {name, &row, kNoRow};
        for (std::size_t i = 0; i < row.attributes.size(); ++i) {
            if (Same(row.attributes[i].name, name)) {
                known.place = i;
            }
        }
    }
    return known.place;
}

/// Of the attributes that lack, the first one that this document needs is why it is refused.
void AttributeCheck::CheckLacking(const ElementRow& row, std::uint32_t seen) const {
    for (std::size_t i = 0; i < row.attributes.size(); ++i) {
        const AttributeRow& about = row.attributes[i];
        const bool isNeeded =
            about.need == AttributeNeed::REQUIRED || (about.need == AttributeNeed::SINCE_3 && !fIsOld);
        if (isNeeded && (seen >> i & 1) == 0) {
            Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(about.name), Narrow(row.tag));
        }
    }
}

} // namespace veltrane_kit
