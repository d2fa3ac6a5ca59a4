#include "kit/model/translator.h"

#include "kit/document/checks/document_check.h"
#include "kit/document/raise.h"
#include "kit/model/completion.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <utility>

namespace veltrane_kit {

MCVeltrane_900::ScoreModel* ModelTranslator::ParseFromTree(xercesc::DOMDocument* document,
                                                           const std::string& encoding) {
    CreateTranscoder(encoding);
    const DocumentText text(encoding);
    const Element root(document->getDocumentElement(), text);
    if (!root.Is(u"PMML")) {
        Raise<Message::INVALID_TOP_ELEMENT>(root.Tag(), "PMML");
    }
    CheckDocument(root, fTag, fModelNames);
    const Element element = FindModel(root);
    DocumentParts parts = CompleteDocument(root, encoding, *this);
    parts.modelNames = fModelNames;
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> dictionary = std::move(parts.dictionary);
    return new Model(CompleteModel(element, parts, std::move(dictionary), *this, fMakeScorer));
}

/// A model within another one is a part of that: scored alone it would give something else.
Element ModelTranslator::FindModel(const Element& root) const {
    for (const Element child : root.Children()) {
        if (child.Is(fTag)) {
            return child;
        }
    }
    Raise<Message::UNSUPPORTED_MODEL>(Narrow(fTag));
}

} // namespace veltrane_kit
