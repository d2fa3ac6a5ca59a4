#ifndef VELTRANE_DATA_KEPT_INDEX_H
#define VELTRANE_DATA_KEPT_INDEX_H

#include "data/sets/marks.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <limits>
#include <mutex>

namespace veltrane::data {

/// An index over a list whose objects can be changed at any time by whoever kept a pointer to them. It gives its
/// content only while that is known to be true; otherwise the list has to be walked.
///
/// Making the content marks the objects, and every change of a marked object of the process is counted. As long as the
/// count stands, nothing has changed; otherwise the marks tell whether it was one of these. Changed objects make the
/// content anew, but not before some walks: they cost about as much, and a host that changes an object between any two
/// searches would otherwise pay for both. Several threads may ask at once, as they may read the objects.
///
/// @tparam Content has Content(const List&), which makes it and marks the objects, and bool IsTrue(const List&), which
///                 looks at the marks
template <typename Content>
class KeptIndex {
public:
    template <typename List>
    explicit KeptIndex(const List& list) : fChanges(Marks::Changes()), fContent(list) {}

    /// Null when the list has to be walked.
    template <typename List>
    const Content* Get(const List& list) const {
        return fChanges.load(std::memory_order_acquire) == Marks::Changes() || Renew(list) ? &fContent : nullptr;
    }

    /// The content to change it together with the list; null when it isn't true any more. What is put into a content
    /// that isn't true does no harm, but nothing may be taken out of it.
    template <typename List>
    Content* GetToChange(const List& list) {
        return Get(list) ? &fContent : nullptr;
    }
    Content& Any() { return fContent; }

    /// To be called when the list has lost objects that are still in the content.
    void Forget() {
        fWalks = std::max(fWalks, 1);
        fChanges.store(kNever, std::memory_order_relaxed);
    }

private:
    static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();
    /// Making an index costs about as much as so many walks.
    static constexpr int kWalksBeforeRenewal = 32;

    template <typename List>
    bool Renew(const List& list) const {
        const std::lock_guard lock(fMutex);
        const std::uint64_t changes = Marks::Changes();
        if (fChanges.load(std::memory_order_relaxed) == changes) {
            return true;
        }
        if (fWalks != 0 || !fContent.IsTrue(list)) {
            if (++fWalks <= kWalksBeforeRenewal) {
                return false;
            }
            fContent = Content(list);
            fWalks = 0;
        }
        fChanges.store(changes, std::memory_order_release);
        return true;
    }

    mutable std::atomic<std::uint64_t> fChanges;
    mutable Content fContent;
    mutable std::mutex fMutex;
    mutable int fWalks = 0; ///< since the content is known not to be true
};

} // namespace veltrane::data

#endif
