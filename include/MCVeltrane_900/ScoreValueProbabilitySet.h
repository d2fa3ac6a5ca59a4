#ifndef MCVELTRANE_900_SCOREVALUEPROBABILITYSET_H
#define MCVELTRANE_900_SCOREVALUEPROBABILITYSET_H

#include <veltrane_export.h>

#include <ostream>
#include <vector>

namespace MCVeltrane_900 {

class ScoreValue;
class ScoreValueProbability;

/// The prior probabilities of a variable's categories, in the order of addition.
class VELTRANE_API ScoreValueProbabilitySet {
public:
    virtual ~ScoreValueProbabilitySet();

    /// A deep copy, owned by the caller.
    virtual ScoreValueProbabilitySet* Clone() const = 0;

    /// Appends, also when the value is there already.
    /// @param probability becomes the set's when the result is true
    /// @return false for null
    virtual bool Add(ScoreValueProbability* probability) = 0;

    /// Deletes the first element that has the value of the given one.
    /// @return whether there was one
    virtual bool Remove(const ScoreValueProbability* probability) = 0;

    /// The number of elements.
    virtual int Size() const = 0;
    /// The elements in the order of addition; they stay the set's.
    virtual const std::vector<ScoreValueProbability*>& GetAllValueProbabilities() const = 0;
    /// The probability of the first element with the value, by the operator of the stored value; else 0.
    virtual double GetProbabilityOfValue(const ScoreValue* value) const = 0;
    /// Whether an element has the value, by the operator of the stored value; false for null.
    virtual bool Contains(const ScoreValue* value) const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
