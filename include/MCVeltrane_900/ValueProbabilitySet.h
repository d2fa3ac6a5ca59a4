#ifndef MCVELTRANE_900_VALUEPROBABILITYSET_H
#define MCVELTRANE_900_VALUEPROBABILITYSET_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreValueProbabilitySet.h>

namespace MCVeltrane_900 {

/// The library's set of probabilities; it owns its elements.
class VELTRANE_API ValueProbabilitySet : public ScoreValueProbabilitySet {
public:
    ValueProbabilitySet();
    ValueProbabilitySet(const ValueProbabilitySet& other);
    ValueProbabilitySet& operator=(const ValueProbabilitySet& other);
    ~ValueProbabilitySet() override;

    ScoreValueProbabilitySet* Clone() const override;
    bool Add(ScoreValueProbability* probability) override;
    bool Remove(const ScoreValueProbability* probability) override;
    int Size() const override;
    const std::vector<ScoreValueProbability*>& GetAllValueProbabilities() const override;
    double GetProbabilityOfValue(const ScoreValue* value) const override;
    bool Contains(const ScoreValue* value) const override;
    void Display(std::ostream& out) const override;

private:
    OwnedVector<ScoreValueProbability> fProbabilities;
};

} // namespace MCVeltrane_900

#endif
