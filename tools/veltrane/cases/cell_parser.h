#ifndef VELTRANE_HOST_CELL_PARSER_H
#define VELTRANE_HOST_CELL_PARSER_H

#include "cases/case_row.h"
#include "files/encoding_check.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// Reads a decimal number: an optional sign, digits with an optional point among or around them, an optional exponent.
/// The whole text is the number; no locale plays a part. The result is what the library reads from the text.
/// @param number untouched when there is none
/// @return null, or what is wrong with the text, as the end of a sentence that begins with it
const char* ReadNumber(std::string_view text, double& number);

/// What of a cell is looked at: of a text everything, else what stands between blanks and tabs.
std::string_view CellContent(std::string_view cell, const CaseRow::Field& field);

/// Turns cells into the values of a case's fields.
///
/// An empty cell and one that equals a missing token are missing, and one that can't be read and says what its field
/// lists for missing values. Around a number and a date-time, blanks and tabs are dropped before anything else is
/// asked; a text is taken as it stands.
class CellParser {
public:
    /// @param encoding of the texts, borrowed; null where they are known to be text
    explicit CellParser(std::vector<std::string> missingTokens, const EncodingCheck* encoding = nullptr)
        : fMissingTokens(std::move(missingTokens)), fEncoding(encoding) {}

    /// Stores the cell's value in the field's slot; a cell that cannot be read leaves it missing.
    /// @return null, or what is wrong with the cell, as the end of a sentence that begins with it
    const char* Read(std::string_view cell, const CaseRow::Field& field, CaseRow& row);

    /// Whether a cell's content stands for a missing value.
    bool IsMissing(std::string_view content) const;
    bool HasTokens() const { return !fMissingTokens.empty(); }

    /// What is wrong with the content of a cell of a text, which isn't missing; null for nothing.
    const char* ProblemOfText(std::string_view content) const;

private:
    const char* ReadDate(std::string_view cell, const CaseRow::Field& field, CaseRow& row);

    std::vector<std::string> fMissingTokens;
    const EncodingCheck* fEncoding;
    std::string fText;
};

} // namespace veltrane::host

#endif
