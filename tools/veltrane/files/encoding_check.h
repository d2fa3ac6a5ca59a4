#ifndef VELTRANE_HOST_ENCODING_CHECK_H
#define VELTRANE_HOST_ENCODING_CHECK_H

#include <memory>
#include <string>
#include <string_view>

struct UConverter;

namespace veltrane::host {

/// Tells whether bytes are text in an encoding. A file that was written in another one often holds bytes that are not,
/// and would pass through unnoticed.
class EncodingCheck {
public:
    /// @param name of an encoding that `Encoding` takes
    explicit EncodingCheck(const std::string& name);
    ~EncodingCheck();
    EncodingCheck(const EncodingCheck&) = delete;
    EncodingCheck& operator=(const EncodingCheck&) = delete;

    /// Whether all bytes are characters of the encoding, the last one whole. ASCII costs a look at each eight bytes.
    bool Holds(std::string_view bytes) const;

    /// Whether every text of ASCII bytes is that text.
    bool KeepsAscii() const { return fKeepsAscii; }

    /// What is wrong with bytes that are not, as the end of a sentence that begins with them.
    const char* Problem() const { return fProblem.c_str(); }

private:
    struct Closer {
        void operator()(UConverter* converter) const;
    };

    bool Converts(std::string_view bytes) const;

    std::unique_ptr<UConverter, Closer> fConverter;
    std::string fProblem;
    bool fIsUtf8 = false;
    bool fKeepsAscii = false;
    bool fHasHighControls = true; ///< whether the control characters from 0x80 on are characters of the encoding
};

} // namespace veltrane::host

#endif
