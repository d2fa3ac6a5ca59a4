#ifndef VELTRANE_VALUE_H
#define VELTRANE_VALUE_H

#include <cstdint>
#include <limits>
#include <string_view>

namespace veltrane {

/// The types of PMML. The types from DATE_DAYS_SINCE_0 on count days or seconds from the first moment of a year.
enum class DataType : std::uint8_t {
    STRING,
    BOOLEAN,
    INTEGER,
    FLOAT,
    DOUBLE,
    DATE,
    TIME,
    DATE_TIME,
    DATE_DAYS_SINCE_0,
    DATE_DAYS_SINCE_1960,
    DATE_DAYS_SINCE_1970,
    DATE_DAYS_SINCE_1980,
    TIME_SECONDS,
    DATE_TIME_SECONDS_SINCE_0,
    DATE_TIME_SECONDS_SINCE_1960,
    DATE_TIME_SECONDS_SINCE_1970,
    DATE_TIME_SECONDS_SINCE_1980,
};

/// A value of one of the types, or a missing one. What each type keeps:
///
///     STRING                   text, in the encoding that the host has asked for
///     BOOLEAN                  number: 1 for true, 0 for false
///     INTEGER, FLOAT, DOUBLE   number
///     DATE                     number: days since 1970-01-01
///     TIME                     number: seconds since midnight
///     DATE_TIME                number: seconds since 1970-01-01 00:00:00
///     those that count         number: as it stands in the document or in the case
///
/// The number of a missing value and of a text is not a number; so a number is there exactly when a value is.
struct Value {
    double number = std::numeric_limits<double>::quiet_NaN();
    std::string_view text; ///< borrowed
    DataType type = DataType::DOUBLE;
    bool isMissing = true;
    bool isInvalid = false; ///< of a value that its field excludes and that is used as it is
};

} // namespace veltrane

#endif
