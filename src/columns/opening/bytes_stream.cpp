#include "columns/opening/bytes_stream.h"

#include "diagnostics/raise.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace veltrane::columns {

std::string ReadAll(std::istream& in) {
    constexpr std::size_t kBlock = std::size_t{1} << 16;
    try {
        std::vector<char> block(kBlock);
        std::string bytes;
        std::streambuf* const source = in.rdbuf();
        for (std::streamsize count = 1; source != nullptr && count > 0;) {
            count = source->sgetn(block.data(), static_cast<std::streamsize>(block.size()));
            bytes.append(block.data(), static_cast<std::size_t>(std::max<std::streamsize>(count, 0)));
        }
        return bytes;
    } catch (const std::ios_base::failure&) { // a stream that is set to throw
        diagnostics::Raise<diagnostics::Message::CANNOT_OPEN_DOCUMENT>();
    }
}

} // namespace veltrane::columns
