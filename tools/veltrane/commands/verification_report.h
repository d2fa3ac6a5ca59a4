#ifndef VELTRANE_HOST_VERIFICATION_REPORT_H
#define VELTRANE_HOST_VERIFICATION_REPORT_H

#include <cstddef>
#include <kit/model/verification.h>
#include <optional>
#include <string>
#include <vector>

namespace MCVeltrane_900 {
class ScoreValue;
}

namespace veltrane::host {

/// How the results of a model agree with what verification records say of one field.
class VerifiedField {
public:
    explicit VerifiedField(const veltrane_kit::VerificationField& field) : fField(field) {}

    /// Compares the result of one record. A missing result agrees with a missing expectation; numbers agree within the
    /// field's tolerances; texts agree to the letter.
    /// @param value the result; null for none
    void Compare(const std::optional<std::string>& expected, const MCVeltrane_900::ScoreValue* value);

    bool AgreesThroughout() const { return fAgreeing == fRecords; }

    /// The cells of the report: field, records, agreeing records, largest difference of two numbers.
    std::vector<std::string> Cells() const;

private:
    bool Agrees(const std::string& expected, const MCVeltrane_900::ScoreValue& value);

    veltrane_kit::VerificationField fField;
    std::size_t fRecords = 0;
    std::size_t fAgreeing = 0;
    std::optional<double> fLargestDifference;
};

} // namespace veltrane::host

#endif
