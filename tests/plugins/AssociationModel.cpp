#include "recording.h"

/// The plug-in that an "AssociationModelLattice" goes to.

using namespace veltrane::tests::recording;

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new RecordingTranslator("AssociationModel");
}

VELTRANE_API void PassModelNames(ScoreTranslator* translator, const std::vector<std::string>& names) {
    TakeNames(translator, names);
}
}
