#include "transform/apply/apply_frame.h"

#include <typeinfo>

using namespace MCVeltrane_900;

namespace veltrane::transform {

void HeldValue::Take(const ScoreValue& value) {
    if (typeid(value) == typeid(NumericValue)) {
        fNumber = static_cast<const NumericValue&>(value);
        fCurrent = &fNumber;
    } else if (typeid(value) == typeid(StringValue)) {
        fText = static_cast<const StringValue&>(value);
        fCurrent = &fText;
    } else if (typeid(value) == typeid(DateTimeValue)) {
        fDate = static_cast<const DateTimeValue&>(value);
        fCurrent = &fDate;
    } else {
        fOther.reset(value.Clone());
        fCurrent = fOther.get();
    }
}

void ApplyFrame::Clear() {
    numbers.clear();
    texts.clear();
    widths.clear();
    valueCount = 0;
    kept.Clear();
}

void ApplyFrame::HoldValue(const ScoreValue& value) {
    if (valueCount == values.size()) {
        values.push_back(std::make_unique<HeldValue>());
    }
    values[valueCount++]->Take(value);
}

ApplyFrame& ApplyFrames::Enter() {
    if (fDepth == fFrames.size()) {
        fFrames.push_back(std::make_unique<ApplyFrame>());
    }
    ApplyFrame& frame = *fFrames[fDepth++];
    frame.Clear();
    return frame;
}

} // namespace veltrane::transform
