#include "factory/documents/document_glance.h"

#include <MCXML_900/MCXInputSource.h>

#include <xercesc/util/BinInputStream.hpp>

#include <algorithm>
#include <functional>
#include <memory>

namespace veltrane::factory {

namespace {

/// What the XML parser asks of a stream at a time.
constexpr std::size_t kBlock = std::size_t{48} * 1024;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kDoctype = "<!DOCTYPE";

/// Encodings that have ASCII as it is, and nothing else in its bytes.
constexpr std::string_view kEncodings[] = {"UTF-8", "US-ASCII", "ISO-8859-1", "WINDOWS-1252"};

std::string Upper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return upper;
}

/// The encoding that an XML declaration names, in capitals; UTF-8 when it names none.
std::string DeclaredEncoding(std::string_view declaration) {
    const std::size_t word = declaration.find("encoding");
    if (word == std::string_view::npos) {
        return "UTF-8";
    }
    const std::size_t open = declaration.find_first_of("'\"", word);
    if (open == std::string_view::npos) {
        return {};
    }
    return Upper(declaration.substr(open + 1, declaration.find(declaration[open], open + 1) - open - 1));
}

/// Whether ASCII stands for itself in a document, told from its first block.
bool HasPlainAscii(std::string_view head) {
    if (head.starts_with(kByteOrderMark)) {
        head.remove_prefix(kByteOrderMark.size());
    }
    if (head.empty() || (head[0] != '<' && kBlanks.find(head[0]) == std::string_view::npos)) {
        return false;
    }
    if (!head.starts_with("<?xml")) {
        return true;
    }
    const std::size_t end = head.find("?>");
    const std::string encoding = DeclaredEncoding(head.substr(0, end));
    return end != std::string_view::npos &&
           std::find(std::begin(kEncodings), std::end(kEncodings), encoding) != std::end(kEncodings);
}

/// The first letters of what is looked for stand everywhere in a document, so the search goes by the last one.
bool Holds(std::string_view text, std::string_view searched) {
    const std::boyer_moore_horspool_searcher searcher(searched.begin(), searched.end());
    return std::search(text.begin(), text.end(), searcher) != text.end();
}

} // namespace

DocumentGlance::DocumentGlance(std::istream& in, std::string_view element) {
    const std::unique_ptr<xercesc::BinInputStream> stream(MCXML_900::MCXInputSource(in).makeStream());
    for (XMLSize_t count = kBlock; count == kBlock && !fMayHold;) { // less is the end
        const std::size_t before = fHead.size();
        fHead.resize(before + kBlock);
        count = stream->readBytes(reinterpret_cast<XMLByte*>(fHead.data() + before), kBlock);
        fHead.resize(before + count);
        fMayHold = IsDoubtful(before, element);
    }
}

/// @param from where the bytes start that are new; what was looked for may have begun before
bool DocumentGlance::IsDoubtful(std::size_t from, std::string_view element) const {
    const std::string_view head = fHead;
    const std::string_view fresh = head.substr(from - std::min(from, std::max(element.size(), kDoctype.size())));
    return (from == 0 && !HasPlainAscii(head)) || fresh.find('\0') != std::string_view::npos ||
           Holds(fresh, kDoctype) || Holds(fresh, element);
}

} // namespace veltrane::factory
