#include <MCXML_900/KORDMBString.h>

#include <atomic>

namespace MCXML_900 {

namespace {

std::atomic<int> gUTF8mode{1};

} // namespace

void SetUTF8mode(int mode) {
    gUTF8mode.store(mode != 0 ? 1 : 0, std::memory_order_relaxed);
}

int qUTF8mode() {
    return gUTF8mode.load(std::memory_order_relaxed);
}

} // namespace MCXML_900
