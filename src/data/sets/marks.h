#ifndef VELTRANE_DATA_MARKS_H
#define VELTRANE_DATA_MARKS_H

#include <MCVeltrane_900/ChangeMark.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <atomic>
#include <cstdint>

namespace MCVeltrane_900 {
class Range;
class ValueLbl;
} // namespace MCVeltrane_900

namespace veltrane::data {

/// The marks of the objects that stand in indexes. Only the library's own classes have one.
struct Marks {
    /// How many marked objects of the process have been changed.
    static std::uint64_t Changes() { return sChanges.load(std::memory_order_relaxed); }

    static void Mark(const MCVeltrane_900::ChangeMark& mark) { mark.fIsMarked = true; }
    static bool IsMarked(const MCVeltrane_900::ChangeMark& mark) { return mark.fIsMarked; }

    /// The mark of a value; null for a null value and for one of any other class, which no index relies on.
    static const MCVeltrane_900::ChangeMark* Of(const MCVeltrane_900::ScoreValue* value);
    static const MCVeltrane_900::ChangeMark& Of(const MCVeltrane_900::ValueLbl& label);
    static const MCVeltrane_900::ChangeMark& Of(const MCVeltrane_900::Range& range);

    static void MarkValue(const MCVeltrane_900::ScoreValue* value) {
        if (const MCVeltrane_900::ChangeMark* mark = Of(value)) {
            Mark(*mark);
        }
    }

    /// Whether a value is as it was when it was marked, or has no mark at all.
    static bool IsUnchanged(const MCVeltrane_900::ScoreValue* value) {
        const MCVeltrane_900::ChangeMark* mark = Of(value);
        return mark == nullptr || IsMarked(*mark);
    }

private:
    friend class MCVeltrane_900::ChangeMark;

    static std::atomic<std::uint64_t> sChanges;
};

} // namespace veltrane::data

#endif
