#ifndef VELTRANE_HOST_DATE_TEXT_H
#define VELTRANE_HOST_DATE_TEXT_H

#include <string>
#include <string_view>

namespace veltrane::host {

/// The textual forms of a date-time, after ISO 8601.
enum class DateForm {
    DATE,      ///< 2024-02-29
    TIME,      ///< 23:59:58
    DATE_TIME, ///< 2024-02-29T23:59:58
};

/// Whether the text has the form: groups of digits with their separators between them, the year of up to four digits,
/// every other group of one or two. A blank may stand for the T; seconds may have a fraction. Whether there is such a
/// day is not asked here.
bool HasDateForm(std::string_view text, DateForm form);

/// Appends a moment as text. Seconds that are no whole number get up to six decimals. A moment outside the years 0 to
/// 9999, or a time outside 0 to 24 hours, has no such text; its number of seconds is appended instead.
/// @param seconds since 1970-01-01, or since midnight for a time
void AppendDate(std::string& text, double seconds, DateForm form);

} // namespace veltrane::host

#endif
