#ifndef MCVELTRANE_900_VALUELBL_H
#define MCVELTRANE_900_VALUELBL_H

#include <MCVeltrane_900/ScoreValueLabel.h>

#include <memory>

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
    bool operator>(const ScoreValueLabel& other) const override;
    bool operator<(const ScoreValueLabel& other) const override;
    bool operator<=(const ScoreValueLabel& other) const override;
    bool operator>=(const ScoreValueLabel& other) const override;
    std::string GetLabel() const override;
    const ScoreValue* GetValue() const override;
    void Display(std::ostream& out) const override;

private:
    std::unique_ptr<ScoreValue> fValue;
    std::string fLabel;
};

} // namespace MCVeltrane_900

#endif
