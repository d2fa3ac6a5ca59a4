#ifndef VELTRANE_HOST_ENCODING_H
#define VELTRANE_HOST_ENCODING_H

#include <memory>
#include <string>
#include <string_view>

struct UConverter;

namespace veltrane::host {

/// The encoding in which the host holds text: that of the cases, of the names from the document and of the output.
class Encoding {
public:
    /// Throws `std::invalid_argument` with a text for the user when no such encoding is known, or when it does not keep
    /// ASCII as it is, so that CSV cannot be read in it.
    explicit Encoding(const std::string& name);
    ~Encoding();
    Encoding(const Encoding&) = delete;
    Encoding& operator=(const Encoding&) = delete;

    /// Bytes that are no text in this encoding become U+FFFD.
    std::string ToUtf8(std::string_view text) const;

    /// Characters that this encoding lacks become its substitution character.
    std::string FromUtf8(std::string_view text) const;

private:
    struct Closer {
        void operator()(UConverter* converter) const;
    };
    std::unique_ptr<UConverter, Closer> fConverter;
};

/// The columns that a terminal needs for UTF-8 text: none for a combining mark, two for a wide East Asian character.
int TextColumns(std::string_view utf8);

} // namespace veltrane::host

#endif
