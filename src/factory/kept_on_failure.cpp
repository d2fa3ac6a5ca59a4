#include "factory/kept_on_failure.h"

#include <atomic>
#include <new>

namespace veltrane::factory {

namespace {

struct KeptObject {
    const void* object;
    KeptObject* next;
};

/// Kept objects stay reachable, so that leak detectors can tell them from lost ones.
std::atomic<KeptObject*> gKept{nullptr};

} // namespace

void KeepForever(const void* object) {
    auto* kept = new (std::nothrow) KeptObject{object, gKept.load(std::memory_order_relaxed)};
    while (kept != nullptr && !gKept.compare_exchange_weak(kept->next, kept, std::memory_order_release)) {
    }
}

} // namespace veltrane::factory
