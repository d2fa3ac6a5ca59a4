#include "factory/documents/recording_parser.h"

#include "factory/documents/subtree_nodes.h"
#include "factory/documents/xml_text.h"

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>

#include <algorithm>
#include <utility>

namespace veltrane::factory {

namespace {

constexpr std::u16string_view kRoot = u"PMML";
constexpr std::size_t kModelDepth = 2; ///< below the root

} // namespace

RecordingParser::RecordingParser(MeteredMemory& memory) : TreeBuildingParser(&memory), fStore(memory) {}

void RecordingParser::RecordSubtrees(AskForKinds ask) {
    fAsk = std::move(ask);
}

bool RecordingParser::HasSubtreesBeside(const SubtreeKind* kinds) const {
    return std::any_of(fRecorded.begin(), fRecorded.end(), [=](const SubtreeKind* other) { return other != kinds; });
}

/// Asks the plug-in of a model, once for each name.
void RecordingParser::EnterModel(const XMLCh* name) {
    const auto [asked, isNew] = fAsked.try_emplace(name, nullptr);
    if (isNew) {
        asked->second = fAsk(ToUtf8(name));
    }
    fKinds = asked->second;
}

/// The kind of subtree that begins with an element of this name; null when none does.
const SubtreeKind* RecordingParser::KindOf(const XMLCh* name) const {
    for (const SubtreeKind* kind = fKinds; kind->parent != nullptr; ++kind) {
        if (std::u16string_view(kind->tag) == name &&
            std::u16string_view(kind->parent) == fCurrentParent->getNodeName()) {
            return kind;
        }
    }
    return nullptr;
}

const RecordingParser::Known& RecordingParser::Know(const xercesc::XMLElementDecl& element) {
    Known& known = fKnown[reinterpret_cast<std::uintptr_t>(&element) / alignof(std::max_align_t) % kKnown];
    if (known.declaration != &element || known.kind != fWithin) {
        known = {&element, fWithin, 0, false};
        const std::u16string_view name = element.getFullName();
        for (const char16_t* const* within = fWithin->within; *within != nullptr && !known.mayStand; ++within) {
            known.mayStand = *within == name;
        }
        if (known.mayStand) {
            known.tag = fStore.TagOf(name);
        }
    }
    return known;
}

bool RecordingParser::CanRecord(const xercesc::XMLElementDecl& element,
                                const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount) {
    return IsOrdinary(element, attributes, attributeCount) && fStore.HasRoom(attributeCount) && Know(element).mayStand;
}

void RecordingParser::startElement(const xercesc::XMLElementDecl& element, const unsigned int uriId,
                                   const XMLCh* const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                   const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) {
    FinishText();
    ++fDepth;
    if (fWithin != nullptr) {
        if (CanRecord(element, attributes, attributeCount)) {
            fStore.StartElement(Know(element).tag, attributes, attributeCount);
            if (isEmpty) {
                endElement(element, uriId, isRoot, prefix);
            }
            return;
        }
        Restore();
    }
    const XMLCh* name = element.getFullName();
    if (isRoot) {
        fIsPmml = name == kRoot;
    } else if (fDepth == kModelDepth && fIsPmml && fAsk) {
        EnterModel(name);
    }
    const bool mayBegin = fKinds != nullptr && !isEmpty && fEntities == 0 && fDepth > kModelDepth;
    const SubtreeKind* kind = mayBegin ? KindOf(name) : nullptr;
    TreeBuildingParser::startElement(element, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
    if (kind != nullptr && fStore.HasRoom(0)) {
        fWithin = kind;
        fStore.Begin(fStore.TagOf(name));
    }
}

void RecordingParser::endElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const bool isRoot,
                                 const XMLCh* const prefix) {
    FinishText();
    --fDepth;
    if (fWithin != nullptr && !fStore.IsAtRoot()) {
        fStore.EndElement();
        return;
    }
    if (fWithin != nullptr) {
        EndSubtree();
    }
    if (fDepth < kModelDepth) {
        fKinds = nullptr;
    }
    TreeBuildingParser::endElement(element, uriId, isRoot, prefix);
}

void RecordingParser::EndSubtree() {
    fWithin = nullptr;
    if (fStore.IsBare()) {
        fStore.Drop();
        return;
    }
    MarkSubtree(*static_cast<xercesc::DOMElement*>(fCurrentParent), *fStore.End());
    if (std::find(fRecorded.begin(), fRecorded.end(), fKinds) == fRecorded.end()) {
        fRecorded.push_back(fKinds);
    }
}

/// Makes nodes of what was written of a subtree, so that the tree goes on from there.
void RecordingParser::Restore() {
    FinishText();
    if (fWithin == nullptr) {
        return;
    }
    fWithin = nullptr;
    auto& element = *static_cast<xercesc::DOMElement*>(fCurrentParent);
    const TreePlace place = MakeNodes(element, fStore.Records(), fStore.Root(), fStore.NodeCount(), fStore.Open());
    fCurrentParent = place.parent;
    fCurrentNode = place.last;
    fStore.Drop();
}

void RecordingParser::AddText(const XMLCh* text, XMLSize_t length) {
    if (fWithin != nullptr) {
        fStore.AddText(text, length);
    } else {
        TreeBuildingParser::AddText(text, length);
    }
}

void RecordingParser::docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCdata) {
    if (isCdata) {
        Restore();
    }
    TreeBuildingParser::docCharacters(text, length, isCdata);
}

void RecordingParser::ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool isCdata) {
    Restore();
    TreeBuildingParser::ignorableWhitespace(text, length, isCdata);
}

void RecordingParser::docComment(const XMLCh* const comment) {
    Restore();
    TreeBuildingParser::docComment(comment);
}

void RecordingParser::docPI(const XMLCh* const target, const XMLCh* const data) {
    Restore();
    TreeBuildingParser::docPI(target, data);
}

void RecordingParser::startEntityReference(const xercesc::XMLEntityDecl& entity) {
    Restore();
    ++fEntities;
    TreeBuildingParser::startEntityReference(entity);
}

void RecordingParser::endEntityReference(const xercesc::XMLEntityDecl& entity) {
    Restore();
    --fEntities;
    TreeBuildingParser::endEntityReference(entity);
}

void RecordingParser::endDocument() {
    FinishText();
    if (HasSubtrees()) {
        fStore.Records();
        MarkDocument(*getDocument());
    }
    TreeBuildingParser::endDocument();
}

} // namespace veltrane::factory
