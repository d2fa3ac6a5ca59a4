#ifndef VELTRANE_PLUGINS_KIT_VERIFICATION_H
#define VELTRANE_PLUGINS_KIT_VERIFICATION_H

#include "kit/document/element.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

/// A field of a verification record: an input of the model, its target, or an output field.
struct VerificationField {
    std::string field;
    std::string column;           ///< the tag of its cells
    double precision = 1e-6;      ///< relative tolerance of numbers
    double zeroThreshold = 1e-16; ///< absolute tolerance where a number that small is expected

    /// Whether a number is near enough to the expected one.
    bool Agrees(double expected, double actual) const;
};

/// The ModelVerification of a document: cases with the answers that the tool which wrote it gave for them.
struct Verification {
    std::vector<VerificationField> fields;
    /// For each record the text of each field, in the order of the fields; nothing for a missing value.
    std::vector<std::vector<std::optional<std::string>>> records;
};

/// Reads the ModelVerification of a model's element.
/// @return nothing when the model has none
/// @throws VTException 260272 for two of them; 260115, 260120, 260285, 260153 and 260159 for its parts; 260242 for a
///         fieldCount or recordCount that is not the number of fields or rows; 260203 for a field that comes twice
std::optional<Verification> ReadVerification(const Element& model);

/// Reads the ModelVerification of a document's model: the first element below the root that has one of the names, by
/// the order of the names. The host has had the document read by the factory before, which refuses hostile ones.
/// @param in       at its start
/// @param encoding of the texts; empty means BaseTranslator::DEFAULT_ENCODING
/// @return nothing when there is no such model, or none of it
/// @throws VTException what the other form throws, 260105 for a document that can't be read
std::optional<Verification> ReadVerification(std::istream& in, const std::vector<std::string>& names,
                                             const std::string& encoding);

} // namespace veltrane_kit

#endif
