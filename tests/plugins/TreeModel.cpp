#include "recording.h"

/// The plug-in of "TreeModel", "Tree" and "DecisionTree". It takes the list of names.

using namespace veltrane::tests::recording;

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new RecordingTranslator("TreeModel");
}

VELTRANE_API void PassModelNames(ScoreTranslator* translator, const std::vector<std::string>& names) {
    TakeNames(translator, names);
}
}
