#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreRegResult.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/ScoreTranslator.h>

namespace MCVeltrane_900 {

ScoreModel::ScoreModel() = default;
ScoreModel::~ScoreModel() = default;

ScoreResult::ScoreResult() = default;
ScoreResult::~ScoreResult() = default;

ScoreClsResult::ScoreClsResult() = default;
ScoreClsResult::~ScoreClsResult() = default;

ScoreRegResult::ScoreRegResult() = default;
ScoreRegResult::~ScoreRegResult() = default;

ScoreTranslator::~ScoreTranslator() = default;

} // namespace MCVeltrane_900
