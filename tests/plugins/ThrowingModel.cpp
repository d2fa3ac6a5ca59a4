#include "recording.h"

#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/VTException.h>

/// A plug-in that finds every document bad.

using namespace veltrane::tests::recording;
using MCVeltrane_900::Message;

namespace {

[[noreturn]] ScoreModel* Refuse(const char* operation) {
    MCVeltrane_900::VTException failure;
    failure.SetDetailMessage("the plug-in's own words");
    failure.PutErrorMessage(static_cast<int>(Message::CANNOT_RESTORE_BASE_MODEL), operation);
    throw failure;
}

class ThrowingTranslator : public BaseTranslator {
public:
    ThrowingTranslator() { ++translatorsMade; }
    ~ThrowingTranslator() override { ++translatorsDeleted; }

    using BaseTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMElement*, ScoreModel*, const std::string&) override {
        Refuse("element+model");
    }
    ScoreModel* ParseFromTree(xercesc::DOMElement*, ScoreDictionary*, ScoreDictionary*, const std::string&) override {
        Refuse("element+dictionaries");
    }
    ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override { Refuse("document"); }
    ScoreModel* ParseFromTree(xercesc::DOMDocument*, ScoreDictionary*, const std::string&) override {
        Refuse("document+dictionary");
    }
};

} // namespace

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new ThrowingTranslator;
}
}
