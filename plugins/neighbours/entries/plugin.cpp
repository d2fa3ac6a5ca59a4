#include "kit/document/parsed_document.h"
#include "kit/document/raise.h"
#include "kit/model/model_columns.h"
#include "kit/model/translator.h"
#include "mining/mining_scorer.h"
#include "neighbours/neighbours_scorer.h"

#include <xercesc/dom/DOMDocument.hpp>

namespace {

using MCVeltrane_900::ScoreModel;
using veltrane_kit::Element;
using veltrane_kit::ModelTranslator;

/// Reads a document by itself, as the factory has it. The bounds of the library have held for it. The factory tells no
/// encoding on this road, and hosts of columns have texts in UTF-8. Instances may be many: their tables are records.
class NeighbourTranslator : public ModelTranslator {
public:
    NeighbourTranslator() : ModelTranslator(kTag, veltrane_neighbours::MakeNeighboursScorer) {}

    using ModelTranslator::ParseFromTree;

    ScoreModel* ParseFromTree(std::istream& in, const std::string& told, const std::string& /*auxPath*/) override {
        const std::string encoding = told.empty() ? "UTF-8" : told;
        const veltrane_kit::ParsedDocument document(in, encoding, u"TrainingInstances", u"InlineTable");
        const Element root = document.Root();
        if (!root) {
            veltrane_kit::Raise<veltrane_kit::Message::NO_ROOT>();
        }
        return ParseFromTree(root.Dom()->getOwnerDocument(), encoding);
    }

    /// Neighbours that are a part of a model of models are read with it; beside it they go first.
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        const xercesc::DOMElement* root = document->getDocumentElement();
        if (Holds(root, kTag) || !Holds(root, kWholeTag)) {
            return ModelTranslator::ParseFromTree(document, encoding);
        }
        ModelTranslator models(kWholeTag, veltrane_mining::MakeMiningScorer);
        return models.ParseFromTree(document, encoding);
    }

private:
    static constexpr const XMLCh* kTag = u"NearestNeighborModel";
    static constexpr const XMLCh* kWholeTag = u"MiningModel";

    static bool Holds(const xercesc::DOMElement* root, const XMLCh* tag) {
        const auto* child = root == nullptr ? nullptr : root->getFirstElementChild();
        while (child != nullptr && !veltrane_kit::Same(child->getTagName(), tag)) {
            child = child->getNextElementSibling();
        }
        return child != nullptr;
    }
};

} // namespace

/// The entry of the plug-in: a new translator, which the factory deletes.
extern "C" VELTRANE_API MCVeltrane_900::ScoreTranslator* GiveMyTranslator() {
    return new NeighbourTranslator;
}

/// The second entry: a scorer in columns of a model that comes from the translator. The caller owns it.
extern "C" VELTRANE_API veltrane::ColumnScorer* GiveMyColumnScorer(MCVeltrane_900::ScoreModel* model, int version) {
    return veltrane_kit::MakeColumnScorer(model, version);
}
