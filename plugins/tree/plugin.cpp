#include "kit/model/model_columns.h"
#include "kit/model/translator.h"
#include "tree/tree_scorer.h"
#include "tree/tree_subtrees.h"

/// The entry of the plug-in: a new translator, which the factory deletes.
extern "C" VELTRANE_API MCVeltrane_900::ScoreTranslator* GiveMyTranslator() {
    return new veltrane_kit::ModelTranslator(u"TreeModel", veltrane_tree::MakeTreeScorer);
}

/// The second entry: a scorer in columns of a model that comes from the translator. The caller owns it.
extern "C" VELTRANE_API veltrane::ColumnScorer* GiveMyColumnScorer(MCVeltrane_900::ScoreModel* model, int version) {
    return veltrane_kit::MakeColumnScorer(model, version);
}

/// The third entry: the nodes of a tree are read from records.
extern "C" VELTRANE_API const veltrane::SubtreeKind* NameMySubtrees(int version) {
    return veltrane_tree::TreeSubtrees(version);
}
