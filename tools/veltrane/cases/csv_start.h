#ifndef VELTRANE_HOST_CSV_START_H
#define VELTRANE_HOST_CSV_START_H

#include "files/byte_stream.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace veltrane::host {

/// Reads until there are enough bytes to tell a byte order mark, or no more.
/// @param buffer room for `size` bytes, at least three
/// @return the number of bytes
std::size_t ReadFirstBytes(ByteSource& source, char* buffer, std::size_t size);

/// The first bytes of a file of cases without the byte order mark of UTF-8. Throws a `Failure` for UTF-16.
/// @param name of the file, for the message
std::string_view WithoutByteOrderMark(std::string_view bytes, const std::string& name);

/// The first line of a file that isn't empty, as it stands there, without its end. A long one is cut.
class FirstLine {
public:
    /// Takes the bytes that come next in the file.
    void Note(std::string_view bytes);

    std::string_view Text() const { return fText; }

private:
    std::string fText;
    bool fIsWhole = false;
};

} // namespace veltrane::host

#endif
