#include "files/tag_scanner.h"

#include <strings.h>

namespace veltrane::host {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kDeclaration = "<?xml";
constexpr std::string_view kUtf8 = "UTF-8";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == text.npos ? std::string_view() : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Takes an attribute off the front of some. Both are empty when there is none, or nothing that looks like one.
struct TakenAttribute {
    explicit TakenAttribute(std::string_view& attributes) {
        const std::size_t equal = attributes.find('=');
        const std::size_t open = equal == attributes.npos ? equal : attributes.find_first_not_of(kBlanks, equal + 1);
        if (open == attributes.npos || (attributes[open] != '"' && attributes[open] != '\'')) {
            attributes = {};
            return;
        }
        const std::size_t close = attributes.find(attributes[open], open + 1);
        name = Trimmed(attributes.substr(0, equal));
        value = attributes.substr(open + 1, close - open - 1);
        attributes = close == attributes.npos ? std::string_view() : attributes.substr(close + 1);
    }

    std::string_view name;
    std::string_view value;
};

/// Whether a declaration tells of XML 1.0 in UTF-8.
bool IsPlain(std::string_view declaration) {
    declaration.remove_prefix(kDeclaration.size());
    const TakenAttribute version(declaration);
    const TakenAttribute encoding(declaration);
    const bool tellsEncoding = encoding.name == "encoding";
    return version.name == "version" && version.value == "1.0" &&
           (!tellsEncoding || (encoding.value.size() == kUtf8.size() &&
                               ::strncasecmp(encoding.value.data(), kUtf8.data(), kUtf8.size()) == 0));
}

} // namespace

TagScanner::TagScanner(std::string_view bytes) : fBytes(bytes) {
    if (fBytes.starts_with(kByteOrderMark)) {
        fBytes.remove_prefix(kByteOrderMark.size());
    }
    const std::size_t first = fBytes.find_first_not_of(kBlanks);
    if (first == fBytes.npos || fBytes[first] != '<') {
        Doubt();
    } else if (fBytes.starts_with(kDeclaration) && !IsPlain(fBytes.substr(0, fBytes.find("?>")))) {
        Doubt();
    }
}

bool TagScanner::Next() {
    while (!fIsInDoubt) {
        fAt = fBytes.find('<', fAt);
        if (fAt == fBytes.npos || fAt + 1 == fBytes.size()) {
            return fOpen == 0 && fHasRoot ? false : Doubt();
        }
        const char next = fBytes[fAt + 1];
        if (next != '/' && next != '!' && next != '?') {
            return TakeTag();
        }
        if (!PassMarkup()) {
            return false;
        }
    }
    return false;
}

/// Passes an end tag, a comment, a section of CDATA or a processing instruction.
bool TagScanner::PassMarkup() {
    const std::string_view rest = fBytes.substr(fAt);
    if (rest[1] == '/') {
        return fOpen-- > 0 ? PassBehind(">") : Doubt();
    }
    if (rest[1] == '?') {
        return PassBehind("?>");
    }
    constexpr std::string_view kComment = "<!--";
    constexpr std::string_view kSection = "<![CDATA[";
    if (rest.starts_with(kComment)) {
        fAt += kComment.size();
        return PassBehind("-->");
    }
    return rest.starts_with(kSection) ? PassBehind("]]>") : Doubt();
}

bool TagScanner::PassBehind(std::string_view end) {
    const std::size_t found = fBytes.find(end, fAt);
    if (found == fBytes.npos) {
        return Doubt();
    }
    fAt = found + end.size();
    return true;
}

bool TagScanner::TakeTag() {
    const std::size_t start = fAt + 1;
    std::size_t at = start;
    for (; at < fBytes.size() && kBlanks.find(fBytes[at]) == kBlanks.npos && fBytes[at] != '/' && fBytes[at] != '>';
         ++at) {
        if (fBytes[at] == ':') {
            return Doubt();
        }
    }
    const std::size_t end = EndOfTag(at);
    if (end == fBytes.npos || (fOpen == 0 && fHasRoot)) {
        return Doubt();
    }
    const bool isEmpty = fBytes[end - 1] == '/';
    fName = fBytes.substr(start, at - start);
    fAttributes = fBytes.substr(at, end - at - (isEmpty && end > at ? 1 : 0));
    fHasRoot = true;
    fDepth = fOpen + 1;
    fOpen += isEmpty ? 0 : 1;
    fAt = end + 1;
    return true;
}

/// The next '>' that isn't within quotes.
std::size_t TagScanner::EndOfTag(std::size_t at) const {
    for (; at < fBytes.size() && fBytes[at] != '>'; ++at) {
        if (fBytes[at] == '"' || fBytes[at] == '\'') {
            at = fBytes.find(fBytes[at], at + 1);
            if (at == fBytes.npos) {
                return at;
            }
        }
    }
    return at < fBytes.size() ? at : fBytes.npos;
}

std::optional<std::string_view> TagScanner::Attribute(std::string_view name) {
    for (std::string_view rest = fAttributes; !rest.empty();) {
        const TakenAttribute attribute(rest);
        if (attribute.name == name) {
            if (attribute.value.find_first_of("&\t\r\n") != attribute.value.npos) {
                Doubt();
            }
            return attribute.value;
        }
    }
    return std::nullopt;
}

} // namespace veltrane::host
