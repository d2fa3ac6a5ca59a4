#ifndef VELTRANE_COLUMNS_BYTES_STREAM_H
#define VELTRANE_COLUMNS_BYTES_STREAM_H

#include <istream>
#include <streambuf>
#include <string>
#include <string_view>

namespace veltrane::columns {

/// Bytes in memory as they are; a string stream would copy them, and documents are large.
class BytesBuffer : public std::streambuf {
public:
    /// @param bytes borrowed; nothing is written to them
    explicit BytesBuffer(std::string_view bytes) {
        char* const begin = const_cast<char*>(bytes.data());
        setg(begin, begin, begin + bytes.size());
    }

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override {
        const off_type size = egptr() - eback();
        const off_type start = from == std::ios_base::beg ? 0 : from == std::ios_base::cur ? gptr() - eback() : size;
        if ((which & std::ios_base::in) == 0 || offset < -start || offset > size - start) {
            return pos_type(off_type(-1));
        }
        setg(eback(), eback() + start + offset, egptr());
        return start + offset;
    }
    pos_type seekpos(pos_type place, std::ios_base::openmode which) override {
        return seekoff(off_type(place), std::ios_base::beg, which);
    }
};

/// A stream over bytes in memory that stands at their start.
class BytesStream : private BytesBuffer, public std::istream {
public:
    explicit BytesStream(std::string_view bytes) : BytesBuffer(bytes), std::istream(static_cast<BytesBuffer*>(this)) {}
};

/// All that is left in a stream, whatever its state says.
/// @throws VTException 260105 for a stream that throws a failure
std::string ReadAll(std::istream& in);

} // namespace veltrane::columns

#endif
