#ifndef VELTRANE_TESTS_SUPPORT_FOREIGN_VALUE_H
#define VELTRANE_TESTS_SUPPORT_FOREIGN_VALUE_H

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <string>

namespace veltrane::tests {

/// A value of a host's own class, derived from the interface alone, that reports any kind. It is smaller than the
/// library's classes, and its first field shows whether somebody wrote into it as if it were one of them.
class ForeignValue : public MCVeltrane_900::ScoreValue {
public:
    ForeignValue(ValueType kind, double number, char text = 'f') : fKind(kind), fText(text), fNumber(number) {}

    void SetValue(const ScoreValue* other) override {
        fNumber = other->GetDouble();
        fText = other->GetString().empty() ? '\0' : other->GetString().front();
        fTaken = other->GetType();
    }
    ScoreValue* GetValue() const override { return new ForeignValue(*this); }
    ScoreValue* Clone() const override { return new ForeignValue(*this); }
    bool operator==(const ScoreValue& rhs) const override { return fNumber == rhs.GetDouble(); }
    bool Equal(const ScoreValue* other, bool, bool) const override { return *this == *other; }
    bool operator>(const ScoreValue& rhs) const override { return fNumber > rhs.GetDouble(); }
    bool operator<(const ScoreValue& rhs) const override { return fNumber < rhs.GetDouble(); }
    bool operator<=(const ScoreValue& rhs) const override { return fNumber <= rhs.GetDouble(); }
    bool operator>=(const ScoreValue& rhs) const override { return fNumber >= rhs.GetDouble(); }
    bool IsSystemMissingValue() const override { return fNumber == MCVeltrane_900::NumericValue::GetSysmisValue(); }
    int GetInt() const override { return static_cast<int>(fNumber); }
    double GetDouble() const override { return fNumber; }
    std::string GetString() const override { return {fText}; }
    ValueType GetType() const override { return fKind; }

    bool IsWhole() const { return fGuard == kGuard; }
    char Text() const { return fText; }
    /// The kind of the value that SetValue() was called with last, or -1.
    int Taken() const { return fTaken; }

private:
    static constexpr double kGuard = 0x1.23456789abcdp+0;

    double fGuard = kGuard;
    ValueType fKind;
    char fText;
    int fTaken = -1;
    double fNumber;
};

} // namespace veltrane::tests

#endif
