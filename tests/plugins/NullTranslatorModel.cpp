#include "recording.h"

/// A plug-in that has no translator to give.

using namespace veltrane::tests::recording;

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return nullptr;
}

VELTRANE_API void PassModelNames(ScoreTranslator*, const std::vector<std::string>&) {
    ++listsPassed;
}
}
