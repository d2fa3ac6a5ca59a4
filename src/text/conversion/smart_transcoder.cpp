#include "text/characters/byte_span.h"

#include <MCVeltrane_900/SmartTranscoder.h>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <numeric>

namespace MCVeltrane_900 {

namespace {

using veltrane::text::kAsciiEnd;
using xercesc::XMLTranscoder;

constexpr XMLSize_t kBlock = 4096;
constexpr XMLSize_t kChunk = 1000;

constexpr bool IsHighSurrogate(XMLCh unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

XMLTranscoder* MakeTranscoder(const std::string& encoding) {
    if (xercesc::XMLPlatformUtils::fgTransService == nullptr) {
        return nullptr;
    }
    xercesc::XMLTransService::Codes result = xercesc::XMLTransService::Ok;
    try {
        return xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(
            encoding.c_str(), result, kBlock, xercesc::XMLPlatformUtils::fgMemoryManager);
    } catch (const xercesc::XMLException&) {
        return nullptr;
    }
}

/// Puts every ASCII character through a transcoder of its own. Encodings that keep state, or that lay units out in
/// another way, fail here.
bool KeepsAscii(const std::string& encoding) {
    const std::unique_ptr<XMLTranscoder> transcoder(MakeTranscoder(encoding));
    if (transcoder == nullptr) {
        return false;
    }
    constexpr XMLSize_t kCount = kAsciiEnd - 1;
    std::array<XMLCh, kCount> units;
    std::iota(units.begin(), units.end(), XMLCh(1));
    std::array<XMLByte, 4 * kCount> bytes;
    XMLSize_t eaten = 0;
    try {
        const XMLSize_t made = transcoder->transcodeTo(units.data(), kCount, bytes.data(), bytes.size(), eaten,
                                                       XMLTranscoder::UnRep_Throw);
        return made == kCount && eaten == kCount && std::equal(units.begin(), units.end(), bytes.begin());
    } catch (const xercesc::XMLException&) {
        return false;
    }
}

// Text that breaks off within a character leaves some of the parser's transcoders waiting for the rest of it, which
// would spoil the next text. One more character settles them; what it gives is dropped.

void SettleTo(XMLTranscoder& transcoder) {
    constexpr XMLCh kBlank = ' ';
    std::array<XMLByte, 16> dropped;
    XMLSize_t eaten = 0;
    try {
        transcoder.transcodeTo(&kBlank, 1, dropped.data(), dropped.size(), eaten, XMLTranscoder::UnRep_Throw);
    } catch (const xercesc::XMLException&) {
        // The failure is about the text before.
    }
}

void SettleFrom(XMLTranscoder& transcoder) {
    constexpr XMLByte kNul = 0;
    std::array<XMLCh, 16> dropped;
    std::array<unsigned char, 16> sizes;
    XMLSize_t eaten = 0;
    try {
        transcoder.transcodeFrom(&kNul, 1, dropped.data(), dropped.size(), eaten, sizes.data());
    } catch (const xercesc::XMLException&) {
        // The failure is about the text before.
    }
}

} // namespace

SmartTranscoder::SmartTranscoder(const std::string& encoding)
    : fTranscoder(MakeTranscoder(encoding)), fKeepsAscii(KeepsAscii(encoding)) {}

SmartTranscoder::SmartTranscoder(const SmartTranscoder& other) = default;

SmartTranscoder::~SmartTranscoder() {
    delete fTranscoder;
}

XMLCh* SmartTranscoder::ChangeChar2XML(const char* text) const {
    if (text == nullptr || fTranscoder == nullptr) {
        return nullptr;
    }
    const XMLSize_t length = std::strlen(text);
    auto target = std::make_unique<XMLCh[]>(length + 1);
    const auto* bytes = reinterpret_cast<const XMLByte*>(text);
    if (fKeepsAscii && std::all_of(bytes, bytes + length, [](XMLByte byte) { return byte < kAsciiEnd; })) {
        std::copy(bytes, bytes + length, target.get());
        return target.release();
    }
    const auto sizes = std::make_unique<unsigned char[]>(length + 1);
    XMLSize_t eaten = 0;
    XMLSize_t units = 0;
    try {
        units = fTranscoder->transcodeFrom(bytes, length, target.get(), length, eaten, sizes.get());
    } catch (const xercesc::XMLException&) {
        units = 0;
    }
    if (fKeepsAscii) {
        SettleFrom(*fTranscoder);
    }
    target[units] = 0;
    return target.release();
}

std::string SmartTranscoder::transcodeTo(const XMLCh* text) const {
    if (text == nullptr || *text == 0 || fTranscoder == nullptr) {
        return {};
    }
    // Most texts are short and ASCII: one pass finds the length and tells whether they are.
    XMLSize_t length = 0;
    XMLCh seen = 0;
    for (; text[length] != 0; ++length) {
        seen |= text[length];
    }
    if (fKeepsAscii && seen < kAsciiEnd) {
        return std::string(text, text + length);
    }
    std::string result;
    XMLByte chunk[kChunk];
    XMLSize_t at = 0;
    try {
        for (bool more = true; more;) {
            XMLSize_t eaten = 0;
            const XMLSize_t made =
                fTranscoder->transcodeTo(text + at, length - at, chunk, kChunk, eaten, XMLTranscoder::UnRep_Throw);
            result.append(reinterpret_cast<const char*>(chunk), made);
            at += eaten;
            // A full chunk may have left bytes of its last character in the transcoder.
            more = made == kChunk || (at < length && eaten > 0);
        }
    } catch (const xercesc::XMLException&) {
        // The chunks before are the result.
    }
    if (IsHighSurrogate(text[length - 1])) {
        SettleTo(*fTranscoder);
    }
    return result;
}

} // namespace MCVeltrane_900
