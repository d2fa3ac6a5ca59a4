#ifndef MCVELTRANE_900_VALUELABELSET_H
#define MCVELTRANE_900_VALUELABELSET_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

namespace MCVeltrane_900 {

/// The library's set of labelled values; it owns them.
class VELTRANE_API ValueLabelSet : public ScoreValueLabelSet {
public:
    ValueLabelSet();
    ValueLabelSet(const ValueLabelSet& other);
    ValueLabelSet& operator=(const ValueLabelSet& other);
    ~ValueLabelSet() override;

    ScoreValueLabelSet* Clone() const override;
    bool Add(ScoreValueLabel* label) override;
    bool Remove(const ScoreValueLabel* label) override;
    int Size() const override;
    const std::vector<ScoreValueLabel*>& GetAllValueLabels() const override;
    std::string GetLabelOfValue(const ScoreValue* value) const override;
    bool Contains(const ScoreValue* value) const override;
    void Display(std::ostream& out) const override;

private:
    OwnedVector<ScoreValueLabel> fLabels;
};

} // namespace MCVeltrane_900

#endif
