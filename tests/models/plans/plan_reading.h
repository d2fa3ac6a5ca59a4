#ifndef VELTRANE_TESTS_MODELS_PLAN_READING_H
#define VELTRANE_TESTS_MODELS_PLAN_READING_H

#include "kit/document/parsed_document.h"
#include "kit/model/completion.h"

#include <memory>
#include <sstream>
#include <string>
#include <utility>

namespace veltrane::tests {

/// Reads plans of models with the kit alone, without the factory and without plug-ins.
class PlanReader {
public:
    explicit PlanReader(const std::string& document) : fIn(document), fDocument(fIn, "UTF-8") {
        fParts = veltrane_kit::CompleteDocument(fDocument.Root(), "UTF-8", fTranslator);
    }

    /// A plan of the first model with a tag; several may be read from one document.
    std::unique_ptr<const veltrane_kit::ModelPlan> Read(const char16_t* tag, veltrane_kit::MakeScorer makeScorer) {
        std::unique_ptr<MCVeltrane_900::ScoreDictionary> own(fParts.dictionary->Clone());
        return veltrane_kit::CompleteModel(fDocument.Root().RequireChild(tag), fParts, std::move(own), fTranslator,
                                           makeScorer);
    }

private:
    class Translator : public MCVeltrane_900::PMMLTranslator {
    public:
        Translator() { CreateTranscoder("UTF-8"); }
        using PMMLTranslator::ParseFromTree;
        MCVeltrane_900::ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override {
            return nullptr;
        }
    };

    std::istringstream fIn;
    veltrane_kit::ParsedDocument fDocument; ///< first: it starts the platform that the translator needs
    Translator fTranslator;
    veltrane_kit::DocumentParts fParts;
};

} // namespace veltrane::tests

#endif
