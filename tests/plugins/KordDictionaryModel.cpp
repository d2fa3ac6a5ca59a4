#include "recording.h"

#include <MCVeltrane_900/KORDTranslator.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>

/// A plug-in for "kord-ml" documents as one is meant to be written: its translator derives from KORDTranslator, and its
/// model has the dictionary of the document.

using namespace veltrane::tests::recording;

namespace {

class KordDictionaryTranslator : public MCVeltrane_900::KORDTranslator {
public:
    KordDictionaryTranslator() { ++translatorsMade; }
    ~KordDictionaryTranslator() override { ++translatorsDeleted; }

    using KORDTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        xercesc::DOMNode* const element = GetChildByTagForced(document->getDocumentElement(), "dictionary");
        ScoreDictionary* const dictionary = ParseDictionary(static_cast<xercesc::DOMElement*>(element));
        auto* const model = new RecordingModel({{"plugin", "KordDictionaryModel"}, {"encoding", encoding}});
        model->SetScoreDictionary(dictionary, true);
        return model;
    }
};

} // namespace

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new KordDictionaryTranslator;
}
}
