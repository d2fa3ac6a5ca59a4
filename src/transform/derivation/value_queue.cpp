#include "transform/derivation/value_queue.h"

#include "data/values/value_cast.h"

#include <algorithm>
#include <typeinfo>

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;

namespace veltrane::transform {

namespace {

/// Makes an old value equal to a clone of the new one.
/// @return false when it isn't of the same class, or of one that a host brought
bool Overwrite(ScoreValue& old, const ScoreValue& value) {
    const std::type_info& type = typeid(value);
    if (typeid(old) != type) {
        return false;
    }
    if (type == typeid(NumericValue)) {
        data::AsNumber(old) = static_cast<const NumericValue&>(value);
    } else if (type == typeid(DateTimeValue)) {
        data::AsDateTime(old) = static_cast<const DateTimeValue&>(value);
    } else if (type == typeid(StringValue)) {
        auto& text = data::AsText(old);
        text.SetString(static_cast<const StringValue&>(value).GetText());
        text.SetLength(static_cast<int>(text.GetText().size()));
    } else {
        return false;
    }
    return true;
}

} // namespace

void ValueQueue::DropOldest() {
    fFirst = (fFirst + 1) % fRing.size();
    --fSize;
}

void ValueQueue::Append(const ScoreValue* value) {
    if (fSize == fRing.size()) {
        Grow();
    }
    std::unique_ptr<ScoreValue>& slot = fRing[(fFirst + fSize) % fRing.size()];
    if (value == nullptr || slot == nullptr || !Overwrite(*slot, *value)) {
        slot.reset(value == nullptr ? nullptr : value->Clone());
    }
    ++fSize;
}

void ValueQueue::Grow() {
    std::rotate(fRing.begin(), fRing.begin() + static_cast<std::ptrdiff_t>(fFirst), fRing.end());
    fFirst = 0;
    fRing.resize(std::max<std::size_t>(1, 2 * fRing.size()));
}

} // namespace veltrane::transform
