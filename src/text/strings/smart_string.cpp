#include <MCVeltrane_900/SmartString.h>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUTF8Transcoder.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <memory>
#include <string_view>

namespace MCVeltrane_900 {

namespace {

using xercesc::XMLString;

constexpr XMLSize_t kBlock = 1000;

/// The array is always made by `new[]` here, also from what the parser allocates, so that it has one matching release
/// whatever the parser's memory manager is.
std::unique_ptr<XMLCh[]> Copy(std::basic_string_view<XMLCh> text) {
    auto copy = std::make_unique<XMLCh[]>(text.size() + 1);
    std::copy(text.begin(), text.end(), copy.get());
    return copy;
}

/// ASCII without a NUL: it needs no converter in any local code page, and none in UTF-8.
bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](unsigned char byte) { return byte > 0 && byte < 0x80; });
}

std::unique_ptr<XMLCh[]> Replicate(const XMLCh* text) {
    return text != nullptr ? Copy(text) : nullptr;
}

std::unique_ptr<XMLCh[]> TranscodeLocal(const char* text) {
    if (xercesc::XMLPlatformUtils::fgMemoryManager == nullptr) {
        return nullptr;
    }
    try {
        XMLCh* made = XMLString::transcode(text);
        auto copy = Replicate(made);
        XMLString::release(&made);
        return copy;
    } catch (const xercesc::XMLException&) {
        return nullptr;
    }
}

std::unique_ptr<XMLCh[]> Transcode(const char* text) {
    if (text == nullptr) {
        return nullptr;
    }
    const std::string_view bytes = text;
    if (!IsAscii(bytes)) {
        return TranscodeLocal(text);
    }
    auto copy = std::make_unique<XMLCh[]>(bytes.size() + 1);
    std::copy(bytes.begin(), bytes.end(), copy.get());
    return copy;
}

} // namespace

SmartString::SmartString() : fText(nullptr) {}

SmartString::SmartString(const char* text) : fText(Transcode(text).release()) {}

SmartString::SmartString(const XMLCh* text) : fText(Replicate(text).release()) {}

SmartString::SmartString(const SmartString& other) : fText(Replicate(other.fText).release()) {}

SmartString::~SmartString() {
    delete[] fText;
}

// The new array is made before the old one goes, so that a string may be assigned from a piece of itself.

void SmartString::assign(const char* text) {
    auto made = Transcode(text);
    clear();
    fText = made.release();
}

void SmartString::assign(const XMLCh* text) {
    auto made = Replicate(text);
    clear();
    fText = made.release();
}

void SmartString::assign(const SmartString& other) {
    assign(other.fText);
}

void SmartString::assign(XMLCh character) {
    const XMLCh text[] = {character, 0};
    assign(text);
}

SmartString& SmartString::operator=(const char* text) {
    assign(text);
    return *this;
}

SmartString& SmartString::operator=(const XMLCh* text) {
    assign(text);
    return *this;
}

SmartString& SmartString::operator=(const SmartString& other) {
    assign(other);
    return *this;
}

void SmartString::append(const XMLCh* text) {
    if (text == nullptr || *text == 0) {
        return;
    }
    if (fText == nullptr) {
        assign(text);
        return;
    }
    auto joined = std::make_unique<XMLCh[]>(length() + XMLString::stringLen(text) + 1);
    XMLString::copyString(joined.get(), fText);
    XMLString::catString(joined.get(), text);
    clear();
    fText = joined.release();
}

void SmartString::append(const char* text) {
    append(Transcode(text).get());
}

void SmartString::append(const SmartString& other) {
    append(other.fText);
}

void SmartString::append(XMLCh character) {
    const XMLCh text[] = {character, 0};
    append(text);
}

void SmartString::clear() {
    delete[] fText;
    fText = nullptr;
}

std::size_t SmartString::length() const {
    return XMLString::stringLen(fText);
}

bool SmartString::empty() const {
    return fText == nullptr || *fText == 0;
}

const XMLCh* SmartString::xc_str() const {
    return fText;
}

bool SmartString::equals(const XMLCh* text) const {
    return XMLString::equals(fText, text);
}

bool SmartString::equals(const SmartString& other) const {
    return fText != nullptr && other.fText != nullptr && XMLString::equals(fText, other.fText);
}

bool SmartString::operator==(const SmartString& other) const {
    return equals(other);
}

unsigned int SmartString::convertToInteger() const {
    unsigned int number = 0;
    for (const XMLCh* unit = fText; unit != nullptr && *unit != 0; ++unit) {
        if (!XMLString::isDigit(*unit)) {
            return 0;
        }
        number = number * 10U + static_cast<unsigned int>(*unit - u'0');
    }
    return number;
}

void SmartString::assignUTF8(const std::string& text) {
    clear();
    if (IsAscii(text)) {
        append(text.c_str());
        return;
    }
    if (xercesc::XMLPlatformUtils::fgMemoryManager == nullptr) {
        return;
    }
    xercesc::XMLUTF8Transcoder transcoder(xercesc::XMLUni::fgUTF8EncodingString, kBlock);
    XMLCh chunk[kBlock + 1];
    unsigned char sizes[kBlock];
    const auto* bytes = reinterpret_cast<const XMLByte*>(text.data());
    std::basic_string<XMLCh> result;
    try {
        XMLSize_t eaten = 1;
        for (XMLSize_t at = 0; at < text.size() && eaten > 0; at += eaten) {
            const XMLSize_t units = transcoder.transcodeFrom(bytes + at, text.size() - at, chunk, kBlock, eaten, sizes);
            chunk[units] = 0;
            result.append(chunk);
        }
    } catch (const xercesc::XMLException&) {
        // The chunks before the bad byte stay.
    }
    append(result.c_str());
}

std::string SmartString::toUTF8() const {
    std::string result;
    const XMLSize_t units = length();
    if (units == 0) {
        return result;
    }
    if (std::all_of(fText, fText + units, [](XMLCh unit) { return unit < 0x80; })) {
        result.assign(fText, fText + units);
        return result;
    }
    if (xercesc::XMLPlatformUtils::fgMemoryManager == nullptr) {
        return result;
    }
    xercesc::XMLUTF8Transcoder transcoder(xercesc::XMLUni::fgUTF8EncodingString, kBlock);
    XMLByte chunk[kBlock];
    try {
        XMLSize_t eaten = 1;
        for (XMLSize_t at = 0; at < units && eaten > 0; at += eaten) {
            const XMLSize_t bytes = transcoder.transcodeTo(fText + at, units - at, chunk, kBlock, eaten,
                                                           xercesc::XMLTranscoder::UnRep_Throw);
            result.append(reinterpret_cast<const char*>(chunk), bytes);
        }
    } catch (const xercesc::XMLException&) {
        // The chunks before the bad unit are the result.
    }
    return result;
}

void SmartString::truncateString(unsigned int n) {
    const std::size_t units = length();
    const std::size_t removed = std::min<std::size_t>(n, units);
    std::fill_n(fText + (units - removed), removed, XMLCh(0));
}

bool SmartString::ContainsString(const XMLCh* text) const {
    if (text == nullptr || fText == nullptr) {
        return false;
    }
    return std::basic_string_view<XMLCh>(fText).find(text) != std::basic_string_view<XMLCh>::npos;
}

int SmartString::replaceSubstring(const XMLCh* from, const XMLCh* to) {
    if (!ContainsString(from)) {
        return 0;
    }
    const XMLSize_t step = XMLString::stringLen(to);
    const XMLSize_t units = length();
    std::basic_string<XMLCh> result;
    int count = 0;
    for (XMLSize_t at = 0; at <= units; ++at) {
        if (XMLString::startsWith(fText + at, from)) {
            result.append(to, step);
            ++count;
            at += step;
        } else if (at < units) {
            result.push_back(fText[at]);
        }
    }
    clear();
    append(result.c_str());
    return count;
}

} // namespace MCVeltrane_900
