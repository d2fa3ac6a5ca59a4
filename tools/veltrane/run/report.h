#ifndef VELTRANE_HOST_REPORT_H
#define VELTRANE_HOST_REPORT_H

#include "run/error_limit.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace veltrane::host {

class ProgressBar;
class Rejects;

/// Text that a terminal shows on one line: control characters, and bytes that are no UTF-8, stand as escapes (`\n`,
/// `\x1B`).
std::string Escaped(std::string_view text);

/// Tells the person at the terminal about the cases, on standard error, and counts what could not be read or scored. Of
/// unreadable cells and of rows that are not scored the first are shown; the file of rejects, where there is one, takes
/// all.
class Report {
public:
    /// @param cases the name of the file of cases, as it was given
    /// @param quiet warnings, cells and rows are not written; they count all the same
    Report(const std::string& cases, bool quiet) : fCases(Escaped(cases)), fQuiet(quiet) {}

    /// The bar that is taken away while a line is written; null for none.
    void SetBar(ProgressBar* bar) { fBar = bar; }

    /// The file that takes everything; null for none. Borrowed.
    void SetRejects(Rejects* rejects) { fRejects = rejects; }

    void Warning(std::string_view text);

    /// Begins the next row; what is told from now on is of it.
    /// @param line on which its record starts
    void BeginRow(std::size_t line) {
        ++fRows;
        fLine = line;
        fRowIsFaulty = false;
    }

    /// Passes rows of which nothing is told.
    void PassRows(std::uint64_t count) { fRows += count; }

    /// Begins the header, which is no row.
    void BeginHeader(std::size_t line) { fLine = line; }

    /// A cell that cannot be read: `cases.csv:17: Age: "abc" is not a number`.
    void Cell(std::string_view field, std::string_view cell, std::string_view problem);

    /// A record with more or fewer cells than the header; each cell between the two counts.
    void Ragged(std::size_t cells, std::size_t columns);

    /// A row without results: `cases.csv:17: not scored: Age: "-5" is invalid`.
    /// @param field whose value is to blame; empty for none
    /// @param cell  its text
    void Unscored(std::string_view field, std::string_view cell, std::string_view reason);

    /// Whether the rows with a cell that could not be read, or without a score, are no more than the limit.
    bool IsWithin(const ErrorLimit& limit) const { return limit.Allows(fFaultyRows, fRows); }

    /// The last lines: how many cells could not be read, and how many rows not scored and why. Written in quiet too.
    void Total();

private:
    /// A field and what is wrong with it, as they are: most rows that aren't scored have a reason that is known.
    struct Blame {
        std::string field;
        std::string reason;
    };

    /// Lets a reason be looked up without a copy of its texts.
    struct BlameOrder {
        using is_transparent = void;
        using Texts = std::pair<std::string_view, std::string_view>;
        static Texts Of(const Blame& blame) { return {blame.field, blame.reason}; }
        static Texts Of(const Texts& texts) { return texts; }
        bool operator()(const auto& a, const auto& b) const { return Of(a) < Of(b); }
    };

    void CountUnscored(std::string_view field, std::string_view reason);
    void NoteFault(std::string_view field, std::string_view cell, std::string_view reason);
    void TotalOfRows();
    void Write(const std::string& line);

    std::string fCases;
    bool fQuiet;
    ProgressBar* fBar = nullptr;
    Rejects* fRejects = nullptr;
    std::size_t fLine = 0;
    std::uint64_t fRows = 0;
    bool fRowIsFaulty = false;
    std::uint64_t fFaultyRows = 0;
    std::size_t fUnreadableCells = 0;
    std::size_t fToldCells = 0; ///< lines about cells, whether they were shown or not
    std::size_t fToldRows = 0;
    std::map<Blame, std::size_t, BlameOrder> fUnscoredRows;
};

} // namespace veltrane::host

#endif
