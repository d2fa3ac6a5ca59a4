#ifndef MCVELTRANE_900_VALUELBL_H
#define MCVELTRANE_900_VALUELBL_H

#include <MCVeltrane_900/ChangeMark.h>
#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreValueLabel.h>

#include <concepts>

namespace MCVeltrane_900 {

/// The library's labelled value. A comparison in which a value is null is false.
class VELTRANE_API ValueLbl : public ScoreValueLabel {
public:
    /// A null value and an empty label.
    ValueLbl();
    /// Stores both without a test.
    /// @param value becomes the label's
    ValueLbl(ScoreValue* value, const std::string& label);
    ValueLbl(const ValueLbl& other);
    ValueLbl& operator=(const ValueLbl& other);
    ~ValueLbl() override;

    bool SetValueLabel(ScoreValue* value, const std::string& label) override;
    bool SetLabel(const std::string& label) override;
    ScoreValueLabel* Clone() const override;
    bool operator==(const ScoreValueLabel& other) const override;

    /// The same operator with the exact type of its right side, so that a comparison of two concrete classes isn't
    /// ambiguous with its own reversed form.
    template <std::derived_from<ScoreValueLabel> T>
    bool operator==(const T& other) const {
        return *this == static_cast<const ScoreValueLabel&>(other);
    }

    bool operator>(const ScoreValueLabel& other) const override;
    bool operator<(const ScoreValueLabel& other) const override;
    bool operator<=(const ScoreValueLabel& other) const override;
    bool operator>=(const ScoreValueLabel& other) const override;
    std::string GetLabel() const override;
    const ScoreValue* GetValue() const override;
    void Display(std::ostream& out) const override;

private:
    friend struct veltrane::data::Marks;

    Owned<ScoreValue> fValue;
    std::string fLabel;
    ChangeMark fChanges;
};

} // namespace MCVeltrane_900

#endif
