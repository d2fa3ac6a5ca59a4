#include <MCVeltrane_900/ScoreModel.h>

namespace MCVeltrane_900 {

ScoreModel::ScoreModel() = default;
ScoreModel::~ScoreModel() = default;

} // namespace MCVeltrane_900
