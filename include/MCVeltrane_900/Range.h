#ifndef MCVELTRANE_900_RANGE_H
#define MCVELTRANE_900_RANGE_H

#include <MCVeltrane_900/ChangeMark.h>
#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreValueRange.h>

#include <concepts>

namespace veltrane::data {
struct RangePlaces;
}

namespace MCVeltrane_900 {

/// The library's interval. Beside its bounds it keeps their numeric form, on which numbers are tested; only the bounds
/// of type NUMERIC_VALUE have one, the others leave it at the infinity of their side.
class VELTRANE_API Range : public ScoreValueRange {
public:
    /// A single value, both ends included. Null gives infinite bounds that no number matches.
    /// @param value becomes the range's; a missing number in it becomes -infinity
    explicit Range(ScoreValue* value);

    /// A numeric interval; a missing lower bound becomes -infinity.
    Range(double min, double max, bool lowEnd, bool highEnd);

    /// An interval between two values, which become the range's. A null bound is infinite, and so is a missing number
    /// as lower bound. When both are one object, the upper bound is a clone of it.
    Range(ScoreValue* min, ScoreValue* max, bool lowEnd, bool highEnd);

    Range(const Range& other);
    Range& operator=(const Range& other);
    ~Range() override;

    bool operator==(const ScoreValueRange& other) const override;

    /// The same operator with the exact type of its right side, so that a comparison of two concrete classes isn't
    /// ambiguous with its own reversed form.
    template <std::derived_from<ScoreValueRange> T>
    bool operator==(const T& other) const {
        return *this == static_cast<const ScoreValueRange&>(other);
    }

    ScoreValueRange* Clone() const override;
    void SetMin(ScoreValue* value) override;
    void SetMax(ScoreValue* value) override;
    bool IsInRange(double value) const override;
    bool IsInRange(const ScoreValue* value) const override;
    const ScoreValue* GetMin() const override;
    const ScoreValue* GetMax() const override;
    bool GetHighEnd() const override;
    bool GetLowEnd() const override;
    void Display(std::ostream& out) const override;

private:
    friend struct veltrane::data::Marks;
    friend struct veltrane::data::RangePlaces;

    Owned<ScoreValue> fMin;
    Owned<ScoreValue> fMax;
    bool fHighEnd;
    bool fLowEnd;
    bool fSingleValue;
    double fMinNumber;
    double fMaxNumber;
    ChangeMark fChanges;
};

} // namespace MCVeltrane_900

#endif
