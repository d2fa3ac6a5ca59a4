#include "cases/csv_start.h"

#include "files/failure.h"

#include <algorithm>

namespace veltrane::host {
namespace {

constexpr std::size_t kLongestFirstLine = std::size_t{64} << 10;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// Whether a file begins as UTF-16 does: with its mark, or with one of the zero bytes that it has beside ASCII.
bool IsUtf16(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
           bytes.substr(0, 2).find('\0') != bytes.npos;
}

} // namespace

std::size_t ReadFirstBytes(ByteSource& source, char* buffer, std::size_t size) {
    std::size_t read = 0;
    while (read < kUtf8Mark.size()) {
        const std::size_t more = source.Read(buffer + read, size - read);
        if (more == 0) {
            break;
        }
        read += more;
    }
    return read;
}

std::string_view WithoutByteOrderMark(std::string_view bytes, const std::string& name) {
    if (IsUtf16(bytes)) {
        throw Failure(name + ": the file is UTF-16; convert it to UTF-8 first");
    }
    bytes.remove_prefix(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
    return bytes;
}

void FirstLine::Note(std::string_view bytes) {
    if (fIsWhole) {
        return;
    }
    if (fText.empty()) {
        bytes.remove_prefix(std::min(bytes.find_first_not_of("\r\n"), bytes.size()));
    }
    const std::size_t end = bytes.find_first_of("\r\n");
    fText.append(bytes.substr(0, std::min(end, kLongestFirstLine - fText.size())));
    fIsWhole = end != bytes.npos || fText.size() == kLongestFirstLine;
}

} // namespace veltrane::host
