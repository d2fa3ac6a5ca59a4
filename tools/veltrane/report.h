#ifndef VELTRANE_HOST_REPORT_H
#define VELTRANE_HOST_REPORT_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace veltrane::host {

class ProgressBar;

/// Text that a terminal shows on one line: control characters, and bytes that are no UTF-8, stand as escapes (`\n`,
/// `\x1B`).
std::string Escaped(std::string_view text);

/// Tells the person at the terminal about the cases, on standard error, and counts what could not be read or scored.
class Report {
public:
    /// @param cases the name of the file of cases, as it was given
    /// @param quiet warnings and cells are not written; they count all the same
    Report(std::string cases, bool quiet) : fCases(std::move(cases)), fQuiet(quiet) {}

    /// The bar that is taken away while a line is written; null for none.
    void SetBar(ProgressBar* bar) { fBar = bar; }

    void Warning(std::string_view text);

    /// A cell that cannot be read: `cases.csv:17: Age: "abc" is not a number`.
    void Cell(std::size_t line, std::string_view field, std::string_view cell, const char* problem);

    /// A record with more or fewer cells than the header; each cell between the two counts.
    void Ragged(std::size_t line, std::size_t cells, std::size_t columns);

    /// Notes a row that the model gave no prediction for.
    /// @param reason why, as the line of the total tells it; empty where nothing more is known
    void Unscored(const std::string& reason) { ++fUnscoredRows[reason]; }

    /// Whether every cell was read and every row scored.
    bool IsComplete() const { return fUnreadableCells == 0 && fUnscoredRows.empty(); }

    /// The last lines: how many cells could not be read, and how many rows not scored and why. Written in quiet too.
    void Total();

private:
    void Write(const std::string& line);

    std::string fCases;
    bool fQuiet;
    ProgressBar* fBar = nullptr;
    std::size_t fUnreadableCells = 0;
    std::map<std::string, std::size_t> fUnscoredRows; ///< by reason
};

} // namespace veltrane::host

#endif
