#include "files/csv_writer.h"

#include <algorithm>
#include <charconv>

namespace veltrane::host {
namespace {

constexpr std::size_t kFlushSize = std::size_t{64} << 10;

} // namespace

void AppendNumber(std::string& text, double number) {
    std::array<char, 32> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), end);
}

CsvQuoting::CsvQuoting(char delimiter) {
    for (const char special : {delimiter, '"', '\r', '\n'}) {
        fNeedsQuotes[static_cast<unsigned char>(special)] = true;
    }
}

bool CsvQuoting::Needs(std::string_view text) const {
    return std::any_of(text.begin(), text.end(), [this](unsigned char c) { return fNeedsQuotes[c]; });
}

CsvWriter::CsvWriter(ByteSink& sink, char delimiter) : fSink(sink), fDelimiter(delimiter), fQuoting(delimiter) {
    fBuffer.reserve(2 * kFlushSize);
}

void CsvWriter::BeginCell() {
    if (fCells++ > 0) {
        fBuffer.push_back(fDelimiter);
    }
}

void CsvWriter::Text(std::string_view text) {
    BeginCell();
    if (fQuoting.Needs(text)) {
        CsvQuoting::Quote(text, [this](char c) { fBuffer.push_back(c); });
    } else {
        fBuffer.append(text);
    }
}

void CsvWriter::Number(double number) {
    BeginCell();
    AppendNumber(fBuffer, number);
}

void CsvWriter::EndRow() {
    if (fCells == 1 && fBuffer.size() == fRowStart) {
        fBuffer.append(kEmptyRow);
    }
    fBuffer.push_back('\n');
    fCells = 0;
    fRowStart = fBuffer.size();
    if (fRowStart >= kFlushSize) {
        Flush();
    }
}

/// Flushes behind the same rows as if they came one by one.
void CsvWriter::Rows(std::string_view rows, std::span<const std::uint32_t> ends, std::size_t start) {
    auto next = ends.begin();
    while (next != ends.end()) {
        const std::size_t wanted = start + kFlushSize - fRowStart;
        const auto full = std::lower_bound(next, ends.end(), wanted);
        const auto last = full == ends.end() ? full - 1 : full;
        fBuffer.append(rows.substr(0, *last - start));
        rows.remove_prefix(*last - start);
        start = *last;
        next = last + 1;
        fRowStart = fBuffer.size();
        if (fRowStart >= kFlushSize) {
            Flush();
        }
    }
}

void CsvWriter::Flush() {
    if (fRowStart == 0) {
        return;
    }
    fSink.Write(std::string_view(fBuffer).substr(0, fRowStart));
    fBuffer.erase(0, fRowStart);
    fRowStart = 0;
}

} // namespace veltrane::host
