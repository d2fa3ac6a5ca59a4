#ifndef MCVELTRANE_900_SCOREVALUE_H
#define MCVELTRANE_900_SCOREVALUE_H

#include <veltrane_export.h>

#include <string>

namespace MCVeltrane_900 {

/// Every datum that flows through the library: a field of a case, a category, a bound, a default, a result.
///
/// The comparison operators are no consistent ordering: numeric equality has a relative tolerance, numeric ordering an
/// absolute one, and string ordering treats trailing blanks differently on its two sides. Predicates, splits and
/// encoders depend on their exact results. No operation throws. A value carries no lock: it may be read from several
/// threads while nobody writes it.
///
/// A host may bring classes of its own, derived from this one or from a concrete one, and report any kind. The kind
/// says how a value is treated; it is no promise about the class. What isn't derived from the class of its kind is read
/// through this interface alone, and written through SetValue() with a value of the library's class for that kind. Only
/// a date-time has more than the interface shows: one of a foreign class equals no DateTimeValue and has no kind of
/// date.
class VELTRANE_API ScoreValue {
public:
    /// The kind of a value. The gaps are reserved.
    enum ValueType {
        NUMERIC_VALUE = 0,  ///< NumericValue
        STRING_VALUE = 1,   ///< StringValue
        DATETIME_VALUE = 5, ///< DateTimeValue
    };

    virtual ~ScoreValue();

    /// Takes over the content of another value; what a value of another kind brings is told by each class.
    /// @param other the source, not null unless the class says so; stays the caller's
    virtual void SetValue(const ScoreValue* other) = 0;

    /// A new heap object of the same kind with the same content; the caller owns it.
    virtual ScoreValue* GetValue() const = 0;

    /// As GetValue().
    virtual ScoreValue* Clone() const = 0;

    virtual bool operator==(const ScoreValue& rhs) const = 0;

    /// Equality of strings under the blank rules of a variable; a number doesn't compare here and answers true.
    /// @param other        the other side; null is allowed
    /// @param noSpaceTrim  whether trailing blanks count
    /// @param emptyStringOK whether an empty text differs from one that holds blanks only
    virtual bool Equal(const ScoreValue* other, bool noSpaceTrim, bool emptyStringOK) const = 0;

    virtual bool operator>(const ScoreValue& rhs) const = 0;
    virtual bool operator<(const ScoreValue& rhs) const = 0;
    virtual bool operator<=(const ScoreValue& rhs) const = 0;
    virtual bool operator>=(const ScoreValue& rhs) const = 0;

    /// Whether the value is the system-missing number. A string never is.
    virtual bool IsSystemMissingValue() const = 0;

    /// The value as a 32-bit integer: truncated toward zero, -2147483648 for a number outside that range.
    virtual int GetInt() const = 0;

    /// The value as a double.
    virtual double GetDouble() const = 0;

    /// The value as text.
    virtual std::string GetString() const = 0;

    virtual ValueType GetType() const = 0;
};

} // namespace MCVeltrane_900

#endif
