#ifndef MCVELTRANE_900_MISSINGVALUESET_H
#define MCVELTRANE_900_MISSINGVALUESET_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>

#include <memory>

namespace veltrane::data {
class RangeIndex;
struct RangePlaces;
} // namespace veltrane::data

namespace MCVeltrane_900 {

class ScoreValue;

/// The library's set of user-missing ranges; it owns them. A set of many ranges finds them through an index, which
/// notices when a range or a bound is changed by somebody who kept a pointer to it: the answers are always those of a
/// walk over the ranges as they are.
class VELTRANE_API MissingValueSet : public ScoreMissingValueSet {
public:
    MissingValueSet();
    MissingValueSet(const MissingValueSet& other);
    MissingValueSet& operator=(const MissingValueSet& other);
    ~MissingValueSet() override;

    ScoreMissingValueSet* Clone() const override;
    bool Add(ScoreValueRange* range) override;
    bool Remove(const ScoreValueRange* range) override;
    int Size() const override;
    bool Contains(const ScoreValueRange* range) const override;
    std::vector<const ScoreValueRange*> GetMissingValues() const override;
    void Display(std::ostream& out) const override;

    /// Whether any range accepts the value. Unlike a walk over GetMissingValues() it allocates nothing.
    bool IsInAnyRange(const ScoreValue* value) const;

private:
    OwnedVector<ScoreValueRange> fRanges;
    std::unique_ptr<veltrane::data::RangeIndex> fIndex;
};

} // namespace MCVeltrane_900

#endif
