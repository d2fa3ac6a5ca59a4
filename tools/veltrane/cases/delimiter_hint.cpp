#include "cases/delimiter_hint.h"

#include <algorithm>
#include <vector>

namespace veltrane::host {
namespace {

/// What programs write between cells, the usual ones first: of equals the first is taken.
constexpr std::string_view kDelimiters = ",;\t|:^~!#&*/ \x1F\x01";
constexpr std::string_view kUsualDelimiters = ",;\t|";

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == text.npos ? std::string_view() : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// A name without the blanks and the quotes around it.
std::string_view Name(std::string_view piece) {
    piece = WithoutBlanks(piece);
    if (piece.size() >= 2 && piece.front() == '"' && piece.back() == '"') {
        piece = piece.substr(1, piece.size() - 2);
    }
    return piece;
}

/// The pieces of a line; a delimiter between quotes is none.
std::vector<std::string_view> Split(std::string_view line, char delimiter) {
    std::vector<std::string_view> pieces;
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '"') {
            quoted = !quoted;
        }
        if (line[at] != delimiter || quoted) {
            continue;
        }
        pieces.push_back(line.substr(start, at - start));
        start = at + 1;
    }
    pieces.push_back(line.substr(start));
    return pieces;
}

std::size_t CountFields(const std::vector<std::string_view>& pieces,
                        const std::unordered_set<std::string_view>& fields) {
    return static_cast<std::size_t>(
        std::count_if(pieces.begin(), pieces.end(), [&](std::string_view piece) { return fields.count(Name(piece)); }));
}

} // namespace

std::optional<char> LikelyDelimiter(std::string_view line, char used,
                                    const std::unordered_set<std::string_view>& fields) {
    std::optional<char> likely;
    std::size_t most = CountFields(Split(line, used), fields);
    for (const char delimiter : kDelimiters) {
        const std::size_t found = CountFields(Split(line, delimiter), fields);
        if (found > most && delimiter != used) {
            likely = delimiter;
            most = found;
        }
    }
    if (likely || most > 0 || Split(line, used).size() > 1) {
        return likely;
    }
    std::size_t pieces = 1;
    for (const char delimiter : kUsualDelimiters) {
        const std::size_t parted = Split(line, delimiter).size();
        if (parted > pieces && delimiter != used) {
            likely = delimiter;
            pieces = parted;
        }
    }
    return likely;
}

std::string DelimiterOption(char delimiter) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    if (delimiter == '\t') {
        return "--delimiter '\\t'";
    }
    const auto code = static_cast<unsigned char>(delimiter);
    if (code < 0x20) {
        return std::string("--delimiter $'\\x") + kHex[code >> 4] + kHex[code & 15] + "'";
    }
    return std::string("--delimiter '") + delimiter + "'";
}

} // namespace veltrane::host
