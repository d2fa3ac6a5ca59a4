#ifndef MCVELTRANE_900_INDEXEDIN_H
#define MCVELTRANE_900_INDEXEDIN_H

namespace MCVeltrane_900 {

/// The field of an element that knows the set whose index holds what it holds, so that the element can tell the set of
/// a change. A copy of an element is in no set, and assignment leaves the target where it is.
template <typename Set>
struct IndexedIn {
    IndexedIn() = default;
    IndexedIn(const IndexedIn&) {}
    IndexedIn& operator=(const IndexedIn&) { return *this; }

    Set* fSet = nullptr;
};

} // namespace MCVeltrane_900

#endif
