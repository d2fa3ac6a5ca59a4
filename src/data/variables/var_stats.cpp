#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/VarStats.h>

namespace MCVeltrane_900 {

VarStats::VarStats() : VarStats(NumericValue::GetSysmisValue(), 0 - NumericValue::GetSysmisValue(), 0.0, 1.0) {}

VarStats::VarStats(double min, double max, double mean, double stddev)
    : fMin(min), fMax(max), fMean(mean), fStddev(stddev) {}

VarStats::VarStats(const VarStats& other) = default;
VarStats& VarStats::operator=(const VarStats& other) = default;
VarStats::~VarStats() = default;

ScoreVarStats* VarStats::Clone() const {
    return new VarStats(*this);
}

void VarStats::SetMin(double min) {
    fMin = min;
}
void VarStats::SetMax(double max) {
    fMax = max;
}
void VarStats::SetStddev(double stddev) {
    fStddev = stddev;
}
void VarStats::SetMean(double mean) {
    fMean = mean;
}

// The clone comes first: the argument may be the replacement itself.
void VarStats::SetMissingReplacement(const ScoreValue* value) {
    fMissingReplacement.Reset(value ? value->Clone() : nullptr);
}

double VarStats::GetMin() const {
    return fMin;
}
double VarStats::GetMax() const {
    return fMax;
}
double VarStats::GetStddev() const {
    return fStddev;
}
double VarStats::GetMean() const {
    return fMean;
}
const ScoreValue* VarStats::GetMissingReplacement() const {
    return fMissingReplacement.Get();
}

} // namespace MCVeltrane_900
