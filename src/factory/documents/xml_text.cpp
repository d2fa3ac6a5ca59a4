#include "factory/documents/xml_text.h"

#include <unicode/ustring.h>

namespace veltrane::factory {

namespace {

constexpr UChar32 kReplacement = 0xFFFD;

} // namespace

std::string ToUtf8(const XMLCh* text) {
    if (text == nullptr) {
        return {};
    }
    const std::u16string_view view(text);
    // One unit of UTF-16 gives at most three bytes.
    std::string bytes(view.size() * 3, '\0');
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(bytes.data(), static_cast<int32_t>(bytes.size()), &length, view.data(),
                       static_cast<int32_t>(view.size()), kReplacement, nullptr, &status);
    bytes.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
    return bytes;
}

std::u16string ToUtf16(const std::string& text) {
    std::u16string units(text.size(), u'\0');
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(units.data(), static_cast<int32_t>(units.size()), &length, text.data(),
                         static_cast<int32_t>(text.size()), kReplacement, nullptr, &status);
    units.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
    return units;
}

} // namespace veltrane::factory
