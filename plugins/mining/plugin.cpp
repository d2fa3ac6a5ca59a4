#include "kit/model/model_columns.h"
#include "kit/model/translator.h"
#include "mining/mining_scorer.h"
#include "tree/tree_subtrees.h"

#include <string>
#include <vector>

/// The entry of the plug-in: a new translator, which the factory deletes.
extern "C" VELTRANE_API MCVeltrane_900::ScoreTranslator* GiveMyTranslator() {
    return new veltrane_kit::ModelTranslator(u"MiningModel", veltrane_mining::MakeMiningScorer);
}

/// The model list that is in force: segments may be of any kind in it.
extern "C" VELTRANE_API void PassModelNames(MCVeltrane_900::ScoreTranslator* translator,
                                            const std::vector<std::string>& names) {
    static_cast<veltrane_kit::ModelTranslator*>(translator)->SetModelNames(names);
}

/// The third entry: a scorer in columns of a model that comes from the translator. The caller owns it.
extern "C" VELTRANE_API veltrane::ColumnScorer* GiveMyColumnScorer(MCVeltrane_900::ScoreModel* model, int version) {
    return veltrane_kit::MakeColumnScorer(model, version);
}

/// The third entry: the nodes of the trees in it are read from records.
extern "C" VELTRANE_API const veltrane::SubtreeKind* NameMySubtrees(int version) {
    return veltrane_tree::TreeSubtrees(version);
}
