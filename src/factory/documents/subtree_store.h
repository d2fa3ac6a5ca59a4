#ifndef VELTRANE_FACTORY_SUBTREE_STORE_H
#define VELTRANE_FACTORY_SUBTREE_STORE_H

#include "factory/documents/metered_array.h"

#include <veltrane/subtrees.h>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/util/RefVectorOf.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veltrane::factory {

/// The records of a document's subtrees, which are written while it is parsed.
///
/// Nothing in it grows faster than with the document: the memory counts as the parser's, so that its bounds hold.
class SubtreeStore {
public:
    using Attributes = xercesc::RefVectorOf<xercesc::XMLAttr>;

    /// @param memory borrowed
    explicit SubtreeStore(MeteredMemory& memory);

    /// A number for the name of an element.
    std::uint16_t TagOf(std::u16string_view name);

    /// Begins a subtree by its first element, whose attributes stay in the tree.
    void Begin(std::uint16_t tag);

    /// False when a number of the records would not hold what comes: then the subtree can't be written on.
    bool HasRoom(XMLSize_t attributeCount) const;

    /// In a subtree: begins an element, ends the last one that has begun, adds a text.
    void StartElement(std::uint16_t tag, const Attributes& attributes, XMLSize_t count);
    void EndElement();
    void AddText(const XMLCh* text, XMLSize_t length);

    /// Whether no element but the first one is open.
    bool IsAtRoot() const { return fOpen == fRoot; }

    /// Whether the subtree has nothing but its first element.
    bool IsBare() const { return fNodes.size() == fRoot + std::size_t(1); }

    /// The element that is open; those around it are its parents.
    std::uint32_t Open() const { return fOpen; }

    /// The subtree that was begun, which is written to its last node. It is what the first element leads to.
    const Subtree* End();

    /// Forgets the subtree that was begun.
    void Drop();

    /// What is written so far. It moves with each new node.
    const SubtreeRecords& Records();
    std::uint32_t Root() const { return fRoot; }
    std::uint32_t NodeCount() const { return static_cast<std::uint32_t>(fNodes.size()); }

    bool IsEmpty() const { return fSubtrees.empty(); }

    /// The names of elements and attributes that were met, each once, in their order.
    std::size_t NameCount() const { return fNames.size(); }
    const XMLCh* Name(std::size_t index) const { return fNames[index]; }

    /// False when no element of a subtree has this name.
    bool MayHaveTag(std::u16string_view tag) const { return fNumbers.contains(tag); }

private:
    /// The texts of one kind that were met last, by their hashes, and how often they were there before. Those that
    /// seldom are, as identifiers, needn't be looked for, which costs more than writing them: only now and then, so
    /// that a change is noticed. Each kind has a list of its own: many numbers don't push out a few words, and what is
    /// looked through stays in the nearest caches.
    struct Sharing {
        struct Met {
            std::uint32_t hash = 0;
            std::uint32_t place = 0;
        };

        bool IsWorthALook();
        /// Where a text with this hash was met, if one was.
        Met& MetAt(std::uint32_t hash);

        std::uint32_t looks = 0;
        std::uint32_t hits = 0;
        std::uint32_t calls = 0;
        std::uint32_t kept = 0; ///< since the list has grown
        std::vector<Met> met;
    };

    /// An attribute at one place in the elements of one name: mostly the next one has the same.
    struct LastAttribute {
        std::uint16_t name = 0;
        Sharing values;
    };

    std::uint16_t NumberOf(std::u16string_view name);
    LastAttribute& AttributeAt(std::uint16_t tag, XMLSize_t place, const XMLCh* name);
    std::uint32_t AddShared(const XMLCh* text, XMLSize_t length, XMLSize_t longest, Sharing& sharing);
    bool StandsAt(std::uint32_t place, const XMLCh* text, XMLSize_t length) const;
    std::uint32_t Append(const XMLCh* text, XMLSize_t length);

    std::uint32_t fRoot = 0;
    std::uint32_t fOpen = 0;
    std::size_t fFirstAttribute = 0; ///< of the subtree
    MeteredArray<SubtreeNode> fNodes;
    MeteredArray<SubtreeAttribute> fAttributes;
    MeteredArray<XMLCh> fTexts;
    std::deque<std::u16string> fNameTexts;
    MeteredArray<const XMLCh*> fNames;
    std::unordered_map<std::u16string_view, std::uint16_t> fNumbers;
    std::vector<std::vector<LastAttribute>> fLastAttributes; ///< by tag
    Sharing fMoreValues;                                     ///< of attributes far behind in their element
    Sharing fBlanks;                                         ///< of texts that are nodes and begin with a blank
    Sharing fContents;                                       ///< of other texts that are nodes
    std::deque<Subtree> fSubtrees;
    SubtreeRecords fRecords{};
};

} // namespace veltrane::factory

#endif
