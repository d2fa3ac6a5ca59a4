#ifndef MCVELTRANE_900_SCALESPLIT_H
#define MCVELTRANE_900_SCALESPLIT_H

#include <MCVeltrane_900/ScoreSplitVar.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/SplitRecords.h>

namespace MCVeltrane_900 {

/// A split by ranges of numbers. The first range that holds the value decides, so of overlapping ranges the one
/// inserted first wins. Without ranges only missing values can have a child.
class VELTRANE_API ScaleSplit : public ScoreSplitVar {
public:
    /// @param var stays the dictionary's, and has to outlive the split
    explicit ScaleSplit(const ScoreDictVar* var);
    /// Clones the ranges.
    ScaleSplit(const ScaleSplit& other);
    /// Appends clones of the other's ranges to those that are here, and copies variable and missing-value map.
    ScaleSplit& operator=(const ScaleSplit& other);
    ~ScaleSplit() override;

    ScoreSplitVar* Clone() const override;
    SplitVarType GetSplitVarType() const override;

    /// Only the missing number counts as missing here; the variable's own missing values aren't asked.
    int GetSplitChildIndex(double value) const override;
    /// The missing-value map for null and for what the variable calls missing.
    int GetSplitChildIndex(const ScoreValue* value) const override;
    void Display(std::ostream& out) const override;

    /// Appends a branch.
    /// @param range becomes the split's
    void PutSplit(ScoreValueRange* range, int index);

    /// The first range, or null; it stays the split's.
    const ScoreValueRange* GetSplitValueRangeFirst() const;
    /// The first range with this child index, or null; it stays the split's.
    const ScoreValueRange* GetSplitValueRangeForIndex(int index) const;

private:
    SplitRecords<ScoreValueRange> fRanges;
};

} // namespace MCVeltrane_900

#endif
