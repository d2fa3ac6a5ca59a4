#include "kit/functions/texts/transcoder.h"

#include "kit/functions/texts/bounds.h"

#include <unicode/bytestream.h>
#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

namespace veltrane_kit::standard {

namespace {

/// The most bytes that this many units make in any encoding, with the sequences that switch its state.
constexpr int kBytesOfUnit = 8;

} // namespace

void Transcoder::Closer::operator()(UConverter* converter) const {
    ucnv_close(converter);
}

Transcoder::Transcoder(const std::string& encoding) : fIsUtf8(encoding == "UTF-8") {
    if (fIsUtf8) {
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    fConverter.reset(ucnv_open(encoding.c_str(), &status));
    if (fConverter) {
        ucnv_setFromUCallBack(fConverter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    }
    if (U_FAILURE(status)) {
        fConverter.reset();
    }
}

icu::UnicodeString Transcoder::Read(std::string_view text) const {
    if (fIsUtf8) {
        return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    }
    UErrorCode status = U_ZERO_ERROR;
    if (fConverter) {
        ucnv_reset(fConverter.get());
    }
    return fConverter
               ? icu::UnicodeString(text.data(), static_cast<std::int32_t>(text.size()), fConverter.get(), status)
               : icu::UnicodeString();
}

bool Transcoder::Write(const icu::UnicodeString& characters, std::string& text) const {
    text.clear();
    if (fIsUtf8) {
        icu::StringByteSink<std::string> sink(&text);
        characters.toUTF8(sink);
    } else if (fConverter && characters.length() <= static_cast<std::int32_t>(kLongestText)) {
        UErrorCode status = U_ZERO_ERROR;
        ucnv_reset(fConverter.get());
        text.resize(static_cast<std::size_t>(characters.length()) * kBytesOfUnit + kBytesOfUnit);
        const std::int32_t length =
            characters.extract(text.data(), static_cast<std::int32_t>(text.size()), fConverter.get(), status);
        if (U_FAILURE(status)) {
            return false;
        }
        text.resize(static_cast<std::size_t>(length));
    } else {
        return false;
    }
    return text.size() <= kLongestText;
}

} // namespace veltrane_kit::standard
