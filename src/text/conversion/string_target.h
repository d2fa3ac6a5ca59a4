#ifndef VELTRANE_TEXT_STRING_TARGET_H
#define VELTRANE_TEXT_STRING_TARGET_H

#include "text/converters/status.h"

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <string>

namespace veltrane::text {

/// The largest text and buffer that ICU takes.
constexpr std::size_t kLargest = std::numeric_limits<int>::max();

/// Sets a string; empties it when there is no memory.
template <class Unit>
int Assign(std::basic_string<Unit>& out, const Unit* units, std::size_t length) {
    try {
        out.assign(units, length);
        return kConverted;
    } catch (const std::bad_alloc&) {
        out.clear();
        return kNoMemory;
    }
}

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

/// Converts into a buffer, on the stack where that is large enough, and sets the string to the part written.
/// @param bytes   the size of the buffer that the text may need
/// @param convert from (Unit* buffer, int units, int* status) to the units written
/// @return the status
template <std::size_t kStackBytes, class Unit, class Conversion>
int ConvertInto(std::basic_string<Unit>& out, std::size_t bytes, Conversion convert) {
    Unit stack[kStackBytes / sizeof(Unit)];
    std::unique_ptr<Unit, Free> heap;
    if (bytes > sizeof stack) {
        heap.reset(bytes <= kLargest ? static_cast<Unit*>(std::malloc(bytes)) : nullptr);
        if (heap == nullptr) {
            out.clear();
            return kNoMemory;
        }
    }
    Unit* const buffer = heap != nullptr ? heap.get() : stack;
    int status = kConverted;
    const int written = convert(buffer, static_cast<int>(bytes / sizeof(Unit)), &status);
    const int assigned = Assign(out, buffer, static_cast<std::size_t>(written));
    return assigned != kConverted ? assigned : status;
}

} // namespace veltrane::text

#endif
