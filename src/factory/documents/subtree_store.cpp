#include "factory/documents/subtree_store.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace veltrane::factory {

namespace {

/// Longer texts are seldom there twice, but for the indentation of deep elements.
constexpr XMLSize_t kLongestShared = 24;
constexpr XMLSize_t kLongestBlank = 64;

/// Places for texts of one kind that were met, powers of two.
constexpr std::size_t kFewestMet = std::size_t{1} << 4;
constexpr std::size_t kMostMet = std::size_t{1} << 10;

/// So many attributes of an element have lists of their own.
constexpr XMLSize_t kOwnLists = 16;

constexpr std::size_t kMostRecords = std::numeric_limits<std::uint32_t>::max() / 2;
constexpr XMLSize_t kMostAttributes = std::numeric_limits<std::uint16_t>::max();

/// As many units of a text as are hashed at a time.
constexpr XMLSize_t kUnits = sizeof(std::uint64_t) / sizeof(XMLCh);

std::uint64_t UnitsAt(const XMLCh* text) {
    std::uint64_t units = 0;
    std::memcpy(&units, text, sizeof(units));
    return units;
}

/// Of a text of more than 16 units the first 8 and the last 8. What stands between them is seldom all that differs.
std::uint32_t HashOf(const XMLCh* text, XMLSize_t length) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    constexpr std::uint64_t kOther = 0xD6E8FEB86659FD93U;
    std::uint64_t hash = length;
    if (length >= kUnits) {
        hash = (hash ^ UnitsAt(text)) * kFactor + UnitsAt(text + length - kUnits) * kOther;
        if (length > 2 * kUnits) {
            hash ^= hash >> 32U;
            hash = (hash ^ UnitsAt(text + kUnits)) * kFactor + UnitsAt(text + length - 2 * kUnits) * kOther;
        }
    } else {
        for (XMLSize_t at = 0; at < length; ++at) {
            hash = hash << 16U | text[at];
        }
        hash *= kFactor;
    }
    return static_cast<std::uint32_t>((hash ^ hash >> 29U) >> 16U);
}

/// Names are short, and nearly always the same.
bool IsSame(const XMLCh* a, const XMLCh* b) {
    for (; *a == *b; ++a, ++b) {
        if (*a == 0) {
            return true;
        }
    }
    return false;
}

XMLSize_t LengthOf(const XMLCh* text) {
    return std::char_traits<XMLCh>::length(text);
}

} // namespace

SubtreeStore::SubtreeStore(MeteredMemory& memory)
    : fNodes(memory), fAttributes(memory), fTexts(memory), fNames(memory) {}

/// HasRoom() keeps the numbers of names below that of a text.
std::uint16_t SubtreeStore::NumberOf(std::u16string_view name) {
    if (const auto found = fNumbers.find(name); found != fNumbers.end()) {
        return found->second;
    }
    const std::u16string& text = fNameTexts.emplace_back(name);
    const auto number = static_cast<std::uint16_t>(fNames.size());
    fNames.push_back(text.c_str());
    fNumbers.emplace(text, number);
    return number;
}

std::uint16_t SubtreeStore::TagOf(std::u16string_view name) {
    const std::uint16_t tag = NumberOf(name);
    if (tag >= fLastAttributes.size()) {
        fLastAttributes.resize(tag + std::size_t(1));
    }
    return tag;
}

void SubtreeStore::Begin(std::uint16_t tag) {
    fRoot = fOpen = NodeCount();
    fFirstAttribute = fAttributes.size();
    fNodes.push_back({tag, 0, fRoot, fRoot + 1, static_cast<std::uint32_t>(fFirstAttribute)});
}

bool SubtreeStore::HasRoom(XMLSize_t attributeCount) const {
    return fNodes.size() < kMostRecords && fAttributes.size() < kMostRecords && fTexts.size() < kMostRecords &&
           attributeCount + fNames.size() < kMostAttributes;
}

void SubtreeStore::StartElement(std::uint16_t tag, const Attributes& attributes, XMLSize_t count) {
    fNodes.push_back(
        {tag, static_cast<std::uint16_t>(count), fOpen, 0, static_cast<std::uint32_t>(fAttributes.size())});
    fOpen = NodeCount() - 1;
    for (XMLSize_t i = 0; i < count; ++i) {
        const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
        const XMLCh* value = attribute.getValue();
        LastAttribute& last = AttributeAt(tag, i, attribute.getName());
        Sharing& values = i < kOwnLists ? last.values : fMoreValues;
        fAttributes.push_back({last.name, AddShared(value, LengthOf(value), kLongestShared, values)});
    }
}

void SubtreeStore::EndElement() {
    SubtreeNode& node = fNodes[fOpen];
    node.end = NodeCount();
    fOpen = node.parent;
}

void SubtreeStore::AddText(const XMLCh* text, XMLSize_t length) {
    const bool isBlank = length > 0 && *text <= u' ';
    const std::uint32_t place =
        isBlank ? AddShared(text, length, kLongestBlank, fBlanks) : AddShared(text, length, kLongestShared, fContents);
    const std::uint32_t node = NodeCount();
    fNodes.push_back({SubtreeNode::kText, 0, fOpen, node + 1, place});
}

const Subtree* SubtreeStore::End() {
    fNodes[fRoot].end = NodeCount();
    return &fSubtrees.emplace_back(Subtree{&fRecords, fRoot});
}

void SubtreeStore::Drop() {
    fNodes.Truncate(fRoot);
    fAttributes.Truncate(fFirstAttribute);
}

const SubtreeRecords& SubtreeStore::Records() {
    fRecords = {fNodes.data(), fAttributes.data(), fTexts.data(), fNames.data()};
    return fRecords;
}

SubtreeStore::LastAttribute& SubtreeStore::AttributeAt(std::uint16_t tag, XMLSize_t place, const XMLCh* name) {
    std::vector<LastAttribute>& last = fLastAttributes[tag];
    if (place < last.size() && IsSame(fNames[last[place].name], name)) {
        return last[place];
    }
    const std::uint16_t number = NumberOf(name);
    last.resize(std::max(last.size(), place + 1));
    last[place].name = number;
    return last[place];
}

bool SubtreeStore::Sharing::IsWorthALook() {
    constexpr std::uint32_t kTrial = 64;
    constexpr std::uint32_t kFewest = 8; // of so many looks one has to be a hit
    if (looks < kTrial || hits >= looks / kFewest || ++calls % kTrial == 0) {
        ++looks;
        return true;
    }
    return false;
}

SubtreeStore::Sharing::Met& SubtreeStore::Sharing::MetAt(std::uint32_t hash) {
    if (kept >= met.size() && met.size() < kMostMet) {
        met.assign(met.empty() ? kFewestMet : met.size() * 4, {});
        kept = 0;
    }
    return met[hash & (met.size() - 1)];
}

/// A text, which stands there once for all that are equal as long as the place of its hash isn't taken by another one.
std::uint32_t SubtreeStore::AddShared(const XMLCh* text, XMLSize_t length, XMLSize_t longest, Sharing& sharing) {
    if (length > longest || !sharing.IsWorthALook()) {
        return Append(text, length);
    }
    const std::uint32_t hash = HashOf(text, length);
    Sharing::Met& met = sharing.MetAt(hash);
    if (met.hash == hash && StandsAt(met.place, text, length)) {
        ++sharing.hits;
        return met.place;
    }
    ++sharing.kept;
    met = {hash, Append(text, length)};
    return met.place;
}

bool SubtreeStore::StandsAt(std::uint32_t place, const XMLCh* text, XMLSize_t length) const {
    return fTexts.size() > length && place < fTexts.size() - length && fTexts[place + length] == 0 &&
           std::equal(text, text + length, fTexts.data() + place);
}

std::uint32_t SubtreeStore::Append(const XMLCh* text, XMLSize_t length) {
    const auto place = static_cast<std::uint32_t>(fTexts.size());
    fTexts.Append(text, length);
    fTexts.push_back(0);
    return place;
}

} // namespace veltrane::factory
