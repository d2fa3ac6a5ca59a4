#ifndef VELTRANE_FACTORY_METERED_ARRAY_H
#define VELTRANE_FACTORY_METERED_ARRAY_H

#include "factory/documents/document_limits.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

namespace veltrane::factory {

/// An array that grows with a document, within the bounds of its memory.
///
/// It grows by realloc, which moves large arrays without copying them and without having them there twice: the records
/// of a document are most of what is held while it is read.
template <typename Item>
class MeteredArray {
    static_assert(std::is_trivially_copyable_v<Item>);

public:
    /// @param memory borrowed
    explicit MeteredArray(MeteredMemory& memory) : fMemory(&memory) {}
    ~MeteredArray() {
        std::free(fItems);
        fMemory->CountReleased(fCapacity * sizeof(Item));
    }
    MeteredArray(const MeteredArray&) = delete;
    MeteredArray& operator=(const MeteredArray&) = delete;

    const Item* data() const { return fItems; }
    std::size_t size() const { return fSize; }
    Item& operator[](std::size_t index) { return fItems[index]; }
    const Item& operator[](std::size_t index) const { return fItems[index]; }

    /// @throws DocumentRefused beyond the bounds of the document
    void push_back(const Item& item) {
        if (fSize == fCapacity) {
            Grow(fSize + 1);
        }
        fItems[fSize++] = item;
    }

    /// @throws DocumentRefused beyond the bounds of the document
    void Append(const Item* items, std::size_t count) {
        if (count > fCapacity - fSize) {
            Grow(fSize + count);
        }
        if (count > 0) {
            std::memcpy(fItems + fSize, items, count * sizeof(Item));
        }
        fSize += count;
    }

    /// Forgets all items from a place on.
    void Truncate(std::size_t size) { fSize = std::min(fSize, size); }

private:
    static constexpr std::size_t kFewest = 64;

    void Grow(std::size_t needed) {
        const std::size_t capacity = std::max({needed, fCapacity + fCapacity / 2, kFewest});
        const std::size_t more = (capacity - fCapacity) * sizeof(Item);
        fMemory->CountHeld(more);
        void* items = std::realloc(static_cast<void*>(fItems), capacity * sizeof(Item));
        if (items == nullptr) {
            fMemory->CountReleased(more);
            throw std::bad_alloc();
        }
        fItems = static_cast<Item*>(items);
        fCapacity = capacity;
    }

    MeteredMemory* fMemory;
    Item* fItems = nullptr;
    std::size_t fSize = 0;
    std::size_t fCapacity = 0;
};

} // namespace veltrane::factory

#endif
