#ifndef MCVELTRANE_900_SMARTTRANSCODER_H
#define MCVELTRANE_900_SMARTTRANSCODER_H

#include <veltrane_export.h>

#include <string>

XERCES_CPP_NAMESPACE_BEGIN
class XMLTranscoder;
XERCES_CPP_NAMESPACE_END

namespace MCVeltrane_900 {

/// Converter between the XML parser's UTF-16 and byte strings of one named encoding. It needs the XML platform to be
/// running from construction to destruction, and belongs to one thread at a time. No conversion throws.
class VELTRANE_API SmartTranscoder {
public:
    /// @param encoding name of the encoding; an unknown one gives a transcoder that converts nothing
    explicit SmartTranscoder(const std::string& encoding);
    /// Shares the parser's transcoder. The destructor deletes it, so a copy must not outlive its source, and only one
    /// of the two may be destroyed.
    SmartTranscoder(const SmartTranscoder& other);
    SmartTranscoder& operator=(const SmartTranscoder&) = delete;
    virtual ~SmartTranscoder();

    /// Bytes of the encoding to UTF-16.
    /// @return an array that the caller releases with `delete[]`; empty text where the bytes cannot be converted; null
    ///         for a null text and for an unknown encoding
    XMLCh* ChangeChar2XML(const char* text) const;

    /// UTF-16 to bytes of the encoding, in chunks of 1000 bytes.
    /// @return the bytes; at a character that the encoding does not have, the chunks before. Empty for a null text and
    ///         for an unknown encoding
    std::string transcodeTo(const XMLCh* text) const;

private:
    xercesc::XMLTranscoder* fTranscoder;
    /// Whether ASCII text has the same codes in this encoding, so that it needs no converter.
    bool fKeepsAscii;
};

} // namespace MCVeltrane_900

#endif
