#include "factory/document_limits.h"

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <memory>

namespace veltrane::factory {

namespace {

/// Stands in front of every block and keeps its size. It keeps the alignment too.
union BlockHeader {
    XMLSize_t size;
    std::max_align_t alignment;
};

/// What is allowed beyond the bounds while the parser cleans up.
constexpr std::uint64_t kCleanUpGrace = 4ULL << 20;

class MeteredInputStream : public xercesc::BinInputStream {
public:
    MeteredInputStream(xercesc::BinInputStream* source, MeteredMemory& memory) : fSource(source), fMemory(memory) {}

    XMLFilePos curPos() const override { return fSource->curPos(); }

    XMLSize_t readBytes(XMLByte* const buffer, const XMLSize_t maxToRead) override {
        const XMLSize_t count = fSource->readBytes(buffer, maxToRead);
        fMemory.CountInput(count);
        return count;
    }

    const XMLCh* getContentType() const override { return fSource->getContentType(); }

private:
    std::unique_ptr<xercesc::BinInputStream> fSource;
    MeteredMemory& fMemory;
};

} // namespace

MeteredMemory::MeteredMemory() : fSource(xercesc::XMLPlatformUtils::fgMemoryManager) {}

MeteredMemory::~MeteredMemory() = default;

xercesc::MemoryManager* MeteredMemory::getExceptionMemoryManager() {
    return fSource->getExceptionMemoryManager();
}

void* MeteredMemory::allocate(XMLSize_t size) {
    const std::uint64_t held = fHeld + size;
    const std::uint64_t total = fTotal + size;
    if (held > kHeldMemory + kHeldMemoryPerByte * fInput + fGrace ||
        total > kTotalMemory + kTotalMemoryPerByte * fInput + fGrace) {
        fGrace += kCleanUpGrace;
        throw DocumentRefused();
    }
    auto* header = static_cast<BlockHeader*>(fSource->allocate(sizeof(BlockHeader) + size));
    header->size = size;
    fHeld = held;
    fTotal = total;
    return header + 1;
}

void MeteredMemory::deallocate(void* block) {
    if (block != nullptr) {
        BlockHeader* header = static_cast<BlockHeader*>(block) - 1;
        fHeld -= header->size;
        fSource->deallocate(header);
    }
}

void MeteredMemory::CountInput(XMLSize_t bytes) {
    fInput += bytes;
}

std::uint64_t MeteredMemory::InputBytes() const {
    return fInput;
}

MeteredInputSource::MeteredInputSource(std::istream& in, MeteredMemory& memory) : MCXInputSource(in), fMemory(memory) {}

xercesc::BinInputStream* MeteredInputSource::makeStream() const {
    return new MeteredInputStream(MCXInputSource::makeStream(), fMemory);
}

} // namespace veltrane::factory
