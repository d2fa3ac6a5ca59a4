#ifndef MCVELTRANE_900_SCOREVALUERANGE_H
#define MCVELTRANE_900_SCOREVALUERANGE_H

#include <veltrane_export.h>

#include <ostream>

namespace MCVeltrane_900 {

class ScoreValue;

/// An interval of values, or one single value.
class VELTRANE_API ScoreValueRange {
public:
    virtual ~ScoreValueRange();

    /// Equality of both bounds, each by the operator of this range's bound, and of both end flags.
    virtual bool operator==(const ScoreValueRange& other) const = 0;
    /// A deep copy, owned by the caller.
    virtual ScoreValueRange* Clone() const = 0;

    /// Replaces the lower bound. The old bound is not deleted.
    /// @param value becomes the range's; null does nothing
    virtual void SetMin(ScoreValue* value) = 0;
    /// Replaces the upper bound. The old bound is not deleted.
    /// @param value becomes the range's; must not be null
    virtual void SetMax(ScoreValue* value) = 0;

    /// Whether a number lies in the range. Included ends count with the relative tolerance of numeric equality,
    /// excluded ends by plain comparison.
    virtual bool IsInRange(double value) const = 0;
    /// Whether a value lies in the range; false for null, and for a text unless the range is a single value.
    virtual bool IsInRange(const ScoreValue* value) const = 0;

    /// The bounds; they stay the range's.
    virtual const ScoreValue* GetMin() const = 0;
    virtual const ScoreValue* GetMax() const = 0;
    /// Whether the upper bound is included.
    virtual bool GetHighEnd() const = 0;
    /// Whether the lower bound is included.
    virtual bool GetLowEnd() const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
