#ifndef VELTRANE_TEXT_FIXED_FIELD_H
#define VELTRANE_TEXT_FIXED_FIELD_H

#include "text/conversion/raw_conversion.h"
#include "text/converters/status.h"

#include <algorithm>
#include <limits>
#include <string>

namespace veltrane::text {

/// The arguments that all conversions on buffers have in common.
template <class Target, class Source>
struct FixedField {
    Target* target;
    int size;
    const Source* source;
    int length;
    int* status;

    bool IsTerminated() const { return length < 0; }

    /// False where a pointer is missing.
    bool IsUsable() const { return (target != nullptr || size <= 0) && (source != nullptr || length == 0); }

    /// The length of the text, -1 for one longer than ICU takes.
    int TextLength() const {
        if (!IsTerminated()) {
            return length;
        }
        const std::size_t found = std::char_traits<Source>::length(source);
        return found < std::numeric_limits<int>::max() ? static_cast<int>(found) : -1;
    }

    int Report(int code, int written) const {
        if (status != nullptr) {
            *status = code;
        }
        return written;
    }

    /// Nothing was converted.
    int Refuse() const {
        if (IsTerminated() && target != nullptr && size > 0) {
            target[0] = 0;
        }
        return Report(kNotConverted, 0);
    }
};

/// Puts a text into a field: the pattern of every conversion on buffers.
/// @param convert from (Room<Target>, Text<Source>) to Converted
/// @return units of the text in the field
template <class Target, class Source, class Conversion>
int Fill(const FixedField<Target, Source>& field, Conversion convert) {
    const int length = field.IsUsable() ? field.TextLength() : -1;
    if (length < 0) {
        return field.Refuse();
    }
    constexpr Target kBlank = ' ';
    const bool terminate = field.IsTerminated() && field.size > 0;
    const int room = std::max(field.size, 0) - (terminate ? 1 : 0);
    const Converted result = convert(Room<Target>{field.target, room}, Text<Source>{field.source, length});
    const int written = result.units;
    if (result.overflow) {
        std::fill(field.target + written, field.target + room, kBlank);
    } else if (written < room && !field.IsTerminated()) {
        field.target[written] = kBlank;
    }
    if (terminate) {
        field.target[result.overflow ? room : written] = 0;
    }
    return field.Report(result.overflow ? kCut : result.failed ? kNotConverted : kConverted, written);
}

} // namespace veltrane::text

#endif
