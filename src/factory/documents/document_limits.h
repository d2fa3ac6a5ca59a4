#ifndef VELTRANE_FACTORY_DOCUMENT_LIMITS_H
#define VELTRANE_FACTORY_DOCUMENT_LIMITS_H

#include <MCXML_900/MCXInputSource.h>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/XMemory.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

/// How far a document may go. Documents come from outside, so everything in them that can be nested or multiplied has
/// a bound that real model documents stay far below.
namespace veltrane::factory {

/// Levels of elements. Every recursion over a document in the library and in plug-ins rests on it. There is room for
/// 1,000 of one kind within each other, an Apply for one, below those that stand around them.
inline constexpr std::size_t kMaxElementDepth = 1100;

/// Levels of entities within entities, in content.
inline constexpr std::size_t kMaxEntityDepth = 32;

/// Different names of elements and attributes. The DOM looks each one up among all others.
inline constexpr std::size_t kMaxDistinctNames = 20000;

/// Characters of one declared entity.
inline constexpr std::size_t kMaxEntityLength = 4096;

/// Memory that the parser may hold at a time: a fixed part, and a part for each byte of the document. A document of
/// nothing but empty elements needs about 58 bytes for each of its own.
inline constexpr std::uint64_t kHeldMemory = 48ULL << 20;
inline constexpr std::uint64_t kHeldMemoryPerByte = 80;

/// Memory that the parser may ask for in all. Each expansion of an entity, also of those within a document type
/// declaration, which the parser doesn't count, asks for a buffer of 160 KB, so this bounds the work.
inline constexpr std::uint64_t kTotalMemory = 1ULL << 30;
inline constexpr std::uint64_t kTotalMemoryPerByte = 256;

/// Elements and characters of attributes, where these are only counted: a fixed part, and a part for each byte of the
/// document. Declared defaults and expanded entities can give more than stands in the document.
inline constexpr std::uint64_t kScannedItems = 1ULL << 18;
inline constexpr std::uint64_t kScannedItemsPerByte = 8;

/// Thrown through the XML parser when a document passes a bound or reaches for something outside itself. It never
/// leaves the factory.
struct DocumentRefused {};

/// The memory of one parser, taken from the XML platform and measured. What the parser has not given back at the end is
/// freed with it: some of its constructors lose memory when one of their own allocations is refused.
class MeteredMemory : public xercesc::MemoryManager {
public:
    MeteredMemory();
    ~MeteredMemory() override;

    /// Exceptions may outlive the parser, so they have the platform's own memory.
    xercesc::MemoryManager* getExceptionMemoryManager() override;

    /// @throws DocumentRefused beyond the bounds. Each time some more is allowed, so that the parser can clean up.
    void* allocate(XMLSize_t size) override;
    void deallocate(void* memory) override;

    /// Counts memory that others hold for the document as the parser's own.
    /// @throws DocumentRefused beyond the bounds
    void CountHeld(XMLSize_t size);
    void CountReleased(XMLSize_t size) { fHeld -= size; }

    /// Tells how many bytes of the document were read.
    void CountInput(XMLSize_t bytes);
    std::uint64_t InputBytes() const;

private:
    struct Block;

    void RequireRoom(XMLSize_t size);

    xercesc::MemoryManager* fSource;
    Block* fBlocks = nullptr;
    std::uint64_t fInput = 0;
    std::uint64_t fHeld = 0;
    std::uint64_t fTotal = 0;
    std::uint64_t fGrace = 0;
};

/// A document on a standard stream whose bytes count for the bounds.
class MeteredInputSource : public MCXML_900::MCXInputSource {
public:
    /// @param head bytes that were read from the stream already and stand in front of what is left
    /// All are borrowed.
    MeteredInputSource(std::istream& in, MeteredMemory& memory, std::string_view head = {});
    xercesc::BinInputStream* makeStream() const override;

private:
    MeteredMemory& fMemory;
    std::string_view fHead;
};

} // namespace veltrane::factory

#endif
