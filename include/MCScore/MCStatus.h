#ifndef MCSCORE_MCSTATUS_H
#define MCSCORE_MCSTATUS_H

#include <veltrane_export.h>

namespace MCScore {

/// What the scoring side returns by value where a failure is not exceptional. A plain value, copied field by field.
class VELTRANE_API MCStatus {
public:
    /// OK: everything is zero.
    MCStatus();
    /// @param code error code, 32 bits
    /// @param isWarning severity 1 when true, else -1
    MCStatus(long code, bool isWarning);

    /// Severity zero.
    bool IsOK() const;
    /// Severity above zero.
    bool IsWarning() const;
    /// Severity below zero.
    bool IsError() const;
    long GetErrorCode() const;

    /// @param index 0 to 2, not checked
    void SetScaleDatum(unsigned int index, double value);
    /// @param index 0 to 2, not checked
    double GetScaleDatum(unsigned int index) const;
    /// @param index 0 to 2, not checked
    void SetDiscreteDatum(unsigned int index, long value);
    /// @param index 0 to 2, not checked
    long GetDiscreteDatum(unsigned int index) const;

    /// Compares code, severity and all six data. The doubles compare plainly: with a NaN among them not even a copy
    /// is equal.
    bool operator==(const MCStatus& other) const;

private:
    long fErrorCode;
    short fSeverity;
    long fDiscreteData[3];
    double fScaleData[3];
};

} // namespace MCScore

namespace MCCommon_900 {

using MCScore::MCStatus;

} // namespace MCCommon_900

#endif
