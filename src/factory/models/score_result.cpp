#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreRegResult.h>
#include <MCVeltrane_900/ScoreResult.h>

namespace MCVeltrane_900 {

ScoreResult::ScoreResult() = default;
ScoreResult::~ScoreResult() = default;

ScoreClsResult::ScoreClsResult() = default;
ScoreClsResult::~ScoreClsResult() = default;

ScoreRegResult::ScoreRegResult() = default;
ScoreRegResult::~ScoreRegResult() = default;

} // namespace MCVeltrane_900
