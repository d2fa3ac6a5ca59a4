#ifndef VELTRANE_HOST_TEXT_BUFFER_H
#define VELTRANE_HOST_TEXT_BUFFER_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace veltrane::host {

/// Bytes that are put one behind the other. Room is asked for ahead, so that putting them takes no look at it.
class TextBuffer {
public:
    std::size_t Size() const { return fSize; }
    std::string_view Text() const { return {fBytes.get(), fSize}; }
    void Clear() { fSize = 0; }

    /// Makes sure that there is room for so many bytes.
    void Need(std::size_t bytes) {
        if (fRoom - fSize < bytes) {
            Grow(bytes);
        }
    }

    /// To be preceded by Need(), like the others below.
    void Put(char byte) { fBytes[fSize++] = byte; }

    void Put(std::string_view text) {
        if (!text.empty()) {
            std::memcpy(fBytes.get() + fSize, text.data(), text.size());
            fSize += text.size();
        }
    }

    /// Where the next bytes go, for those who put them there themselves.
    char* End() { return fBytes.get() + fSize; }
    void Add(std::size_t bytes) { fSize += bytes; }

private:
    void Grow(std::size_t bytes) {
        const std::size_t room = std::max(fSize + bytes, fRoom + fRoom / 2);
        std::unique_ptr<char[]> grown(new char[room]);
        if (fSize > 0) {
            std::memcpy(grown.get(), fBytes.get(), fSize);
        }
        fBytes = std::move(grown);
        fRoom = room;
    }

    std::unique_ptr<char[]> fBytes;
    std::size_t fSize = 0;
    std::size_t fRoom = 0;
};

} // namespace veltrane::host

#endif
