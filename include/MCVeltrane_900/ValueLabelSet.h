#ifndef MCVELTRANE_900_VALUELABELSET_H
#define MCVELTRANE_900_VALUELABELSET_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <memory>

namespace veltrane::data {
class LabelIndex;
struct LabelPlaces;
} // namespace veltrane::data

namespace MCVeltrane_900 {

/// The library's set of labelled values; it owns them. A set of many values finds them through an index, which notices
/// when a label or its value is changed by somebody who kept a pointer to it: the answers are always those of a walk
/// over the labels as they are.
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

    /// Whether an element has the value, by the operator of the given value, where Contains() goes by the stored ones.
    bool HasValueEqualTo(const ScoreValue& value) const;

    /// Whether an element has the value, by Equal() of the stored values with the given blank rules.
    bool HasTextEqualTo(const ScoreValue& value, bool noSpaceTrim, bool emptyStringOK) const;

private:
    OwnedVector<ScoreValueLabel> fLabels;
    std::unique_ptr<veltrane::data::LabelIndex> fIndex;
};

} // namespace MCVeltrane_900

#endif
