#include "descriptions/document_facts.h"

#include "documents/bounded_reader.h"

#include <xercesc/sax2/Attributes.hpp>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace veltrane::host {
namespace {

constexpr std::u16string_view kNode = u"Node";

/// What all models of a document share.
constexpr std::pair<std::u16string_view, XmlNode DocumentFacts::*> kParts[] = {
    {u"Header", &DocumentFacts::header},
    {u"DataDictionary", &DocumentFacts::dictionary},
    {u"TransformationDictionary", &DocumentFacts::transformations},
};

/// What describes a model, as against what it is made of, which is counted.
constexpr std::u16string_view kDescribing[] = {u"MiningSchema", u"Output", u"Targets", u"LocalTransformations"};
constexpr std::u16string_view kUncounted[] = {u"ModelStats", u"ModelExplanation", u"ModelVerification", u"Extension"};

constexpr std::size_t kRootLevel = 1;
constexpr std::size_t kDocumentLevel = 2; ///< of the children of the root, models among them
constexpr std::size_t kModelLevel = 3;    ///< of the children of a model

template <std::size_t size>
bool IsOneOf(const std::u16string_view (&names)[size], std::u16string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

class FactsReader : public BoundedHandlers {
public:
    explicit FactsReader(std::size_t place) : fPlace(place) {}

    DocumentFacts TakeFacts() { return std::move(fFacts); }

protected:
    void OnElement(const XMLCh* name, const xercesc::Attributes& attributes) override {
        TakeText();
        if (Depth() == kRootLevel) {
            fFacts.root = NodeOf(name, attributes);
        } else if (Depth() == kDocumentLevel) {
            BeginPart(name, attributes);
        } else if (!fOpen.empty()) {
            Keep(*fOpen.back(), name, attributes);
        } else if (fInModel && Depth() == kModelLevel && IsOneOf(kDescribing, name)) {
            Keep(fFacts.model, name, attributes);
        } else if (fInModel) {
            Count(name);
        }
    }

    void OnElementEnd(const XMLCh* name) override {
        TakeText();
        if (Depth() == kDocumentLevel) {
            fInModel = false;
        }
        if (!fOpen.empty()) {
            fOpen.pop_back();
        } else if (fInModel) {
            EndCounted(name);
        }
    }

    void OnText(std::u16string_view text) override {
        if (!fOpen.empty()) {
            fText += text;
        }
    }

    void OnEnd(const std::optional<DocumentFault>&) override {}

private:
    static XmlNode NodeOf(const XMLCh* name, const xercesc::Attributes& attributes) {
        XmlNode node{Utf8(name), {}, {}, {}};
        for (XMLSize_t at = 0; at < attributes.getLength(); ++at) {
            node.attributes.emplace_back(Utf8(attributes.getQName(at)), Utf8(attributes.getValue(at)));
        }
        return node;
    }

    void BeginPart(const XMLCh* name, const xercesc::Attributes& attributes) {
        fInModel = IsModelElement(name) && fModels++ == fPlace;
        if (fInModel) {
            fFacts.model = NodeOf(name, attributes);
            return;
        }
        for (const auto& [element, part] : kParts) {
            if (element == name) {
                fFacts.*part = NodeOf(name, attributes);
                fOpen.push_back(&(fFacts.*part));
            }
        }
    }

    /// Of a parent's children only the last can be open, so that they may move when there is one more.
    void Keep(XmlNode& parent, const XMLCh* name, const xercesc::Attributes& attributes) {
        parent.children.push_back(NodeOf(name, attributes));
        fOpen.push_back(&parent.children.back());
    }

    /// Gives the open element its text. It comes in pieces that may end within a character.
    void TakeText() {
        if (!fOpen.empty()) {
            fOpen.back()->text += Utf8(fText);
        }
        fText.clear();
    }

    void Count(const XMLCh* name) {
        if (IsOneOf(kUncounted, name) || fUncounted > 0) {
            ++fUncounted;
            return;
        }
        ++fFacts.size.elements[Utf8(name)];
        if (kNode != name) {
            return;
        }
        if (!fNodes.empty()) {
            fNodes.back() = true;
        }
        fNodes.push_back(false);
        fFacts.size.depth = std::max(fFacts.size.depth, fNodes.size());
    }

    void EndCounted(const XMLCh* name) {
        if (fUncounted > 0) {
            --fUncounted;
        } else if (kNode == name) {
            fFacts.size.leaves += fNodes.back() ? 0 : 1;
            fNodes.pop_back();
        }
    }

    std::size_t fPlace;
    std::size_t fModels = 0;
    bool fInModel = false;
    std::vector<XmlNode*> fOpen; ///< the open elements of a part that is kept
    std::u16string fText;        ///< of the innermost of them
    std::size_t fUncounted = 0;  ///< open elements within one that isn't counted, with it
    std::vector<bool> fNodes;    ///< the open elements Node, and whether there is one inside
    DocumentFacts fFacts;
};

} // namespace

DocumentFacts ReadFacts(std::istream& in, std::size_t place) {
    FactsReader reader(place);
    reader.Read(in);
    return reader.TakeFacts();
}

} // namespace veltrane::host
