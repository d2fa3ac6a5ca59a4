#include "general/general_scorer.h"
#include "kit/model/model_columns.h"
#include "kit/model/translator.h"

/// The entry of the plug-in: a new translator, which the factory deletes.
extern "C" VELTRANE_API MCVeltrane_900::ScoreTranslator* GiveMyTranslator() {
    return new veltrane_kit::ModelTranslator(u"GeneralRegressionModel", veltrane_general::MakeGeneralScorer);
}

/// The same models in columns.
extern "C" VELTRANE_API veltrane::ColumnScorer* GiveMyColumnScorer(MCVeltrane_900::ScoreModel* model, int version) {
    return veltrane_kit::MakeColumnScorer(model, version);
}
