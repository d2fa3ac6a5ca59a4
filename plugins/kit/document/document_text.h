#ifndef VELTRANE_PLUGINS_KIT_DOCUMENT_TEXT_H
#define VELTRANE_PLUGINS_KIT_DOCUMENT_TEXT_H

#include <MCVeltrane_900/SmartTranscoder.h>

#include <xercesc/util/XercesDefs.hpp>

#include <string>

namespace veltrane_kit {

/// A document's text as bytes of the encoding that the host asked for. It lives while the document is read.
class DocumentText {
public:
    /// @param encoding empty means BaseTranslator::DEFAULT_ENCODING, as everywhere in the library
    explicit DocumentText(const std::string& encoding);

    /// The bytes of a text; empty for null.
    std::string operator()(const XMLCh* text) const;

private:
    MCVeltrane_900::SmartTranscoder fTranscoder;
    /// Whether plain ASCII has the same bytes in this encoding, so that nearly all text needs no converter.
    bool fKeepsAscii;
};

/// ASCII text, such as names of elements and attributes, as bytes for messages; any other character as '?'.
std::string Narrow(const XMLCh* text);

/// ASCII text as UTF-16.
std::u16string Widen(const std::string& text);

/// A name without the prefix of a name space.
std::string LocalName(const std::string& name);

/// Reads a decimal number, the point as decimal sign under every locale. White space around it is allowed.
/// @return false, and `number` untouched, for anything else: infinity, a NaN and what no double can hold, too
bool ReadNumber(const XMLCh* text, double& number);

/// The same for a whole number of 32 bits.
bool ReadInteger(const XMLCh* text, int& number);

/// Whether two texts are the same. Null equals the empty text.
bool Same(const XMLCh* a, const XMLCh* b);

} // namespace veltrane_kit

#endif
