#include <MCVeltrane_900/SmartTranscoder.h>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <cstring>
#include <memory>

namespace MCVeltrane_900 {

namespace {

using xercesc::XMLTranscoder;

constexpr XMLSize_t kBlock = 4096;
constexpr XMLSize_t kChunk = 1000;
constexpr XMLCh kAsciiEnd = 0x80;

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

/// Puts every ASCII character through the transcoder. Encodings that keep state or lay out units otherwise fail here.
bool KeepsAscii(XMLTranscoder& transcoder) {
    XMLCh units[kAsciiEnd];
    XMLByte bytes[4 * kAsciiEnd];
    for (XMLCh unit = 1; unit < kAsciiEnd; ++unit) {
        units[unit - 1] = unit;
    }
    const XMLSize_t count = kAsciiEnd - 1;
    XMLSize_t eaten = 0;
    try {
        const XMLSize_t made =
            transcoder.transcodeTo(units, count, bytes, sizeof(bytes), eaten, XMLTranscoder::UnRep_Throw);
        return made == count && eaten == count && std::equal(units, units + count, bytes);
    } catch (const xercesc::XMLException&) {
        return false;
    }
}

} // namespace

SmartTranscoder::SmartTranscoder(const std::string& encoding)
    : fTranscoder(MakeTranscoder(encoding)), fKeepsAscii(fTranscoder != nullptr && KeepsAscii(*fTranscoder)) {}

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
    target[units] = 0;
    return target.release();
}

std::string SmartTranscoder::transcodeTo(const XMLCh* text) const {
    std::string result;
    if (text == nullptr || fTranscoder == nullptr) {
        return result;
    }
    const XMLSize_t length = xercesc::XMLString::stringLen(text);
    if (fKeepsAscii && std::all_of(text, text + length, [](XMLCh unit) { return unit < kAsciiEnd; })) {
        result.assign(text, text + length);
        return result;
    }
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
    return result;
}

} // namespace MCVeltrane_900
