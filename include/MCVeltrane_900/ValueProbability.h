#ifndef MCVELTRANE_900_VALUEPROBABILITY_H
#define MCVELTRANE_900_VALUEPROBABILITY_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreValueProbability.h>

#include <concepts>

namespace MCVeltrane_900 {

/// The library's value with a probability. A comparison in which a value is null is false.
class VELTRANE_API ValueProbability : public ScoreValueProbability {
public:
    /// A null value and the probability 0.
    ValueProbability();
    /// Stores both without a test.
    /// @param value becomes the object's
    ValueProbability(ScoreValue* value, double probability);
    ValueProbability(const ValueProbability& other);
    ValueProbability& operator=(const ValueProbability& other);
    ~ValueProbability() override;

    bool SetValueProbability(ScoreValue* value, double probability) override;
    bool SetProbability(double probability) override;
    ScoreValueProbability* Clone() const override;
    bool operator==(const ScoreValueProbability& other) const override;

    /// The same operator with the exact type of its right side, so that a comparison of two concrete classes isn't
    /// ambiguous with its own reversed form.
    template <std::derived_from<ScoreValueProbability> T>
    bool operator==(const T& other) const {
        return *this == static_cast<const ScoreValueProbability&>(other);
    }

    bool operator>(const ScoreValueProbability& other) const override;
    bool operator<(const ScoreValueProbability& other) const override;
    bool operator<=(const ScoreValueProbability& other) const override;
    bool operator>=(const ScoreValueProbability& other) const override;
    double GetProbability() const override;
    const ScoreValue* GetValue() const override;
    void Display(std::ostream& out) const override;

private:
    Owned<ScoreValue> fValue;
    double fProbability;
};

} // namespace MCVeltrane_900

#endif
