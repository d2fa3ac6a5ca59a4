#include "recording.h"

/// A plug-in whose translator gives no model, on any route.

using namespace veltrane::tests::recording;

namespace {

class SilentTranslator : public BaseTranslator {
public:
    SilentTranslator() { ++translatorsMade; }
    ~SilentTranslator() override { ++translatorsDeleted; }

    using BaseTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override { return nullptr; }
};

} // namespace

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new SilentTranslator;
}
}
