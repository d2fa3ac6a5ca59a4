#include "data/values/number_tests.h"
#include "data/values/value_cast.h"

#include <MCVeltrane_900/Range.h>

namespace MCVeltrane_900 {

using veltrane::data::IsDateTime;
using veltrane::data::IsNumber;

namespace {

ScoreValue* MinusInfinity() {
    return new NumericValue(-NumericValue::GetInfinity());
}
ScoreValue* PlusInfinity() {
    return new NumericValue(NumericValue::GetInfinity());
}

/// A missing number as a lower bound means that there is none.
void OpenMissingBound(ScoreValue& bound) {
    if (bound.IsSystemMissingValue() && IsNumber(bound)) {
        veltrane::data::ReplaceNumber(bound, -NumericValue::GetInfinity());
    }
}

/// Included ends have the tolerance of numeric equality, the inside is compared plainly: a number a tolerance away from
/// an excluded end is out on the far side and in on the near one.
inline bool IsInside(double value, double min, double max, bool lowEnd, bool highEnd) {
    using veltrane::data::AreEqualNumbers;
    return (value > min && max > value) || (lowEnd && AreEqualNumbers(value, min)) ||
           (highEnd && AreEqualNumbers(value, max));
}

void DisplayBound(std::ostream& out, const ScoreValue& bound, bool asNumber) {
    if (asNumber) {
        out << bound.GetDouble();
    } else {
        out << bound.GetString();
    }
}

} // namespace

Range::Range(ScoreValue* value) : fMin(value ? value : MinusInfinity()), fHighEnd(true), fLowEnd(true) {
    if (value) {
        OpenMissingBound(*fMin);
    }
    fMax.Reset(value ? fMin->Clone() : PlusInfinity());
    fSingleValue = true;
    fMinNumber = fMin->GetDouble();
    fMaxNumber = fMax->GetDouble();
}

// The cached number keeps the argument, also where a missing lower bound is replaced.
Range::Range(double min, double max, bool lowEnd, bool highEnd)
    : fMin(new NumericValue(min)), fMax(new NumericValue(max)), fHighEnd(highEnd), fLowEnd(lowEnd),
      fSingleValue(min == max), fMinNumber(min), fMaxNumber(max) {
    OpenMissingBound(*fMin);
}

Range::Range(ScoreValue* min, ScoreValue* max, bool lowEnd, bool highEnd)
    : fMin(min ? min : MinusInfinity()), fHighEnd(highEnd), fLowEnd(lowEnd), fMinNumber(-NumericValue::GetInfinity()),
      fMaxNumber(NumericValue::GetInfinity()) {
    OpenMissingBound(*fMin);
    if (IsNumber(*fMin)) {
        fMinNumber = fMin->GetDouble();
    }
    if (!max) {
        fMax.Reset(PlusInfinity());
    } else {
        fMax.Reset(max == min ? max->Clone() : max);
        if (IsNumber(*fMax)) {
            fMaxNumber = fMax->GetDouble();
        }
    }
    fSingleValue = *fMin == *fMax;
}

Range::Range(const Range& other) = default;

Range& Range::operator=(const Range& other) {
    if (this != &other) {
        fMin = other.fMin;
        fMax = other.fMax;
        fHighEnd = other.fHighEnd;
        fLowEnd = other.fLowEnd;
        fSingleValue = other.fSingleValue;
        fMinNumber = other.fMinNumber;
        fMaxNumber = other.fMaxNumber;
        fChanges.Note();
    }
    return *this;
}

Range::~Range() = default;

bool Range::operator==(const ScoreValueRange& other) const {
    return *fMin == *other.GetMin() && *fMax == *other.GetMax() && fHighEnd == other.GetHighEnd() &&
           fLowEnd == other.GetLowEnd();
}

ScoreValueRange* Range::Clone() const {
    return new Range(*this);
}

void Range::SetMin(ScoreValue* value) {
    if (!value) {
        return;
    }
    fMin.Overwrite(value);
    if (fMin->IsSystemMissingValue()) {
        OpenMissingBound(*fMin);
        fMinNumber = -NumericValue::GetInfinity();
    } else if (IsNumber(*fMin)) {
        fMinNumber = fMin->GetDouble();
    }
    fSingleValue = *fMin == *fMax;
    fChanges.Note();
}

void Range::SetMax(ScoreValue* value) {
    if (!value) {
        return;
    }
    fMax.Overwrite(value);
    if (IsNumber(*fMax)) {
        fMaxNumber = fMax->GetDouble();
    }
    fSingleValue = *fMin == *fMax;
    fChanges.Note();
}

bool Range::IsInRange(double value) const {
    if (fSingleValue) {
        return veltrane::data::AreEqualNumbers(value, fMinNumber);
    }
    return !veltrane::data::IsMissingNumber(value) && IsInside(value, fMinNumber, fMaxNumber, fLowEnd, fHighEnd);
}

bool Range::IsInRange(const ScoreValue* value) const {
    if (!value) {
        return false;
    }
    if (fSingleValue) {
        return *value == *fMin;
    }
    if (!IsNumber(*value) && !IsDateTime(*value)) {
        return false;
    }
    return !value->IsSystemMissingValue() && IsInside(value->GetDouble(), fMinNumber, fMaxNumber, fLowEnd, fHighEnd);
}

const ScoreValue* Range::GetMin() const {
    return fMin.Get();
}
const ScoreValue* Range::GetMax() const {
    return fMax.Get();
}
bool Range::GetHighEnd() const {
    return fHighEnd;
}
bool Range::GetLowEnd() const {
    return fLowEnd;
}

void Range::Display(std::ostream& out) const {
    const bool asNumber = IsNumber(*fMin) || IsDateTime(*fMin);
    out << "  Start Range Display   \n"
        << "MinValue: ";
    DisplayBound(out, *fMin, asNumber);
    out << ";  MaxValue: ";
    DisplayBound(out, *fMax, asNumber);
    out << (fHighEnd ? "; High End included" : "; High End not included")
        << (fLowEnd ? "; lower End included" : "; lower End not included") << "\n End of Range Display\n\n";
}

} // namespace MCVeltrane_900
