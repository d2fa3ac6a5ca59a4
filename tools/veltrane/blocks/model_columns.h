#ifndef VELTRANE_HOST_MODEL_COLUMNS_H
#define VELTRANE_HOST_MODEL_COLUMNS_H

#include <veltrane/column_scorer.h>

#include <memory>

namespace MCVeltrane_900 {
class ScoreModel;
}

namespace veltrane::host {

/// The model's own scorer of columns: its plug-in may have one.
/// @param model with its options set; outlives the scorer
/// @return null for a model that is scored case by case
std::unique_ptr<ColumnScorer> MakeColumnScorer(MCVeltrane_900::ScoreModel& model);

} // namespace veltrane::host

#endif
