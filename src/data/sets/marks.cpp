#include "data/sets/marks.h"

#include "data/values/value_cast.h"

#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ValueLbl.h>

namespace MCVeltrane_900 {

// Whoever changes an object has it for itself, so its readers see the count together with the change.
void ChangeMark::TakeOff() {
    fIsMarked = false;
    veltrane::data::Marks::sChanges.fetch_add(1, std::memory_order_relaxed);
}

} // namespace MCVeltrane_900

namespace veltrane::data {

using namespace MCVeltrane_900;

std::atomic<std::uint64_t> Marks::sChanges{0};

const ChangeMark* Marks::Of(const ScoreValue* value) {
    if (value == nullptr) {
        return nullptr;
    }
    if (IsPlain<NumericValue>(*value) || IsPlain<DateTimeValue>(*value)) {
        return &static_cast<const NumericValue*>(value)->fChanges;
    }
    return IsPlain<StringValue>(*value) ? &static_cast<const StringValue*>(value)->fChanges : nullptr;
}

const ChangeMark& Marks::Of(const ValueLbl& label) {
    return label.fChanges;
}

const ChangeMark& Marks::Of(const Range& range) {
    return range.fChanges;
}

} // namespace veltrane::data
