#include "run/report.h"

#include "run/progress_bar.h"
#include "run/rejects.h"

#include <fmt/format.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>
#include <vector>

namespace veltrane::host {
namespace {

/// So many cells, and so many rows, are told one by one; the totals name so many reasons.
constexpr std::size_t kShown = 20;

/// A reported cell is cut to this many bytes.
constexpr std::size_t kLongestCell = 100;

/// Cuts a long text, never inside a UTF-8 character.
std::string_view Cut(std::string_view text) {
    if (text.size() <= kLongestCell) {
        return text;
    }
    std::size_t size = kLongestCell;
    while (size > kLongestCell - 4 && (text[size] & 0xC0) == 0x80) {
        --size;
    }
    return text.substr(0, size);
}

void AppendHex(std::string& text, std::string_view bytes) {
    for (const char byte : bytes) {
        fmt::format_to(std::back_inserter(text), "\\x{:02X}", static_cast<unsigned>(static_cast<unsigned char>(byte)));
    }
}

const char* CellWord(std::size_t count) {
    return count == 1 ? "cell" : "cells";
}

const char* RowWord(std::size_t count) {
    return count == 1 ? "row" : "rows";
}

/// A cell as a line shows it.
std::string Quoted(std::string_view cell) {
    const std::string_view shown = Cut(cell);
    return fmt::format("\"{}{}\"", Escaped(shown), shown.size() < cell.size() ? "..." : "");
}

} // namespace

std::string Escaped(std::string_view text) {
    std::string result;
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < size;) {
        const std::int32_t start = at;
        UChar32 character;
        U8_NEXT(text.data(), at, size, character);
        const std::string_view bytes =
            text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(at - start));
        if (character == '\n') {
            result += "\\n";
        } else if (character == '\r') {
            result += "\\r";
        } else if (character == '\t') {
            result += "\\t";
        } else if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
            AppendHex(result, bytes);
        } else {
            result += bytes;
        }
    }
    return result;
}

void Report::Warning(std::string_view text) {
    if (!fQuiet) {
        Write(fmt::format("veltrane: warning: {}\n", Escaped(text)));
    }
}

void Report::Cell(std::string_view field, std::string_view cell, std::string_view problem) {
    ++fUnreadableCells;
    NoteFault(field, cell, problem);
    if (fToldCells++ < kShown && !fQuiet) {
        Write(fmt::format("{}:{}: {}: {} {}\n", fCases, fLine, Escaped(field), Quoted(cell), problem));
    }
}

void Report::Ragged(std::size_t cells, std::size_t columns) {
    fUnreadableCells += cells < columns ? columns - cells : cells - columns;
    const std::string reason = fmt::format("{} {}, but the header has {}", cells, CellWord(cells), columns);
    NoteFault({}, {}, reason);
    if (fToldCells++ < kShown && !fQuiet) {
        Write(fmt::format("{}:{}: {}\n", fCases, fLine, reason));
    }
}

void Report::Unscored(std::string_view field, std::string_view cell, std::string_view reason) {
    CountUnscored(field, reason);
    NoteFault(field, cell, reason);
    if (fToldRows++ >= kShown || fQuiet) {
        return;
    }
    const std::string name = Escaped(field);
    const std::string subject = cell.empty() ? name : fmt::format("{}: {}", name, Quoted(cell));
    Write(fmt::format("{}:{}: not scored: {}{}{}\n", fCases, fLine, subject, subject.empty() ? "" : " ", reason));
}

void Report::CountUnscored(std::string_view field, std::string_view reason) {
    auto found = fUnscoredRows.find(BlameOrder::Texts(field, reason));
    if (found == fUnscoredRows.end()) {
        found = fUnscoredRows.emplace(Blame{std::string(field), std::string(reason)}, 0).first;
    }
    ++found->second;
}

/// The header has no number of its own among the rows.
void Report::NoteFault(std::string_view field, std::string_view cell, std::string_view reason) {
    if (!fRowIsFaulty) {
        ++fFaultyRows;
    }
    fRowIsFaulty = true;
    if (fRejects) {
        fRejects->Add(fRows, field, cell, reason);
    }
}

void Report::Total() {
    if (fUnreadableCells > 0) {
        Write(fmt::format("veltrane: {} {} could not be read\n", fUnreadableCells, CellWord(fUnreadableCells)));
    }
    TotalOfRows();
    if (!fQuiet && std::max(fToldCells, fToldRows) > kShown) {
        Write(fmt::format("veltrane: the first {} are shown; {}\n", kShown,
                          fRejects ? "the file of rejects has all" : "--rejects FILE takes all"));
    }
}

/// The most frequent reasons first.
void Report::TotalOfRows() {
    std::map<std::string, std::size_t> rowsByText;
    for (const auto& [blame, rows] : fUnscoredRows) {
        rowsByText[blame.field.empty() ? blame.reason : fmt::format("{} {}", Escaped(blame.field), blame.reason)] +=
            rows;
    }
    std::vector<std::pair<std::string_view, std::size_t>> reasons(rowsByText.begin(), rowsByText.end());
    std::stable_sort(reasons.begin(), reasons.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
    std::size_t others = 0;
    for (std::size_t at = 0; at < reasons.size(); ++at) {
        const auto& [reason, rows] = reasons[at];
        if (at >= kShown) {
            others += rows;
        } else {
            Write(fmt::format("veltrane: {} {} could not be scored: {}\n", rows, RowWord(rows), reason));
        }
    }
    if (others > 0) {
        Write(fmt::format("veltrane: {} {} could not be scored for other reasons\n", others, RowWord(others)));
    }
}

void Report::Write(const std::string& line) {
    if (fBar) {
        fBar->Hide();
    }
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace veltrane::host
