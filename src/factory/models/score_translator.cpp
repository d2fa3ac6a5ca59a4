#include <MCVeltrane_900/ScoreTranslator.h>

namespace MCVeltrane_900 {

ScoreTranslator::~ScoreTranslator() = default;

} // namespace MCVeltrane_900
