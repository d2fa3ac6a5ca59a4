#ifndef MCVELTRANE_900_DATETIMEVALUE_H
#define MCVELTRANE_900_DATETIMEVALUE_H

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <veltrane_export.h>

#include <concepts>
#include <string>
#include <string_view>

namespace MCVeltrane_900 {

/// A date, a time of day or both.
///
/// The inherited number is the internal value for all storage types: seconds since 1970-01-01 00:00:00 for a date or
/// date-time, seconds since midnight for a time, SYSMIS for a missing value. The storage types, with their epochs and
/// units, are converted on the way in and out. GetDouble() of a VAL_DATE gives days, while the inherited ordering
/// operators read their left side as seconds: order dates by GetDouble() or GetDoubleValue().
class VELTRANE_API DateTimeValue : public NumericValue {
public:
    enum DateTimeValType : int {
        VAL_DATE = 0,     ///< a date
        VAL_TIME = 1,     ///< a time of day
        VAL_DATETIME = 2, ///< a date and time
    };

    static constexpr int SECONDS_PER_DAY = 86400;
    static constexpr int SECONDS_PER_HOUR = 3600;

    /// The month and the year of a difference, in days.
    static constexpr double DAYS_PER_MONTH = 30.4375;
    static constexpr double DAYS_PER_YEAR = 365.25;

    /// Holds SYSMIS, as VAL_DATETIME.
    DateTimeValue();

    /// Holds the internal value as given.
    /// @param seconds seconds since 1970-01-01 00:00:00, or since midnight
    DateTimeValue(double seconds, DateTimeValType kind);

    /// Converts a number of the given storage type; the kind is GetValType(type).
    DateTimeValue(double value, ScoreDictVar::DateTimeType type);

    /// Reads a text of the given storage type; text that doesn't parse leaves SYSMIS. An empty text is not missing for
    /// the three textual types: it stands for zero in all its fields.
    DateTimeValue(const std::string& text, ScoreDictVar::DateTimeType type);

    DateTimeValue(const DateTimeValue& other);
    DateTimeValue& operator=(const DateTimeValue& other);
    ~DateTimeValue() override;

    /// Takes other->GetDouble() as the internal value, and the kind of another date-time. A VAL_DATE reports days
    /// there, so assigning from one stores its day count as seconds; operator= and Clone() keep the scale.
    /// @param other null, and any kind but a number or a date-time, gives SYSMIS; a date-time of a class that isn't
    ///              derived from this one has no kind to take
    void SetValue(const ScoreValue* other) override;
    ScoreValue* GetValue() const override;

    /// A new NumericValue with GetDoubleValue(type); the caller owns it.
    ScoreValue* GetValue(ScoreDictVar::DateTimeType type) const;
    ScoreValue* Clone() const override;

    /// Exact equality of internal value and kind; false for a value that is no DateTimeValue.
    bool operator==(const ScoreValue& rhs) const override;

    /// The same operator with the exact type of its right side, so that a comparison of two concrete classes isn't
    /// ambiguous with its own reversed form.
    template <std::derived_from<ScoreValue> T>
    bool operator==(const T& rhs) const {
        return *this == static_cast<const ScoreValue&>(rhs);
    }

    /// GetDouble() truncated toward zero; -2147483648 outside the range of 32 bits.
    int GetInt() const override;

    /// Days since 1970-01-01 for VAL_DATE, with any fraction; the internal seconds for the other kinds.
    double GetDouble() const override;

    /// "Undefined" for every value above SYSMIS. A value at or below it is formatted by its kind.
    std::string GetString() const override;
    ValueType GetType() const override;

    /// Sets the kind and leaves the internal value alone.
    virtual void SetDateTimeType(DateTimeValType kind);
    virtual DateTimeValType GetDateTimeType() const;

    /// Stores the internal value and the kind as given.
    void SetDateTimeValue(double seconds, DateTimeValType kind);

    /// Converts a number of the given storage type; the kind is GetValType(type).
    void SetDateTimeValue(double value, ScoreDictVar::DateTimeType type);

    /// The number that this value has in the given storage type; day counts keep their fraction. SYSMIS for a missing
    /// value and for a type that is none.
    double GetDoubleValue(ScoreDictVar::DateTimeType type) const;

    /// The internal seconds with six decimals; "Undefined" at or below SYSMIS.
    std::string GetNumericString() const;

    /// The calendar fields of the internal value. None of them tests for SYSMIS.
    double ExtractYear() const;
    double ExtractMonth() const;
    double ExtractDay() const;
    double ExtractHour() const;
    double ExtractMinute() const;
    double ExtractSecond() const;

    /// This minus the other on the internal values, without a test for SYSMIS.
    double ComputeDurationSeconds(const DateTimeValue& other) const;
    double ComputeDurationMinutes(const DateTimeValue& other) const;
    double ComputeDurationHours(const DateTimeValue& other) const;
    double ComputeDurationDays(const DateTimeValue& other) const;
    double ComputeDurationMonths(const DateTimeValue& other) const;
    double ComputeDurationYears(const DateTimeValue& other) const;

    /// Whether the proleptic Gregorian year has a February 29; year 0 and negative years follow the same rule.
    static bool IsLeapYear(long long year);

    /// Days of the year before a month.
    /// @param month 1 to 12
    static long long DaysBeforeMonth(long long year, long long month);
    static long long DaysInYear(long long year);

    /// @param month 1 to 12
    static long long DaysInMonth(long long year, long long month);

    /// Whether 0 <= hour < 24, 0 <= minute < 60 and 0 <= second < 60.
    static bool IsValidTime(long long hour, long long minute, long long second);

    /// Whether the day exists; every year is valid.
    static bool IsValidDate(long long year, long long month, long long day);

    /// The number of leap years from the smaller year up to, and without, the larger one.
    static long long NumberOfLeapYear(long long from, long long to);

    /// The days from the start of one year to the start of another; negative when `from` is the later one.
    static long long DaysBetweenYear(long long from, long long to);

    /// The time of day of an internal value: 0 to 23, 0 to 59, 0 to 59, also before 1970.
    static void ExtractTime(double seconds, long long& hour, long long& minute, long long& second);

    /// The Gregorian date of an internal value. The day number is truncated toward zero, so the last day before 1970
    /// reads as 1970-01-01 at any time of day but midnight.
    static void ExtractDate(double seconds, long long& year, long long& month, long long& day);

    /// The storage type that holds a kind without conversion: DT_DATE, DT_TIME, else DT_DATETIME.
    static ScoreDictVar::DateTimeType GetDateTimeType(DateTimeValType kind);

    /// The kind of a storage type; VAL_DATETIME for DT_NONE and any number out of range.
    static DateTimeValType GetValType(ScoreDictVar::DateTimeType type);

    /// Whether the text reads as a value of the storage type. An empty text is valid for the three textual types, any
    /// text for a type that is none.
    static bool IsValidDateTime(const std::string& text, ScoreDictVar::DateTimeType type);

private:
    static std::string_view TrimString(std::string_view text, char blank);
    static bool ParseTime(std::string_view text, long long& hour, long long& minute, long long& second);
    static bool ParseDate(std::string_view text, long long& year, long long& month, long long& day);
    static bool ParseDateTime(std::string_view text, long long& year, long long& month, long long& day, long long& hour,
                              long long& minute, long long& second);
    static bool ParseDouble(const std::string& text, double& out);

    void FromNumeric(double value, ScoreDictVar::DateTimeType type);
    void FromString(const std::string& text, ScoreDictVar::DateTimeType type);

    DateTimeValType fDateTimeValType;
};

} // namespace MCVeltrane_900

#endif
