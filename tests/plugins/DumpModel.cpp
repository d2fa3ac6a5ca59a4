#include "../support/dom_dump.h"
#include "recording.h"

/// A plug-in that tells the whole tree that it was given.

using namespace veltrane::tests::recording;

namespace {

class DumpTranslator : public BaseTranslator {
public:
    using BaseTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string&) override {
        return new RecordingModel(Lines{{"tree", veltrane::tests::DomDump::Of(document)}});
    }
};

} // namespace

extern "C" VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new DumpTranslator;
}
