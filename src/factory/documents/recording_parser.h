#ifndef VELTRANE_FACTORY_RECORDING_PARSER_H
#define VELTRANE_FACTORY_RECORDING_PARSER_H

#include "factory/documents/subtree_store.h"
#include "factory/documents/tree_building_parser.h"

#include <veltrane/subtrees.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veltrane::factory {

/// A parser that keeps those subtrees which a plug-in reads by itself as records.
///
/// Which plug-in that will be is known when the document has been read, so for each model of a PMML document, a child
/// of its root, the plug-in of that name is asked, and models within it count as parts of that one. What no record can
/// hold goes the plain way: all that was written of the subtree becomes nodes where it happens, so that the tree is the
/// same.
class RecordingParser : public TreeBuildingParser {
public:
    /// Gives the kinds of subtree that the plug-in of a model reads by itself; null for none.
    using AskForKinds = std::function<const SubtreeKind*(const std::string& model)>;

    /// @param memory of the parser and the records, borrowed
    explicit RecordingParser(MeteredMemory& memory);

    /// Records subtrees. Without this there are none.
    void RecordSubtrees(AskForKinds ask);

    /// Whether the tree leads to records of other kinds than these, so that a plug-in that reads these can't have them.
    bool HasSubtreesBeside(const SubtreeKind* kinds) const;

    /// Whether an element of this name may be among the records.
    bool MayHaveRecorded(std::u16string_view tag) const { return !fStore.IsEmpty() && fStore.MayHaveTag(tag); }

    bool HasSubtrees() const { return !fStore.IsEmpty(); }

    void docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCdata) override;
    void ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool isCdata) override;
    void docComment(const XMLCh* const comment) override;
    void docPI(const XMLCh* const target, const XMLCh* const data) override;
    void startElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const XMLCh* const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, const XMLSize_t attributeCount,
                      const bool isEmpty, const bool isRoot) override;
    void endElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const bool isRoot,
                    const XMLCh* const prefix) override;
    void startEntityReference(const xercesc::XMLEntityDecl& entity) override;
    void endEntityReference(const xercesc::XMLEntityDecl& entity) override;
    void endDocument() override;

protected:
    void AddText(const XMLCh* text, XMLSize_t length) override;

    /// Whether a subtree is being written, to which the element belongs that has begun last.
    bool IsRecording() const { return fWithin != nullptr; }

    /// Of which the names are known.
    const SubtreeStore& Store() const { return fStore; }

private:
    /// What is known of an element's name, which is looked up once for each declaration.
    struct Known {
        const xercesc::XMLElementDecl* declaration = nullptr;
        const SubtreeKind* kind = nullptr; ///< in which it may stand
        std::uint16_t tag = 0;
        bool mayStand = false;
    };

    void EnterModel(const XMLCh* name);
    const SubtreeKind* KindOf(const XMLCh* name) const;
    const Known& Know(const xercesc::XMLElementDecl& element);
    bool CanRecord(const xercesc::XMLElementDecl& element, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                   XMLSize_t attributeCount);
    void EndSubtree();
    void Restore();

    AskForKinds fAsk;
    SubtreeStore fStore;
    const SubtreeKind* fKinds = nullptr;  ///< of the model that is read
    const SubtreeKind* fWithin = nullptr; ///< of the subtree that is written; null for none
    std::vector<const SubtreeKind*> fRecorded;
    std::unordered_map<std::u16string, const SubtreeKind*> fAsked; ///< by name of a model
    static constexpr std::size_t kKnown = 64;
    Known fKnown[kKnown];
    std::size_t fDepth = 0;
    std::size_t fEntities = 0;
    bool fIsPmml = false;
};

} // namespace veltrane::factory

#endif
