#include "columns/arrow/exported.h"

#include <cstring>
#include <new>

namespace veltrane::columns {

namespace {

/// Where vector instructions like numbers to begin.
constexpr std::align_val_t kAlignment{64};

/// What a struct of the interface points to, and is freed with it.
template <typename Struct, typename Parts>
struct Owned {
    explicit Owned(Parts given) : parts(std::move(given)) {}

    Parts parts;
    std::vector<const void*> buffers;
    std::vector<Struct*> children;
    Held<Struct> dictionary;
};

template <typename Struct, typename Parts>
void FreeParts(Struct* each) {
    delete static_cast<Owned<Struct, Parts>*>(each->private_data);
    each->release = nullptr;
}

/// A struct that shows its children and its dictionary, and owns them.
template <typename Struct, typename Parts>
Held<Struct> Show(std::unique_ptr<Owned<Struct, Parts>> owned) {
    for (Held<Struct>& child : owned->parts.children) {
        owned->children.push_back(&*child);
    }
    Held<Struct> shown;
    shown->n_children = static_cast<std::int64_t>(owned->children.size());
    shown->children = owned->children.empty() ? nullptr : owned->children.data();
    shown->dictionary = owned->dictionary->release == nullptr ? nullptr : &*owned->dictionary;
    shown->release = FreeParts<Struct, Parts>;
    shown->private_data = owned.release();
    return shown;
}

} // namespace

Memory::Memory(std::size_t size) : fStart(::operator new(size, kAlignment)), fSize(size) {}

void Memory::Free::operator()(void* memory) const {
    ::operator delete(memory, kAlignment);
}

void Memory::Grow(std::size_t used, std::size_t size) {
    Memory larger(size);
    if (used > 0) {
        std::memcpy(larger.As<void>(), As<void>(), used);
    }
    *this = std::move(larger);
}

Held<ArrowArray> MakeArray(ArrayParts parts) {
    using OwnedArray = Owned<ArrowArray, ArrayParts>;
    auto owned = std::make_unique<OwnedArray>(std::move(parts));
    for (const auto& buffer : owned->parts.buffers) {
        owned->buffers.push_back(buffer == nullptr ? nullptr : buffer->As<void>());
    }
    if (const auto& dictionary = owned->parts.dictionary; dictionary != nullptr) {
        owned->dictionary = MakeArray({dictionary->length, dictionary->nulls, dictionary->buffers, {}, nullptr});
    }
    const OwnedArray& shown = *owned;
    Held<ArrowArray> array = Show(std::move(owned));
    array->length = shown.parts.length;
    array->null_count = shown.parts.nulls;
    array->n_buffers = static_cast<std::int64_t>(shown.buffers.size());
    array->buffers = const_cast<const void**>(shown.buffers.data());
    return array;
}

Held<ArrowSchema> MakeSchema(SchemaParts parts) {
    using OwnedSchema = Owned<ArrowSchema, SchemaParts>;
    auto owned = std::make_unique<OwnedSchema>(std::move(parts));
    if (!owned->parts.dictionary.empty()) {
        owned->dictionary = MakeSchema({owned->parts.dictionary, std::string(), {}, std::string()});
    }
    const OwnedSchema& shown = *owned;
    Held<ArrowSchema> schema = Show(std::move(owned));
    schema->format = shown.parts.format.c_str();
    schema->name = shown.parts.name.c_str();
    schema->flags = ARROW_FLAG_NULLABLE;
    return schema;
}

} // namespace veltrane::columns
