#include "report.h"

#include "progress_bar.h"

#include <fmt/format.h>
#include <unicode/utf8.h>

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

void AppendHex(std::string& text, std::string_view bytes) {
    for (const char byte : bytes)
        fmt::format_to(std::back_inserter(text), "\\x{:02X}", static_cast<unsigned>(static_cast<unsigned char>(byte)));
}

const char* CellWord(std::size_t count) {
    return count == 1 ? "cell" : "cells";
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
        if (character == '\n')
            result += "\\n";
        else if (character == '\r')
            result += "\\r";
        else if (character == '\t')
            result += "\\t";
        else if (character < 0x20 || (character >= 0x7F && character < 0xA0))
            AppendHex(result, bytes);
        else
            result += bytes;
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
