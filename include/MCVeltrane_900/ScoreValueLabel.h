#ifndef MCVELTRANE_900_SCOREVALUELABEL_H
#define MCVELTRANE_900_SCOREVALUELABEL_H

#include <veltrane_export.h>

#include <ostream>
#include <string>

namespace MCVeltrane_900 {

class ScoreValue;

/// A value with its display label. The comparisons look at the values only, by the same operator of ScoreValue.
class VELTRANE_API ScoreValueLabel {
public:
    virtual ~ScoreValueLabel();

    /// Overwrites both; the old value is not deleted.
    /// @param value becomes the label's when the result is true
    /// @return false, and no change, for a null value or an empty label
    virtual bool SetValueLabel(ScoreValue* value, const std::string& label) = 0;
    /// @return false, and no change, for an empty label
    virtual bool SetLabel(const std::string& label) = 0;

    /// A deep copy, owned by the caller.
    virtual ScoreValueLabel* Clone() const = 0;

    virtual bool operator==(const ScoreValueLabel& other) const = 0;
    virtual bool operator>(const ScoreValueLabel& other) const = 0;
    virtual bool operator<(const ScoreValueLabel& other) const = 0;
    virtual bool operator<=(const ScoreValueLabel& other) const = 0;
    virtual bool operator>=(const ScoreValueLabel& other) const = 0;

    virtual std::string GetLabel() const = 0;
    /// The value, or null; it stays the label's.
    virtual const ScoreValue* GetValue() const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
