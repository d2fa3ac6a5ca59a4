#include "recording.h"

/// The plug-in that reads its document by itself. It offers to take the list of names, and is never given it.

using namespace veltrane::tests::recording;

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new RecordingTranslator("NearestNeighborModel");
}

VELTRANE_API void PassModelNames(ScoreTranslator* translator, const std::vector<std::string>& names) {
    TakeNames(translator, names);
}
}
