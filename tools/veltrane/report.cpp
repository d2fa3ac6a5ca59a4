#include "report.h"

#include "progress_bar.h"

#include <fmt/format.h>

#include <cstdio>
#include <iterator>

namespace veltrane::host {
namespace {

/// A reported cell is cut to this many bytes.
constexpr std::size_t kLongestCell = 100;

/// Cuts a long text, never inside a UTF-8 character.
std::string_view Cut(std::string_view text) {
    if (text.size() <= kLongestCell)
        return text;
    std::size_t size = kLongestCell;
    while (size > kLongestCell - 4 && (text[size] & 0xC0) == 0x80)
        --size;
    return text.substr(0, size);
}

const char* CellWord(std::size_t count) {
    return count == 1 ? "cell" : "cells";
}

} // namespace

std::string Escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\n')
            result += "\\n";
        else if (c == '\r')
            result += "\\r";
        else if (c == '\t')
            result += "\\t";
        else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            fmt::format_to(std::back_inserter(result), "\\x{:02X}", static_cast<unsigned>(c));
        else
            result += c;
    }
    return result;
}

void Report::Warning(std::string_view text) {
    if (!fQuiet)
        Write(fmt::format("veltrane: warning: {}\n", text));
}

void Report::Cell(std::size_t line, std::string_view field, std::string_view cell, const char* problem) {
    ++fUnreadableCells;
    if (fQuiet)
        return;
    const std::string_view shown = Cut(cell);
    Write(fmt::format("{}:{}: {}: \"{}{}\" {}\n", fCases, line, Escaped(field), Escaped(shown),
                      shown.size() < cell.size() ? "..." : "", problem));
}

void Report::Ragged(std::size_t line, std::size_t cells, std::size_t columns) {
    fUnreadableCells += cells < columns ? columns - cells : cells - columns;
    if (!fQuiet)
        Write(fmt::format("{}:{}: {} {}, but the header has {}\n", fCases, line, cells, CellWord(cells), columns));
}

void Report::Total() {
    if (fUnreadableCells > 0)
        Write(fmt::format("veltrane: {} {} could not be read\n", fUnreadableCells, CellWord(fUnreadableCells)));
    for (const auto& [reason, rows] : fUnscoredRows)
        Write(fmt::format("veltrane: {} {} could not be scored{}{}\n", rows, rows == 1 ? "row" : "rows",
                          reason.empty() ? "" : ": ", Escaped(reason)));
}

void Report::Write(const std::string& line) {
    if (fBar)
        fBar->Hide();
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace veltrane::host
