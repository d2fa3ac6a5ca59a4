#ifndef MCVELTRANE_900_SCOREVARSTATS_H
#define MCVELTRANE_900_SCOREVARSTATS_H

#include <veltrane_export.h>

namespace MCVeltrane_900 {

class ScoreValue;

/// Summary statistics of a variable and the value that stands in for a missing one.
class VELTRANE_API ScoreVarStats {
public:
    virtual ~ScoreVarStats();

    /// A deep copy, owned by the caller.
    virtual ScoreVarStats* Clone() const = 0;

    virtual void SetMin(double min) = 0;
    virtual void SetMax(double max) = 0;
    virtual void SetStddev(double stddev) = 0;
    virtual void SetMean(double mean) = 0;
    /// Replaces the replacement by a clone, or by none for null; the old one is deleted.
    /// @param value stays the caller's
    virtual void SetMissingReplacement(const ScoreValue* value) = 0;

    virtual double GetMin() const = 0;
    virtual double GetMax() const = 0;
    virtual double GetStddev() const = 0;
    virtual double GetMean() const = 0;
    /// The replacement, or null; it stays the object's.
    virtual const ScoreValue* GetMissingReplacement() const = 0;
};

} // namespace MCVeltrane_900

#endif
