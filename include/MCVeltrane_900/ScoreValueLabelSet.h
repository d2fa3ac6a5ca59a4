#ifndef MCVELTRANE_900_SCOREVALUELABELSET_H
#define MCVELTRANE_900_SCOREVALUELABELSET_H

#include <veltrane_export.h>

#include <ostream>
#include <string>
#include <vector>

namespace MCVeltrane_900 {

class ScoreValue;
class ScoreValueLabel;

/// The labelled values of a variable, in the order of addition.
class VELTRANE_API ScoreValueLabelSet {
public:
    virtual ~ScoreValueLabelSet();

    /// A deep copy, owned by the caller.
    virtual ScoreValueLabelSet* Clone() const = 0;

    /// Appends, also when the value is there already.
    /// @param label becomes the set's when the result is true
    /// @return false for null
    virtual bool Add(ScoreValueLabel* label) = 0;

    /// Deletes the first element that has the value of the given one.
    /// @return whether there was one
    virtual bool Remove(const ScoreValueLabel* label) = 0;

    /// The number of elements.
    virtual int Size() const = 0;
    /// The elements in the order of addition; they stay the set's.
    virtual const std::vector<ScoreValueLabel*>& GetAllValueLabels() const = 0;
    /// The label of the first element with the value, by the operator of the stored value; else the empty string.
    virtual std::string GetLabelOfValue(const ScoreValue* value) const = 0;
    /// Whether an element has the value, by the operator of the stored value; false for null.
    virtual bool Contains(const ScoreValue* value) const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
