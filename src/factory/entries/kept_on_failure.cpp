#include "factory/entries/kept_on_failure.h"

#include <atomic>
#include <new>

namespace veltrane::factory {

namespace {

struct KeptObject {
    const void* object;
    void (*destroy)(const void*);
    KeptObject* next;
};

/// Kept objects stay reachable, so that leak detectors can tell them from lost ones.
std::atomic<KeptObject*> gKept{nullptr};

} // namespace

void Keep(const void* object, void (*destroy)(const void*)) {
    auto* kept = new (std::nothrow) KeptObject{object, destroy, gKept.load(std::memory_order_relaxed)};
    while (kept != nullptr && !gKept.compare_exchange_weak(kept->next, kept, std::memory_order_release)) {
    }
}

} // namespace veltrane::factory

#ifdef VELTRANE_FUZZING
namespace MCVeltrane_900 {

void FreeKept() {
    using veltrane::factory::gKept;
    for (auto* kept = gKept.exchange(nullptr); kept != nullptr;) {
        auto* const next = kept->next;
        kept->destroy(kept->object);
        delete kept;
        kept = next;
    }
}

} // namespace MCVeltrane_900
#endif
