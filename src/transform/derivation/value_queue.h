#ifndef VELTRANE_TRANSFORM_VALUE_QUEUE_H
#define VELTRANE_TRANSFORM_VALUE_QUEUE_H

#include <MCVeltrane_900/ScoreValue.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace veltrane::transform {

/// The values of earlier cases, oldest first, as clones of its own. Once it has had its longest length it allocates
/// nothing for values of the kinds it has seen: a dropped value is overwritten.
class ValueQueue {
public:
    std::size_t Size() const { return fSize; }

    /// The value of the oldest case; null when that case had none.
    const MCVeltrane_900::ScoreValue* Oldest() const { return fRing[fFirst].get(); }

    void DropOldest();

    /// Appends what value->Clone() gives, or an entry without a value for null.
    void Append(const MCVeltrane_900::ScoreValue* value);

private:
    void Grow();

    std::vector<std::unique_ptr<MCVeltrane_900::ScoreValue>> fRing;
    std::size_t fFirst = 0;
    std::size_t fSize = 0;
};

} // namespace veltrane::transform

#endif
