#include "factory/documents/document_limits.h"

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cstddef>
#include <memory>
#include <new>

namespace veltrane::factory {

namespace {

/// What is allowed beyond the bounds while the parser cleans up.
constexpr std::uint64_t kCleanUpGrace = 4ULL << 20;

class MeteredInputStream : public xercesc::BinInputStream {
public:
    MeteredInputStream(std::string_view head, xercesc::BinInputStream* source, MeteredMemory& memory)
        : fHead(head), fSource(source), fMemory(memory) {}

    XMLFilePos curPos() const override { return fSource->curPos(); }

    XMLSize_t readBytes(XMLByte* const buffer, const XMLSize_t maxToRead) override {
        XMLSize_t count = fHead.copy(reinterpret_cast<char*>(buffer), maxToRead);
        if (count > 0) {
            fHead.remove_prefix(count);
        } else {
            count = fSource->readBytes(buffer, maxToRead);
        }
        fMemory.CountInput(count);
        return count;
    }

    const XMLCh* getContentType() const override { return fSource->getContentType(); }

private:
    std::string_view fHead;
    std::unique_ptr<xercesc::BinInputStream> fSource;
    MeteredMemory& fMemory;
};

} // namespace

/// Stands in front of every block and links it with the others.
struct alignas(std::max_align_t) MeteredMemory::Block {
    Block* previous;
    Block* next;
    XMLSize_t size;
};

MeteredMemory::MeteredMemory() : fSource(xercesc::XMLPlatformUtils::fgMemoryManager) {}

MeteredMemory::~MeteredMemory() {
    while (fBlocks != nullptr) {
        deallocate(fBlocks + 1);
    }
}

xercesc::MemoryManager* MeteredMemory::getExceptionMemoryManager() {
    return fSource->getExceptionMemoryManager();
}

void MeteredMemory::RequireRoom(XMLSize_t size) {
    if (fHeld + size > kHeldMemory + kHeldMemoryPerByte * fInput + fGrace ||
        fTotal + size > kTotalMemory + kTotalMemoryPerByte * fInput + fGrace) {
        fGrace += kCleanUpGrace;
        throw DocumentRefused();
    }
}

void* MeteredMemory::allocate(XMLSize_t size) {
    RequireRoom(size);
    auto* block = new (fSource->allocate(sizeof(Block) + size)) Block{nullptr, fBlocks, size};
    if (fBlocks != nullptr) {
        fBlocks->previous = block;
    }
    fBlocks = block;
    fHeld += size;
    fTotal += size;
    return block + 1;
}

void MeteredMemory::CountHeld(XMLSize_t size) {
    RequireRoom(size);
    fHeld += size;
    fTotal += size;
}

void MeteredMemory::deallocate(void* memory) {
    if (memory == nullptr) {
        return;
    }
    Block* block = static_cast<Block*>(memory) - 1;
    (block->previous != nullptr ? block->previous->next : fBlocks) = block->next;
    if (block->next != nullptr) {
        block->next->previous = block->previous;
    }
    fHeld -= block->size;
    fSource->deallocate(block);
}

void MeteredMemory::CountInput(XMLSize_t bytes) {
    fInput += bytes;
}

std::uint64_t MeteredMemory::InputBytes() const {
    return fInput;
}

MeteredInputSource::MeteredInputSource(std::istream& in, MeteredMemory& memory, std::string_view head)
    : MCXInputSource(in), fMemory(memory), fHead(head) {}

xercesc::BinInputStream* MeteredInputSource::makeStream() const {
    return new MeteredInputStream(fHead, MCXInputSource::makeStream(), fMemory);
}

} // namespace veltrane::factory
