#ifndef VELTRANE_COLUMNS_ARROW_EXPORTED_H
#define VELTRANE_COLUMNS_ARROW_EXPORTED_H

#include <veltrane/arrow.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltrane::columns {

/// Owns a struct of the interface: releases it, unless it was moved to somebody else or released before.
template <typename Struct>
class Held {
public:
    Held() = default;
    Held(Held&& other) noexcept : fStruct(std::exchange(other.fStruct, Struct())) {}
    Held& operator=(Held&& other) noexcept {
        std::swap(fStruct, other.fStruct);
        return *this;
    }
    ~Held() {
        if (fStruct.release != nullptr) {
            fStruct.release(&fStruct);
        }
    }

    Struct& operator*() { return fStruct; }
    Struct* operator->() { return &fStruct; }

    /// Moves it to somebody who gets it without a destructor.
    void MoveTo(Struct* target) { *target = std::exchange(fStruct, Struct()); }

    /// Takes what somebody else hands over, who finds it marked as released. This one is empty before.
    /// @param source null for nothing
    void TakeFrom(Struct* source) {
        if (source != nullptr && source->release != nullptr) {
            fStruct = *source;
            source->release = nullptr;
        }
    }

private:
    Struct fStruct{};
};

/// A block of memory that an array hands out. It begins where any number may, and is not set to anything.
class Memory {
public:
    Memory() = default;
    /// @throws std::bad_alloc
    explicit Memory(std::size_t size);

    /// Null without a size.
    template <typename Element>
    Element* As() const {
        return static_cast<Element*>(fStart.get());
    }
    std::size_t Size() const { return fSize; }

    /// Makes room for more and keeps what is there.
    /// @param used bytes of it
    void Grow(std::size_t used, std::size_t size);

private:
    struct Free {
        void operator()(void* memory) const;
    };

    std::unique_ptr<void, Free> fStart;
    std::size_t fSize = 0;
};

/// What an array is made of, and hands out. A dictionary is shared by the arrays that have it.
struct ArrayParts {
    std::int64_t length = 0;
    std::int64_t nulls = 0;
    std::vector<std::shared_ptr<const Memory>> buffers; ///< null is handed out as null
    std::vector<Held<ArrowArray>> children;
    std::shared_ptr<const ArrayParts> dictionary; ///< without children; null for none
};

/// Makes an array that owns its parts. Children may be moved out of it.
/// @throws std::bad_alloc
Held<ArrowArray> MakeArray(ArrayParts parts);

/// What a schema is made of.
struct SchemaParts {
    std::string format;
    std::string name;
    std::vector<Held<ArrowSchema>> children;
    std::string dictionary; ///< the format of its dictionary; empty for none
};

/// The same for a schema. All of its columns may hold nulls.
Held<ArrowSchema> MakeSchema(SchemaParts parts);

} // namespace veltrane::columns

#endif
