#include "data/values/number_format.h"
#include "data/values/number_tests.h"
#include "data/values/number_text.h"
#include "platform/checked_cast.h"
#include "platform/platform.h"

#include <MCVeltrane_900/NumericValue.h>

#include <cmath>

namespace MCVeltrane_900 {

namespace {

bool AlmostNoDifference(double difference) {
    return veltrane::data::kOrderTolerance > std::fabs(difference);
}

} // namespace

// The constant is complete before any code of the library runs, so no static object can come before it.
constinit const NumericValue NumericValue::SYSMIS{};

NumericValue::NumericValue(const std::string& text) : fValue(gSysmisValue) {
    FromString(text);
}
NumericValue::NumericValue(const NumericValue& other) : fValue(other.fValue) {}
NumericValue::~NumericValue() = default;

NumericValue& NumericValue::operator=(const NumericValue& other) {
    if (this != &other) {
        SetDoubleValue(other.fValue);
    }
    return *this;
}

void NumericValue::SetValue(const ScoreValue* other) {
    if (other->GetType() == NUMERIC_VALUE) {
        SetDoubleValue(other->GetDouble());
    }
}

ScoreValue* NumericValue::GetValue() const {
    return new NumericValue(fValue);
}
ScoreValue* NumericValue::Clone() const {
    return new NumericValue(fValue);
}

bool NumericValue::operator==(const ScoreValue& rhs) const {
    return rhs.GetType() == NUMERIC_VALUE && IsEqual(fValue, rhs.GetDouble());
}

bool NumericValue::Equal(const ScoreValue*, bool, bool) const {
    return true;
}

bool NumericValue::operator>(const ScoreValue& rhs) const {
    if (IsSystemMissingValue() || rhs.IsSystemMissingValue()) {
        return false;
    }
    const double difference = fValue - rhs.GetDouble();
    return !AlmostNoDifference(difference) && !(0 > difference);
}

bool NumericValue::operator<(const ScoreValue& rhs) const {
    if (IsSystemMissingValue() || rhs.IsSystemMissingValue()) {
        return false;
    }
    const double difference = fValue - rhs.GetDouble();
    return !AlmostNoDifference(difference) && 0 > difference;
}

bool NumericValue::operator<=(const ScoreValue& rhs) const {
    if (IsSystemMissingValue() || rhs.IsSystemMissingValue()) {
        return false;
    }
    const double difference = fValue - rhs.GetDouble();
    return AlmostNoDifference(difference) || 0 > difference;
}

bool NumericValue::operator>=(const ScoreValue& rhs) const {
    if (IsSystemMissingValue() || rhs.IsSystemMissingValue()) {
        return false;
    }
    const double difference = fValue - rhs.GetDouble();
    return AlmostNoDifference(difference) || !(0 > difference);
}

bool NumericValue::IsSystemMissingValue() const {
    return fValue == gSysmisValue;
}
int NumericValue::GetInt() const {
    return veltrane::platform::TruncateToInt32(fValue);
}
double NumericValue::GetDouble() const {
    return fValue;
}
std::string NumericValue::GetString() const {
    return gSysmisValue >= fValue ? "Undefined" : veltrane::data::StreamText(fValue);
}
ScoreValue::ValueType NumericValue::GetType() const {
    return NUMERIC_VALUE;
}
void NumericValue::SetDoubleValue(double value) {
    fValue = value;
    fChanges.Note();
}
double NumericValue::GetSysmisValue() {
    return gSysmisValue;
}
double NumericValue::GetInfinity() {
    return gInfinity;
}

bool NumericValue::IsSystemMissingValue(double value) {
    static_assert(gSysmisValue == veltrane::data::kMissingNumber && fEpsilon == veltrane::data::kEqualityTolerance);
    return veltrane::data::IsMissingNumber(value);
}

bool NumericValue::IsEqual(double a, double b) {
    return veltrane::data::AreEqualNumbers(a, b);
}

void NumericValue::FromString(const std::string& text) {
    fValue = gSysmisValue;
    fChanges.Note();
    if (text.empty()) {
        return;
    }
    const bool readable = veltrane::data::ReadStreamDouble(text, fValue);
    // The C library reads more than a stream does and has the first word on infinity: what overflows upward, infinity
    // by name, and a hexadecimal number, of which a stream reads the 0 before the x.
    const bool couldBeInfinite = !readable || (fValue == 0 && text.find_first_of("xX") != std::string::npos);
    if (couldBeInfinite && veltrane::platform::ReadDouble(text.c_str()) == gInfinity) {
        fValue = gInfinity;
    }
}

} // namespace MCVeltrane_900
