#include "kit/model/model_columns.h"
#include "kit/model/translator.h"
#include "network/network_scorer.h"

/// The entry of the plug-in: a new translator, which the factory deletes.
extern "C" VELTRANE_API MCVeltrane_900::ScoreTranslator* GiveMyTranslator() {
    return new veltrane_kit::ModelTranslator(u"NeuralNetwork", veltrane_network::MakeNetworkScorer);
}

/// The second entry: a scorer in columns of a model that comes from the translator. The caller owns it.
extern "C" VELTRANE_API veltrane::ColumnScorer* GiveMyColumnScorer(MCVeltrane_900::ScoreModel* model, int version) {
    return veltrane_kit::MakeColumnScorer(model, version);
}
