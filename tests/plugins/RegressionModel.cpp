#include "recording.h"

/// The plug-in of "RegressionModel" and "Regression". It takes no list of names.

using namespace veltrane::tests::recording;

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new RecordingTranslator("RegressionModel");
}
}
