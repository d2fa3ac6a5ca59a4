#ifndef VELTRANE_PLUGINS_KIT_BUFFERS_H
#define VELTRANE_PLUGINS_KIT_BUFFERS_H

#include <cstddef>
#include <memory>
#include <vector>

namespace veltrane_kit {

/// How far apart memory of two threads begins, so that what one of them writes all the time takes nothing from the
/// other one's cache: processors fetch two lines of 64 bytes at once.
inline constexpr std::size_t kBytesApart = 128;

/// Buffers of one size that are taken and given back like plates of a stack; they are made once.
template <typename T>
class BufferStack {
public:
    explicit BufferStack(std::size_t size) : fSize(size) {}

    /// A buffer whose content is whatever was there before.
    T* Take() {
        if (fTaken == fBuffers.size()) {
            fBuffers.push_back(std::make_unique<T[]>(fSize));
        }
        return fBuffers[fTaken++].get();
    }

    std::size_t Taken() const { return fTaken; }

    /// Gives back all but the first ones.
    void Keep(std::size_t taken) { fTaken = taken; }

    /// The one that was taken last.
    T* Last() { return fBuffers[fTaken - 1].get(); }

private:
    std::size_t fSize;
    std::size_t fTaken = 0;
    std::vector<std::unique_ptr<T[]>> fBuffers; // NOLINT(modernize-avoid-c-arrays): of a size known at run time
};

} // namespace veltrane_kit

#endif
