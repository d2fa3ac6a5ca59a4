#include "translators/frame/local_text.h"

#include <xercesc/util/XMLString.hpp>

#include <iterator>

namespace veltrane::translators {
namespace {

std::string TranscodeLocal(const XMLCh* text) {
    char* bytes = xercesc::XMLString::transcode(text);
    if (!bytes) {
        return {};
    }
    std::string result = bytes;
    xercesc::XMLString::release(&bytes);
    return result;
}

} // namespace

std::string LocalText(const XMLCh* text) {
    return std::string(LocalView(text).Get());
}

LocalView::LocalView(const XMLCh* text) {
    if (!text) {
        return;
    }
    std::size_t length = 0;
    for (; text[length] != 0; ++length) {
        if (length == std::size(fShort) || text[length] >= 0x80) {
            fLong = TranscodeLocal(text);
            fView = fLong;
            return;
        }
        fShort[length] = static_cast<char>(text[length]);
    }
    fView = std::string_view(fShort, length);
}

WideName::WideName(const std::string& name) : fLong(nullptr) {
    std::size_t length = 0;
    for (; length < name.size() && name[length] != 0; ++length) {
        if (length + 1 == std::size(fShort) || static_cast<unsigned char>(name[length]) >= 0x80) {
            fLong = xercesc::XMLString::transcode(name.c_str());
            return;
        }
        fShort[length] = static_cast<XMLCh>(name[length]);
    }
    fShort[length] = 0;
}

WideName::~WideName() {
    xercesc::XMLString::release(&fLong);
}

} // namespace veltrane::translators
