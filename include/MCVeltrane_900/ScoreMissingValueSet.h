#ifndef MCVELTRANE_900_SCOREMISSINGVALUESET_H
#define MCVELTRANE_900_SCOREMISSINGVALUESET_H

#include <veltrane_export.h>

#include <ostream>
#include <vector>

namespace MCVeltrane_900 {

class ScoreValueRange;

/// The ranges of values that a variable takes as missing.
class VELTRANE_API ScoreMissingValueSet {
public:
    virtual ~ScoreMissingValueSet();

    /// A deep copy, owned by the caller.
    virtual ScoreMissingValueSet* Clone() const = 0;

    /// Appends a range, unless an equal one is there.
    /// @param range becomes the set's when the result is true; otherwise it stays the caller's
    /// @return false for null and for an equal range
    virtual bool Add(ScoreValueRange* range) = 0;

    /// Deletes every range that is equal to the given one.
    /// @return whether there was one
    virtual bool Remove(const ScoreValueRange* range) = 0;

    /// The number of ranges.
    virtual int Size() const = 0;
    /// Whether an equal range is there; false for null.
    virtual bool Contains(const ScoreValueRange* range) const = 0;
    /// The ranges in the order of addition; they stay the set's.
    virtual std::vector<const ScoreValueRange*> GetMissingValues() const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
