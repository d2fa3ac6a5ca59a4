#ifndef MCVELTRANE_900_SCOREVALUEPROBABILITY_H
#define MCVELTRANE_900_SCOREVALUEPROBABILITY_H

#include <veltrane_export.h>

#include <ostream>

namespace MCVeltrane_900 {

class ScoreValue;

/// A value with its prior probability. The comparisons look at the values only, by the same operator of ScoreValue.
class VELTRANE_API ScoreValueProbability {
public:
    virtual ~ScoreValueProbability();

    /// Overwrites both; the old value is not deleted.
    /// @param value becomes the object's when the result is true
    /// @param probability from 0 to 1
    /// @return false, and no change, for a null value or a number outside 0 to 1, a NaN included
    virtual bool SetValueProbability(ScoreValue* value, double probability) = 0;
    /// @param probability from 0 to 1
    /// @return false, and no change, for a number outside 0 to 1, a NaN included
    virtual bool SetProbability(double probability) = 0;

    /// A deep copy, owned by the caller.
    virtual ScoreValueProbability* Clone() const = 0;

    virtual bool operator==(const ScoreValueProbability& other) const = 0;
    virtual bool operator>(const ScoreValueProbability& other) const = 0;
    virtual bool operator<(const ScoreValueProbability& other) const = 0;
    virtual bool operator<=(const ScoreValueProbability& other) const = 0;
    virtual bool operator>=(const ScoreValueProbability& other) const = 0;

    virtual double GetProbability() const = 0;
    /// The value, or null; it stays the object's.
    virtual const ScoreValue* GetValue() const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
