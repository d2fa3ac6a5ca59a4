#include "factory/documents/document_glance.h"

#include <MCXML_900/MCXInputSource.h>

#include <xercesc/util/BinInputStream.hpp>

#include <algorithm>
#include <functional>
#include <ios>
#include <istream>
#include <memory>

namespace veltrane::factory {

namespace {

/// What the XML parser asks of a stream at a time.
constexpr std::size_t kBlock = std::size_t{48} * 1024;

/// What is kept of any document, and before which a stream isn't asked where it stands.
constexpr std::size_t kKept = std::size_t{1} << 20;

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

bool HoldsDoctype(std::string_view text) {
    // Its second letter stands nearly nowhere else.
    for (std::size_t at = text.find('!'); at != std::string_view::npos; at = text.find('!', at + 1)) {
        if (at > 0 && text.substr(at - 1).starts_with(kDoctype)) {
            return true;
        }
    }
    return false;
}

/// The first letters of an element's name stand everywhere in a document, so the search goes by the last one.
bool HoldsName(std::string_view text, std::string_view name) {
    const std::boyer_moore_horspool_searcher searcher(name.begin(), name.end());
    return std::search(text.begin(), text.end(), searcher) != text.end();
}

/// -1 for a stream that can't tell.
std::streamoff PlaceOf(std::istream& in) {
    try {
        return in.tellg();
    } catch (const std::ios_base::failure&) {
        return -1;
    }
}

void GoTo(std::istream& in, std::streamoff place) {
    try {
        in.clear();
        in.seekg(place);
    } catch (const std::ios_base::failure&) {
        // a stream that is set to throw counts as one that is not
    }
}

} // namespace

DocumentGlance::DocumentGlance(std::istream& in, std::string_view element) {
    const std::size_t overlap = std::max(element.size(), kDoctype.size());
    const std::unique_ptr<xercesc::BinInputStream> stream(MCXML_900::MCXInputSource(in).makeStream());
    std::size_t known = 0;
    std::streamoff start = -1;                                      // known when something isn't kept
    for (XMLSize_t count = kBlock; count == kBlock && !fMayHold;) { // less is the end
        const std::size_t before = fHead.size();
        fHead.resize(before + kBlock);
        count = stream->readBytes(reinterpret_cast<XMLByte*>(fHead.data() + before), kBlock);
        fHead.resize(before + count);
        const std::size_t from = before - std::min(before, overlap); // what is looked for may have begun before
        fMayHold = (known == 0 && !HasPlainAscii(fHead)) || IsDoubtful(std::string_view(fHead).substr(from), element);
        known += count;
        if (start < 0 && fHead.size() > kKept) {
            start = PlaceOf(in) - static_cast<std::streamoff>(known);
        }
        if (start >= 0 && !fMayHold) {
            fHead.erase(0, fHead.size() - std::min(fHead.size(), overlap));
        }
    }
    if (fMayHold && known > fHead.size() && !in.bad()) {
        GoTo(in, start);
        fHead.clear();
    }
}

bool DocumentGlance::IsDoubtful(std::string_view bytes, std::string_view element) {
    return bytes.find('\0') != std::string_view::npos || HoldsDoctype(bytes) || HoldsName(bytes, element);
}

} // namespace veltrane::factory
