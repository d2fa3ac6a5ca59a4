#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_TRANSCODER_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_TRANSCODER_H

#include <unicode/unistr.h>

#include <memory>
#include <string>
#include <string_view>

struct UConverter;

namespace veltrane_kit::standard {

/// Texts of one encoding as characters and back. It belongs to one thread.
class Transcoder {
public:
    /// @param encoding upper case; texts of one that isn't known can't be written
    explicit Transcoder(const std::string& encoding);

    bool IsUtf8() const { return fIsUtf8; }

    /// Bytes that are no text become U+FFFD.
    icu::UnicodeString Read(std::string_view text) const;

    /// @return false for a text that the encoding can't write or that would be longer than any may be
    bool Write(const icu::UnicodeString& characters, std::string& text) const;

private:
    struct Closer {
        void operator()(UConverter* converter) const;
    };

    bool fIsUtf8;
    std::unique_ptr<UConverter, Closer> fConverter; ///< null for UTF-8 and for what isn't known
};

} // namespace veltrane_kit::standard

#endif
