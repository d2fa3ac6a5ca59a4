#include "factory/documents/subtree_store.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace veltrane::factory {

namespace {

/// Longer texts are seldom there twice.
constexpr XMLSize_t kLongestShared = 24;

/// Places for texts that were met, powers of two; the most of them stay within the nearest caches.
constexpr std::size_t kFewestMet = std::size_t{1} << 8;
constexpr std::size_t kMostMet = std::size_t{1} << 15;

constexpr std::size_t kMostRecords = std::numeric_limits<std::uint32_t>::max() / 2;
constexpr XMLSize_t kMostAttributes = std::numeric_limits<std::uint16_t>::max();

/// As many units of a text as are hashed at a time.
constexpr XMLSize_t kUnits = sizeof(std::uint64_t) / sizeof(XMLCh);

std::uint32_t HashOf(const XMLCh* text, XMLSize_t length) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = length;
    for (XMLSize_t at = 0; at < length; at += kUnits) {
        std::uint64_t units = 0;
        std::memcpy(&units, text + at, std::min(kUnits, length - at) * sizeof(XMLCh));
        hash = (hash ^ units) * kFactor;
        hash ^= hash >> 32;
    }
    return static_cast<std::uint32_t>(hash);
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
        fAttributes.push_back({last.name, AddShared(value, LengthOf(value), last.values)});
    }
}

void SubtreeStore::EndElement() {
    SubtreeNode& node = fNodes[fOpen];
    node.end = NodeCount();
    fOpen = node.parent;
}

void SubtreeStore::AddText(const XMLCh* text, XMLSize_t length) {
    const std::uint32_t place = AddShared(text, length, fContents);
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
    last.resize(std::max(last.size(), place + 1), {number, {}});
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

/// A text, which stands there once for all that are equal as long as the place of its hash isn't taken by another one.
std::uint32_t SubtreeStore::AddShared(const XMLCh* text, XMLSize_t length, Sharing& sharing) {
    if (length > kLongestShared || !sharing.IsWorthALook()) {
        return Append(text, length);
    }
    if (fMetCount >= fMet.size() && fMet.size() < kMostMet) {
        Grow();
    }
    const std::uint32_t hash = HashOf(text, length);
    Met& met = fMet[hash & (fMet.size() - 1)];
    if (met.hash == hash && StandsAt(met.place, text, length)) {
        ++sharing.hits;
        return met.place;
    }
    ++fMetCount;
    met = {hash, Append(text, length)};
    return met.place;
}

bool SubtreeStore::StandsAt(std::uint32_t place, const XMLCh* text, XMLSize_t length) const {
    return fTexts.size() > length && place < fTexts.size() - length && fTexts[place + length] == 0 &&
           std::equal(text, text + length, fTexts.data() + place);
}

void SubtreeStore::Grow() {
    fMet.assign(fMet.empty() ? kFewestMet : fMet.size() * 8, {});
    fMetCount = 0;
}

std::uint32_t SubtreeStore::Append(const XMLCh* text, XMLSize_t length) {
    const auto place = static_cast<std::uint32_t>(fTexts.size());
    fTexts.Append(text, length);
    fTexts.push_back(0);
    return place;
}

} // namespace veltrane::factory
