#include <MCVeltrane_900/ScorePredicate.h>

namespace MCVeltrane_900 {

// It stands here so that the library alone holds the virtual table and type information, which plug-ins share.
ScorePredicate::~ScorePredicate() = default;

} // namespace MCVeltrane_900
