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

CsvWriter::CsvWriter(ByteSink& sink, char delimiter) : fSink(sink), fDelimiter(delimiter) {
    for (const char special : {delimiter, '"', '\r', '\n'}) {
        fNeedsQuotes[static_cast<unsigned char>(special)] = true;
    }
    fBuffer.reserve(2 * kFlushSize);
}

void CsvWriter::BeginCell() {
    if (fCells++ > 0) {
        fBuffer.push_back(fDelimiter);
    }
}

void CsvWriter::Text(std::string_view text) {
    BeginCell();
    if (std::any_of(text.begin(), text.end(), [this](unsigned char c) { return fNeedsQuotes[c]; })) {
        Quoted(text);
    } else {
        fBuffer.append(text);
    }
}

void CsvWriter::Quoted(std::string_view text) {
    fBuffer.push_back('"');
    for (const char c : text) {
        if (c == '"') {
            fBuffer.push_back('"');
        }
        fBuffer.push_back(c);
    }
    fBuffer.push_back('"');
}

void CsvWriter::Number(double number) {
    BeginCell();
    AppendNumber(fBuffer, number);
}

void CsvWriter::EndRow() {
    if (fCells == 1 && fBuffer.size() == fRowStart) {
        fBuffer.append("\"\"");
    }
    fBuffer.push_back('\n');
    fCells = 0;
    fRowStart = fBuffer.size();
    if (fRowStart >= kFlushSize) {
        Flush();
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
