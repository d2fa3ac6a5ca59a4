#include <MCVeltrane_900/ScoreValue.h>

namespace MCVeltrane_900 {

ScoreValue::~ScoreValue() = default;

} // namespace MCVeltrane_900
