#ifndef MCVELTRANE_900_VALUEPROBABILITY_H
#define MCVELTRANE_900_VALUEPROBABILITY_H

#include <MCVeltrane_900/ScoreValueProbability.h>

#include <memory>

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
    bool operator>(const ScoreValueProbability& other) const override;
    bool operator<(const ScoreValueProbability& other) const override;
    bool operator<=(const ScoreValueProbability& other) const override;
    bool operator>=(const ScoreValueProbability& other) const override;
    double GetProbability() const override;
    const ScoreValue* GetValue() const override;
    void Display(std::ostream& out) const override;

private:
    std::unique_ptr<ScoreValue> fValue;
    double fProbability;
};

} // namespace MCVeltrane_900

#endif
