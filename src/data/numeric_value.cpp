#include "data/number_format.h"
#include "data/number_text.h"
#include "platform/checked_cast.h"
#include "platform/platform.h"

#include <MCVeltrane_900/NumericValue.h>

#include <algorithm>
#include <cmath>

namespace MCVeltrane_900 {

namespace {

/// The absolute tolerance of the ordering operators.
constexpr double kOrderTolerance = 1e-14;

bool AlmostNoDifference(double difference) {
    return kOrderTolerance > std::fabs(difference);
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
    if (this != &other)
        fValue = other.fValue;
    return *this;
}

void NumericValue::SetValue(const ScoreValue* other) {
    if (other->GetType() == NUMERIC_VALUE)
        fValue = other->GetDouble();
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
    if (IsSystemMissingValue() || rhs.IsSystemMissingValue())
        return false;
    const double difference = fValue - rhs.GetDouble();
    return !AlmostNoDifference(difference) && !(0 > difference);
}

bool NumericValue::operator<(const ScoreValue& rhs) const {
    if (IsSystemMissingValue() || rhs.IsSystemMissingValue())
        return false;
    const double difference = fValue - rhs.GetDouble();
    return !AlmostNoDifference(difference) && 0 > difference;
}

bool NumericValue::operator<=(const ScoreValue& rhs) const {
    if (IsSystemMissingValue() || rhs.IsSystemMissingValue())
        return false;
    const double difference = fValue - rhs.GetDouble();
    return AlmostNoDifference(difference) || 0 > difference;
}

bool NumericValue::operator>=(const ScoreValue& rhs) const {
    if (IsSystemMissingValue() || rhs.IsSystemMissingValue())
        return false;
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
}
double NumericValue::GetSysmisValue() {
    return gSysmisValue;
}
double NumericValue::GetInfinity() {
    return gInfinity;
}

// An absolute tolerance by contract, although at this magnitude only the number itself lies within it.
bool NumericValue::IsSystemMissingValue(double value) {
    return fEpsilon > std::fabs(value - gSysmisValue);
}

bool NumericValue::IsEqual(double a, double b) {
    if (a == 0 && b == 0)
        return true;
    if (a == gSysmisValue || b == gSysmisValue)
        return a == b;
    const double tolerance = std::max(std::fabs(a), std::fabs(b)) * fEpsilon;
    return tolerance > std::fabs(a - b);
}

void NumericValue::FromString(const std::string& text) {
    fValue = gSysmisValue;
    if (text.empty())
        return;
    const bool readable = veltrane::data::ReadStreamDouble(text, fValue);
    // The C library reads more than a stream does and has the first word on infinity: what overflows upward, infinity
    // by name, and a hexadecimal number, of which a stream reads the 0 before the x.
    const bool couldBeInfinite = !readable || (fValue == 0 && text.find_first_of("xX") != std::string::npos);
    if (couldBeInfinite && veltrane::platform::ReadDouble(text.c_str()) == gInfinity)
        fValue = gInfinity;
}

} // namespace MCVeltrane_900
