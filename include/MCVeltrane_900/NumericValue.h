#ifndef MCVELTRANE_900_NUMERICVALUE_H
#define MCVELTRANE_900_NUMERICVALUE_H

#include <MCVeltrane_900/ChangeMark.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <veltrane_export.h>

#include <concepts>
#include <limits>
#include <string>

namespace veltrane::data {
struct StoredNumber;
} // namespace veltrane::data

namespace MCVeltrane_900 {

/// A number. It is system-missing when it holds SYSMIS, minus the largest finite double.
class VELTRANE_API NumericValue : public ScoreValue {
public:
    /// The system-missing value. It is ready before any dynamic initialisation, so every static object may use it.
    static const NumericValue SYSMIS;

    /// Holds SYSMIS.
    constexpr NumericValue() : fValue(gSysmisValue) {}

    constexpr NumericValue(double value) : fValue(value) {}

    /// Reads the text as FromString() does.
    NumericValue(const std::string& text);

    NumericValue(const NumericValue& other);
    NumericValue& operator=(const NumericValue& other);
    ~NumericValue() override;

    /// Takes the double of another NUMERIC_VALUE; any other kind, a date-time too, leaves this value as it was.
    /// @param other not null
    void SetValue(const ScoreValue* other) override;
    ScoreValue* GetValue() const override;
    ScoreValue* Clone() const override;

    /// Equality within fEpsilon relative to the larger magnitude, as IsEqual(); false for any other kind of value.
    bool operator==(const ScoreValue& rhs) const override;

    /// The same operator with the exact type of its right side, so that a comparison of two concrete classes isn't
    /// ambiguous with its own reversed form.
    template <std::derived_from<ScoreValue> T>
    bool operator==(const T& rhs) const {
        return *this == static_cast<const ScoreValue&>(rhs);
    }

    /// True whatever the arguments are: a number has no comparison with blank rules.
    bool Equal(const ScoreValue* other, bool noSpaceTrim, bool emptyStringOK) const override;

    /// The ordering operators compare the stored double with rhs.GetDouble(), whatever the kind of rhs, within the
    /// absolute tolerance 1e-14. With a missing value on either side they are all false.
    bool operator>(const ScoreValue& rhs) const override;
    bool operator<(const ScoreValue& rhs) const override;
    bool operator<=(const ScoreValue& rhs) const override;
    bool operator>=(const ScoreValue& rhs) const override;

    /// Exact equality with SYSMIS; a NaN is not missing.
    bool IsSystemMissingValue() const override;

    int GetInt() const override;
    double GetDouble() const override;

    /// Six significant digits in general format; "Undefined" for SYSMIS and for minus infinity.
    std::string GetString() const override;
    ValueType GetType() const override;

    void SetDoubleValue(double value);

    /// The system-missing number, -1.7976931348623157e+308.
    static double GetSysmisValue();

    /// Positive infinity.
    static double GetInfinity();

    /// Whether a number lies less than fEpsilon from SYSMIS: an absolute tolerance, strict.
    static bool IsSystemMissingValue(double value);

    /// Equality within fEpsilon relative to the larger magnitude, strict. SYSMIS equals only itself, 0 only itself.
    static bool IsEqual(double a, double b);

protected:
    /// Reads a number from the start of a text, the point as decimal sign under every locale. Text that overflows
    /// upward gives infinity; text that is empty, unreadable or overflows downward gives SYSMIS.
    void FromString(const std::string& text);

private:
    friend struct veltrane::data::StoredNumber;

    static constexpr double gSysmisValue = -std::numeric_limits<double>::max();
    static constexpr double gInfinity = std::numeric_limits<double>::infinity();
    static constexpr double fEpsilon = 2.22045e-14;

    friend class DateTimeValue;
    friend struct veltrane::data::Marks;

    double fValue;
    ChangeMark fChanges;
};

} // namespace MCVeltrane_900

#endif
