#include "recording.h"

/// The plug-in that a "kord-ml" document with a "regression-model" goes to.

using namespace veltrane::tests::recording;

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new RecordingTranslator("GeneralRegressionModel");
}

VELTRANE_API void PassModelNames(ScoreTranslator* translator, const std::vector<std::string>& names) {
    TakeNames(translator, names);
}
}
