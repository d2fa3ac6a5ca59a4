#include "factory/documents/external_dtd.h"

#include "factory/documents/document_limits.h"
#include "factory/documents/xml_text.h"

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace veltrane::factory {

namespace {

constexpr std::uintmax_t kMaxDtdSize = 4U << 20;

/// The scheme of an address, in lower case; empty for a path. One letter is a drive.
std::string SchemeOf(const std::string& systemId) {
    const std::size_t end = systemId.find_first_of(":/\\?#");
    if (end == std::string::npos || systemId[end] != ':' || end < 2) {
        return {};
    }
    std::string scheme = systemId.substr(0, end);
    std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return scheme;
}

int HexDigit(char c) {
    static const std::string kDigits = "0123456789abcdef0123456789ABCDEF";
    const std::size_t place = kDigits.find(c);
    return place == std::string::npos ? -1 : static_cast<int>(place % 16);
}

std::string DecodePercents(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
        if (low >= 0) {
            result += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

/// Two slashes in front name a share of another machine on some systems.
bool IsNetworkPath(const std::string& path) {
    const auto isSlash = [](char c) { return c == '/' || c == '\\'; };
    return path.size() >= 2 && isSlash(path[0]) && isSlash(path[1]);
}

/// The path behind `file:`, without an authority that means this machine; empty for one that means another.
std::string PathOfFileAddress(std::string rest) {
    if (rest.starts_with("//")) {
        const std::size_t slash = rest.find('/', 2);
        const std::string host = rest.substr(2, slash == std::string::npos ? slash : slash - 2);
        if (slash == std::string::npos || !(host.empty() || host == "localhost")) {
            return {};
        }
        rest.erase(0, slash);
    }
    return DecodePercents(rest);
}

} // namespace

std::string LocalPathOf(const std::string& systemId) {
    const std::string scheme = SchemeOf(systemId);
    std::string path;
    if (scheme.empty()) {
        path = systemId;
    } else if (scheme == "file") {
        path = PathOfFileAddress(systemId.substr(scheme.size() + 1));
    }
    return IsNetworkPath(path) ? std::string() : path;
}

xercesc::InputSource* OpenExternalDtd(const std::string& systemId) {
    static const XMLByte kNothing[] = {' '};
    const std::string path = LocalPathOf(systemId);
    if (path.empty()) {
        return new xercesc::MemBufInputSource(kNothing, sizeof(kNothing), "dtd");
    }
    std::error_code error;
    const std::filesystem::path file(ToUtf16(path));
    if (!std::filesystem::is_regular_file(file, error) || std::filesystem::file_size(file, error) > kMaxDtdSize) {
        throw DocumentRefused();
    }
    return new xercesc::LocalFileInputSource(ToUtf16(path).c_str());
}

} // namespace veltrane::factory
