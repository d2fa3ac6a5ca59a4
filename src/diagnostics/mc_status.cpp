#include <MCScore/MCStatus.h>

#include <algorithm>
#include <iterator>

namespace MCScore {

MCStatus::MCStatus() : fErrorCode(0), fSeverity(0), fDiscreteData{}, fScaleData{} {}

MCStatus::MCStatus(long code, bool isWarning)
    : fErrorCode(code), fSeverity(isWarning ? 1 : -1), fDiscreteData{}, fScaleData{} {}

bool MCStatus::IsOK() const {
    return fSeverity == 0;
}

bool MCStatus::IsWarning() const {
    return fSeverity > 0;
}

bool MCStatus::IsError() const {
    return fSeverity < 0;
}

long MCStatus::GetErrorCode() const {
    return fErrorCode;
}

void MCStatus::SetScaleDatum(unsigned int index, double value) {
    fScaleData[index] = value;
}

double MCStatus::GetScaleDatum(unsigned int index) const {
    return fScaleData[index];
}

void MCStatus::SetDiscreteDatum(unsigned int index, long value) {
    fDiscreteData[index] = value;
}

long MCStatus::GetDiscreteDatum(unsigned int index) const {
    return fDiscreteData[index];
}

bool MCStatus::operator==(const MCStatus& other) const {
    return fErrorCode == other.fErrorCode && fSeverity == other.fSeverity &&
           std::equal(std::begin(fDiscreteData), std::end(fDiscreteData), std::begin(other.fDiscreteData)) &&
           std::equal(std::begin(fScaleData), std::end(fScaleData), std::begin(other.fScaleData));
}

} // namespace MCScore
