#ifndef VELTRANE_TESTS_TEXT_GUARDED_UNITS_H
#define VELTRANE_TESTS_TEXT_GUARDED_UNITS_H

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace veltrane::tests {

/// Memory that ends at a page no one may touch: reading or writing behind it ends the test program.
template <class Unit>
class GuardedUnits {
public:
    explicit GuardedUnits(std::size_t most = 1024) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        fBytes = (most * sizeof(Unit) + page - 1) / page * page;
        fStart = mmap(nullptr, fBytes + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (fStart == MAP_FAILED) {
            throw std::runtime_error("no memory for a guarded buffer");
        }
        fEnd = reinterpret_cast<Unit*>(static_cast<std::byte*>(fStart) + fBytes);
        mprotect(fEnd, page, PROT_NONE);
        fBytes += page;
    }
    ~GuardedUnits() { munmap(fStart, fBytes); }
    GuardedUnits(const GuardedUnits&) = delete;
    GuardedUnits& operator=(const GuardedUnits&) = delete;

    /// The last units before the guard, each set to `filler`.
    Unit* Room(std::size_t units, Unit filler) {
        std::fill(fEnd - units, fEnd, filler);
        return fEnd - units;
    }

    /// A text that ends at the guard, with its NUL when it has one.
    const Unit* Put(std::basic_string_view<Unit> text, bool terminated) {
        Unit* const place = fEnd - text.size() - (terminated ? 1 : 0);
        std::copy(text.begin(), text.end(), place);
        if (terminated) {
            fEnd[-1] = 0;
        }
        return place;
    }

private:
    void* fStart;
    std::size_t fBytes;
    Unit* fEnd;
};

} // namespace veltrane::tests

#endif
